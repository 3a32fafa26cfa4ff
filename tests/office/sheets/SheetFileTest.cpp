#include "office/sheets/SheetFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "files/Files.h"
#include "office/sheets/Table.h"
#include "office/sheets/WorkbookFile.h"
#include "office/sheets/XlsxWriter.h"
#include "platform/Failure.h"
#ifndef _WIN32
#include "saving/FileSizeLimit.h"
#endif
#include "support/ErrorLogRecorder.h"
#include "support/OrdinaryUser.h"
#include "support/TemporaryFolder.h"

namespace tessarine::sheets
{

namespace
{

Sheet Sample()
{
    Sheet sheet;
    sheet.Put(0, 0, StringView(u"a,b"));
    sheet.Put(0, 1, true);
    return sheet;
}

template <class Action>
std::string FailureOfCall(Action action)
{
    try {
        action();
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.number, 1004);
        return ToUtf8(failure.description);
    }
    return {};
}

}  // namespace

TEST(SheetFile, IsSavedAndOpenedAsItsNameAsks)
{
    const TemporaryFolder folder;

    for (const StringView name : {u"list.xls", u"list.XLS", u"list.xlsx", u"list.Xlsx", u"list.csv", u"list.Csv"}) {
        SaveSheet(folder.PathOf(name), Sample());

        EXPECT_EQ(TableOf(OpenSheet(folder.PathOf(name))), TableOf(Sample())) << ToUtf8(name);
    }

    EXPECT_TRUE(IsCompoundOrZip(ContentOf(folder.PathOf(u"list.xls"))));
    EXPECT_TRUE(ContentOf(folder.PathOf(u"list.xlsx")).starts_with("PK"));
    EXPECT_EQ(ContentOf(folder.PathOf(u"list.csv")), "\xEF\xBB\xBF\"a,b\",TRUE\r\n");
}

TEST(SheetFile, OfAPathWithANulIsNeitherOpenedNorSaved)
{
    const TemporaryFolder folder;
    const String path = folder.Write(u"list.csv", "a,b\n");
    const String cut = path + u'\0' + u".csv";

    EXPECT_THAT(FailureOfCall([&] { OpenSheet(cut); }), testing::HasSubstr("a path can't hold a NUL character"));
    EXPECT_THAT(FailureOfCall([&] { SaveSheet(cut, Sample()); }),
                testing::HasSubstr("a path can't hold a NUL character"));

    EXPECT_EQ(ContentOf(path), "a,b\n");
}

TEST(SheetFile, IsOpenedUpToTheLimitOfItsSizeAndNotBeyond)
{
    const TemporaryFolder folder;
    const Limits limits{.fileBytes = 100};
    const String atLimit = folder.Write(u"at.csv", std::string(100, 'a'));
    const String beyond = folder.Write(u"beyond.csv", std::string(101, 'a'));

    EXPECT_EQ(FailureOfCall([&] { OpenSheet(atLimit, limits); }), "");
    EXPECT_THAT(FailureOfCall([&] { OpenSheet(beyond, limits); }), testing::HasSubstr("too large to be a list"));
}

TEST(SheetFile, OfTabSeparatedTextIsOpened)
{
    const TemporaryFolder folder;
    const String path = folder.Write(u"list.tab", "a,b\ttrue\n");

    EXPECT_EQ(TableOf(OpenSheet(path)), TableOf(Sample()));
}

TEST(SheetFile, ThatIsAWorkbookIsOneUnderAnyName)
{
    const TemporaryFolder folder;

    for (const std::string& content : {WriteWorkbook(Sample()), WriteXlsx(Sample())}) {
        EXPECT_EQ(TableOf(OpenSheet(folder.Write(u"list.csv", content))), TableOf(Sample()));
        EXPECT_EQ(TableOf(OpenSheet(folder.Write(u"list.xls", content))), TableOf(Sample()));
        EXPECT_EQ(TableOf(OpenSheet(folder.Write(u"list.xlsx", content))), TableOf(Sample()));
    }
}

TEST(SheetFile, ThatIsNeitherWorkbookNorTextIsRefused)
{
    const TemporaryFolder folder;

    for (const StringView name : {u"list.xls", u"list.xlsx", u"list.csv", u"list.tab"}) {
        const String path = folder.Write(name, "PK\x03\x04");

        EXPECT_THAT(FailureOfCall([&] { OpenSheet(path); }), testing::HasSubstr("The file is damaged")) << ToUtf8(name);
    }
}

TEST(SheetFile, ThatIsMissingFailsWithItsName)
{
    EXPECT_THAT(FailureOfCall([] { OpenSheet(u"/no/such/list.xls"); }), testing::StartsWith("/no/such/list.xls: "));
}

TEST(SheetFile, ThatIsTooLargeIsRefused)
{
    const TemporaryFolder folder;
    const String path = folder.Write(u"list.csv", "12345");

    EXPECT_THAT(FailureOfCall([&] { OpenSheet(path, {.fileBytes = 4}); }), testing::HasSubstr("too large"));
}

TEST(SheetFile, IsNotSavedUnderOtherExtensions)
{
    const TemporaryFolder folder;

    for (const StringView name : {u"list.ods", u"list.xlsm", u"list.tab", u"list"})
        EXPECT_THAT(FailureOfCall([&] { SaveSheet(folder.PathOf(name), Sample()); }),
                    testing::HasSubstr("saved as .xlsx, .xls or .csv"));

    EXPECT_TRUE(FilesOfFolder(folder.Path()).empty());
}

TEST(SheetFile, StaysAsItWasWhenTheSheetDoesNotFit)
{
    const TemporaryFolder folder;
    const String path = folder.Write(u"list.xls", "old");
    Sheet sheet;
    sheet.Put(65536, 0, true);

    EXPECT_THAT(FailureOfCall([&] { SaveSheet(path, sheet); }), testing::HasSubstr("65536 rows"));

    EXPECT_EQ(ContentOf(path), "old");
}

TEST(SheetFile, InAFolderThatIsMissingIsNotSaved)
{
    const TemporaryFolder folder;

    EXPECT_NE(FailureOfCall([&] { SaveSheet(folder.PathOf(u"none/list.xls"), Sample()); }), "");
}

// Links, pipes, modes and other users are different things on Windows.
#ifndef _WIN32

TEST(SheetFile, StaysAsItWasWhenTheDiskIsFull)
{
    const TemporaryFolder folder;
    const String path = folder.Write(u"list.xls", "old");

    {
        const FileSizeLimit full(1024);
        EXPECT_NE(FailureOfCall([&] { SaveSheet(path, Sample()); }), "");
    }

    EXPECT_EQ(ContentOf(path), "old");
    EXPECT_EQ(FilesOfFolder(folder.Path()).size(), 1u);
}

TEST(SheetFile, IsWrittenInPlaceWhereItsFolderIsClosed)
{
    const ErrorLogRecorder dataFolder;
    const TemporaryFolder folder;
    SaveSheet(folder.PathOf(u"open.xls"), Sample());
    const String path = folder.Write(u"list.xls", "old");
    SetMode(path, 0666);
    SetMode(folder.Path(), 0555);
    {
        const OrdinaryUser user;
        EXPECT_EQ(FailureOfCall([&] { SaveSheet(path, Sample()); }), "");
    }

    EXPECT_TRUE(ContentOf(path) == ContentOf(folder.PathOf(u"open.xls")));
}

#endif

}  // namespace tessarine::sheets
