#include "batch/MergeReports.h"

#include <algorithm>
#include <deque>
#include <map>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "batch/BatchProgram.h"
#include "batch/KeptReports.h"
#include "batch/LineText.h"
#include "batch/Locations.h"
#include "batch/Output.h"
#include "batch/Refusal.h"
#include "batch/ReportFile.h"
#include "batch/ReportFormats.h"

namespace tessarine::batch
{

namespace
{

/// The reports of one job, and what is wrong with them.
class Reports
{
public:
    explicit Reports(const std::vector<String>& paths)
    {
        for (const String& path : paths)
            files_.emplace_back(path);
        for (const ReportFile& file : files_) {
            areShards_ = areShards_ || file.Facts().isNumbered;
            isDryRun_ = isDryRun_ || file.Facts().isDryRun;
            replaces_ = replaces_ || file.Facts().replaces;
        }
        RefuseWhatIsNotOneJob();
        if (areShards_)
            LookForShards();
        else
            LookForCutOnes();
    }

    bool replaces() const { return replaces_; }
    bool isDryRun() const { return isDryRun_; }
    const std::vector<std::string>& faults() const { return faults_; }  ///< A line each.

    /// What the summaries say, together. A share's links are those of the whole job.
    RunSummary Summary() const
    {
        RunSummary summary;
        for (const ReportFile& file : files_) {
            const ReportFacts& facts = file.Facts();
            summary.skippedLinks = areShards_ ? std::max(summary.skippedLinks, facts.skippedLinks)
                                              : summary.skippedLinks + facts.skippedLinks;
            summary.notReached += areShards_ ? 0 : facts.notProcessed;
            summary.engine = summary.engine ? summary.engine : facts.engine;
            for (const String& warning : facts.warnings) {
                if (std::ranges::find(summary.warnings, warning) == summary.warnings.end())
                    summary.warnings.push_back(warning);
            }
        }
        return summary;
    }

    /// The files of the whole job, where that is known.
    std::optional<std::int64_t> FilesOfJob() const
    {
        const auto whole =
            std::ranges::find_if(files_, [](const ReportFile& file) { return bool(file.Facts().shard); });
        return whole == files_.end() ? std::nullopt : std::optional(whole->Facts().shard->files);
    }

    /// Hands on every file once, in the order of the job.
    template <class Sink>
    void ForEachFile(const Sink& sink)
    {
        if (!areShards_) {
            for (ReportFile& file : files_) {
                while (const auto report = file.Next(replaces_))
                    sink(*report);
            }
            return;
        }
        // The next file of each report by its number; of one number a report that is whole comes first.
        std::map<std::pair<std::int64_t, bool>, std::vector<std::pair<ReportFile*, FileReport>>> next;
        const auto add = [&](ReportFile& file) {
            if (auto report = file.Next(replaces_)) {
                const std::pair place(report->number, file.Facts().isCut);
                next[place].emplace_back(&file, std::move(*report));
            }
        };
        for (ReportFile& file : files_)
            add(file);
        std::int64_t last = 0;
        while (!next.empty()) {
            auto of = next.extract(next.begin());
            for (auto& [file, report] : of.mapped()) {
                if (report.number != last) {
                    last = std::exchange(report.number, 0);
                    sink(report);
                }
                add(*file);
            }
        }
    }

private:
    void RefuseWhatIsNotOneJob() const
    {
        for (const ReportFile& file : files_) {
            const ReportFacts& facts = file.Facts();
            // A cut report without a file tells nothing.
            if (facts.isCut && facts.files == 0)
                continue;
            if (facts.isNumbered != areShards_)
                Refuse(InQuotes(file.Path()) + u" is not the report of a shard, and others are");
            if (facts.isDryRun != isDryRun_)
                Refuse(InQuotes(file.Path()) + u" is not the report of a dry run, and others are");
        }
        const ReportFile* whole = nullptr;
        for (const ReportFile& file : files_) {
            const auto& shard = file.Facts().shard;
            if (!shard)
                continue;
            whole = whole ? whole : &file;
            const ShardFacts& other = *whole->Facts().shard;
            if (shard->division != other.division || shard->shard.count != other.shard.count ||
                shard->files != other.files || file.Facts().replaces != whole->Facts().replaces)
                Refuse(InQuotes(whole->Path()) + u" and " + InQuotes(file.Path()) +
                       u" are not of one job: its files were divided differently");
        }
    }

