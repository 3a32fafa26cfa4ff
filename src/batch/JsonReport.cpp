#include <utility>

#include "batch/BackupCommands.h"
#include "batch/CommandTable.h"
#include "batch/JobJson.h"
#include "batch/ReportFormats.h"
#include "batch/ReportJson.h"
#include "report/FileReport.h"

namespace tessarine::batch
{

namespace
{

std::string TextOf(const Json& value)
{
    // The library raises on invalid UTF-8 by default, and names of files may hold any bytes.
    return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string OneLine(const Json& value)
{
    return TextOf(value) + "\n";
}

/// The line at the end. What was left out has a key only where something was.
std::string SummaryLine(Json counts, std::int64_t skippedLinks, const std::vector<String>& warnings = {})
{
    if (skippedLinks > 0)
        counts["skippedLinks"] = skippedLinks;
    counts["warnings"] = ArrayOf(warnings);
    return OneLine({{"version", JsonReportVersion}, {"summary", std::move(counts)}});
}

/// What became of a file, in one of few words that never change.
const char* StateWord(const BackupReport& file, bool restores)
{
    if (file.status == FileStatus::Counted)
        return restores ? "restored" : "removed";
    return file.status == FileStatus::NothingCounted ? "unchanged" : "failed";
}

class JsonReport : public Report
{
public:
    explicit JsonReport(const ReportStyle& style) : style_(style) {}

    /// In the summary: every line before it is a file's.
    std::string AtStart(Engine /*engine*/) override { return {}; }

    std::string OfFile(const FileReport& file) override
    {
        Json line = FirstKeys();
        line.update(HeadOf(file, style_));
        std::string text = TextOf(line);
        text.back() = ',';
        if (style_.hits)
            text += "\"hits\":[" + HitsOf(file) + "],";
        return text + OneLine(TailOf(file, style_)).substr(1);
    }

    std::string AtEnd(const RunSummary& summary) override
    {
        auto numbers = Json::object();
        if (summary.engine)
            numbers["engine"] = NameOf(*summary.engine);
        PutUnless(numbers, "dryRun", style_.dryRun, false);
        numbers["files"] = summary.files;
        numbers["changed"] = summary.changed;
        // Like skipped links: most runs have none of them.
        if (summary.countedOnly > 0)
            numbers["countedOnly"] = summary.countedOnly;
        numbers["unchanged"] = summary.unchanged;
        numbers["failed"] = summary.failed;
        numbers["occurrences"] = summary.occurrences;
        PutUnless(numbers, "notProcessed", summary.notReached, std::int64_t{0});
        if (style_.shard)
            numbers["shard"] = ShardJson(*style_.shard);
        return SummaryLine(std::move(numbers), summary.skippedLinks, summary.warnings);
    }

    std::string OfFile(const BackupReport& file) override
    {
        Json line = FirstKeys();
        line.update({{"file", ToUtf8(file.file)},
                     {"backup", ToUtf8(file.backup)},
                     {"status", file.status},
                     {"state", StateWord(file, style_.command == Command::Restore)},
                     {"error", ToUtf8(file.error)},
                     {"older", ArrayOf(file.older)},
                     {"warnings", ArrayOf(file.warnings)}});
        return OneLine(line);
    }

    std::string AtEnd(const BackupSummary& summary) override
    {
        Json numbers{{"files", summary.files},
                     {style_.command == Command::Restore ? "restored" : "removed", summary.done},
                     {"unchanged", summary.unchanged},
                     {"failed", summary.failed}};
        PutUnless(numbers, "notProcessed", summary.notReached, std::int64_t{0});
        return SummaryLine(std::move(numbers), summary.skippedLinks, summary.warnings);
    }

    std::string OfJob(const String& path, const Project& project) override
    {
        Json line{{"version", JsonReportVersion}};
        line.update(JobJson(path, project));
        return OneLine(line);
    }

private:
    /// With all that tells whether several shards make up one job.
    Json ShardJson(const ShardFacts& facts) const
    {
        return {{"index", facts.shard.index},
                {"of", facts.shard.count},
                {"files", facts.files},
                {"division", facts.division},
                {"command", NameOf(style_.command)}};
    }

    /// The first line tells the version of the format, so that a program knows it before it reads on.
    Json FirstKeys() { return std::exchange(isFirst_, false) ? Json{{"version", JsonReportVersion}} : Json::object(); }

    /// With commas between them. As text from the first: there may be a million of them, and each object of the library
    /// takes several times the room of its text.
    std::string HitsOf(const FileReport& file) const
    {
        std::string hits;
        for (const Hit& hit : file.hits)
            hits += (hits.empty() ? "" : ",") + TextOf(JsonOf(hit, style_.command == Command::Replace));
        return hits;
    }

    const ReportStyle style_;
    bool isFirst_ = true;  // no file has been told yet
};

}  // namespace

std::unique_ptr<Report> CreateJsonReport(const ReportStyle& style)
{
    return std::make_unique<JsonReport>(style);
}

}  // namespace tessarine::batch
