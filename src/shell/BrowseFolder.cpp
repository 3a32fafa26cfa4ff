#include "shell/BrowseFolder.h"

#include <utility>

#include "log/Treatments.h"
#include "platform/PathSeparator.h"
#include "shell/FolderDialog.h"

namespace tessarine
{

namespace
{

FolderDialogPort folderDialog;

}  // namespace

bool BrowseFolder(QWidget* Owner, String& Folder, const String& Title, bool IncludeFiles, bool NewStyle)
{
    return LogAndReturn({u"BrowseFolder", u"Module modShell"}, [&] {
        String chosen = folderDialog ? folderDialog(Owner, Folder, Title, IncludeFiles)
                                     : ShowFolderDialog(Owner, Folder, Title, IncludeFiles, NewStyle);
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
