#include "batch/JobFiles.h"

#include <algorithm>
#include <filesystem>
#include <unordered_set>
#include <utility>

#include "batch/FileIdentity.h"
#include "batch/FilePattern.h"
#include "batch/PathList.h"
#include "files/FileLock.h"
#include "files/Files.h"
#include "files/VisitedFolders.h"
#include "platform/Failure.h"
#include "platform/FolderOf.h"
#include "platform/NativePath.h"
#include "run/BackupPaths.h"

namespace tessarine::batch
{

namespace
{

class Collector
{
public:
    explicit Collector(const BatchCall& call)
        : recurse_(call.recurse),
          follow_(call.follow),
          takesHidden_(call.hidden),
          keepsMissing_(call.command == Command::Restore || call.command == Command::Clean),
          patterns_(call.patterns.begin(), call.patterns.end()),
          excluded_(call.excluded.begin(), call.excluded.end())
    {
    }

    void AddPath(const String& path)
    {
        const auto native = NativePathIfValid(path);
        std::error_code error;
        const auto status = native ? std::filesystem::status(*native, error)
                                   : std::filesystem::file_status(std::filesystem::file_type::not_found);
        switch (status.type()) {
            case std::filesystem::file_type::regular:
                return Add(path, IsLockFileName(FileNameOf(path)) ? u"A lock file of another program." : String());
            case std::filesystem::file_type::directory:
                return AddFolder(path);
            case std::filesystem::file_type::not_found:
                // What is missing may still have a backup. A path with a NUL names no file at all.
                return Add(path, keepsMissing_ && native ? String() : u"File not found.");
            case std::filesystem::file_type::none:
            case std::filesystem::file_type::unknown:
                return Add(path, FromUtf8(error.message()) + u".");
            default:
                return Add(path, u"Not a regular file.");
        }
    }

    CollectedFiles Take() { return std::move(collected_); }

private:
    void Add(const String& path, const String& refusal)
    {
        if (seen_.insert(identity_.Of(path)).second)
            collected_.files.push_back({.path = path, .refusal = refusal});
    }

    void AddFolder(const String& folder)
    {
        if (follow_ && !visited_.Enter(folder))
            return;
        try {
            // The folder's own files before those of its subfolders, as the desktop takes them.
            const FolderContent content = ContentOfFolder(folder);
            for (const String& file : content.files) {
                if (IsWanted(FileNameOf(file)))
                    Add(file, {});
            }
            if (!recurse_)
                return;
            for (const String& subfolder : content.folders) {
                if (!IsLeftOut(FileNameOf(subfolder)))
                    AddFolder(subfolder);
            }
            // After the folders themselves: a folder that also lies in this tree is told by its own path.
            for (const String& link : content.linkedFolders) {
                if (!IsLeftOut(FileNameOf(link)))
                    follow_ ? AddFolder(link) : static_cast<void>(++collected_.skippedLinks);
            }
            // The folder stands in the report in place of its files, and the others are taken all the same.
        } catch (const Failure& failure) {
            Add(folder, failure.Reason());
        }
    }

    bool IsWanted(StringView name) const
    {
        // Lock files of the office programs, and the companions that macOS writes for each file on foreign disks: they
        // have the extension and are not presentations.
        if (IsLockFileName(name) || name.starts_with(u"._") || IsLeftOut(name))
            return false;
        return MatchesOne(patterns_, name);
    }

    /// A file or a folder that a scan passes over whatever it holds.
    bool IsLeftOut(StringView name) const
    {
        return (!takesHidden_ && name.starts_with(u'.')) || MatchesOne(excluded_, name);
    }

    static bool MatchesOne(const std::vector<FilePattern>& patterns, StringView name)
    {
        return std::ranges::any_of(patterns, [&](const FilePattern& pattern) { return pattern.Matches(name); });
    }

    bool recurse_;
    bool follow_;
    bool takesHidden_;
    bool keepsMissing_;
    std::vector<FilePattern> patterns_;
    std::vector<FilePattern> excluded_;
    FileIdentity identity_;
    std::unordered_set<std::string> seen_;
    VisitedFolders visited_;
    CollectedFiles collected_;
};

}  // namespace

FileReport RefusedFile(const JobFile& file)
{
    FileReport report = FailedFile(file.path, file.refusal);
    report.number = file.number;
    return report;
}

CollectedFiles CollectFiles(const BatchCall& call)
{
    Collector collector(call);
    // Read before any path is looked at, so that a list that can't be read stops the call at once.
    const std::vector<String> listed =
        call.filesFrom ? ReadPathList(*call.filesFrom, call.nullEndsPaths ? PathEnd::Null : PathEnd::Line)
                       : std::vector<String>();
    for (const String& path : call.paths)
        collector.AddPath(path);
    for (const String& path : listed)
        collector.AddPath(path);
    return collector.Take();
}

void RefuseSharedBackups(std::vector<JobFile>& files)
{
    FileIdentity identity;
    std::unordered_set<std::string> taken;
    // Files that are refused count as well: no backup may overwrite them either.
    for (const JobFile& file : files)
        taken.insert(identity.Of(file.path));
    for (JobFile& file : files) {
        const String backup = BackupTargetOf(file.path);
        if (file.refusal.empty() && !taken.insert(identity.Of(backup)).second)
            file.refusal = u"Its backup would overwrite another file of this job, or that file's backup: " + backup;
    }
}

}  // namespace tessarine::batch
