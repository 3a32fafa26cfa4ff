#include <functional>
#include <utility>

#include <QRadioButton>
#include <QTabWidget>

#include "app/GlobalState.h"
#include "i18n/QtText.h"
#include "platform/Messages.h"
#include "platform/Treatments.h"
#include "shell/TaskbarProgress.h"
#include "ui/main/EntryBox.h"
#include "ui/main/frmMain.h"
#include "ui/main/ItemsGrid.h"
#include "ui/main/ProcessingText.h"
#include "ui/run/frmProcessingDocuments.h"

namespace tessarine
{

namespace
{

constexpr StringView place = u"Form frmMain";

/// While it lives, both windows and the taskbar know that a run is going. The processing window may be closed
/// meanwhile. `atEnd` is called however the run ends.
class RunGoing
{
public:
    RunGoing(bool& isGoing, std::function<void()> atEnd) : isGoing_(isGoing), atEnd_(std::move(atEnd))
    {
        Put(true);
        ShowTaskbarProgress(0);
    }
    ~RunGoing()
    {
        Put(false);
        HideTaskbarProgress();
        Skip(atEnd_);
    }
    RunGoing(const RunGoing&) = delete;
    RunGoing& operator=(const RunGoing&) = delete;

private:
    void Put(bool isGoing)
    {
        isGoing_ = isGoing;
        if (auto* const window = frmProcessingDocuments::Loaded())
            window->IsRunGoing = isGoing;
    }

    bool& isGoing_;
    const std::function<void()> atEnd_;
};

}  // namespace

void frmMain::cmdStartReplacing_Click(std::int16_t Index)
{
    LogAndReturn({u"cmdStartReplacing_Click", place}, [&] {
        if (isRunGoing_)
            return;  // a second launch would give the run in progress other files
        mRunIndex = Index;
        mTotalFiles = 0;
        IsSearchRun = Index == searching;
        FillProjectObject();
        if (!Validation())
            return;
        mTotalFiles = NotNull(CurrentProject)->GetFileToProcessFileCount();
        if (mTotalFiles == 0) {
            ShowMessage(GlobalMsg(u"1052"), MessageIcon::Exclamation);
            SSTab1->setCurrentIndex(1);
            return;
        }
        const Message question{GlobalMsg(u"1001"), MessageIcon::Exclamation, MessageButtons::YesNo, GlobalMsg(u"1002"),
                               true};
        CurrentProject->IsProcessCancel = false;
        if (ShowMessage(question) != MessageAnswer::Yes)
            return;
        UnloadPowerPoint();
        PrepareProcessingWindow();
        Run();
    });
}

void frmMain::UnloadPowerPoint()
{
    CurrentProject->UnloadPowerPoint();
}

void frmMain::PrepareProcessingWindow()
{
    mFilesProcessed = 0;
    mFilesChanged = 0;
    mTotalChanges = 0;
    currentFile_.clear();
    passedOver_.reset();
    results_ = {};
    frmProcessingDocuments& window = frmProcessingDocuments::Instance(this);
    window.setWindowTitle(ToQt(ProcessingText(u"frmProcessingDocuments.caption")));
    window.show();
    window.SetProgressRange(mTotalFiles);
    window.ShowProgressTab();
    window.IsComplited = false;
    window.ForgetFailures();
    const bool isCounted = NotNull(CurrentProject->options)->RequiredFindAndReplaceCount;
    window.SetChangesMade(ProcessingText(mRunIndex == replacing ? u"lblChangesMade.Caption3"
                                         : isCounted            ? u"lblChangesMade.Caption2"
                                                                : u"lblChangesMade.Caption5"));
    window.SetOKCaption(ProcessingText(u"cmdOK.CANCELcaption"));
    window.SetDocChanged(ProcessingText(u"lblDocChanged.caption", 0, mTotalFiles, String(u"0 Document Processed")));
}

/// Takes the list in force through the files. A list that has got lost since the validation ends it with the processing
/// window left as it is.
void frmMain::Run()
{
    std::shared_ptr<FindAndReplaceItems> list;  // null stands for the project's own
    if (optLoad[0]->isChecked()) {
        list = std::make_shared<FindAndReplaceItems>();
        if (!list->ImportList(FromQt(txtLoadsearch->text()))) {
            ShowMessage(GlobalMsg(u"1003"), MessageIcon::Exclamation);
            return;
        }
        if (list->Count() == 0) {
            ShowMessage(GlobalMsg(u"1055"), MessageIcon::Exclamation);
            return;
        }
    } else if (grdItems->Rows() <= 1) {
        ShowMessage(GlobalMsg(u"1055"), MessageIcon::Exclamation);
        return;
    }
    bool hasEnded = false;
    {
        const RunGoing going(isRunGoing_, [this, &hasEnded] {
            TellOfHiddenFailure();
            if (auto* const window = frmProcessingDocuments::Loaded(); !hasEnded && window && !window->IsComplited)
                window->TellRunFailed();
            if (isClosed_)
                Unloaded.Raise();
        });
        if (mRunIndex == replacing) {
            CurrentProject->Replacement(list, nullptr);
            hasEnded = NotNull(CurrentProject->options)->IsFindOnly;  // stays off after a failure
        } else {
            CurrentProject->Search(list, nullptr);
            hasEnded = true;
        }
    }
    if (auto* const window = frmProcessingDocuments::Loaded())
        window->tmrelapsedSecsX->PutEnabled(false);
}

}  // namespace tessarine
