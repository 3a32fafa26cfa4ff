#include "model/LogPlaces.h"
#include "model/Project.h"
#include "platform/Files.h"
#include "platform/Treatments.h"
#include "run/BackupPaths.h"

namespace tessarine
{

void Project::RemoveBackupFiles(const String&)
{
    LogAndReturn({u"RemoveBackupFiles", ProjectPlace}, [&] {
        FilesToProcess.clear();
        AddFilesOfSource();
        for (const String& path : FilesToProcess)
            if (const String backup = BackupPathOf(path); FileExists(backup))
                DeleteFile(backup);
    });
}

void Project::RestoreBackupFiles(const String&)
{
    LogAndReturn({u"RestoreBackupFiles", ProjectPlace}, [&] {
        // Intended: unlike RemoveBackupFiles this does not clear the list, so after a run a path stands in it twice.
        // Restoring it twice gives the same file, and FilesToProcess is what callers have always found afterwards.
        AddFilesOfSource();
        for (const String& path : FilesToProcess)
            if (const String backup = BackupPathOf(path); FileExists(backup))
                CopyFile(backup, path);
    });
}

void Project::AddFilesOfSource()
{
    if (NotNull(options)->TakesListedFiles())
        RetriveFile();
    else
        ScanFolder();
}

}  // namespace tessarine
