#include "shell/BrowseFolder.h"

#include <utility>

#include <QFileDialog>

#include "i18n/QtText.h"
#include "log/Treatments.h"
#include "platform/PathSeparator.h"

namespace tessarine
{

namespace
{

FolderDialogPort folderDialog;

String ShowQtFolderDialog(QWidget* owner, const String& startFolder, const String& title, bool includeFiles)
{
    const QString folder = QFileDialog::getExistingDirectory(
        owner, ToQt(title), ToQt(startFolder), includeFiles ? QFileDialog::Options() : QFileDialog::ShowDirsOnly);
    return FromQt(QDir::toNativeSeparators(folder));  // Qt separates with "/" on every system
}

}  // namespace

bool BrowseFolder(QWidget* Owner, String& Folder, const String& Title, bool IncludeFiles, bool /*NewStyle*/)
{
    return LogAndReturn({u"BrowseFolder", u"Module modShell"}, [&] {
        String chosen = (folderDialog ? folderDialog : ShowQtFolderDialog)(Owner, Folder, Title, IncludeFiles);
        if (chosen.empty())
            return false;
        // A root comes with its separator.
        if (!chosen.ends_with(PathSeparator))
            chosen += PathSeparator;
        Folder = std::move(chosen);
        return true;
    });
}

FolderDialogPort SetFolderDialog(FolderDialogPort port)
{
    return std::exchange(folderDialog, std::move(port));
}

}  // namespace tessarine
