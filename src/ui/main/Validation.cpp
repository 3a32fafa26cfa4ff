#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>

#include "i18n/QtText.h"
#include "log/Treatments.h"
#include "model/FindAndReplaceItems.h"
#include "platform/Messages.h"
#include "run/JobInputs.h"
#include "ui/main/EntryBox.h"
#include "ui/main/frmMain.h"
#include "ui/main/ItemsGrid.h"
#include "ui/main/MainTab.h"

namespace tessarine
{

namespace
{

void Complain(const String& key)
{
    ShowMessage(GlobalMsg(key), MessageIcon::Exclamation);
}

void MoveTo(QTabWidget& tabs, int tab, QWidget& control)
{
    tabs.setCurrentIndex(tab);
    control.setFocus();
}

}  // namespace

bool frmMain::Validation()
{
    return LogAndReturn({u"Validation", place}, [this] { return ValidateList() && ValidateFiles(); });
}

/// The list of pairs: the file that holds it, which is read here once and dropped, or the grid.
bool frmMain::ValidateList()
{
    if (!optLoad[0]->isChecked()) {
        if (grdItems->Rows() > 1)
            return true;
        Complain(u"1055");
        MoveTo(*SSTab1, MainTab::Replacement, *cmdAdd);
        return false;
    }

    const String path = FromQt(txtLoadsearch->text());
    String complaint;
    switch (ValidateFile(path, PairListExtensions)) {
        case InputTest::Empty:
            complaint = u"1043";
            break;
        case InputTest::FileNotFound:
            complaint = u"1044";
            break;
        case InputTest::OtherExtension:
            complaint = u"1045";
            break;
        default: {
            FindAndReplaceItems list;
            const bool isAccepted = list.ImportList(path);
            NoteImport(list, path, isAccepted);
            if (!isAccepted)
                complaint = u"1056";
            else if (list.Count() == 0)
                complaint = u"1055";
        }
    }
    if (complaint.empty())
        return true;
    Complain(complaint);
    MoveTo(*SSTab1, MainTab::Replacement, *cmdBrowse1);
    return false;
}

/// The folder, or the file that lists files. Intended: at a folder that is missing and a list of another type the user
/// stays on the tab where he is. There the path is given and only wrong, and the message says so.
bool frmMain::ValidateFiles()
{
    const bool isFolder = optFileProcess[0]->isChecked();
    QPushButton& browse = isFolder ? *cmdBrowse2 : *cmdBrowse3;
    const std::int32_t code = isFolder ? ValidateFolder(FromQt(txtStartFolder->text()))
                                       : ValidateFile(FromQt(txtGetFileName->text()), FileListExtensions);
    switch (code) {
        case InputTest::Empty:
            Complain(isFolder ? u"1046" : u"1049");
            MoveTo(*SSTab1, MainTab::Files, browse);
            return false;
        case InputTest::FolderNotFound:
            Complain(u"1047");
            return false;
        case InputTest::FileNotFound:
            Complain(u"1050");
            MoveTo(*SSTab1, MainTab::Files, browse);
            return false;
        case InputTest::OtherExtension:
            Complain(u"1051");
            return false;
        default:
            return true;
    }
}

}  // namespace tessarine