    void LookForShards()
    {
        std::map<std::int32_t, const ReportFile*> byIndex;
        std::deque<ReportFile> taken;
        std::int32_t count = 0;
        for (ReportFile& file : files_) {
            const auto& shard = file.Facts().shard;
            count = shard ? shard->shard.count : count;
            if (shard && byIndex.contains(shard->shard.index)) {
                faults_.push_back(fmt::format("shard {} of {} is there twice, in {} and {}; the first is taken",
                                              shard->shard.index, count, Quoted(byIndex.at(shard->shard.index)->Path()),
                                              Quoted(file.Path())));
                continue;
            }
            taken.push_back(std::move(file));
            // What was killed, and started again, has a whole report beside the one that ends early.
            if (taken.back().Facts().shard)
                byIndex[taken.back().Facts().shard->shard.index] = &taken.back();
        }
        files_ = std::move(taken);
        for (std::int32_t index = 1; index <= count; ++index) {
            if (!byIndex.contains(index))
                faults_.push_back(fmt::format("shard {} of {} is missing, or its report ends early", index, count));
        }
        if (count == 0)
            faults_.push_back("every report ends early, so that nobody knows how many files there are");
    }

    void LookForCutOnes()
    {
        for (const ReportFile& file : files_) {
            if (file.Facts().isCut)
                faults_.push_back(Quoted(file.Path()) + " ends early");
        }
    }

    std::deque<ReportFile> files_;  // those that are taken
    bool areShards_ = false;
    bool isDryRun_ = false;
    bool replaces_ = false;
    std::vector<std::string> faults_;
};

}  // namespace

int MergeReports(const BatchCall& call, Output& output)
{
    Reports reports(call.paths);
    BatchCall asRun = call;
    asRun.command = reports.replaces() ? Command::Replace : Command::Find;
    asRun.dryRun = reports.isDryRun();
    SwitchOn(asRun.setting, "all");  // a report leaves out the places that were not searched
    std::vector<JobFile> inputs;
    for (const String& path : call.paths)
        inputs.push_back({.path = path, .refusal = {}});

    const auto report = CreateReport(asRun, output.colors());
    KeptReports kept(asRun, inputs, {}, KeptReports::Of::EarlierRuns);
    RunSummary summary = reports.Summary();
    if (summary.engine)
        output.Write(report->AtStart(*summary.engine));
    reports.ForEachFile([&](const FileReport& file) {
        summary.Add(file);
        output.Write(report->OfFile(file));
        kept.Add(file);
    });
    if (const auto all = reports.FilesOfJob())
        summary.notReached += *all - summary.files;
    output.Write(report->AtEnd(summary));
    for (const std::string& fault : reports.faults())
        output.Note("tessarine-batch: " + fault);
    if (summary.notReached > 0)
        output.Note(fmt::format("tessarine-batch: {} of the job {} in no report", Counted(summary.notReached, "file"),
                                OneOrMore(summary.notReached, "is", "are")));
    if (output.failed())
        output.Note("tessarine-batch: the report could not be written completely");
    const bool isKept = kept.Finish({.way = summary.notReached > 0 ? RunEnd::Way::BrokenOff : RunEnd::Way::Complete,
                                     .notReached = summary.notReached,
                                     .engine = summary.engine},
                                    output);
    const bool isWhole = reports.faults().empty() && summary.notReached == 0 && summary.failed == 0;
    if (!isKept || !isWhole || output.failed())
        return ExitStatus::FileFailed;
    return call.exitCode && summary.IsWithoutHits() ? ExitStatus::NothingFound : ExitStatus::Done;
}

}  // namespace tessarine::batch
