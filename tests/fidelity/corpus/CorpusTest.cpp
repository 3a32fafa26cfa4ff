#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "batch/JobFiles.h"
#include "batch/ReportedRun.h"
#include "engine/CounterStatuses.h"
#include "log/ErrorLog.h"
#include "model/Project.h"
#include "office/builtin/Provider.h"
#include "support/PackageCompare.h"
#include "support/TemporaryFolder.h"

/// Real files of many producers, taken from the folder that TESSARINE_CORPUS names; without one these tests are
/// skipped. They work on copies.
namespace tessarine::batch
{

namespace
{

namespace fs = std::filesystem;

/// What a run may not change when it only looks.
struct Stamp {
    std::string content;
    timespec written{};
    timespec read{};
};

class CorpusTest : public testing::Test
{
protected:
    void SetUp() override
    {
        const char* source = std::getenv("TESSARINE_CORPUS");
        if (source == nullptr || *source == '\0')
            GTEST_SKIP() << "TESSARINE_CORPUS names no folder";
        fs::copy(source, Folder(), fs::copy_options::recursive);
        for (const auto& entry : fs::recursive_directory_iterator(Folder())) {
            fs::permissions(entry.path(), fs::perms::owner_write | fs::perms::owner_read, fs::perm_options::add);
            if (entry.is_regular_file())
                files_.push_back(FromUtf8(entry.path().string()));
        }
        std::ranges::sort(files_);
        ASSERT_FALSE(files_.empty());
        ApplicationDataFolder = logFolder_.Path();
    }

    std::string Folder() const { return ToUtf8(folder_.Path()) + "/corpus"; }
    const std::vector<String>& Files() const { return files_; }

    static Stamp StampOf(const String& path)
    {
        struct stat status = {};
        EXPECT_EQ(stat(ToUtf8(path).c_str(), &status), 0);
        return {ContentOf(path), status.st_mtim, status.st_atim};
    }

    /// Runs one pair over every file, in every location that `chosen` accepts.
    template <class Chosen>
    std::vector<FileReport> Run(ReportedRun::Mode mode, const String& find, const String& with, Chosen&& chosen)
    {
        const ProjectOwner project(builtin::CreateProvider());
        auto options = std::make_shared<OptionSetting>();
        for (const SearchLocation& location : SearchLocations)
            (*options).*location.isOn = chosen(std::string_view(location.name));
        project->options->RequiredFindAndReplaceCount = true;
        project->FindAndReplaceList->Add(find, with, options, project.get());

        std::vector<FileReport> reports;
        std::vector<JobFile> jobFiles;
        for (const String& path : files_)
            jobFiles.push_back({path, {}});
        ReportedRun run(*project, mode, [&](const FileReport& report) { reports.push_back(report); });
        run.Run(jobFiles);
        return reports;
    }

    void ExpectOneReportPerFile(const std::vector<FileReport>& reports) const
    {
        std::vector<String> reported;
        for (const FileReport& report : reports) {
            reported.push_back(report.path);
            EXPECT_EQ(report.error.empty(), report.status != FileStatus::NotProcessed) << ToUtf8(report.path);
        }
        EXPECT_EQ(reported, files_);
    }

private:
    TemporaryFolder folder_;
    TemporaryFolder logFolder_;
    std::vector<String> files_;
};

constexpr auto everywhere = [](std::string_view) { return true; };

/// Masters for notes and handouts without a header or footer end a file by design; the other locations don't.
constexpr auto whereNoFileEnds = [](std::string_view name) {
    return name != "notes-master" && name != "handout-master";
};

TEST_F(CorpusTest, AFindRunLeavesEveryFileAndItsTimesAsTheyWere)
{
    std::map<String, Stamp> before;
    for (const String& path : Files())
        before[path] = StampOf(path);
    // Reading the files for the comparison moves their access times; the stamps of times come after it.
    for (const String& path : Files()) {
        const Stamp now = StampOf(path);
        before[path].written = now.written;
        before[path].read = now.read;
    }

    const auto reports = Run(ReportedRun::Mode::Find, u"the", {}, everywhere);

    ExpectOneReportPerFile(reports);
    for (const auto& [path, stamp] : before) {
        struct stat status = {};
        ASSERT_EQ(stat(ToUtf8(path).c_str(), &status), 0);
        EXPECT_EQ(status.st_mtim.tv_sec, stamp.written.tv_sec) << ToUtf8(path);
        EXPECT_EQ(status.st_mtim.tv_nsec, stamp.written.tv_nsec) << ToUtf8(path);
        EXPECT_EQ(status.st_atim.tv_sec, stamp.read.tv_sec) << ToUtf8(path);
        EXPECT_EQ(status.st_atim.tv_nsec, stamp.read.tv_nsec) << ToUtf8(path);
        EXPECT_TRUE(ContentOf(path) == stamp.content) << ToUtf8(path);
    }
    EXPECT_TRUE(std::ranges::any_of(reports, [](const FileReport& report) { return report.Occurrences() > 0; }));
}

TEST_F(CorpusTest, ReplacingWhatDoesNotOccurLeavesEveryByte)
{
    std::map<String, std::string> before;
    for (const String& path : Files())
        before[path] = ContentOf(path);

    const auto reports = Run(ReportedRun::Mode::Replace, u"qqzzq\u2603xj", u"never", whereNoFileEnds);

    ExpectOneReportPerFile(reports);
    for (const FileReport& report : reports) {
        EXPECT_EQ(report.Occurrences(), 0) << ToUtf8(report.path);
        EXPECT_TRUE(ContentOf(report.path) == before[report.path]) << ToUtf8(report.path);
    }
}

TEST_F(CorpusTest, ReplacingWhatOccursChangesNothingButTheText)
{
    std::map<String, std::string> before;
    for (const String& path : Files())
        before[path] = ContentOf(path);

    const auto reports = Run(ReportedRun::Mode::Replace, u"the", u"Z\u03A9<&\u00E9", whereNoFileEnds);

    ExpectOneReportPerFile(reports);
    std::size_t changed = 0;
    for (const FileReport& report : reports) {
        const std::string after = ContentOf(report.path);
        if (report.status == FileStatus::NotProcessed || after == before[report.path]) {
            EXPECT_TRUE(after == before[report.path]) << ToUtf8(report.path);
            continue;
        }
        ++changed;
        // Binary presentations are compared by a reader of their own (counts-agree).
        if (!before[report.path].starts_with("PK"))
            continue;
        EXPECT_TRUE(test::OnlyTheTextDiffers(test::PackageReader(before[report.path]), test::PackageReader(after),
                                             {{u"the", u"Z\u03A9<&\u00E9"}}))
            << ToUtf8(report.path);
    }
    EXPECT_GT(changed, 0u);
}

}  // namespace

}  // namespace tessarine::batch
