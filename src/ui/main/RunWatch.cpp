#include "ui/main/RunWatch.h"

#include <algorithm>
#include <ctime>
#include <utility>

#include "app/GlobalState.h"
#include "engine/CounterStatuses.h"
#include "i18n/QtText.h"
#include "log/ErrorLog.h"
#include "log/Treatments.h"
#include "model/Project.h"
#include "platform/CheckedInteger.h"
#include "report/WithoutPath.h"
#include "shell/TaskbarProgress.h"
#include "ui/main/ProcessingText.h"
#include "ui/main/StartCommand.h"
#include "ui/run/frmProcessingDocuments.h"
#include "ui/run/ResultReport.h"

namespace tessarine
{

namespace
{

/// What raises the failures of a file that was opened: nothing of what comes before raises under this name.
constexpr StringView ProcessingSource = u"ProcessFile";

}  // namespace

void RunWatch::Prepare(QWidget& owner, const Project& project, std::int16_t runIndex, std::int32_t totalFiles)
{
    *this = {};
    mRunIndex = runIndex;
    mTotalFiles = totalFiles;
    frmProcessingDocuments& window = frmProcessingDocuments::Instance(&owner);
    window.setWindowTitle(ToQt(ProcessingText(u"frmProcessingDocuments.caption")));
    window.show();
    window.SetProgressRange(mTotalFiles);
    window.ShowProgressTab();
    window.IsComplited = false;
    window.ShowBeginning();
    const bool isCounted = NotNull(project.options)->RequiredFindAndReplaceCount;
    window.Hits().BeginRun({mRunIndex == StartCommand::Replacing, isCounted});
    window.BeginReport({.replaces = mRunIndex == StartCommand::Replacing, .started = std::time(nullptr)});
    window.SetChangesMade(ProcessingText(mRunIndex == StartCommand::Replacing ? u"lblChangesMade.Caption3"
                                         : isCounted                          ? u"lblChangesMade.Caption2"
                                                                              : u"lblChangesMade.Caption5"));
    window.SetOKCaption(ProcessingText(u"cmdOK.CANCELcaption"));
    window.SetDocChanged(ProcessingText(u"lblDocChanged.caption", 0, mTotalFiles, String(u"0 Document Processed")));
}

void RunWatch::Begin()
{
    PutRunGoing(true);
    warnings_ = std::make_unique<FileWarnings>();
    ShowTaskbarProgress(0);
}

void RunWatch::End(const Project& project, bool hasReturned)
{
    PutRunGoing(false);
    warnings_.reset();
    HideTaskbarProgress();
    Skip([&] {
        // What the run trips over when a file before it has left no result says less than that file's own failure.
        const std::optional<Failure> reason = passedOver_ ? passedOver_ : project.RunFailure;
        TellOfHiddenFailure(project);
        if (!hasReturned && reason)
            ListEnd(*reason);
        TellOfEnd(hasReturned);
    });
    EndReport(hasReturned);
}

void RunWatch::ListEnd(const Failure& reason) const
{
    if (auto* const window = frmProcessingDocuments::Loaded())
        window->ListFailure(currentFile_,
                            ProcessingText(u"Failures.OfRun", {}, {}, WithoutPath(reason.Reason(), currentFile_)));
}

void RunWatch::TellOfEnd(bool hasReturned) const
{
    auto* const window = frmProcessingDocuments::Loaded();
    if (window == nullptr)
        return;
    if (!hasReturned && !window->IsComplited)
        window->TellRunFailed();
    // A cancel that came with the last file has left nothing out.
    const bool isWhole = mFilesDone >= mTotalFiles && (hasReturned || window->IsComplited);
    const String key = isWhole ? u"Outcome.Done" : isCancelled_ ? u"Outcome.Cancelled" : u"Outcome.Failed";
    String outcome = ProcessingText(key, mFilesDone, mTotalFiles);
    if (const int failures = window->FailureCount(); failures > 0)
        outcome += u' ' + ProcessingText(u"lblFailures.caption", failures);
    window->ShowEnd(outcome);
}

/// What a report that is saved from now on says of the end.
void RunWatch::EndReport(bool hasReturned) const
{
    auto* const window = frmProcessingDocuments::Loaded();
    if (window == nullptr)
        return;
    RunEnd end{.seconds = std::time(nullptr) - window->FactsOfReport().started,
               .engine = IsBuiltInEngine ? Engine::BuiltIn : Engine::PowerPoint};
    if (isCancelled_ || !hasReturned) {
        const HitStore& hits = window->Hits();
        const std::int64_t told = hits.FileCount() - hits.FirstOfRun();
        end.notReached = std::max<std::int64_t>(mTotalFiles - told, 0);
        // A cancel that came with the last file has left nothing out.
        if (end.notReached > 0)
            end.way = hasReturned ? RunEnd::Way::Cancelled : RunEnd::Way::BrokenOff;
    }
    window->EndReport(end);
}

void RunWatch::PutRunGoing(bool isRunGoing)
{
    isRunGoing_ = isRunGoing;
    if (auto* const window = frmProcessingDocuments::Loaded())
        window->IsRunGoing = isRunGoing;
}

void RunWatch::FileBegins(const String& path)
{
    mFilesProcessed = CheckedSum(mFilesProcessed, 1);
    currentFile_ = path;
    passedOver_.reset();
    if (auto* const window = frmProcessingDocuments::Loaded()) {
        window->ShowFileBegins();
        window->Hits().Forget();  // of a file before that got no result
        window->SetDocChanged(ProcessingText(u"lblDocChanged.caption", mFilesProcessed, mTotalFiles, path));
    }
}

void RunWatch::BackupMade(const String& path, const String& backup, const CopiedContent& content)
{
    if (auto* const window = frmProcessingDocuments::Loaded())
        window->Backups().Add(path, backup, content);
}

void RunWatch::PairBegins(std::int32_t number, const FindAndReplaceItem& pair) const
{
    if (auto* const window = frmProcessingDocuments::Loaded())
        window->TellPair(number, pair.FindWhat);
}

void RunWatch::HitFound(const Hit& hit)
{
    if (auto* const window = frmProcessingDocuments::Loaded())
        window->Hits().Take(hit);
}

bool RunWatch::WantsWholeHit() const
{
    auto* const window = frmProcessingDocuments::Loaded();
    return window != nullptr && window->Hits().TakesMore();
}

void RunWatch::FailurePassedOver(const Failure& failure)
{
    passedOver_ = failure;
}

void RunWatch::TakeResult(const std::shared_ptr<CounterStatuses>& vStatus, const Project& project)
{
    // A file's own result shows its failure in a tree. A failure from before the first file concerns all files and is
    // in no tree.
    const bool isOwn = results_.Take(vStatus) && !currentFile_.empty();
    if (!currentFile_.empty())
        mFilesDone = CheckedSum(mFilesDone, 1);
    if (isOwn)
        passedOver_.reset();
    TellOfHiddenFailure(project);
    fileWarnings_ = warnings_ ? warnings_->Take() : std::vector<String>();
    // The tree is gone with the window; the log stays.
    for (const String& text : fileWarnings_)
        WriteErrorLog(currentFile_ + u": " + text);
    if (!isOwn)
        return;
    Store(*vStatus);
    if (auto* const window = frmProcessingDocuments::Loaded(); window && !vStatus->mError.empty())
        window->ListFailure(currentFile_, vStatus->mError);
}

void RunWatch::Store(const CounterStatuses& status)
{
    auto* const window = frmProcessingDocuments::Loaded();
    if (window == nullptr)
        return;
    FileReport report = ReportOf(currentFile_, status);
    for (const String& warning : fileWarnings_)
        report.warnings.push_back(WithoutPath(warning, currentFile_));
    hits_ = window->Hits().Add(std::move(report));
}

/// What no tree shows: the run reports nothing for such a file, or the result of the file before, or leaves at it. What
/// failed before the first file kept all of them from being opened.
void RunWatch::TellOfHiddenFailure(const Project& project)
{
    const auto failure = std::exchange(passedOver_, {});
    auto* const window = frmProcessingDocuments::Loaded();
    if (!failure || window == nullptr)
        return;
    if (!currentFile_.empty() && failure->source == ProcessingSource)
        window->FileNotProcessed(currentFile_, *failure);
    else if (!currentFile_.empty())
        window->FileNotOpened(currentFile_, *failure);
    else
        for (const String& path : project.FilesToProcess)
            window->FileNotOpened(path, *failure);
}

std::optional<ResultTree*> RunWatch::Step(const std::shared_ptr<CounterStatuses>& vStatus)
{
    auto* const window = frmProcessingDocuments::Loaded();
    if (window == nullptr)
        return std::nullopt;
    window->AddProgressStep();
    return window->TreeOf(vStatus);
}

void RunWatch::Show(ResultTree* tree, const CounterStatuses& status, const Project& project)
{
    // May fail when the total no longer fits; what is shown then stays as it was.
    AddResult(tree, status, project.IsReqCount, {mFilesChanged, mTotalChanges}, fileWarnings_,
              hits_ ? &*hits_ : nullptr);
    // Still there: no events have been let through since Step found the window.
    frmProcessingDocuments& window = *frmProcessingDocuments::Loaded();
    window.SetChangesMade(ProcessingText(ChangesMadeKey(project.IsReqCount), mTotalChanges));
    if (!project.IsProcessCancel && mFilesProcessed != mTotalFiles)
        return;
    const bool isSearch = mRunIndex == StartCommand::Searching;
    window.SetDocChanged(
        ProcessingText(isSearch ? u"lblDocChanged.caption2" : u"lblDocChanged.caption1", mFilesChanged, mTotalFiles));
    window.IsComplited = true;
    window.FillProgress();
    window.SetOKCaption(ProcessingText(u"cmdOK.OKcaption"));
}

String RunWatch::ChangesMadeKey(bool isReqCount) const
{
    if (mRunIndex == StartCommand::Replacing)
        return u"lblChangesMade.Caption";
    return isReqCount ? u"lblChangesMade.Caption1" : u"lblChangesMade.Caption4";
}

void RunWatch::Cancelled(const Project& project)
{
    isCancelled_ = true;
    auto* const window = frmProcessingDocuments::Loaded();
    if (window == nullptr)
        return;
    if (project.IsProcessCancel) {
        window->FillProgress();
        window->StopProgressAt(mFilesDone);
        window->IsComplited = true;
    }
    window->SetOKCaption(ProcessingText(u"cmdOK.OKcaption"));
}

}  // namespace tessarine
