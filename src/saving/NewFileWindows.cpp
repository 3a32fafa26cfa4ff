#include "saving/NewFile.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <memory>
#include <mutex>
#include <random>
#include <vector>

#include "files/FileLock.h"
#include "files/FileOwner.h"
#include "files/FileState.h"
#include "files/WindowsErrors.h"
#include "files/WindowsFiles.h"
#include "log/Treatments.h"
#include "platform/NativePath.h"
#include "platform/WindowsHeaders.h"
#include "saving/Leftovers.h"

#include <sddl.h>

namespace tessarine
{

namespace
{

/// Held while files change their names, so that a process which ends itself at once doesn't do so in between; and for
/// the paths of files in work. The second is taken inside the first.
std::mutex renaming;
std::mutex pathsGuard;

/// Of the files in work, for RemoveNewFilesNow; an empty one is free. A run has one file in work, or two. What finds no
/// place here is left to RemoveLeftovers.
std::array<NativeString, 16> paths;
constexpr std::size_t noSlot = paths.size();

std::size_t TakeSlot()
{
    const std::scoped_lock guard(pathsGuard);
    for (std::size_t i = 0; i < paths.size(); ++i) {
        if (paths[i].empty()) {
            paths[i] = L"?";  // a name that no file has
            return i;
        }
    }
    return noSlot;
}

void PutIntoSlot(std::size_t slot, const NativeString& path)
{
    const std::scoped_lock guard(pathsGuard);
    if (slot != noSlot)
        paths[slot] = path;
}

NativeString RandomName()
{
    std::random_device random;
    std::array<unsigned char, 6> bytes{};
    for (unsigned char& byte : bytes)
        byte = static_cast<unsigned char>(random());
    return NewFileName(bytes);
}

/// Lets in this process's user alone, and nobody by the rights of the folder.
class OwnUserAlone
{
public:
    OwnUserAlone()
    {
        const std::string text = "D:P(A;;FA;;;" + OwnerOfNewFiles() + ")";
        PSECURITY_DESCRIPTOR descriptor = nullptr;
        if (ConvertStringSecurityDescriptorToSecurityDescriptorA(text.c_str(), SDDL_REVISION_1, &descriptor, nullptr))
            descriptor_.reset(descriptor);
        attributes_.nLength = sizeof attributes_;
        attributes_.lpSecurityDescriptor = descriptor;
    }

    bool IsMade() const { return descriptor_ != nullptr; }
    SECURITY_ATTRIBUTES* get() { return &attributes_; }

private:
    std::unique_ptr<void, void (*)(void*)> descriptor_{nullptr, [](void* memory) { LocalFree(memory); }};
    SECURITY_ATTRIBUTES attributes_{};
};

/// Takes a write protection off for as long as a file is replaced, and puts it back on one that stayed.
class WithoutProtection
{
public:
    explicit WithoutProtection(const NativeString& path) : path_(path), attributes_(GetFileAttributesW(path.c_str()))
    {
        isTaken_ = attributes_ != INVALID_FILE_ATTRIBUTES && (attributes_ & FILE_ATTRIBUTE_READONLY) != 0 &&
                   SetFileAttributesW(path.c_str(), attributes_ & ~DWORD{FILE_ATTRIBUTE_READONLY});
    }
    ~WithoutProtection()
    {
        if (isTaken_)
            SetFileAttributesW(path_.c_str(), attributes_);
    }
    WithoutProtection(const WithoutProtection&) = delete;
    WithoutProtection& operator=(const WithoutProtection&) = delete;

