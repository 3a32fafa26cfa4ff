#include "report/RunReportWriter.h"

#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/NativePath.h"
#include "SampleReport.h"
#include "support/TemporaryFolder.h"

namespace tessarine
{
namespace
{

using namespace test;
using testing::HasSubstr;

std::vector<std::string> NamesIn(const TemporaryFolder& folder)
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(NativePath(folder.Path())))
        names.push_back(entry.path().filename().string());
    return names;
}

std::int32_t NumberOfCreating(const String& path)
{
    try {
        const RunReportWriter writer(path, {});
        return 0;
    } catch (const Failure& failure) {
        return failure.number;
    }
}

TEST(RunReportKind, IsThatOfTheExtension)
{
    EXPECT_EQ(RunReportKindOf(u"a.html"), RunReportKind::Page);
    EXPECT_EQ(RunReportKindOf(u"a.b.HTML"), RunReportKind::Page);
    EXPECT_EQ(RunReportKindOf(u"/x/.Csv"), RunReportKind::Table);
    for (const char16_t* path : {u"", u"a", u"csv", u"html", u"a.htm", u"a.xls", u"a.html.gz", u"a.csv/b"})
        EXPECT_FALSE(RunReportKindOf(path)) << ToUtf8(path);
}

TEST(RunReportWriter, WritesHeadFilesAndFootInTheirOrder)
{
    const TemporaryFolder folder;
    RunReportWriter writer(folder.PathOf(u"r.html"), {});

    writer.Add(FileWith(u"a.pptx", {Pair(u"cat", u"", 1)}));
    writer.Add(FailedFile(u"b.pptx", u"damaged"));
    writer.Add(FileWith(u"c.pptx", {Pair(u"cat", u"", 0)}));
    writer.Finish({});

    const std::string page = ContentOf(folder.PathOf(u"r.html"));
    EXPECT_EQ(page.find("<!DOCTYPE html>"), 0u);
    EXPECT_LT(page.find("b.pptx"), page.find("a.pptx"));
    EXPECT_LT(page.find("a.pptx"), page.find("c.pptx"));
    EXPECT_TRUE(page.ends_with("</html>\n"));
    EXPECT_THAT(NamesIn(folder), testing::ElementsAre("r.html"));
}

TEST(RunReportWriter, KeepsTheOldReportUntilTheNewOneIsComplete)
{
    const TemporaryFolder folder;
    const String path = folder.Write(u"r.csv", "old");
    {
        RunReportWriter writer(path, {});
        writer.Add(FileWith(u"a.pptx", {Pair(u"cat", u"", 1)}));
        EXPECT_EQ(ContentOf(path), "old");
    }

    EXPECT_EQ(ContentOf(path), "old");
    EXPECT_THAT(NamesIn(folder), testing::ElementsAre("r.csv"));
}

TEST(RunReportWriter, HoldsFilesInATemporaryFileAndNotInMemory)
{
    const TemporaryFolder folder;
    RunReportWriter writer(folder.PathOf(u"r.csv"), {});
    const FileReport file =
        FileWith(u"a.pptx", {Pair(u"cat", u"", 1)}, {HitOnSlide(1, 1, u"", u"cat", String(60, u'x'))});

    for (int count = 0; count < 5000; ++count)
        writer.Add(file);

    std::uintmax_t waiting = 0;
    for (const auto& entry : std::filesystem::directory_iterator(NativePath(folder.Path())))
        waiting += entry.file_size();
    writer.Finish({});
    const auto whole = std::filesystem::file_size(NativePath(folder.PathOf(u"r.csv")));
    EXPECT_GT(whole, 500'000u);
    // All but what one write to the system gathers.
    EXPECT_GT(waiting, whole - 70'000);
    EXPECT_EQ(NamesIn(folder).size(), 1u);
}

TEST(RunReportWriter, RefusesAnotherExtension)
{
    EXPECT_EQ(NumberOfCreating(u"r.txt"), FailureNumber::InvalidProcedureCall);
}

TEST(RunReportWriter, RefusesAPlaceThatCannotBeWrittenAtOnce)
{
    const TemporaryFolder folder;

    EXPECT_EQ(NumberOfCreating(folder.PathOf(u"missing/r.html")), FailureNumber::SystemPathNotFound);
    EXPECT_EQ(NumberOfCreating(folder.MakeFolder(u"folder.html")), FailureNumber::AccessDenied);
    EXPECT_EQ(NamesIn(folder).size(), 1u);
}

TEST(RunReportWriter, RaisesAtTheEndWhatWentWrongMeanwhile)
{
    const TemporaryFolder folder;
    ReportWords words;
    words.nameOf = [](Location) -> String { throw Failure(FailureNumber::OutOfMemory, u"Out of memory"); };
    RunReportWriter writer(folder.PathOf(u"r.html"), {}, words);

    writer.Add(FileWith(u"a.pptx", {Pair(u"cat", u"", 1)}));
    writer.Add(FileWith(u"b.pptx", {Pair(u"cat", u"", 0)}));

    EXPECT_THROW(writer.Finish({}), Failure);
    EXPECT_EQ(ContentOf(folder.PathOf(u"r.html")), "<missing>");
}

}  // namespace
}  // namespace tessarine
