#include "batch/RunBackups.h"

#include <algorithm>
#include <utility>

#include "batch/BackupNames.h"
#include "log/Treatments.h"
#include "log/Warnings.h"
#include "platform/Failure.h"
#include "platform/FolderOf.h"
#include "run/BackupPaths.h"
#include "saving/CopyFile.h"

namespace tessarine::batch
{

namespace
{

constexpr StringView wayOut = u"; move it away, or give --backup=numbered";

[[noreturn]] void FailInTheWay(const String& backup, StringView reason)
{
    throw Failure(FailureNumber::PermissionDenied, u"The file " + backup + u" is in the way of its backup and " +
                                                       String(reason) + String(wayOut) + u".");
}

}  // namespace

/// The file that gets a backup, and the backup.
struct RunBackups::Target {
    String path;
    String backup;  ///< Path of the first one.
    BackupFolder& folder;
    BackupFolder::Original original;
    const CheckOpened& check;

    String Name() const { return String(FileNameOf(StringView(backup))); }
    String PathOf(const String& name) const { return String(FolderOf(StringView(backup))) + name; }
};

RunBackups::RunBackups(BackupNaming naming, bool isDryRun) : naming_(naming), isDryRun_(isDryRun) {}

void RunBackups::Remember(const String& path)
{
    rememberedPath_.clear();
    Skip([&] {
        remembered_ = GetAttributes(path);
        rememberedPath_ = path;
    });
}

void RunBackups::Make(const String& path, const CheckOpened& check)
{
    const String backup = BackupTargetOf(path);
    BackupFolder& folder = FolderFor(backup);
    // Between the open and here somebody may have put a folder of somebody else's under this path.
    if (FolderOf(StringView(backup)) == FolderOf(StringView(path)) &&
        !folder.Holds(String(FileNameOf(StringView(path))), check()))
        throw Failure(FailureNumber::SharingViolation,
                      u"The folder of the file was replaced by another one; run it again.");
    const Target target{path, backup, folder, folder.OriginalAt(path), check};
    if (naming_ == BackupNaming::Numbered)
        MakeNumbered(target);
    else
        KeepOrMake(target);
}

BackupFolder& RunBackups::FolderFor(const String& backup)
{
    const String path(FolderOf(StringView(backup)));
    if (!folder_ || path != folderPath_) {
        folder_.reset();
        folder_ = std::make_unique<BackupFolder>(path);
        folderPath_ = path;
    }
    return *folder_;
}

void RunBackups::KeepOrMake(const Target& target)
{
    const String name = target.Name();
    if (target.folder.IsSameFile(name, target.path))
        FailInTheWay(target.backup, u"is the same file under another name");
    switch (target.folder.StateOf(name, target.original)) {
        case BackupFolder::State::Missing:
            return Copy(target, name);
        case BackupFolder::State::Intact:
            if (!target.folder.HasContentOf(name, target.path))
                Warn(target.path, u"keeps the backup of an earlier run, " + target.backup +
                                      u"; what it held before this run is in no backup");
            return;
        case BackupFolder::State::NotAFile:
            FailInTheWay(target.backup, u"is a link, a folder or something else that is no file");
        case BackupFolder::State::Changed:
            FailInTheWay(target.backup, u"has been changed since tessarine-batch made it");
        case BackupFolder::State::OfAnother:
            FailInTheWay(target.backup, u"is the backup of another file");
        case BackupFolder::State::NotRecorded:
            break;
    }
    // As good a copy as a new one would be, so that nothing is lost by going on.
    if (!target.folder.HasContentOf(name, target.path))
        FailInTheWay(target.backup, u"was not made by tessarine-batch");
    Warn(target.path,
         u"has no backup but " + target.backup + u", which has the same content and was not made by tessarine-batch");
}

void RunBackups::MakeNumbered(const Target& target)
{
    const String first = target.Name();
    // After all that were ever made, so that the one with the highest number is the newest.
    std::int64_t number = 1;
    for (const String& name : target.folder.NamesFor(target.original))
        number = std::max(number, NumberOfBackup(first, name).value_or(0) + 1);
    while (target.folder.IsTaken(NumberedBackup(first, number)))
        ++number;
    Copy(target, NumberedBackup(first, number));
}

void RunBackups::Copy(const Target& target, const String& name)
{
    const String backup = target.PathOf(name);
    if (isDryRun_) {
        RehearseCopy(backup);
        return;
    }
    String notRecorded;
    const auto complete = [&](const CopiedContent& content) {
        // A program that rewrites a file in place leaves half of it for a while, which every later run would keep.
        target.check();
        // Recorded before it is there: of a run that is killed in between, a line is left that means nothing.
        try {
            target.folder.Record(name, target.original, content);
        } catch (const Failure& failure) {
            notRecorded = failure.Reason();
        }
    };
    CopyFile(target.path, backup, {complete, target.folder.Id(), true});
    if (!notRecorded.empty())
        Warn(target.path, u"has the backup " + backup +
                              u", which only restore --any-backup takes, as it could not be " + u"recorded: " +
                              notRecorded);
    // The run has taken a write protection off by now, which the backup is to have as the file had it.
    // Never more than the copy has: one whose owner could not be kept keeps others out.
    if (rememberedPath_ == target.path)
        target.folder.NarrowMode(name, remembered_.mode);
}

}  // namespace tessarine::batch
