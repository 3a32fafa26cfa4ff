#include <utility>

#include "files/Files.h"
#include "log/ErrorLog.h"
#include "log/Treatments.h"
#include "model/LogPlaces.h"
#include "model/Project.h"
#include "platform/Messages.h"
#include "run/FileWalk.h"
#include "run/JobInputs.h"

namespace tessarine
{

std::int32_t Project::GetFileToProcessFileCount()
{
    return LogAndReturn({u"GetFileToProcessFileCount", ProjectPlace}, [&] {
        FilesToProcess.clear();
        tidiedFolders_.clear();
        UnreadFolders.clear();
        UnreadList.reset();
        HiddenByLineFeeds = 0;
        // Emptied before anything can fail, so that a missing folder does not leave the files of the count before.
        const ProjectOptions& jobOptions = *NotNull(options);
        AllowedExtensionPatterns = PatternsIn(jobOptions.ComaSepAllowedExtensions);

        // A missing folder answers -1 and leaves the message to the caller. A missing list is told here and counts as
        // no files.
        if (!jobOptions.TakesListedFiles()) {
            if (!FolderExists(jobOptions.FileToProcessFolderPath))
                return std::int32_t{-1};
            ScanFolder();
        } else if (!FileExists(jobOptions.FileToProcessFilepath)) {
            ShowMessage(u"File is not Available.", MessageIcon::Exclamation);
        } else {
            RetriveFile();
        }
        return Checked<std::int32_t>(static_cast<std::int64_t>(FilesToProcess.size()));
    });
}

void Project::ScanFolder()
{
    UnreadFolders.clear();
    LinkedFoldersLeftOut = 0;
    FileWalk walk(AllowedExtensionPatterns);
    walk.TakesSubfolders = NotNull(options)->Include_Subfolders;
    walk.FollowsLinkedFolders = FollowsLinkedFolders;
    TakeFilesOf(walk);
    walk.RetriveFolder(FullPathOf(NotNull(options)->FileToProcessFolderPath));
    LinkedFoldersLeftOut = walk.LinkedFoldersLeftOut;
}

void Project::RetriveFile()
{
    FileWalk walk(AllowedExtensionPatterns);
    TakeFilesOf(walk);
    walk.RetriveFile(NotNull(options)->FileToProcessFilepath);
    HiddenByLineFeeds = walk.HiddenByLineFeeds;
}

void Project::TakeFilesOf(FileWalk& walk)
{
    walk.Found = [this](String path) { FilesToProcess.push_back(std::move(path)); };
    walk.PassedOver = [this](StringView procedure, const String& path, const Failure& failure) {
        if (procedure == u"RetriveFolder") {
            UnreadFolders.push_back({path, failure.Reason()});
            LogFailure({procedure, ProjectPlace}, failure);
            return;
        }
        if (procedure == u"RetriveFile")
            UnreadList = failure;
        const LoggedFile logged(path);
        LogFailure({procedure, ProjectPlace}, failure);
    };
}

}  // namespace tessarine
