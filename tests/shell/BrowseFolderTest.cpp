#include "shell/BrowseFolder.h"

#include <gmock/gmock.h>

#include "platform/Failure.h"
#include "platform/PathSeparator.h"
#include "support/ErrorLogRecorder.h"
#include "support/qt/ShellRecorder.h"

namespace tessarine
{
namespace
{

class BrowseFolderTest : public testing::Test
{
protected:
    bool Browse() { return BrowseFolder(nullptr, folder_, u"Please select a folder:", false, true); }

    ShellRecorder shell_;
    String folder_ = u"/decks/";
};

TEST_F(BrowseFolderTest, StoresTheChoiceWithASeparatorAtItsEnd)
{
    shell_.NextFolder(u"/decks/2026");

    EXPECT_TRUE(Browse());

    EXPECT_EQ(folder_, String(u"/decks/2026") + PathSeparator);
    ASSERT_EQ(shell_.FolderDialogs().size(), 1u);
    EXPECT_EQ(shell_.FolderDialogs().front().startFolder, u"/decks/");
    EXPECT_EQ(shell_.FolderDialogs().front().title, u"Please select a folder:");
    EXPECT_FALSE(shell_.FolderDialogs().front().includeFiles);
}

TEST_F(BrowseFolderTest, DoublesNoSeparatorOfARoot)
{
    const String root = PathSeparator == u'/' ? u"/" : u"C:\\";
    shell_.NextFolder(root);

    EXPECT_TRUE(Browse());

    EXPECT_EQ(folder_, root);
}

TEST_F(BrowseFolderTest, LeavesTheFolderWhenNoneWasChosen)
{
    shell_.NextFolder(u"");

    EXPECT_FALSE(Browse());

    EXPECT_EQ(folder_, u"/decks/");
}

TEST_F(BrowseFolderTest, BeginsAtTheDefaultPlaceWithoutAFolder)
{
    folder_.clear();
    shell_.NextFolder(u"/decks");

    EXPECT_TRUE(Browse());

    EXPECT_EQ(shell_.FolderDialogs().front().startFolder, u"");
    EXPECT_EQ(folder_, String(u"/decks") + PathSeparator);
}

TEST_F(BrowseFolderTest, LogsAFailureAndGivesFalse)
{
    const ErrorLogRecorder log;
    const auto previous = SetFolderDialog([](auto...) -> String { throw Failure(5, u"no"); });

    EXPECT_FALSE(Browse());

    SetFolderDialog(previous);
    EXPECT_EQ(folder_, u"/decks/");
    EXPECT_THAT(log.Lines(),
                testing::ElementsAre("Error 5 (no) in procedure BrowseFolder at Line No. 0 of Module modShell"));
}

}  // namespace
}  // namespace tessarine
