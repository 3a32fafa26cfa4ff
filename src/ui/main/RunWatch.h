#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "platform/Failure.h"
#include "platform/String.h"
#include "run/FileWarnings.h"
#include "run/OwnResults.h"
#include "ui/run/HitStore.h"

class QWidget;

namespace tessarine
{

class CounterStatuses;
class Project;
struct FindAndReplaceItem;
class ResultTree;
struct CopiedContent;

/// Watches the runs that the main window starts: counts what a run reports, and keeps the processing window up to date
/// for as long as the user leaves that window open. Every member may be called when it is closed.
///
/// The calls of one run, in their order:
///
///   Prepare
///   Begin
///       FileBegins                 for each file;
///       BackupMade                 when the run makes one of the file;
///       PairBegins                 for each pair of the file;
///       HitFound                   for each hit of the file;
///       FailurePassedOver          for each failure that the run goes on after;
///       TakeResult, Step, Show     for each report of a file
///   Cancelled                      when the user has asked for a cancel
///   End                            however the run ends
class RunWatch
{
public:
    /// Opens the processing window in front of `owner`, as a run over `totalFiles` files begins, with all counters at
    /// 0. `runIndex` is a StartCommand.
    void Prepare(QWidget& owner, const Project& project, std::int16_t runIndex, std::int32_t totalFiles);

    /// From Begin to End the taskbar shows how far the run is, and the processing window takes its close button for a
    /// cancel.
    void Begin();
    bool IsRunGoing() const { return isRunGoing_; }

    /// `hasReturned` tells that no failure has ended the run. Tells the user of the last failure that no tree shows,
    /// and of a run that has left without its end. Never raises.
    void End(const Project& project, bool hasReturned);

    /// Raises `Overflow` when the files no longer fit.
    void FileBegins(const String& path);

    /// The processing window can put it back or remove it from now on.
    void BackupMade(const String& path, const String& backup, const CopiedContent& content);
    /// The run has come to another pair of that file.
    void PairBegins(std::int32_t number, const FindAndReplaceItem& pair) const;

    /// The processing window keeps it until the file's own result tells whether it counts.
    void HitFound(const Hit& hit);
    bool WantsWholeHit() const;  ///< See Project::WantsWholeHit.

    /// The run goes on after a failure. It belongs to the file begun last, or to all files when none has begun.
    void FailurePassedOver(const Failure& failure);

    /// Takes the report of a file: its own result, that of the file before once more, or null. A failure for which it
    /// is not the file's own is counted in the processing window's line.
    void TakeResult(const std::shared_ptr<CounterStatuses>& vStatus, const Project& project);

    /// Moves the progress a file on and gives the tree for a result, which is null for a status that has none. Nothing
    /// comes back when the processing window is closed. Raises `ObjectNotSet` when `vStatus` is null; the progress has
    /// moved by then.
    std::optional<ResultTree*> Step(const std::shared_ptr<CounterStatuses>& vStatus);

    /// Adds a result and its file's warnings to a tree and shows the counters; after the last file, or a cancel, the
    /// end of the run too. Failures are those of AddResult.
    void Show(ResultTree* tree, const CounterStatuses& status, const Project& project);

    /// The run has ended at a cancel, or without one at the moment when it was asked.
    void Cancelled(const Project& project);

private:
    void PutRunGoing(bool isRunGoing);  // here and in the processing window
    void TellOfHiddenFailure(const Project& project);
    void ListEnd(const Failure& reason) const;  // among the failures
    void TellOfEnd(bool hasReturned) const;
    void EndReport(bool hasReturned) const;
    void Store(const CounterStatuses& status);     // the current file's own result, with its hits
    String ChangesMadeKey(bool isReqCount) const;  // of the running total

    bool isRunGoing_ = false;
    bool isCancelled_ = false;           // by the user
    std::int16_t mRunIndex = 0;          // the start command
    std::int32_t mTotalFiles = 0;        // as chosen for the run
    std::int32_t mFilesProcessed = 0;    // begun
    std::int32_t mFilesDone = 0;         // reported, whatever became of them
    std::int32_t mFilesChanged = 0;      // file nodes added for a file with a count
    std::int32_t mTotalChanges = 0;      // sum of all location counts
    String currentFile_;                 // empty before the first file
    std::optional<Failure> passedOver_;  // for the current file, and not shown yet
    OwnResults results_;
    std::unique_ptr<FileWarnings> warnings_;  // while a run is going
    std::vector<String> fileWarnings_;        // of the file reported last
    std::optional<StoredHits> hits_;          // of the last file with a result of its own
};

}  // namespace tessarine
