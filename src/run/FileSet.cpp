#include <algorithm>
#include <string_view>

#include "files/FileLock.h"
#include "files/Files.h"
#include "files/VisitedFolders.h"
#include "log/ErrorLog.h"
#include "log/Treatments.h"
#include "model/LogPlaces.h"
#include "model/Project.h"
#include "platform/CaseFolding.h"
#include "platform/FolderOf.h"
#include "platform/Messages.h"
#include "run/WildcardPattern.h"

namespace tessarine
{

namespace
{

/// The pieces between separators. An empty text has none.
template <class Text>
std::vector<Text> Split(Text text, Text separator)
{
    std::vector<Text> pieces;
    if (text.empty())
        return pieces;
    for (std::size_t end = text.find(separator); end != Text::npos; end = text.find(separator)) {
        pieces.push_back(text.substr(0, end));
        text.remove_prefix(end + separator.size());
    }
    pieces.push_back(text);
    return pieces;
}

/// What lies in a folder. One that can't be read is remembered, and raises.
FolderContent ContentOfScannedFolder(const String& path, std::vector<Project::UnreadFolder>& unread)
{
    try {
        return ContentOfFolder(path);
    } catch (const Failure& failure) {
        unread.push_back({path, failure.Reason()});
        throw;
    }
}

std::string_view WithoutByteOrderMark(std::string_view bytes)
{
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    return bytes.starts_with(mark) ? bytes.substr(mark.size()) : bytes;
}

}  // namespace

std::int32_t Project::GetFileToProcessFileCount()
{
    return LogAndReturn({u"GetFileToProcessFileCount", ProjectPlace}, [&] {
        FilesToProcess.clear();
        tidiedFolders_.clear();
        // Emptied before anything can fail, so that a missing folder does not leave the files of the count before.
        const ProjectOptions& jobOptions = *NotNull(options);
        AllowedExtensionPatterns.clear();
        for (const StringView pattern : Split<StringView>(jobOptions.ComaSepAllowedExtensions, u";"))
            AllowedExtensionPatterns.emplace_back(pattern);

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
    VisitedFolders visited;
    RetriveFolder(FullPathOf(NotNull(options)->FileToProcessFolderPath), visited);
}

void Project::RetriveFolder(const String& path, VisitedFolders& visited)
{
    LogAndReturn({u"RetriveFolder", ProjectPlace}, [&] {
        if (!visited.Enter(path))
            return;
        const FolderContent content = ContentOfScannedFolder(path, UnreadFolders);
        // A folder's own files first, then those of its subfolders: the order of a run and of its reports.
        for (const String& file : content.files)
            if (CheckFileExt(file))
                FilesToProcess.push_back(file);
        if (!NotNull(options)->Include_Subfolders)
            return;
        for (const String& folder : content.folders)
            // Each folder logs its own failure, so that one that can't be read does not cost its neighbours.
            RetriveFolder(folder, visited);
        // After the folders themselves: a folder that also lies in this tree is told by its own path.
        for (const String& folder : content.linkedFolders)
            FollowsLinkedFolders ? RetriveFolder(folder, visited) : static_cast<void>(++LinkedFoldersLeftOut);
    });
}

void Project::RetriveFile()
{
    const LoggedFile logged(options ? options->FileToProcessFilepath : String());
    LogAndReturn({u"RetriveFile", ProjectPlace}, [&] {
        const std::string bytes = ReadWholeFile(NotNull(options)->FileToProcessFilepath);
        // A line feed alone does not end a line: it may be part of a file's name.
        for (const std::string_view line : Split<std::string_view>(WithoutByteOrderMark(bytes), "\r\n")) {
            String path = FromUtf8(line);
            if (CheckFileExt(path))
                FilesToProcess.push_back(std::move(path));
        }
    });
}

bool Project::CheckFileExt(const String& path) const
{
    const LoggedFile logged(path);
    return LogAndReturn({u"CheckFileExt", ProjectPlace}, [&] {
        if (path.empty() || !FileExists(path))
            return false;
        // Not a presentation, whatever its extension, but the sign that another program has one open.
        if (IsLockFileName(FileNameOf(StringView(path))))
            return false;
        const std::size_t dot = path.rfind(u'.');
        // A path without any dot is logged as a failure, and the file is not taken.
        if (dot == String::npos)
            throw Failure(FailureNumber::InvalidProcedureCall, u"Invalid procedure call or argument");
        // Intended: the star stands in the text under test, so only a pattern whose end can match it takes a file.
        // "*.Ppt*" does, "*.ppt" never does; saved jobs hold patterns that were written for this rule.
        const String subject = ToUpper(path.substr(dot)) + u"*";
        return std::any_of(AllowedExtensionPatterns.begin(), AllowedExtensionPatterns.end(),
                           [&](const String& pattern) { return WildcardPattern(ToUpper(pattern)).Matches(subject); });
    });
}

}  // namespace tessarine
