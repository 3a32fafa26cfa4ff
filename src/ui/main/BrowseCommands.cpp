#include <QComboBox>

#include "app/LanguageText.h"
#include "files/Files.h"
#include "i18n/QtText.h"
#include "log/Treatments.h"
#include "platform/Messages.h"
#include "run/JobInputs.h"
#include "shell/BrowseFolder.h"
#include "shell/OpenDoc.h"
#include "ui/main/EntryBox.h"
#include "ui/main/frmMain.h"

namespace tessarine
{

namespace
{

/// One of the two choices of a file that goes into a text box.
struct Choice {
    String filter;
    String title;
    StringView extensions;
    String wrongType;  // message
    MessageIcon icon;
};

/// Every failure from the dialog on is passed over.
void Choose(CommonDialog& common, const Choice& choice, QLineEdit& target)
{
    // One dialog serves all commands and still holds what was chosen last.
    common.Filter = choice.filter;
    common.FileName.clear();
    common.DialogTitle = choice.title;
    if (Skip([&] { common.ShowOpen(); }) == CancelSelected)
        return;
    if (!HasExtension(common.FileName, choice.extensions))
        ShowMessage(choice.wrongType, choice.icon);
    else if (!FileExists(common.FileName))
        ShowMessage(GlobalMsg(u"1008"), choice.icon);
    else
        target.setText(ToQt(common.FileName));
}

}  // namespace

void frmMain::cmdBrowse1_Click()
{
    LogAndReturn({u"cmdBrowse1_Click", place}, [this] {
        Choose(common,
               {u"Tab File|*.Tab|CSV Files|*.csv|Excel Files|*.xls", GetLngString(u"frmMain", u"106"),
                PairListExtensions, GlobalMsg(u"1039"), MessageIcon::None},
               *txtLoadsearch);
    });
}

void frmMain::cmdBrowse2_Click()
{
    LogAndReturn({u"cmdBrowse2_Click", place}, [this] {
        String folder = FromQt(txtStartFolder->text());
        if (BrowseFolder(this, folder, u"Please select a folder:", false, true))
            txtStartFolder->setText(ToQt(folder));
    });
}

void frmMain::cmdBrowse3_Click()
{
    LogAndReturn({u"cmdBrowse3_Click", place}, [this] {
        Choose(common,
               {u"Text File|*.txt", GetLngString(u"frmMain", u"111"), FileListExtensions, GlobalMsg(u"1037"),
                MessageIcon::Exclamation},
               *txtGetFileName);
    });
}

void frmMain::OpenTextOf(const QLineEdit& box)
{
    LogAndReturn({FromQt(box.objectName() + "_DblClick"), place}, [&] {
        String ErrorText;
        OpenDoc(FromQt(box.text()), ErrorText);
    });
}

}  // namespace tessarine
