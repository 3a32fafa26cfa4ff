#include "app/GlobalState.h"
#include "app/LanguageText.h"
#include "platform/Files.h"
#include "platform/Messages.h"
#include "platform/Treatments.h"
#include "shell/RecentFiles.h"
#include "ui/main/frmMain.h"
#include "ui/main/ItemsGrid.h"

// The commands that show a dialog pass over every failure from the dialog on: a step that fails is left out, and the
// next one runs.

namespace tessarine
{

namespace
{

constexpr StringView place = u"Form frmMain";
const String projectFilter = u"Tessarine [*.tsq]";

/// Why a project file was not loaded; nothing is said of a failure without a code.
void TellLoadError(std::int32_t code)
{
    switch (code) {
        case 1:
            ShowMessage(u"File not present.", MessageIcon::Exclamation);
            break;
        case 2:
            ShowMessage(u"Invalid Project File.", MessageIcon::Exclamation);
            break;
        case 3:
            ShowMessage(u"Unable to load project.", MessageIcon::Exclamation);
            break;
        default:
            break;
    }
}

}  // namespace

void frmMain::mnuOpen_Click()
{
    LogAndReturn({u"mnuOpen_Click", place}, [this] {
        common.FileName.clear();
        common.DefaultExt = u"tsq";
        common.Flags = FileDialogFlag::FileMustExist;
        common.Filter = projectFilter;
        common.DialogTitle = GetLngString(u"frmMain", u"109");
        if (Skip([this] { common.ShowOpen(); }) != 0)
            return;
        if ((common.Flags & FileDialogFlag::ExtensionDiffers) != 0) {
            ShowMessage(u"Invalid Tessarine Project File.", MessageIcon::Exclamation);
            return;
        }
        std::int32_t error = 0;
        if (!NotNull(CurrentProject)->LoadProject(common.FileName, error)) {
            TellLoadError(error);
            return;
        }
        // Unsaved changes are not asked about; they are lost. This is intended.
        LoadProjectOnForm();
        recentFiles_->SaveMRUFileList(common.FileName);
        PutProjectFile(common.FileName);
        PutIsModifed(false);
    });
}

void frmMain::menuSave_Click()
{
    LogAndReturn({u"menuSave_Click", place}, [this] {
        FillProjectObject();
        if (projectFile_.empty()) {
            common.Filter = projectFilter;
            common.DialogTitle = GetLngString(u"frmMain", u"110");
            if (Skip([this] { common.ShowSave(); }) != 0) {
                PutIsModifed(true);
                return;
            }
            if (!Trim(common.FileName).empty()) {
                CurrentProject->SaveAsProject(common.FileName, true);
                recentFiles_->SaveMRUFileList(common.FileName);
                PutProjectFile(common.FileName);
            }
        } else {
            String path = projectFile_;
            CurrentProject->SaveAsProject(path, true);
        }
        PutIsModifed(false);
    });
}

void frmMain::menuSaveAs_Click()
{
    // The form is not taken over first: what stands in the project goes to the file. This is intended.
    LogAndReturn({u"menuSaveAs_Click", place}, [this] {
        common.Filter = projectFilter;
        common.DialogTitle = GetLngString(u"frmMain", u"110");
        if (Skip([this] { common.ShowSave(); }) == CancelSelected || Trim(common.FileName).empty())
            return;
        CurrentProject->SaveAsProject(common.FileName, true);
        PutProjectFile(common.FileName);
        PutIsModifed(false);
        recentFiles_->SaveMRUFileList(common.FileName);
    });
}

void frmMain::mnuDefRF_Click(std::int32_t Index)
{
    LogAndReturn({u"mnuDefRF_Click", place}, [&] {
        grdItems->EndEdit();  // a menu does not take the focus
        const String path = recentFiles_->Tag(Index);
        if (path.empty())
            return;
        if (!FileExists(path)) {
            ShowMessage(GlobalMsg(u"1054"), MessageIcon::None);
            return;
        }
        PutProjectFile(path);
        if (!FileExists(projectFile_))
            return;
        // The outcome is not looked at, and the mark that filling the form leaves stays. Both are intended.
        std::int32_t error = 0;
        CurrentProject->LoadProject(projectFile_, error);
        recentFiles_->SaveMRUFileList(path);
        LoadProjectOnForm();
    });
}

void frmMain::mnuExit_Click()
{
    LogAndReturn({u"mnuExit_Click", place}, [this] { close(); });
}

}  // namespace tessarine
