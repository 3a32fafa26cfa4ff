#include <QAction>
#include <QClipboard>
#include <QGuiApplication>

#include "app/GlobalState.h"
#include "i18n/QtText.h"
#include "log/ErrorLog.h"
#include "log/Treatments.h"
#include "platform/FolderOf.h"
#include "platform/Hourglass.h"
#include "platform/Messages.h"
#include "ui/run/FileMenu.h"
#include "ui/run/frmProcessingDocuments.h"
#include "ui/run/ResultTree.h"

namespace tessarine
{

void frmProcessingDocuments::BuildFileMenu()
{
    using Form = frmProcessingDocuments;
    fileMenu_ = new FileMenu(this);
    for (ResultTree* tree : Trees()) {
        fileMenu_->AddTo(*tree);
        connect(tree, &ResultTree::MenuAboutToShow, this, &Form::ShowFileMenu);
    }
    const auto click = [this](QAction* item, void (Form::*handler)()) {
        connect(item, &QAction::triggered, this, handler);
    };
    click(fileMenu_->mnuOpenFile, &Form::mnuOpenFile_Click);
    click(fileMenu_->mnuOpenFolder, &Form::mnuOpenFolder_Click);
    click(fileMenu_->mnuCopyPath, &Form::mnuCopyPath_Click);
    click(fileMenu_->mnuRestoreFile, &Form::mnuRestoreFile_Click);
    click(fileMenu_->mnuRemoveBackup, &Form::mnuRemoveBackup_Click);
    click(fileMenu_->mnuRestoreAll, &Form::mnuRestoreAll_Click);
    click(fileMenu_->mnuRemoveAllBackups, &Form::mnuRemoveAllBackups_Click);
}

/// A run may be making the very backup that is asked for.
void frmProcessingDocuments::ShowFileMenu()
{
    const String path = CurrentFile();
    fileMenu_->Put({.file = !path.empty(),
                    .backup = !IsRunGoing && backups_.Has(path),
                    .anyBackup = !IsRunGoing && !backups_.IsEmpty()});
}

String frmProcessingDocuments::CurrentFile() const
{
    const ResultTree* const tree = TreeInFront();
    const auto node = tree != nullptr ? tree->CurrentPlace() : std::nullopt;
    return node ? tree->Nodes().FileText(node->file) : String();
}

void frmProcessingDocuments::mnuOpenFile_Click()
{
    LogAndReturn({u"mnuOpenFile_Click", place}, [this] {
        if (const String path = CurrentFile(); !path.empty())
            Open(path);
    });
}

void frmProcessingDocuments::mnuOpenFolder_Click()
{
    LogAndReturn({u"mnuOpenFolder_Click", place}, [this] {
        if (const String path = CurrentFile(); !path.empty())
            Open(String(FolderOf(StringView(path))));
    });
}

void frmProcessingDocuments::mnuCopyPath_Click()
{
    LogAndReturn({u"mnuCopyPath_Click", place}, [this] {
        if (const String path = CurrentFile(); !path.empty())
            QGuiApplication::clipboard()->setText(ToQt(path));
    });
}

void frmProcessingDocuments::mnuRestoreFile_Click()
{
    LogAndReturn({u"mnuRestoreFile_Click", place}, [this] { TreatBackups(BackupTreatment::Restore, {CurrentFile()}); });
}

void frmProcessingDocuments::mnuRemoveBackup_Click()
{
    LogAndReturn({u"mnuRemoveBackup_Click", place}, [this] { TreatBackups(BackupTreatment::Remove, {CurrentFile()}); });
}

void frmProcessingDocuments::mnuRestoreAll_Click()
{
    LogAndReturn({u"mnuRestoreAll_Click", place}, [this] { TreatBackups(BackupTreatment::Restore, backups_.Files()); });
}

void frmProcessingDocuments::mnuRemoveAllBackups_Click()
{
    LogAndReturn({u"mnuRemoveAllBackups_Click", place},
                 [this] { TreatBackups(BackupTreatment::Remove, backups_.Files()); });
}

void frmProcessingDocuments::TreatBackups(BackupTreatment treatment, std::vector<String> paths)
{
    std::erase_if(paths, [this](const String& path) { return !backups_.Has(path); });
    if (paths.empty() || IsRunGoing)
        return;

    const bool restores = treatment == BackupTreatment::Restore;
    const QString question =
        paths.size() == 1
            ? texts_.Filled(restores ? u"Backups.AskRestore" : u"Backups.AskRemove", {.s = ToQt(paths.front())})
            : texts_.Filled(restores ? u"Backups.AskRestoreAll" : u"Backups.AskRemoveAll",
                            {.d = static_cast<std::int64_t>(paths.size())});
    if (ShowMessage(FromQt(question), MessageIcon::Question, MessageButtons::YesNo) != MessageAnswer::Yes)
        return;

    std::vector<String> failures;
    {
        const Hourglass hourglass;
        const bool takesReadOnly = NotNull(NotNull(CurrentProject)->options)->ProcessReadonlyFiles;
        for (const String& path : paths) {
            const auto failure = FailureOf([&] {
                if (restores)
                    backups_.Restore(path, takesReadOnly);
                else
                    backups_.Remove(path);
            });
            if (!failure)
                continue;
            WriteErrorLog(path + u": " + failure->Reason());
            failures.push_back(failure->Reason());
        }
    }
    QString told = texts_.Filled(restores ? u"Backups.Restored" : u"Backups.Removed",
                                 {.d = static_cast<std::int64_t>(paths.size() - failures.size())});
    if (failures.size() == 1)
        told += QStringLiteral("\n\n") + ToQt(failures.front());
    else if (!failures.empty())
        told += QStringLiteral("\n\n") +
                texts_.Filled(u"Backups.Failed", {.d = static_cast<std::int64_t>(failures.size())});
    ShowMessage(FromQt(told), failures.empty() ? MessageIcon::Information : MessageIcon::Exclamation);
}

}  // namespace tessarine
