#include "saving/JournalFile.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <utility>

#include "files/WriteAll.h"
#include "log/ErrorLog.h"
#include "platform/NativePath.h"
#include "platform/PathSeparator.h"
#include "saving/MarkedFile.h"

namespace tessarine
{

namespace
{

constexpr std::string_view namePrefix = "Run-";
constexpr std::string_view nameSuffix = ".journal";

/// Empty while the data folder isn't settled.
std::string JournalFolder()
{
    const auto folder = NativePathIfValid(ApplicationDataFolder);
    return folder && !folder->empty() ? *folder + static_cast<char>(PathSeparator) : std::string();
}

/// Whether the open journal is locked now and still the file of that name: another process may have taken it for an
/// abandoned one, and removed it, between the making and the lock.
bool IsLockedAt(const std::string& path, int file)
{
    struct stat opened = {};
    struct stat named = {};
    return flock(file, LOCK_EX | LOCK_NB) == 0 && fstat(file, &opened) == 0 && lstat(path.c_str(), &named) == 0 &&
           opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
}

}  // namespace

std::unique_ptr<JournalFile> JournalFile::Make()
{
    const std::string folder = JournalFolder();
    if (folder.empty()) {
        errno = ENOENT;
        return nullptr;
    }
    // A start of the program that finds a journal before it is locked takes it away. It is not likely to do so twice.
    for (int attempt = 0; attempt < 8; ++attempt) {
        std::string path = folder + std::string(namePrefix) + "XXXXXX" + std::string(nameSuffix);
        FileDescriptor file(mkostemps(path.data(), static_cast<int>(nameSuffix.size()), O_CLOEXEC | O_APPEND));
        if (!file.IsOpen())
            return nullptr;
        if (IsLockedAt(path, file.get()))
            return std::unique_ptr<JournalFile>(new JournalFile(std::move(path), std::move(file)));
        const int error = errno;
        unlink(path.c_str());
        errno = error;
    }
    return nullptr;
}

std::vector<std::unique_ptr<JournalFile>> JournalFile::Abandoned()
{
    std::vector<std::unique_ptr<JournalFile>> journals;
    const std::string folder = JournalFolder();
    const std::unique_ptr<DIR, int (*)(DIR*)> directory(folder.empty() ? nullptr : opendir(folder.c_str()), &closedir);
    while (const dirent* entry = directory ? readdir(directory.get()) : nullptr) {
        const std::string_view name = entry->d_name;
        if (!name.starts_with(namePrefix) || !name.ends_with(nameSuffix))
            continue;
        std::string path = folder + entry->d_name;
        // Neither through a link nor waiting at a pipe that somebody has put there.
        FileDescriptor file(open(path.c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
        if (file.IsOpen() && IsOwnFile(file.get()) && IsLockedAt(path, file.get()))
            journals.push_back(std::unique_ptr<JournalFile>(new JournalFile(std::move(path), std::move(file))));
    }
    return journals;
}

bool JournalFile::Put(std::string_view text)
{
    return ftruncate(file_.get(), 0) == 0 && WriteAll(file_.get(), text);
}

bool JournalFile::FlushToDisk()
{
    if (fsync(file_.get()) != 0)
        return false;
    FlushFolderOf(path_);
    return true;
}

void JournalFile::Remove() noexcept
{
    // Before the lock goes with the descriptor, so that nobody finds it without one.
    unlink(path_.c_str());
}

}  // namespace tessarine
