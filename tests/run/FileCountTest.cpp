#include <gtest/gtest.h>

#include "run/FileCount.h"
#include "support/ErrorLogRecorder.h"
#include "support/TemporaryFolder.h"

namespace tessarine
{
namespace
{

class FileCountTest : public testing::Test
{
protected:
    FileTotals Count(const std::function<bool()>& isToStop = {}) const { return CountFiles(choice, isToStop); }

    FileTotals CountOfList(const std::string& content)
    {
        choice.isListed = true;
        choice.list = folder.Write(u"list.txt", content);
        return Count();
    }

    std::string Full(StringView name) const { return ToUtf8(folder.PathOf(name)); }

    const ErrorLogRecorder log;
    const TemporaryFolder folder;
    FileChoice choice{.folder = folder.Path(), .patterns = u"*.Ppt*"};
};

TEST_F(FileCountTest, IsOfTheFilesThatARunWouldTake)
{
    for (const char16_t* name : {u"a.pptx", u"B.PPT", u"c.txt", u"~$a.pptx", u"below/d.pptm"})
        folder.Write(name);
    SetMode(folder.PathOf(u"a.pptx"), 0444);

    EXPECT_EQ(Count(), (FileTotals{.isThere = true, .files = 2, .readOnly = 1}));

    choice.withSubfolders = true;
    EXPECT_EQ(Count(), (FileTotals{.isThere = true, .files = 3, .readOnly = 1}));
}

TEST_F(FileCountTest, OfAListCountsAFileThatIsNamedTwiceTwice)
{
    folder.Write(u"a.pptx");

    EXPECT_EQ(CountOfList(Full(u"a.pptx") + "\r\n" + Full(u"a.pptx") + "\r\nmissing.pptx"),
              (FileTotals{.isThere = true, .files = 2}));
}

TEST_F(FileCountTest, OfAListTellsWhatItsLineFeedsHide)
{
    folder.Write(u"a.pptx");
    folder.Write(u"b.pptx");

    EXPECT_EQ(CountOfList(Full(u"a.pptx") + "\n" + Full(u"b.pptx")),
              (FileTotals{.isThere = true, .hiddenByLineFeeds = 2}));
}

TEST_F(FileCountTest, OfAFolderOrAListThatIsMissingIsNone)
{
    choice.folder = folder.PathOf(u"missing");
    EXPECT_EQ(Count(), FileTotals());

    choice.isListed = true;
    choice.list = folder.PathOf(u"missing.txt");
    EXPECT_EQ(Count(), FileTotals());
}

TEST_F(FileCountTest, StopsBetweenFilesAndFolders)
{
    for (const char16_t* name : {u"a.pptx", u"b.pptx", u"c.pptx", u"below/d.pptx"})
        folder.Write(name);
    choice.withSubfolders = true;
    int asked = 0;

    EXPECT_EQ(Count([&] { return ++asked > 3; }).files, 2) << "asked before the folder, and before each file";
    EXPECT_EQ(Count([] { return true; }).files, 0);
}

TEST_F(FileCountTest, StopsWithinAList)
{
    folder.Write(u"a.pptx");
    choice.isListed = true;
    choice.list = folder.Write(u"list.txt", Full(u"a.pptx") + "\r\n" + Full(u"a.pptx") + "\r\n" + Full(u"a.pptx"));
    int asked = 0;

    EXPECT_EQ(Count([&] { return ++asked > 2; }).files, 2);
}

TEST_F(FileCountTest, WritesNoLog)
{
    folder.Write(u"a.pptx");
    choice.patterns = u"*.[p";

    EXPECT_EQ(Count().files, 0);
    EXPECT_EQ(log.Bytes(), "");
}

}  // namespace
}  // namespace tessarine
