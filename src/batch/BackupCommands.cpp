#include "batch/BackupCommands.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string_view>

#include "batch/Refusal.h"
#include "engine/CounterStatus.h"
#include "platform/Failure.h"
#include "platform/Files.h"
#include "platform/FolderOf.h"
#include "platform/NativePath.h"
#include "run/BackupPaths.h"

namespace tessarine::batch
{

namespace
{

constexpr std::array<StringView, 9> presentationExtensions{u"pptx", u"pptm", u"potx", u"potm", u"ppsx",
                                                           u"ppsm", u"ppt",  u"pot",  u"pps"};

std::string FirstBytes(const String& path)
{
    // Four bytes tell a package from a binary presentation.
    std::string bytes(4, '\0');
    std::ifstream(NativePath(path), std::ios::binary).read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return bytes;
}

/// The file's backup: the one that a run makes, or else one under the name that the desktop's backup commands look for.
/// The latter may as well be what is left of another presentation of the same name, so it must be of the file's own
/// kind (package or binary) and belong to nobody else. Empty when there is none.
String BackupOf(const String& path, const BackupOwners& owners)
{
    const String made = BackupTargetOf(path);
    if (made != path && FileExists(made)) {
        if (const auto other = owners.OtherThan(path, made))
            Refuse(u"The backup " + made + u" may be that of " + *other + u"; copy or delete it by hand.");
        return made;
    }
    const String lookedFor = BackupPathOf(path);
    const bool own = lookedFor != path && FileExists(path) && FileExists(lookedFor) &&
                     !owners.OtherThan(path, lookedFor) && FirstBytes(path) == FirstBytes(lookedFor);
    return own ? lookedFor : String();
}

/// Finds the backup, lets `treat` do what is to be done with it, and reports.
template <class Treatment>
BackupReport Treat(const String& path, const BackupOwners& owners, Treatment&& treat)
{
    BackupReport report{FileStatus::NothingCounted, path, {}, {}};
    try {
        report.backup = BackupOf(path, owners);
        if (!report.backup.empty()) {
            treat(report.backup);
            report.status = FileStatus::Counted;
        } else if (!FileExists(path)) {
            throw Failure(FailureNumber::FileNotFound, u"File not found.");
        }
    } catch (const Failure& failure) {
        // One file's failure does not end the command.
        report.status = FileStatus::NotProcessed;
        report.error = failure.Reason();
    }
    return report;
}

}  // namespace

BackupOwners::BackupOwners(const BatchCall& call, const std::vector<JobFile>& files)
    : patterns_(call.patterns.begin(), call.patterns.end())
{
    for (const JobFile& file : files)
        named_.insert(file.path);
}

std::optional<String> BackupOwners::OtherThan(const String& path, const String& backup) const
{
    const String stem = path.substr(0, path.rfind(u'.') + 1);
    // A backup's name does not say which extension its file had, so each presentation with the same stem may be its
    // owner.
    for (const StringView extension : presentationExtensions) {
        const String other = stem + String(extension);
        const StringView name = FileNameOf(other);
        const bool counts = named_.contains(other) || std::ranges::any_of(patterns_, [&](const FilePattern& pattern) {
                                return pattern.Matches(name);
                            });
        if (counts && other != path && BackupTargetOf(other) == backup && FileExists(other))
            return other;
    }
    return {};
}

void BackupSummary::Add(const BackupReport& file)
{
    ++files;
    ++(file.status == FileStatus::Counted ? done : file.status == FileStatus::NothingCounted ? unchanged : failed);
}

BackupReport RestoreFile(const String& path, const BackupOwners& owners)
{
    return Treat(path, owners, [&](const String& backup) { CopyFile(backup, path); });
}

BackupReport RemoveBackup(const String& path, const BackupOwners& owners)
{
    return Treat(path, owners, [](const String& backup) { DeleteFile(backup); });
}

}  // namespace tessarine::batch
