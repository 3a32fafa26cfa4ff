#include "app/GlobalState.h"
#include "app/LanguageText.h"
#include "files/Files.h"
#include "log/Treatments.h"
#include "platform/Messages.h"
#include "shell/RecentFiles.h"
#include "ui/main/frmMain.h"
#include "ui/main/ItemsGrid.h"

// The commands that show a dialog pass over every failure from the dialog on: a step that fails is left out, and the
// next one runs.

namespace tessarine
{

namespace
{

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
        OpenProject(common.FileName);
    });
}

void frmMain::OpenProject(const String& path)
{
    std::int32_t error = 0;
    if (!NotNull(CurrentProject)->LoadProject(path, error)) {
        TellLoadError(error);
        if (error == 0)  // no message has told
            NoteLoad(path, false);
        return;
    }
    // Intended: unsaved changes are lost without a question. Only closing the window, and a project that is dropped on
    // it, ask about them, as users know.
    LoadProjectOnForm();
    recentFiles_->SaveMRUFileList(path);
    PutProjectFile(path);
    PutIsModifed(false);
    NoteLoad(path, true);
}

void frmMain::menuSave_Click()
{
    LogAndReturn({u"menuSave_Click", place}, [this] {
        FillProjectObject();
        String saved;
        if (projectFile_.empty()) {
            common.Filter = projectFilter;
            common.DialogTitle = GetLngString(u"frmMain", u"110");
            if (Skip([this] { common.ShowSave(); }) != 0) {
                // The project has the form's values already, and no file has them yet.
                PutIsModifed(true);
                return;
            }
            if (!Trim(common.FileName).empty()) {
                CurrentProject->SaveAsProject(common.FileName, true);
                recentFiles_->SaveMRUFileList(common.FileName);
                PutProjectFile(common.FileName);
                saved = common.FileName;
            }
        } else {
            // A copy, because the call may write the final name into it.
            saved = projectFile_;
            CurrentProject->SaveAsProject(saved, true);
        }
        PutIsModifed(false);
        if (!saved.empty())
            NoteSave(saved);
    });
}

void frmMain::menuSaveAs_Click()
{
    // Intended: the form is not taken over first. The file gets the job as it was last saved or run, so that a copy of
    // that can be made while the form is being changed.
    LogAndReturn({u"menuSaveAs_Click", place}, [this] {
        common.Filter = projectFilter;
        common.DialogTitle = GetLngString(u"frmMain", u"110");
        if (Skip([this] { common.ShowSave(); }) == CancelSelected || Trim(common.FileName).empty())
            return;
        CurrentProject->SaveAsProject(common.FileName, true);
        PutProjectFile(common.FileName);
        PutIsModifed(false);
        recentFiles_->SaveMRUFileList(common.FileName);
        NoteSave(common.FileName);
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
        // Intended: no message stops the user at a file that fails to load; the strip of notices tells of it, and the
        // form shows what has come of it. The mark that filling the form leaves stays, so that closing asks before the
        // job is lost.
        std::int32_t error = 0;
        const bool isLoaded = CurrentProject->LoadProject(projectFile_, error);
        recentFiles_->SaveMRUFileList(path);
        LoadProjectOnForm();
        NoteLoad(path, isLoaded);
    });
}

void frmMain::mnuExit_Click()
{
    LogAndReturn({u"mnuExit_Click", place}, [this] { close(); });
}

}  // namespace tessarine
