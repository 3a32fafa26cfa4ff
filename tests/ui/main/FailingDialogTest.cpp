#include "ui/main/MainWindowTest.h"

#include "files/Files.h"

// A file dialog that fails in another way than by a cancel: opening and saving a project stop at it, the other commands
// go on with the file name that the dialog had before.

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int32_t noDialog = 28660;

class FailingDialogTest : public MainWindowTest
{
protected:
    /// Leaves this file name in the dialog that all commands share.
    void LastDialogWasLeftAt(const String& path)
    {
        shell.NextFile(path);
        Choose("mnuExportList");
        EXPECT_TRUE(FileExists(path));
    }
};

TEST_F(FailingDialogTest, OpenStopsAndSaysNothing)
{
    EditPairs({{u"kept", u""}});
    shell.FileDialogsFailWith(noDialog);

    Choose("mnuOpen");

    EXPECT_EQ(shell.FileDialogs().size(), 1U);
    EXPECT_THAT(Finds(), ElementsAre("kept"));
    EXPECT_THAT(messages.Messages(), IsEmpty());
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(FailingDialogTest, SaveStopsAndMarksTheJob)
{
    EditPairs({{u"one", u"1"}});
    const String path = folder.PathOf(u"list.csv");
    LastDialogWasLeftAt(path);
    const std::string before = ContentOf(path);
    Window().PutIsModifed(false);
    shell.FileDialogsFailWith(noDialog);

    Choose("menuSave");

    EXPECT_TRUE(Window().IsModifed());
    EXPECT_EQ(Window().ProjectFile(), u"");
    EXPECT_EQ(ContentOf(path), before);
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(FailingDialogTest, SaveAsSavesToTheFileOfTheLastDialog)
{
    EditPairs({{u"one", u"1"}});
    const String path = folder.PathOf(u"job.tsq");
    shell.NextFile(path);
    Choose("menuSaveAs");
    DeleteFile(path);
    Window().PutIsModifed(true);
    shell.FileDialogsFailWith(noDialog);

    Choose("menuSaveAs");

    EXPECT_TRUE(FileExists(path));
    EXPECT_EQ(Window().ProjectFile(), path);
    EXPECT_FALSE(Window().IsModifed());
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(FailingDialogTest, SaveAsWithoutAnEarlierFileLeavesTheMark)
{
    Window().PutIsModifed(true);
    shell.FileDialogsFailWith(noDialog);

    Choose("menuSaveAs");

    EXPECT_EQ(Window().ProjectFile(), u"");
    EXPECT_TRUE(Window().IsModifed());
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(FailingDialogTest, ImportFailsForWantOfAFileAndKeepsTheList)
{
    EditPairs({{u"kept", u""}});
    LastDialogWasLeftAt(folder.PathOf(u"list.csv"));
    shell.FileDialogsFailWith(noDialog);

    Choose("mnuImportList");

    EXPECT_THAT(messages.Messages(),
                ElementsAre(Message{u"File is Not Present In Directory!", MessageIcon::Information},
                            Message{GlobalMsg(u"1056"), MessageIcon::Exclamation}));
    EXPECT_THAT(Finds(), ElementsAre("kept"));
    EXPECT_EQ(messages.Pointers().back(), MousePointer::Default);
}

TEST_F(FailingDialogTest, ExportAsksToOverwriteTheFileOfTheLastDialog)
{
    EditPairs({{u"one", u"1"}});
    const String path = folder.PathOf(u"list.csv");
    LastDialogWasLeftAt(path);
    shell.FileDialogsFailWith(noDialog);
    messages.Next(MessageAnswer::No);

    Choose("mnuExportList");

    ASSERT_EQ(messages.Messages().size(), 1U);
    EXPECT_NE(messages.Messages().front().text.find(path), String::npos);
    EXPECT_EQ(messages.Pointers().back(), MousePointer::Default);
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(FailingDialogTest, AChosenListIsRefusedForItsType)
{
    Window();
    shell.FileDialogsFailWith(noDialog);

    Click("cmdBrowse1");

    EXPECT_THAT(messages.Messages(), ElementsAre(Message{GlobalMsg(u"1039"), MessageIcon::None}));
    EXPECT_EQ(Text("txtLoadsearch"), "");
    EXPECT_THAT(Log(), IsEmpty());
}

}  // namespace
}  // namespace tessarine
