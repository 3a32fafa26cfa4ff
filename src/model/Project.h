#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <unordered_set>
#include <utility>
#include <vector>

#include "files/FileState.h"
#include "model/CustomProperties.h"
#include "model/Event.h"
#include "model/FindAndReplaceItems.h"
#include "model/OptionSetting.h"
#include "model/PowerPoint.h"
#include "model/ProjectFault.h"
#include "model/ProjectOptions.h"
#include "platform/Failure.h"

namespace tessarine
{

class CounterStatuses;
class FileWalk;
struct CopiedContent;
struct Hit;

/// See Project::Opened.
using CheckOpened = std::function<FileIdentity()>;

/// One job: the find/replace list, the options that hold for the whole run, a few named strings, and the operations
/// that run it. Made through std::make_shared, because a run points the items of a list handed to it at this project.
///
/// The operations of a run live in src/run: FileSet.cpp, RunLoop.cpp, Restart.cpp, Backups.cpp; those of its file in
/// ProjectFile.cpp beside this.
class Project : public std::enable_shared_from_this<Project>
{
public:
    /// `provider` is where a run gets its PowerPoint from; without one a run fails with CannotCreateObject.
    explicit Project(std::shared_ptr<powerpoint::Provider> provider = {});

    /// Where later runs get their PowerPoint from.
    void UseProvider(std::shared_ptr<powerpoint::Provider> provider) { provider_ = std::move(provider); }

    /// Stops a run before its next file. Cleared at the normal end of a run.
    bool IsProcessCancel = false;
    std::shared_ptr<CustomProperties> CustomProperies;        ///< Found by their positions, see JobProperties.h.
    std::shared_ptr<FindAndReplaceItems> FindAndReplaceList;  ///< The job's own pairs; a run may be handed others.
    std::shared_ptr<ProjectOptions> options;
    /// Carried by the project file only; items do not inherit from it.
    std::shared_ptr<OptionSetting> FindAndReplaceItemsOptionSetting;

    /// Copy of RequiredFindAndReplaceCount, taken when a run starts.
    bool IsReqCount = false;

    /// Takes options, list and project-level options of a project file (docs/formats/tsq.md), and true, in place of its
    /// own; the file's custom properties are appended to those that it has. The list file that they may name is not
    /// read.
    ///
    /// False otherwise: `vError` is 1 when the file is not there, 2 when its extension is not "tsq", and stays as it
    /// was for any other failure, which is logged. The project is unchanged then, except that custom properties before
    /// a bad one stay. Items beyond 32,767 are an Overflow.
    bool LoadProject(const String& vFilepath, std::int32_t& vError);

    /// Writes the project to a file; a path with another extension gets ".tsq" appended, in the caller's string too.
    /// An empty path does nothing, a missing folder shows a message; every other failure is logged: a path without a
    /// folder (InvalidProcedureCall), more than 32,767 items or custom properties (Overflow), a file that can't be
    /// written. The file is then the old one. `vIsReplace` is ignored.
    ///
    /// The file never gets shorter: what an older file holds after the end of the new block stays there.
    void SaveAsProject(String& vFilepath, bool vIsReplace);

    /// SaveAsProject to the project's own path. Nothing assigns that path, so this does nothing: callers know the path
    /// and use SaveAsProject.
    void SaveProject();

    /// What the last LoadProject or SaveAsProject logged, nothing when it logged nothing: for callers that tell more
    /// than a yes or no.
    std::optional<Failure> FileFailure;

    /// What is wrong with the content of a file that the last LoadProject refused. Nothing when it was taken, or could
    /// not be read at all.
    std::optional<ProjectFault> LoadFault;

    /// The files of a run, as full paths; the same path can stand twice. Outlives the run.
    std::vector<String> FilesToProcess;
    std::vector<String> AllowedExtensionPatterns;  ///< Of a folder scan; matched regardless of case.

    /// Builds FilesToProcess from the options and returns its count, -1 when the folder of a folder job does not exist.
    /// A folder counts from the root on, and each folder below it once, also when links lead to it several times.
    /// Files that programs put beside an open document ("~$a.pptx") are never taken.
    std::int32_t GetFileToProcessFileCount();

    /// Whether a scan of subfolders goes through symbolic links to folders.
    bool FollowsLinkedFolders = true;
    /// How many such links the last scan came across and left out, because it was not to follow them.
    std::int32_t LinkedFoldersLeftOut = 0;

    /// A folder that could not be read to its end. None of its files is taken, and none of its subfolders.
    struct UnreadFolder {
        String path;
        String reason;
    };
    std::vector<UnreadFolder> UnreadFolders;  ///< Those of the last scan. The error log names them, too.

    /// Why the list of the last count could not be read. The error log tells it, too.
    std::optional<Failure> UnreadList;

    /// Files that the last count of a list did not find only because their lines end in a line feed alone.
    std::int32_t HiddenByLineFeeds = 0;

    /// Takes FilesToProcess through PowerPoint, finding only unless called by Replacement. A null list stands for the
    /// project's own. `vOptionSettings` is handed on and not used. May raise: see the error modes in run/RunLoop.h.
    void Search(const std::shared_ptr<FindAndReplaceItems>& vFindAndReplaceList = {},
                const std::shared_ptr<OptionSetting>& vOptionSettings = {});

