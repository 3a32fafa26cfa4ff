#include <QRadioButton>

#include "app/GlobalState.h"
#include "app/LanguageText.h"
#include "files/Files.h"
#include "i18n/QtText.h"
#include "log/Treatments.h"
#include "platform/Hourglass.h"
#include "platform/Messages.h"
#include "ui/main/frmMain.h"
#include "ui/main/ItemsGrid.h"

namespace tessarine
{

namespace
{

const String listFilter = u"CSV Files|*.csv|TAB Files|*.Tab|Excel File|*.xls";

bool MayOverwrite(const String& path)
{
    const QString question = ToQt(GlobalMsg(u"1053")).replace(QStringLiteral("%s"), ToQt(path));
    return ShowMessage(FromQt(question), MessageIcon::None, MessageButtons::YesNo) == MessageAnswer::Yes;
}

}  // namespace

void frmMain::mnuImportList_Click()
{
    LogAndReturn({u"mnuImportList_Click", place}, [this] {
        common.Filter = listFilter;
        common.FileName.clear();
        common.DialogTitle = GetLngString(u"frmMain", u"107");
        if (Skip([this] { common.ShowOpen(); }) == CancelSelected)
            return;
        ImportFrom(common.FileName);
    });
}

bool frmMain::ImportFrom(const String& path)
{
    const Hourglass hourglass;
    const auto list = std::make_shared<FindAndReplaceItems>();
    const bool isAccepted = list->ImportList(path);
    NoteImport(*list, path, isAccepted);
    if (!isAccepted) {
        ShowMessage(GlobalMsg(u"1056"), MessageIcon::Exclamation);
        return false;
    }
    AsOneStep({}, [&] { CurrentProject->FindAndReplaceList = list; });
    wasImportedUnused_ = optLoad[0]->isChecked();
    LoadGrid(*list);
    if (grdItems->Rows() >= 2)
        FillItemOnForm(*NotNull(list->Item(grdItems->Row())));
    EnableDisableControl();
    // Intended: an import does not mark the job, because the list can be had from its file again.
    return true;
}

void frmMain::mnuExportList_Click()
{
    LogAndReturn({u"mnuExportList_Click", place}, [this] {
        common.Filter = listFilter;
        common.DialogTitle = GetLngString(u"frmMain", u"107");
        if (Skip([this] { common.ShowSave(); }) == CancelSelected)
            return;
        const Hourglass hourglass;
        if (FileExists(common.FileName) && !MayOverwrite(common.FileName))
            return;
        FindAndReplaceItems& list = *NotNull(NotNull(CurrentProject)->FindAndReplaceList);
        list.ExportsList(common.FileName);
        NoteExport(list, common.FileName);
    });
}

}  // namespace tessarine
