#include "batch/BackupCommands.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <optional>
#include <string_view>

#include "batch/FailureReason.h"
#include "engine/CounterStatus.h"
#include "platform/Files.h"
#include "run/BackupPaths.h"

namespace tessarine::batch
{

namespace
{

constexpr std::array<StringView, 9> presentationExtensions{u"pptx", u"pptm", u"potx", u"potm", u"ppsx",
                                                           u"ppsm", u"ppt",  u"pot",  u"pps"};

/// Another presentation beside the file whose backup has the name `backup` too.
std::optional<String> OtherOwner(const String& path, const String& backup)
{
    const String stem = path.substr(0, path.rfind(u'.') + 1);
    for (const StringView extension : presentationExtensions) {
        const String other = stem + String(extension);
        if (other != path && BackupTargetOf(other) == backup && FileExists(other))
            return other;
    }
    return {};
}

std::string FirstBytes(const String& path)
{
    std::string bytes(4, '\0');
    std::ifstream(ToUtf8(path), std::ios::binary).read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return bytes;
}

/// The file's backup: the one that a run makes, or else one under the name that the desktop's backup commands look for.
/// The latter may as well be what is left of another presentation of the same name, so it must be of the file's own
/// kind (package or binary) and belong to nobody else. Empty when there is none.
String BackupOf(const String& path)
{
    const String made = BackupTargetOf(path);
    if (made != path && FileExists(made)) {
        if (const auto other = OtherOwner(path, made))
            throw Failure(FailureNumber::InvalidProcedureCall,
                          u"The backup " + made + u" may be that of " + *other + u"; copy or delete it by hand.");
        return made;
    }
    const String lookedFor = BackupPathOf(path);
    const bool own = lookedFor != path && FileExists(path) && FileExists(lookedFor) && !OtherOwner(path, lookedFor) &&
                     FirstBytes(path) == FirstBytes(lookedFor);
    return own ? lookedFor : String();
}

/// Finds the backup, lets `treat` do what is to be done with it, and reports.
template <class Treatment>
BackupReport Treat(const String& path, Treatment&& treat)
{
    BackupReport report{FileStatus::NothingCounted, path, {}, {}};
    try {
        report.backup = BackupOf(path);
        if (!report.backup.empty()) {
            treat(report.backup);
            report.status = FileStatus::Counted;
        } else if (!FileExists(path)) {
            throw Failure(FailureNumber::FileNotFound, u"File not found.");
        }
    } catch (const Failure& failure) {
        report.status = FileStatus::NotProcessed;
        report.error = ReasonOf(failure);
    }
    return report;
}

}  // namespace

void BackupSummary::Add(const BackupReport& file)
{
    ++files;
    ++(file.status == FileStatus::Counted ? done : file.status == FileStatus::NothingCounted ? unchanged : failed);
}

BackupReport RestoreFile(const String& path)
{
    return Treat(path, [&](const String& backup) { CopyFile(backup, path); });
}

BackupReport RemoveBackup(const String& path)
{
    return Treat(path, [](const String& backup) { DeleteFile(backup); });
}

}  // namespace tessarine::batch
