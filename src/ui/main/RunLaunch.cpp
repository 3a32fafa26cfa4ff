#include <functional>
#include <utility>

#include <QRadioButton>
#include <QTabWidget>

#include "app/GlobalState.h"
#include "i18n/QtText.h"
#include "log/Treatments.h"
#include "model/FindAndReplaceItems.h"
#include "platform/CheckedInteger.h"
#include "platform/Messages.h"
#include "ui/main/EntryBox.h"
#include "ui/main/frmMain.h"
#include "ui/main/ItemsGrid.h"
#include "ui/main/MainTab.h"
#include "ui/main/RunQuestion.h"
#include "ui/main/StartCommand.h"
#include "ui/run/frmProcessingDocuments.h"

namespace tessarine
{

namespace
{

/// Watches one run from its beginning to its end, however it ends, and calls `afterEnd` then.
class WatchedRun
{
public:
    WatchedRun(RunWatch& watch, const Project& project, std::function<void()> afterEnd)
        : watch_(watch), project_(project), afterEnd_(std::move(afterEnd))
    {
        watch_.Begin();
    }
    ~WatchedRun()
    {
        watch_.End(project_, hasReturned);
        Skip(afterEnd_);
    }
    WatchedRun(const WatchedRun&) = delete;
    WatchedRun& operator=(const WatchedRun&) = delete;

    bool hasReturned = false;

private:
    RunWatch& watch_;
    const Project& project_;
    const std::function<void()> afterEnd_;
};

/// That there is nothing to do, and why where a person would not find out: the lines of a list look right in an editor.
String TextWithoutFiles(const Project& project)
{
    const String text = GlobalMsg(u"1052");
    return project.HiddenByLineFeeds == 0 ? text : text + u"\n\n" + GlobalMsg(u"List.LineFeeds");
}

}  // namespace

void frmMain::cmdStartReplacing_Click(std::int16_t Index)
{
    LogAndReturn({u"cmdStartReplacing_Click", place}, [&] {
        if (runWatch_.IsRunGoing())
            return;  // a second launch would give the run in progress other files
        IsSearchRun = Index == StartCommand::Searching;
        FillProjectObject();
        if (!Validation())
            return;
        const std::int32_t totalFiles = NotNull(CurrentProject)->GetFileToProcessFileCount();
        if (const std::size_t unread = CurrentProject->UnreadFolders.size(); unread > 0)
            ShowMessage(GlobalMsg(u"1058", Checked<std::int32_t>(static_cast<std::int64_t>(unread))),
                        MessageIcon::Exclamation);
        NoteFileSet();
        if (totalFiles == 0) {
            ShowMessage(TextWithoutFiles(*CurrentProject), MessageIcon::Exclamation);
            SSTab1->setCurrentIndex(MainTab::Files);
            return;
        }
        const Message question = QuestionBeforeRun(*CurrentProject, Index == StartCommand::Replacing, totalFiles);
        // A run that failed may leave its cancel set, which would end this one at the first file.
        CurrentProject->IsProcessCancel = false;
        if (ShowMessage(question) != MessageAnswer::Yes)
            return;
        UnloadPowerPoint();
        runWatch_.Prepare(*this, *mProject, Index, totalFiles);
        if (const auto list = ListOfRun())
            Run(Index, *list);
    });
}

void frmMain::UnloadPowerPoint()
{
    CurrentProject->UnloadPowerPoint();
}

std::optional<std::shared_ptr<FindAndReplaceItems>> frmMain::ListOfRun()
{
    if (!optLoad[0]->isChecked()) {
        if (grdItems->Rows() > 1)
            return nullptr;
        ShowMessage(GlobalMsg(u"1055"), MessageIcon::Exclamation);
        return std::nullopt;
    }
    // The validation has read the file already, and dropped the list: the user may have changed the file meanwhile.
    auto list = std::make_shared<FindAndReplaceItems>();
    const String path = FromQt(txtLoadsearch->text());
    const bool isRead = list->ImportList(path);
    NoteImport(*list, path, isRead);
    if (isRead && list->Count() > 0)
        return list;
    ShowMessage(GlobalMsg(isRead ? u"1055" : u"1003"), MessageIcon::Exclamation);
    return std::nullopt;
}

void frmMain::Run(std::int16_t Index, const std::shared_ptr<FindAndReplaceItems>& list)
{
    {
        WatchedRun run(runWatch_, *mProject, [this] {
            // Closed during the run: the program was kept going for its sake and may end now.
            if (isClosed_)
                Unloaded.Raise();
        });
        if (Index == StartCommand::Replacing) {
            CurrentProject->Replacement(list, nullptr);
            run.hasReturned = NotNull(CurrentProject->options)->IsFindOnly;  // stays off after a failure
        } else {
            CurrentProject->Search(list, nullptr);
            run.hasReturned = true;
        }
    }
    if (auto* const window = frmProcessingDocuments::Loaded())
        window->tmrelapsedSecsX->PutEnabled(false);
}

}  // namespace tessarine
