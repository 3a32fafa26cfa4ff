#include "batch/BackupCommands.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <utility>

#include "batch/BackupNames.h"
#include "engine/CounterStatus.h"
#include "files/FileLock.h"
#include "files/Files.h"
#include "log/Treatments.h"
#include "platform/Failure.h"
#include "platform/FolderOf.h"
#include "platform/NativePath.h"
#include "platform/PathKey.h"
#include "report/WithoutPath.h"
#include "run/BackupPaths.h"
#include "run/FileWarnings.h"
#include "saving/CopyFile.h"
#include "saving/Leftovers.h"

namespace tessarine::batch
{

namespace
{

constexpr std::array<StringView, 9> presentationExtensions{u"pptx", u"pptm", u"potx", u"potm", u"ppsx",
                                                           u"ppsm", u"ppt",  u"pot",  u"pps"};

constexpr StringView anyBackupTakesIt = u" (--any-backup takes it all the same)";

std::string FirstBytes(const String& path)
{
    // Four bytes tell a package from a binary presentation.
    std::string bytes(4, '\0');
    std::ifstream(std::filesystem::path(NativePath(path)), std::ios::binary)
        .read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return bytes;
}

String NameWithin(const String& path)
{
    return String(FileNameOf(path));
}

[[noreturn]] void Fail(const String& text)
{
    throw Failure(FailureNumber::PermissionDenied, text);
}

/// Why a file under a backup's name is left alone. Nothing when it is another file's backup, or none at all.
String ReasonToLeave(BackupFolder::State state)
{
    switch (state) {
        case BackupFolder::State::NotRecorded:
            return u"was not made by this version of tessarine-batch";
        case BackupFolder::State::Changed:
            return u"has been changed since tessarine-batch made it";
        case BackupFolder::State::NotAFile:
            return u"is a link, a folder or something else that is no file";
        default:
            return {};
    }
}

}  // namespace

/// What may be a backup of one file.
struct BackupCommands::Backups {
    struct Candidate {
        String path;
        BackupFolder::State state;
        std::int64_t number;
    };

    const String& file;
    String first;          // path that the first backup of a run has
    BackupFolder* folder;  // of the backups; null when it is missing
    BackupFolder::Original original{};
    std::vector<Candidate> found{};  // the newest one first

    String PathOf(const String& name) const { return String(FolderOf(StringView(first))) + name; }

