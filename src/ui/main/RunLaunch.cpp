#include <QRadioButton>
#include <QTabWidget>

#include "app/GlobalState.h"
#include "i18n/QtText.h"
#include "platform/Messages.h"
#include "platform/Treatments.h"
#include "ui/main/EntryBox.h"
#include "ui/main/frmMain.h"
#include "ui/main/ItemsGrid.h"

namespace tessarine
{

namespace
{

constexpr StringView place = u"Form frmMain";
constexpr std::int16_t searching = 1;  // index of the start button

}  // namespace

void frmMain::cmdStartReplacing_Click(std::int16_t Index)
{
    LogAndReturn({u"cmdStartReplacing_Click", place}, [&] {
        mRunIndex = Index;
        mTotalFiles = 0;
        IsSearchRun = Index == searching;
        FillProjectObject();
        if (!Validation())
            return;
        mTotalFiles = Set(CurrentProject)->GetFileToProcessFileCount();
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
        CurrentProject->UnloadPowerPoint();
        Run();
    });
}

/// Takes the list in force through the files.
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
    if (mRunIndex == searching)
        CurrentProject->Search(list, nullptr);
    else
        CurrentProject->Replacement(list, nullptr);
}

}  // namespace tessarine
