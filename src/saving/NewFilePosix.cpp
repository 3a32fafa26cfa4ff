#include "saving/NewFile.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <memory>

#include "files/FileLock.h"
#include "files/FileState.h"
#include "log/Treatments.h"
#include "platform/NativePath.h"
#include "saving/Leftovers.h"

namespace tessarine
{

namespace
{

/// A file in work, as a signal's handler can read it: no memory of its own, and nothing half written while it is ready.
struct Slot {
    enum State : int { Free, Taken, Ready };
    std::atomic<int> state = Free;
    int folder = -1;
    std::array<char, 32> name{};
};
static_assert(std::atomic<int>::is_always_lock_free);

/// A run has one file in work, or two. What finds no slot is left to RemoveLeftovers.
std::array<Slot, 16> slots;
constexpr std::size_t noSlot = slots.size();

std::size_t TakeSlot()
{
    for (std::size_t i = 0; i < slots.size(); ++i) {
        int expected = Slot::Free;
        if (slots[i].state.compare_exchange_strong(expected, Slot::Taken))
            return i;
    }
    return noSlot;
}

void PutIntoSlot(std::size_t slot, int folder, const std::string& name)
{
    if (slot == noSlot)
        return;
    slots[slot].state = Slot::Taken;
    slots[slot].folder = folder;
    std::ranges::copy(name, slots[slot].name.begin());
    slots[slot].name[name.size()] = '\0';
    slots[slot].state = Slot::Ready;
}

void FreeSlot(std::size_t slot)
{
    if (slot != noSlot)
        slots[slot].state = Slot::Free;
}

std::string RandomName()
{
    std::array<unsigned char, 6> bytes{};
    // Without random bytes names repeat, and the attempts below end with the reason.
    static_cast<void>(!getrandom(bytes.data(), bytes.size(), 0));
    return NewFileName(bytes);
}

/// Whether a file of such a name is one that a killed process has left, seen from its own descriptor.
bool IsLeftover(const HeldFolder& folder, const char* name, int file)
{
    struct stat status = {};
    if (file < 0 || fstat(file, &status) != 0 || !S_ISREG(status.st_mode))
        return false;
    if (status.st_uid != geteuid() && geteuid() != 0)
        return false;
    if (flock(file, LOCK_EX | LOCK_NB) != 0)
        return false;
    const auto named = FileStateIn(folder, name);
    return named && named->identity == FileIdentity{status.st_dev, status.st_ino};
}

}  // namespace

NewFile::NewFile(const HeldFolder& folder) : folder_(folder), slot_(TakeSlot())
{
    // A name may be in use; a file may be taken for a leftover in the moment before it is locked.
    for (int attempts = 100; attempts > 0 && !MakeFile(); --attempts) {
        if (errno != EEXIST)
            break;
    }
    if (!file_.IsOpen()) {
        const int error = errno;
        FreeSlot(slot_);
        slot_ = noSlot;
        errno = error;
    }
}

/// False with EEXIST when another name is to be tried.
bool NewFile::MakeFile()
{
    name_ = RandomName();
    // Before the file is there, so that there is no moment in which a signal would leave it.
    PutIntoSlot(slot_, folder_.get(), name_);
    FileDescriptor file(
        openat(folder_.get(), name_.c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, S_IRUSR | S_IWUSR));
    if (!file.IsOpen())
        return false;
    MarkAsOurs(file.get());
    const bool isFree = flock(file.get(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
    struct stat status = {};
    if (fstat(file.get(), &status) != 0) {
        const int error = errno;
        unlinkat(folder_.get(), name_.c_str(), 0);
        errno = error;
        return false;
    }
    if (!isFree || status.st_nlink == 0) {
        errno = EEXIST;
        return false;
    }
    file_ = std::move(file);
    isThere_ = true;
    return true;
}

NewFile::~NewFile()
{
    Remove();
    FreeSlot(slot_);
}

bool NewFile::FlushToDisk()
{
    if (fsync(file_.get()) != 0)
        return false;
    // Some network file systems tell of a failed write only when the file is closed. Closing a second descriptor does
    // it, and keeps the lock.
    FileDescriptor second(fcntl(file_.get(), F_DUPFD_CLOEXEC, 0));
    return second.IsOpen() && second.Close();
}

bool NewFile::TakeFreePlace(const std::string& name)
{
    if (renameat2(folder_.get(), name_.c_str(), folder_.get(), name.c_str(), RENAME_NOREPLACE) == 0) {
        isThere_ = false;
        return true;
    }
    // Not every file system can do that in one step.
    if (errno != EINVAL && errno != ENOSYS)
        return false;
    if (!FileStateIn(folder_, name))
        return TakePlace(name);
    errno = EEXIST;
    return false;
}

bool NewFile::TakePlace(const std::string& name)
{
    if (renameat(folder_.get(), name_.c_str(), folder_.get(), name.c_str()) != 0)
        return false;
    isThere_ = false;
    return true;
}

bool NewFile::ChangePlaces(const std::string& name)
{
    return renameat2(folder_.get(), name_.c_str(), folder_.get(), name.c_str(), RENAME_EXCHANGE) == 0;
}

void NewFile::Remove()
{
    if (isThere_)
        unlinkat(folder_.get(), name_.c_str(), 0);
    isThere_ = false;
}

const std::string& NewFile::Leave()
{
    isThere_ = false;
    FreeSlot(slot_);
    slot_ = noSlot;
    return name_;
}

std::size_t RemoveLeftovers(StringView folder) noexcept
{
    std::size_t count = 0;
    // Passed over: a leftover that stays does no harm, and what ails the folder shows in the run.
    Skip([&] {
        const HeldFolder held{NativePath(folder)};
        FileDescriptor opened(fcntl(held.get(), F_DUPFD_CLOEXEC, 0));
        const std::unique_ptr<DIR, int (*)(DIR*)> directory(fdopendir(opened.get()), &closedir);
        if (!directory)
            return;
        opened.Release();  // the directory closes it
        while (const dirent* entry = readdir(directory.get())) {
            if (!IsNewFileName(entry->d_name))
                continue;
            const FileDescriptor file(
                openat(held.get(), entry->d_name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
            if (IsLeftover(held, entry->d_name, file.get()) && unlinkat(held.get(), entry->d_name, 0) == 0)
                ++count;
        }
    });
    return count;
}

void RemoveNewFilesNow() noexcept
{
    const int error = errno;  // of what the signal has interrupted
    for (const Slot& slot : slots) {
        if (slot.state == Slot::Ready)
            unlinkat(slot.folder, slot.name.data(), 0);
    }
    errno = error;
}

}  // namespace tessarine
