#include "batch/SavedJob.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "app/LanguageText.h"
#include "batch/BatchCall.h"
#include "batch/EndlessPairs.h"
#include "batch/LineText.h"
#include "batch/ListFiles.h"
#include "batch/Refusal.h"
#include "files/Files.h"
#include "model/JobProperties.h"
#include "model/Project.h"
#include "platform/CaseFolding.h"
#include "platform/FolderOf.h"
#include "platform/Locale.h"
#include "platform/Messages.h"
#include "platform/NativePath.h"
#include "report/WithoutPath.h"
#include "run/JobInputs.h"

namespace tessarine::batch
{

namespace
{

/// The window takes the options into its controls and back: only a pattern that its list offers comes through, and a
/// step that is not a number does not.
void PassThroughControls(ProjectOptions& options, std::vector<std::string>& notes)
{
    if (ToUpper(options.ComaSepAllowedExtensions) != ToUpper(PresentationPattern))
        notes.push_back("the job's file pattern " + Quoted(options.ComaSepAllowedExtensions) +
                        " is not one that the window offers; as there, the run takes " + Quoted(PresentationPattern));
    options.ComaSepAllowedExtensions = PresentationPattern;
    if (!NumberFromText(options.RevisionDocumentPropertyIncrimentedBy))
        options.RevisionDocumentPropertyIncrimentedBy.clear();
}

/// Refuses a path that did not pass its test. `what` the path names goes into the text.
void CheckInput(std::int32_t tested, const String& what, const String& path)
{
    switch (tested) {
        case InputTest::Empty:
            Refuse(u"the job does not name its " + what);
        case InputTest::FileNotFound:
        case InputTest::FolderNotFound:
            Refuse(u"there is no " + what + u" " + InQuotes(path));
        case InputTest::OtherExtension:
            Refuse(u"the " + what + u" " + InQuotes(path) + u" has an extension that such a file can't have");
        default:
            break;
    }
}

/// The pairs of a list file. One that can't be read to its end gives the rows before, with a note.
std::shared_ptr<FindAndReplaceItems> ImportedList(const String& path, std::vector<std::string>& notes)
{
    CheckInput(ValidateFile(path, PairListExtensions), u"list of pairs", path);
    auto list = std::make_shared<FindAndReplaceItems>();
    const bool isAccepted = list->ImportList(path);
    const String reason = ImportReason(*list, path);
    if (!isAccepted)
        Refuse(u"can't take the list of pairs " + InQuotes(path) + u": " + reason);
    if (list->FileFailure)
        notes.push_back(OnOneLine(ToUtf8(u"the list of pairs " + InQuotes(path) + u" is read in part: " + reason)));
    return list;
}

void CheckPairs(const FindAndReplaceItems& items, bool replaces)
{
    if (items.Count() == 0)
        Refuse(u"the job has no pair to look for");
    for (const auto& item : items.NewEnum())
        if (replaces)
            CheckEnds(item->FindWhat, item->ReplaceWith, *item->OptionSetting);
}

/// Takes the last message that would be shown, for as long as it lives.
class MessagesTo
{
public:
    explicit MessagesTo(String& text)
        : before_(SetMessageBox([&text](const Message& message) {
              text = message.text;
              return MessageAnswer::Ok;
          }))
    {
    }
    ~MessagesTo() { SetMessageBox(std::move(before_)); }
    MessagesTo(const MessagesTo&) = delete;
    MessagesTo& operator=(const MessagesTo&) = delete;

private:
    MessageBoxPort before_;
};

/// The full path of a path, which means the same wherever the job is opened. A path of a Windows desktop stays.
String FullPath(const String& path)
{
    // absolute() would take such a path for a name in the current folder.
    const bool hasDrive = path.size() >= 3 && path[1] == u':' && path[2] == u'\\';
    if (hasDrive || path.starts_with(u"\\\\"))
        return path;
    std::filesystem::path full = std::filesystem::absolute(NativePath(path)).lexically_normal();
    // "decks/" and "decks" are the same folder; only the second spelling is saved.
    if (!full.has_filename())
        full = full.parent_path();
    return PathText(full.native());
}

/// The files of the job's folder or list, found as the desktop finds them.
CollectedFiles FilesOfJob(Project& project, const BatchCall& call)
{
    const ProjectOptions& options = *project.options;
    const String& list = options.FileToProcessFilepath;
    const String& folder = options.FileToProcessFolderPath;
    if (options.TakesListedFiles())
        CheckInput(ValidateFile(list, FileListExtensions), u"list of files", list);
    else
        CheckInput(ValidateFolder(folder), u"folder", folder);
    project.FollowsLinkedFolders = call.follow;
    // Called for FilesToProcess, which it fills.
    project.GetFileToProcessFileCount();

    CollectedFiles collected;
    for (const String& path : project.FilesToProcess)
        collected.files.push_back({.path = path, .refusal = {}});
    // Each stands in the report in place of its files.
    for (const Project::UnreadFolder& unread : project.UnreadFolders)
        collected.files.push_back({.path = unread.path, .refusal = unread.reason});
    collected.skippedLinks = project.LinkedFoldersLeftOut;
    return collected;
}

CollectedFiles FilesOfCall(const BatchCall& call, const ProjectOptions& options)
{
    BatchCall scan = call;
    scan.recurse = options.Include_Subfolders;
    return CollectFiles(scan);
}

}  // namespace

void LoadJob(Project& project, const String& path)
{
    std::int32_t error = 0;
    if (project.LoadProject(path, error))
        return;
    // The codes of LoadProject; with any other one the reason is in FileFailure.
    if (error == 1)
        Refuse(u"there is no job " + InQuotes(path));
    if (error == 2)
        Refuse(InQuotes(path) + u" is not a job: the name of a project file ends in .tsq");
    const String reason = project.FileFailure ? project.FileFailure->Reason() : String();
    Refuse(u"can't load the job " + InQuotes(path) + u": " + WithoutPath(reason, path));
}

SavedSource SourceOf(const Project& project)
{
    const CustomProperties& properties = *project.CustomProperies;
    if (!HasListSource(properties))
        return {};
    return {true, ListSourceOf(properties) == ListSource::External, ListFileOf(properties)};
}

std::shared_ptr<FindAndReplaceItems> PrepareSavedRun(Project& project, const BatchCall& call,
                                                     std::vector<std::string>& notes)
{
    PassThroughControls(*project.options, notes);

    const SavedSource source = SourceOf(project);
    if (!source.isKnown)
        Refuse(u"the job does not tell where its pairs come from: it lacks its first two custom properties");
    std::shared_ptr<FindAndReplaceItems> list;
    if (source.isExternal)
        list = ImportedList(source.path, notes);
    CheckPairs(list ? *list : *project.FindAndReplaceList, call.replacesOfJob);
    return list;
}

CollectedFiles FilesOfSavedRun(Project& project, const BatchCall& call)
{
    return call.paths.empty() ? FilesOfJob(project, call) : FilesOfCall(call, *project.options);
}

void FillSavedJob(Project& project, const BatchCall& call)
{
    ProjectOptions& options = *project.options;
    options.ComaSepAllowedExtensions = PresentationPattern;
    options.FileToProcessSourceType = call.filesFrom ? FileSource::List : FileSource::Folder;
    if (call.filesFrom) {
        options.FileToProcessFilepath = FullPath(*call.filesFrom);
    } else {
        const String& folder = call.paths.front();
        if (FileExists(folder))
            Refuse(InQuotes(folder) +
                   u" is a file: a saved job takes its files from one folder, or from one list "
                   u"(--files-from)");
        options.FileToProcessFolderPath = FullPath(folder);
    }
    AddJobProperties(*project.CustomProperies, {.languageFile = String(DefaultLanguageFile)});
}

String SaveJob(Project& project, const String& path)
{
    String full = FullPath(path);
    const String folder(WithoutTrailingSeparator(FolderOf(full)));
    // The save would only show a message.
    if (!FolderExists(folder))
        Refuse(u"there is no folder " + InQuotes(folder));
    // The call may add ".tsq". The answer is the path as the user wrote it, with that end.
    const std::size_t length = full.size();
    String told;
    {
        // A folder that goes away meanwhile is no failure of the save, but a message of it.
        const MessagesTo messages(told);
        project.SaveAsProject(full, true);
    }
    if (project.FileFailure)
        told = project.FileFailure->Reason();
    if (!told.empty())
        Refuse(u"can't save the job: " + told);
    return path + full.substr(length);
}

}  // namespace tessarine::batch
