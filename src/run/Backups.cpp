#include <unordered_set>

#include "files/Files.h"
#include "log/Treatments.h"
#include "model/LogPlaces.h"
#include "model/Project.h"
#include "run/BackupPaths.h"
#include "run/RestoreFile.h"

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
        std::unordered_set<String> restored;
        for (const String& path : FilesToProcess)
            // Once: the mode that a file gets back may be read-only, which would refuse it the second time.
            if (const String backup = BackupPathOf(path); FileExists(backup) && restored.insert(path).second)
                RestoreFile(backup, path, NotNull(options)->ProcessReadonlyFiles);
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