    void Add(const String& name)
    {
        const auto number = NumberOfBackup(NameWithin(first), name);
        const BackupFolder::State state = folder->StateOf(name, original);
        if (number && state != BackupFolder::State::Missing)
            found.push_back({PathOf(name), state, *number});
    }
};

BackupCommands::BackupCommands(const BatchCall& call, const std::vector<JobFile>& files)
    : owners_(call, files), anyBackup_(call.anyBackup), readOnly_(call.readOnly), terms_(SaveTermsOf(call))
{
}

BackupCommands::~BackupCommands()
{
    Skip([&] { FolderFor({}); });
}

BackupReport BackupCommands::Restore(const String& path)
{
    return Treat(path, [&](const Backups& backups, BackupReport& report) {
        const Backups::Candidate& newest = backups.found.front();
        report.backup = newest.path;
        const String reason = ReasonToLeave(newest.state);
        if (!reason.empty() && !anyBackup_)
            Fail(u"The file " + newest.path + u" " + reason + String(anyBackupTakesIt) + u".");

        if (FileExists(path) && (GetAttributes(path).bits & FileAttribute::ReadOnly) != 0 && !readOnly_)
            Fail(u"Read Only File.");
        CopyFileBack(newest.path, path, terms_, [&](const CopiedContent& content) {
            // What was copied is what counts: somebody may have written to the backup since it was looked at.
            if (!anyBackup_ && !backups.folder->IsRecorded(NameWithin(newest.path), backups.original, content))
                Fail(u"The backup " + newest.path + u" is being changed by another program.");
        });
        report.status = FileStatus::Counted;
    });
}

BackupReport BackupCommands::Clean(const String& path)
{
    const BackupReport done = Treat(path, [&](const Backups& backups, BackupReport& report) {
        String kept;
        for (const Backups::Candidate& candidate : backups.found) {
            const String reason = anyBackup_ ? String() : ReasonToLeave(candidate.state);
            if (candidate.state == BackupFolder::State::Changed && !reason.empty()) {
                kept = u"The file " + candidate.path + u" " + reason + String(anyBackupTakesIt) + u".";
            } else if (!reason.empty()) {
                // Anybody may have a file of that name, and it is none of this command's business.
                report.warnings.push_back(candidate.path + u" " + reason + u" and stays" + String(anyBackupTakesIt));
            } else if (backups.folder) {
                backups.folder->Remove(NameWithin(candidate.path));
                (report.backup.empty() ? report.backup : report.older.emplace_back()) = candidate.path;
                report.status = FileStatus::Counted;
            }
        }
        if (!kept.empty())
            Fail(kept);
    });
    // A clean that was killed has left lines without their backups. A file in use is one for the next clean.
    Skip([&] {
        const FileLock lock(path);
        if (folder_)
            folder_->NoteMissing(folder_->OriginalAt(path));
    });
    return done;
}

/// Finds the backups, lets `treat` do what is to be done with them, and reports.
template <class Treatment>
BackupReport BackupCommands::Treat(const String& path, Treatment&& treat)
{
    BackupReport report{FileStatus::NothingCounted, path, {}, {}};
    FileWarnings warnings;
    try {
        const Backups backups = BackupsOf(path);
        if (!backups.found.empty()) {
            // Of a run in another process that has just made the backup, and is about to change the file.
            const FileLock lock(path);
            treat(backups, report);
        } else if (!FileExists(path)) {
            throw Failure(FailureNumber::FileNotFound, u"File not found.");
        }
    } catch (...) {
        // One file's failure does not end the command.
        report.status = FileStatus::NotProcessed;
        report.error = WithoutPath(CurrentFailure().Reason(), path);
    }
    for (const String& warning : warnings.Take())
        report.warnings.push_back(WithoutPath(warning, path));
    return report;
}

/// Opens the folder of a backup, or gives the one that is open; null when it can't be opened. The one before gets its
/// record in order.
BackupFolder* BackupCommands::FolderFor(const String& backup)
{
    const String path(FolderOf(StringView(backup)));
    if (folder_ && path == folderPath_ && !backup.empty())
        return folder_.get();
    if (const auto before = std::exchange(folder_, nullptr))
        before->ForgetRemoved();
    folderPath_ = path;
    if (!backup.empty()) {
        RemoveLeftovers(path.empty() ? String(u".") : path);
        Skip([&] { folder_ = std::make_unique<BackupFolder>(path); });
    }
    return folder_.get();
}

BackupCommands::Backups BackupCommands::BackupsOf(const String& path)
{
    const String first = BackupTargetOf(path);
    Backups backups{path, first, FolderFor(first)};
    if (!backups.folder)
        return backups;

    backups.original = backups.folder->OriginalAt(path);
    for (const String& name : backups.folder->NamesFor(backups.original))
        backups.Add(name);
    if (anyBackup_ || backups.found.empty())
        AddUnrecorded(backups);
    if (anyBackup_ && backups.found.empty())
        AddDesktopBackup(backups);
    std::ranges::sort(backups.found, std::ranges::greater(), &Backups::Candidate::number);
    return backups;
}

/// Files under the names that runs use, which the record doesn't know as backups of this file.
void BackupCommands::AddUnrecorded(Backups& backups) const
{
    if (PathKey(backups.first) == PathKey(backups.file))
        return;
    for (std::int64_t number = 1;; ++number) {
        const String name = NumberedBackup(NameWithin(backups.first), number);
        const BackupFolder::State state = backups.folder->StateOf(name, backups.original);
        const String path = backups.PathOf(name);
        if (state == BackupFolder::State::Missing && number > 1)
            return;
        const bool isFound = std::ranges::any_of(backups.found, [&](const Backups::Candidate& candidate) {
            return PathKey(candidate.path) == PathKey(path);
        });
        if (isFound || state == BackupFolder::State::Missing || state == BackupFolder::State::OfAnother)
            continue;
        if (const auto other = owners_.OtherThan(backups.file, backups.first))
            Fail(u"The backup " + path + u" may be that of " + *other + u"; copy or delete it by hand.");
        backups.found.push_back({path, state, number});
        // Only the first one can be of an older version; a person's file of such a name is no reason for a warning.
        if (!anyBackup_)
            return;
    }
}

/// The file under the name that the desktop's backup commands look for. It may as well be what is left of another
/// presentation of the same name, so it must be of the file's own kind (package or binary) and belong to nobody else.
void BackupCommands::AddDesktopBackup(Backups& backups) const
{
    const String& file = backups.file;
    const String lookedFor = BackupPathOf(file);
    const bool isOwn = PathKey(lookedFor) != PathKey(file) && FileExists(file) && FileExists(lookedFor) &&
                       !owners_.OtherThan(file, lookedFor) && FirstBytes(file) == FirstBytes(lookedFor);
    // In the folder of the file, and so is the backup of a run as a rule; where that is elsewhere, it is left alone.
    if (isOwn && FolderOf(StringView(lookedFor)) == FolderOf(StringView(backups.first)))
        backups.found.push_back({lookedFor, backups.folder->StateOf(NameWithin(lookedFor), backups.original), 1});
}

BackupOwners::BackupOwners(const BatchCall& call, const std::vector<JobFile>& files)
    : patterns_(call.patterns.begin(), call.patterns.end())
{
    for (const JobFile& file : files)
        named_.insert(PathKey(file.path));
}

std::optional<String> BackupOwners::OtherThan(const String& path, const String& backup) const
{
    const String stem = path.substr(0, path.rfind(u'.') + 1);
    // A backup's name does not say which extension its file had, so each presentation with the same stem may be its
    // owner.
    for (const StringView extension : presentationExtensions) {
        const String other = stem + String(extension);
        const StringView name = FileNameOf(other);
        const bool counts =
            named_.contains(PathKey(other)) ||
            std::ranges::any_of(patterns_, [&](const FilePattern& pattern) { return pattern.Matches(name); });
        if (counts && PathKey(other) != PathKey(path) && PathKey(BackupTargetOf(other)) == PathKey(backup) &&
            FileExists(other))
            return other;
    }
    return {};
}

void BackupSummary::Add(const BackupReport& file)
{
    ++files;
    // Of a file that failed some may be gone, too.
    backups += (file.backup.empty() ? 0 : 1) + std::ssize(file.older);
    ++(file.status == FileStatus::Counted ? done : file.status == FileStatus::NothingCounted ? unchanged : failed);
}

}  // namespace tessarine::batch