    /// Search with IsFindOnly off. A failure of the run is logged; IsFindOnly then stays off.
    void Replacement(const std::shared_ptr<FindAndReplaceItems>& vFindAndReplaceList = {},
                     const std::shared_ptr<OptionSetting>& vOptionSettings = {});

    void Send() {}  ///< Does nothing; nothing calls it.

    Event<const String&> BeforFileProcess;  ///< Before anything is done to a file.
    /// Once per file, whatever became of it. Null when the first file could not be opened for an unknown reason; for a
    /// later file that reason gives the result of the file before.
    Event<const std::shared_ptr<CounterStatuses>&> AfterFileProcess;
    Event<> BeforSearch;                 ///< Never raised.
    Event<> AfterSearch;                 ///< Never raised.
    Event<> ManualInterventionRequired;  ///< Never raised: the procedure that raises it has no caller.
    Event<> ProcessCancel;               ///< Once, when the run sees IsProcessCancel.

    /// Position in FilesToProcess, from 1, of the file that the run is at, for receivers of its events: the same path
    /// can stand in the list twice. 0 before the first file and after the last one; a run that raises leaves it.
    std::int32_t PositionInRun = 0;

    /// Told of every failure that the run passes over for a file (the open, the processing, a failed first step), with
    /// the file's path. What the run does is the same with and without it; it is the one place where the reason is
    /// known for files whose result is null or the previous file's.
    std::function<void(const String& path, const Failure& failure)> FailurePassedOver;

    /// What has ended the last Search before its end; nothing after one that came to its end. Replacement logs it and
    /// returns all the same.
    std::optional<Failure> RunFailure;

    /// Told of each pair of a file as the run comes to it, by its place in the run's list, from 1. May be empty.
    std::function<void(std::int32_t number, const FindAndReplaceItem& pair)> PairBegins;

    /// Called for each file as soon as it is open and before anything is done to it, for what a caller wants done to
    /// such files alone, a backup for instance. May be empty. A failure of it counts as a failure to open the file: the
    /// file is closed without a change and keeps its attributes.
    ///
    /// `check` tells which file it is, and raises `SharingViolation` when that isn't any more what it was before it was
    /// opened: whoever copies it calls that when all is read, so that the copy is of what the run has read.
    std::function<void(const String& path, const CheckOpened& check)> Opened;

    /// Told of each backup that the run has made, with what it holds. May be empty.
    std::function<void(const String& path, const String& backup, const CopiedContent& content)> BackupMade;

    /// Told of every hit of the file that the run is at, between BeforFileProcess and AfterFileProcess. Empty when
    /// nobody asks: then hits cost nothing. What was told of a file that fails then doesn't count, as its counts don't.
    /// A find without RequiredFindAndReplaceCount tells the first hit of each text alone.
    std::function<void(const Hit& hit)> HitFound;
    /// Asked before each hit: where it says no, because enough were kept, the hit tells its pair and location alone and
    /// costs next to nothing. Empty: each is told whole.
    std::function<bool()> WantsWholeHit;
    /// How much of its paragraph a hit tells on either side, in UTF-16 units.
    std::int32_t HitContext = 60;

    /// A Replacement goes all its way but for the disk: no backup, no save, and files keep attributes and dates. Its
    /// results are those that the run itself would have.
    bool IsDryRun = false;

    /// A file that a run saves without a change gets its old dates back, whatever the options say. Every file of a
    /// replace run is saved, and has a new date else.
    bool KeepsDatesOfUnchanged = false;

    /// Delete, or copy back, the backups of the current file set. `vPath` is ignored; the options are read. A file that
    /// another program has in use is a failure of the copying back, and so is a read-only one without
    /// ProcessReadonlyFiles: a failure is logged, and what comes after it is not treated.
    void RemoveBackupFiles(const String& vPath);
    void RestoreBackupFiles(const String& vPath);

    /// Attaches to any PowerPoint still running and shuts it. Never raises.
    void UnloadPowerPoint();

private:
    friend class RunLoop;

    // These three add to FilesToProcess.
    void ScanFolder();   // the options' folder
    void RetriveFile();  // the options' list
    void AddFilesOfSource();
    void TakeFilesOf(FileWalk& walk);  // into FilesToProcess; what fails is logged
    void RaiseManualInterventionRequired();

    std::unordered_set<String> tidiedFolders_;  // whose leftovers were removed since the last count
    std::shared_ptr<powerpoint::Provider> provider_;
    std::shared_ptr<powerpoint::Application> application_;  // null between runs
    String path_;                                           // always empty, see SaveProject
};

/// Owns a project and opens the circle project, list, item, project at its end, so that the project goes away.
class ProjectOwner
{
public:
    explicit ProjectOwner(std::shared_ptr<powerpoint::Provider> provider = {});
    ~ProjectOwner();
    ProjectOwner(const ProjectOwner&) = delete;
    ProjectOwner& operator=(const ProjectOwner&) = delete;

    const std::shared_ptr<Project>& get() const { return project_; }
    Project* operator->() const { return project_.get(); }
    Project& operator*() const { return *project_; }

private:
    std::shared_ptr<Project> project_;
};

}  // namespace tessarine
