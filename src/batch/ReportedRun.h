#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "batch/JobFiles.h"
#include "platform/Failure.h"
#include "report/FileReport.h"
#include "run/FileWarnings.h"
#include "run/OwnResults.h"

namespace tessarine
{
class CounterStatuses;
class FindAndReplaceItems;
class Project;
}  // namespace tessarine

namespace tessarine::batch
{

/// Takes files through a project's run and gives exactly one report for each, in order, whatever the run does with
/// them.
///
/// The run itself promises less: a file that fails may come back as no result at all or as the result of the file
/// before, and a failure at the wrong moment ends the run with files still to come. Here such a file is reported as
/// failed with the reason that the run passed over, or that ended it, and the files after it go into a new run.
///
/// After a file that could not be opened or processed a new run is begun as well, because the old one would pass over
/// failures of the next file's first steps too: a file could be changed without the backup that was asked for.
///
/// An event belongs to the file at Project::PositionInRun, never to a path: a path may stand among the files twice.
class ReportedRun
{
public:
    enum class Mode { Find, Replace };
    using Sink = std::function<void(const FileReport&)>;

    /// More files than this are taken in several runs. One run holds 32,767 at most; smaller turns keep the cost of
    /// beginning anew after a failed file small.
    static constexpr std::size_t FilesPerTurn = 512;

    /// The project is borrowed and must outlive this object.
    ReportedRun(Project& project, Mode mode, Sink sink);
    ~ReportedRun();
    ReportedRun(const ReportedRun&) = delete;
    ReportedRun& operator=(const ReportedRun&) = delete;

    /// The pairs to look for; null for the project's own.
    std::shared_ptr<FindAndReplaceItems> List;

    /// How many hits of a file its report holds; further ones are counted there. 0 asks for no hit at all, which costs
    /// nothing.
    std::size_t HitsToKeep = 0;
    /// How many bytes the hits of a file may take. The first one that doesn't fit is left out, and so are all after it.
    std::size_t HitBytesToKeep = std::size_t{256} << 20;

    /// Told of each file that is about to be processed, by its index; false stops before it. May be empty.
    std::function<bool(std::size_t file)> Started;

    /// Asked before each file; true stops before it. May be empty.
    std::function<bool()> CancelRequested;

    /// Returns the number of files that a cancel left without a report, 0 as a rule. May be called again
    /// for further files.
    std::size_t Run(const std::vector<JobFile>& files);

private:
    void TakeTurn();       // one run, over at most FilesPerTurn files
    void SearchThrough();  // the run itself, and what is to be said after it
    void OnBefore();
    void OnAfter(const std::shared_ptr<CounterStatuses>& result);
    void OnCancel();  // the user's cancel, or our own when a run begins anew
    void OnPassedOver(const Failure& failure);
    bool KeepsMoreHits() const { return hitsLeftOut_ == 0 && hits_.size() < HitsToKeep; }
    void OnHit(const Hit& hit);
    std::optional<std::size_t> FileInRun() const;
    void ReportNext(FileReport report);  // the one report of the file at reported_
    void ReportRefused();                // those in front that are not to be processed
    void FailUpTo(std::size_t end);
    String Reason() const;

    Project& project_;
    const std::shared_ptr<void> alive_ = std::make_shared<char>();  // ends with this object
    Mode mode_;
    Sink sink_;

    const std::vector<JobFile>* files_ = nullptr;
    std::size_t reported_ = 0;  // files that have their report; the first one without it has this index
    bool cancelled_ = false;    // by the user

    // Of the run in progress.
    std::vector<std::size_t> turn_;       // its files, as indexes
    std::optional<std::size_t> current_;  // the file between BeforFileProcess and its report
    bool beginsAnew_ = false;             // its cancel is our own
    std::optional<Failure> passedOver_;   // what it passed over since BeforFileProcess, or before any file
    std::optional<Failure> ended_;        // what ended it early
    OwnResults results_;
    std::vector<Hit> hits_;         // of the file that the run is at
    std::size_t hitBytes_ = 0;      // that they take
    std::int64_t hitsLeftOut_ = 0;  // those of it that are not among them
    FileWarnings warnings_;         // of the file that the run is at
};

}  // namespace tessarine::batch