    void NoteReplaced() { isTaken_ = false; }

private:
    const NativeString& path_;
    DWORD attributes_;
    bool isTaken_;
};

bool Rename(const NativeString& from, const NativeString& to, DWORD flags)
{
    return MoveFileExW(from.c_str(), to.c_str(), flags | MOVEFILE_WRITE_THROUGH) || LeaveErrorInErrno();
}

/// Opens a file that has just got its place, for its lock and its attributes, with as many rights as there are. Other
/// programs may do with it what they like, as with any file that a run holds.
FileDescriptor OpenInPlace(const NativeString& path)
{
    for (const DWORD more : {DWORD{FILE_WRITE_ATTRIBUTES | WRITE_DAC}, DWORD{FILE_WRITE_ATTRIBUTES}, DWORD{0}}) {
        FileDescriptor file = OpenItself(path, GENERIC_READ | more);
        if (file.IsOpen() || errno != EACCES) {
            if (file.IsOpen())
                TryToLock(file.get());
            return file;
        }
    }
    return {};
}

/// A file that no living process has open, of this process's user, for removal.
FileDescriptor OpenLeftover(const NativeString& path)
{
    FileDescriptor file = OpenItself(path, GENERIC_READ | DELETE, 0);
    const auto status = file.IsOpen() ? StatusOf(file.get(), Look::WithOwner) : std::nullopt;
    if (!status || status->kind != FileKind::File || !IsThisUser(status->owner))
        file.Close();
    return file;
}

bool DeleteOpen(const FileDescriptor& file)
{
    FILE_DISPOSITION_INFO disposition{TRUE};
    return SetFileInformationByHandle(file.get(), FileDispositionInfo, &disposition, sizeof disposition);
}

}  // namespace

NewFile::NewFile(const HeldFolder& folder) : folder_(folder), slot_(TakeSlot())
{
    for (int attempts = 100; attempts > 0 && !MakeFile(); --attempts) {
        if (errno != EEXIST)
            break;
    }
    if (!file_.IsOpen()) {
        PutIntoSlot(slot_, {});
        slot_ = noSlot;
    }
}

bool NewFile::MakeFile()
{
    name_ = RandomName();
    const NativeString path = folder_.PathOf(name_);
    // Before the file is there, so that there is no moment in which a sudden end would leave it.
    PutIntoSlot(slot_, path);
    OwnUserAlone userAlone;
    if (!userAlone.IsMade())
        return LeaveErrorInErrno();
    // Open for as long as it is in work, and then nobody else can delete it: that is how RemoveLeftovers tells it.
    FileDescriptor file(CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE | DELETE | WRITE_DAC, SharedWithReaders,
                                    userAlone.get(), CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file.IsOpen())
        return LeaveErrorInErrno();
    TryToLock(file.get());
    file_ = std::move(file);
    isThere_ = true;
    return true;
}

NewFile::~NewFile()
{
    Remove();
    PutIntoSlot(slot_, {});
}

bool NewFile::FlushToDisk()
{
    return FlushFileBuffers(file_.get()) || LeaveErrorInErrno();
}

bool NewFile::TakeFreePlace(const NativeString& name)
{
    const std::scoped_lock guard(renaming);
    if (!Rename(folder_.PathOf(name_), folder_.PathOf(name), 0))
        return false;
    isThere_ = false;
    return true;
}

bool NewFile::TakePlace(const NativeString& name)
{
    {
        const std::scoped_lock guard(renaming);
        const NativeString place = folder_.PathOf(name);
        WithoutProtection old(place);
        if (Rename(folder_.PathOf(name_), place, MOVEFILE_REPLACE_EXISTING)) {
            old.NoteReplaced();
            isThere_ = false;
            return true;
        }
    }
    // A file that is open, be it by this process, can't be renamed over, but moved aside.
    if ((errno != EACCES && errno != EBUSY) || !ChangePlaces(name))
        return false;
    Remove();
    return true;
}

bool NewFile::ChangePlaces(const NativeString& name)
{
    const std::scoped_lock guard(renaming);
    const NativeString place = folder_.PathOf(name);
    const NativeString present = folder_.PathOf(name_);
    if (!NameBeforeSave(name_).empty()) {
        // Back again. Not by the call below, which wants the old file closed by everybody.
        const NativeString next = RandomName();
        if (!Rename(place, folder_.PathOf(next), 0))
            return false;
        if (!Rename(present, place, 0)) {
            const int error = errno;
            Rename(folder_.PathOf(next), place, 0);
            errno = error;
            return false;
        }
        name_ = next;
        PutIntoSlot(slot_, folder_.PathOf(name_));
        return true;
    }

    const NativeString aside = name + RandomName();
    const NativeString asidePath = folder_.PathOf(aside);
    WithoutProtection old(place);
    // The call wants the new file to be closed, and writable. Its user gives it its attributes once more.
    WithoutProtection own(present);
    file_.Close();
    if (!ReplaceFileW(place.c_str(), present.c_str(), asidePath.c_str(), 0, nullptr, nullptr)) {
        LeaveErrorInErrno();
        const int error = errno;
        // It may have failed half way.
        if (!IsThere(place) && IsThere(asidePath))
            Rename(asidePath, place, 0);
        file_ = OpenItself(present, GENERIC_READ | GENERIC_WRITE | DELETE, SharedWithReaders);
        errno = error;
        return false;
    }
    old.NoteReplaced();
    own.NoteReplaced();
    name_ = aside;
    PutIntoSlot(slot_, asidePath);
    file_ = OpenInPlace(place);
    return true;
}

void NewFile::Remove()
{
    // It may have the attributes of the old one already, or be the old one.
    if (isThere_)
        DeleteEvenIfProtected(folder_.PathOf(name_));
    isThere_ = false;
}

const NativeString& NewFile::Leave()
{
    isThere_ = false;
    PutIntoSlot(slot_, {});
    slot_ = noSlot;
    return name_;
}

std::size_t RemoveLeftovers(StringView folder) noexcept
{
    std::size_t count = 0;
    // Passed over: a leftover that stays does no harm, and what ails the folder shows in the run.
    Skip([&] {
        const HeldFolder held{NativePath(folder)};
        WIN32_FIND_DATAW entry{};
        // One pattern for both: a name of its own, and one behind another file's.
        const HANDLE search = FindFirstFileExW(held.PathOf(L"*.tessarine-*").c_str(), FindExInfoBasic, &entry,
                                               FindExSearchNameMatch, nullptr, FIND_FIRST_EX_LARGE_FETCH);
        if (!held.IsOpen() || search == INVALID_HANDLE_VALUE)
            return;
        const std::unique_ptr<void, BOOL (*)(HANDLE)> owned(search, &FindClose);
        do {
            const NativeString name = entry.cFileName;
            const NativeString before(NameBeforeSave(name));
            if (before.empty() && !IsNewFileName(name))
                continue;
            FileDescriptor file = OpenLeftover(held.PathOf(name));
            if (!file.IsOpen())
                continue;
            if (!before.empty() && !IsThere(held.PathOf(before))) {
                file.Close();
                Rename(held.PathOf(name), held.PathOf(before), 0);
            } else if (DeleteOpen(file)) {
                ++count;
            }
        } while (FindNextFileW(search, &entry));
    });
    return count;
}

void RemoveNewFilesNow() noexcept
{
    // After this no file can change its name any more: what would take a place is gone.
    const std::scoped_lock guard(renaming, pathsGuard);
    for (const NativeString& path : paths) {
        if (!path.empty())
            DeleteFileW(path.c_str());
    }
}

}  // namespace tessarine
