#include <utility>

#include "platform/CheckedInteger.h"
#include "platform/Treatments.h"
#include "ui/main/frmMain.h"
#include "ui/main/ProcessingText.h"
#include "ui/run/frmIntervention.h"
#include "ui/run/frmProcessingDocuments.h"
#include "ui/run/ResultReport.h"

// What the main window does with the events of a run: it brings the processing window up to date, if the user has not
// closed it meanwhile.

namespace tessarine
{

namespace
{

constexpr StringView place = u"Form frmMain";

}  // namespace

void frmMain::mProject_BeforFileProcess(const String& vFilepath)
{
    LogAndReturn({u"mProject_BeforFileProcess", place}, [&] {
        mFilesProcessed = CheckedSum(mFilesProcessed, 1);
        currentFile_ = vFilepath;
        passedOver_.reset();
        if (auto* const window = frmProcessingDocuments::Loaded())
            window->SetDocChanged(ProcessingText(u"lblDocChanged.caption", mFilesProcessed, mTotalFiles, vFilepath));
    });
}

void frmMain::mProject_AfterFileProcess(const std::shared_ptr<CounterStatuses>& vStatus)
{
    // The trees show a failure by its file's own result.
    if (results_.Take(vStatus) && !currentFile_.empty())
        passedOver_.reset();
    TellOfHiddenFailure();
    ResultTree* tree = nullptr;
    const bool hasResult = LogAndReturn({u"mProject_AfterFileProcess", place}, [&] {
        auto* const window = frmProcessingDocuments::Loaded();
        if (window == nullptr)
            return false;
        window->AddProgressStep();
        tree = window->TreeOf(vStatus);
        return true;
    });
    if (!hasResult)
        return;

    // From here on failures travel to the run.
    AddResult(tree, *vStatus, mProject->IsReqCount, {mFilesChanged, mTotalChanges});
    frmProcessingDocuments& window = *frmProcessingDocuments::Loaded();
    window.SetChangesMade(ProcessingText(ChangesMadeKey(), mTotalChanges));
    if (!mProject->IsProcessCancel && mFilesProcessed != mTotalFiles)
        return;
    window.SetDocChanged(ProcessingText(mRunIndex == searching ? u"lblDocChanged.caption2" : u"lblDocChanged.caption1",
                                        mFilesChanged, mTotalFiles));
    window.IsComplited = true;
    window.FillProgress();
    window.SetOKCaption(ProcessingText(u"cmdOK.OKcaption"));
}

String frmMain::ChangesMadeKey() const
{
    if (mRunIndex == replacing)
        return u"lblChangesMade.Caption";
    return mProject->IsReqCount ? u"lblChangesMade.Caption1" : u"lblChangesMade.Caption4";
}

/// A failure that no tree shows: the run reports nothing for such a file, or the result of the file before, or leaves
/// at it. What failed before the first file kept all of them from being opened.
void frmMain::TellOfHiddenFailure()
{
    const auto failure = std::exchange(passedOver_, {});
    auto* const window = frmProcessingDocuments::Loaded();
    if (!failure || window == nullptr)
        return;
    if (!currentFile_.empty())
        window->FileNotOpened(currentFile_, *failure);
    else
        for (const String& path : mProject->FilesToProcess)
            window->FileNotOpened(path, *failure);
}

void frmMain::mProject_ManualInterventionRequired()
{
    LogAndReturn({u"mProject_ManualInterventionRequired", place}, [this] { frmIntervention(this).exec(); });
}

void frmMain::mProject_ProcessCancel()
{
    LogAndReturn({u"mProject_ProcessCancel", place}, [this] {
        auto* const window = frmProcessingDocuments::Loaded();
        if (window == nullptr)
            return;
        if (mProject->IsProcessCancel) {
            window->FillProgress();
            window->IsComplited = true;
        }
        window->SetOKCaption(ProcessingText(u"cmdOK.OKcaption"));
    });
}

/// Receives the events of the project, as long as this window is there.
void frmMain::ReceiveEvents()
{
    const QPointer<frmMain> self(this);
    mProject->BeforFileProcess += [self](const String& vFilepath) {
        if (self)
            self->mProject_BeforFileProcess(vFilepath);
    };
    mProject->AfterFileProcess += [self](const std::shared_ptr<CounterStatuses>& vStatus) {
        if (self)
            self->mProject_AfterFileProcess(vStatus);
    };
    mProject->ManualInterventionRequired += [self] {
        if (self)
            self->mProject_ManualInterventionRequired();
    };
    mProject->ProcessCancel += [self] {
        if (self)
            self->mProject_ProcessCancel();
    };
    mProject->FailurePassedOver = [self](const String&, const Failure& failure) {
        if (self)
            self->passedOver_ = failure;
    };
}

}  // namespace tessarine
