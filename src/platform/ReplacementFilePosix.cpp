#include "platform/ReplacementFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <filesystem>

#include "platform/FileFailure.h"
#include "platform/NativePath.h"

namespace tessarine
{

namespace
{

constexpr std::size_t bufferSize = 1 << 16;

std::string ResolveLinks(const std::string& path)
{
    std::error_code error;
    const auto resolved = std::filesystem::canonical(path, error);
    return error ? path : resolved.string();
}

std::string FolderOf(const std::string& path)
{
    const auto slash = path.rfind('/');
    if (slash == std::string::npos)
        return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

/// Whether this process may write the file, by the rights that it acts with.
bool MayWrite(const std::string& path)
{
    return faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0;
}

/// The mask of this process can only be read by setting it.
mode_t ModeOfNewFiles()
{
    const mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

}  // namespace

ReplacementFile::ReplacementFile(StringView path, Missing missing) : target_(ResolveLinks(NativePath(path)))
{
    struct stat old = {};
    const bool isNew = stat(target_.c_str(), &old) != 0;
    if (isNew && (errno != ENOENT || missing == Missing::Fails))
        Fail(errno, "save");
    // Renaming over a file asks only the folder for permission; a file that its owner has protected stays protected.
    if (!isNew && !MayWrite(target_))
        Fail(errno, "save");

    temporary_ = FolderOf(target_) + "/.tessarine-XXXXXX";
    descriptor_ = mkostemp(temporary_.data(), O_CLOEXEC);
    if (descriptor_ < 0) {
        temporary_.clear();
        Fail(errno, "save (no new file can be made beside)");
    }
    // The owner first, since changing it clears bits of the mode. Only a privileged user may give files away: no
    // failure.
    if (!isNew && (old.st_uid != geteuid() || old.st_gid != getegid()))
        static_cast<void>(!fchown(descriptor_, old.st_uid, old.st_gid));
    if (fchmod(descriptor_, isNew ? ModeOfNewFiles() : old.st_mode & 07777) != 0) {
        const int error = errno;
        close(descriptor_);
        unlink(temporary_.c_str());
        Fail(error, "save with the old permissions");
    }
    pending_.reserve(bufferSize);
}

ReplacementFile::~ReplacementFile()
{
    if (descriptor_ >= 0)
        close(descriptor_);
    if (!committed_)
        unlink(temporary_.c_str());
}

void ReplacementFile::Fail(int error, const char* attempt) const
{
    throw SystemFileFailure(error, attempt, target_);
}

void ReplacementFile::Write(std::span<const std::byte> bytes)
{
    if (pending_.size() + bytes.size() > bufferSize)
        Flush();
    pending_.append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    position_ += bytes.size();
    if (pending_.size() >= bufferSize)
        Flush();
}

void ReplacementFile::Flush()
{
    std::string_view rest = pending_;
    while (!rest.empty()) {
        const ssize_t count = write(descriptor_, rest.data(), rest.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            Fail(errno, "save");
        rest.remove_prefix(static_cast<std::size_t>(count));
    }
    pending_.clear();
}

void ReplacementFile::CopyFrom(const RandomAccessBytes& source, std::uint64_t offset, std::uint64_t length)
{
    constexpr std::uint64_t worthACall = 16384;
    if (source.Descriptor() >= 0 && length >= worthACall) {
        Flush();
        off_t from = static_cast<off_t>(offset);
        while (length > 0) {
            const ssize_t count = copy_file_range(source.Descriptor(), &from, descriptor_, nullptr, length, 0);
            if (count <= 0)
                break;  // not supported between these files, or a fault that the plain way below reports
            offset += static_cast<std::uint64_t>(count);
            position_ += static_cast<std::uint64_t>(count);
            length -= static_cast<std::uint64_t>(count);
        }
    }
    std::array<std::byte, bufferSize> buffer;
    while (length > 0) {
        const auto part = std::span(buffer).first(std::min<std::uint64_t>(buffer.size(), length));
        source.Read(offset, part);
        Write(part);
        offset += part.size();
        length -= part.size();
    }
}

void ReplacementFile::Commit()
{
    Flush();
    if (fsync(descriptor_) != 0)
        Fail(errno, "save (flushing to the disk failed)");
    const int closed = close(descriptor_);
    descriptor_ = -1;
    if (closed != 0)
        Fail(errno, "save");
    if (rename(temporary_.c_str(), target_.c_str()) != 0)
        Fail(errno, "save (the new file can't take the old one's place)");
    committed_ = true;

    // The rename itself lasts only when the folder is on the disk. The new file is in place already, so a folder that
    // can't be flushed (some network file systems) is no failure of the save.
    const int folder = open(FolderOf(target_).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder >= 0) {
        fsync(folder);
        close(folder);
    }
}

void TouchFile(StringView path)
{
    const std::string name = ToUtf8(path);
    if (!MayWrite(name))
        throw SystemFileFailure(errno, "save", name);
    const std::array<timespec, 2> times{{{0, UTIME_OMIT}, {0, UTIME_NOW}}};
    if (utimensat(AT_FDCWD, name.c_str(), times.data(), 0) == 0)
        return;
    // Others than the owner may set both times to now, and nothing else.
    if (errno != EPERM || utimensat(AT_FDCWD, name.c_str(), nullptr, 0) != 0)
        throw SystemFileFailure(errno, "save", name);
}

}  // namespace tessarine
