#include "platform/ReplacementFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "platform/FileDescriptor.h"
#include "platform/FileFailure.h"
#include "platform/FolderOf.h"
#include "platform/NativePath.h"

namespace tessarine
{

namespace
{

/// Bytes that a write to the system takes at once. Zip files are written in many small pieces.
constexpr std::size_t bufferSize = 1 << 16;

/// The file that a path stands for, so that replacing it leaves the links on the way. A path that can't be followed to
/// its end comes back as it is.
std::string ResolveLinks(const std::string& path)
{
    std::error_code error;
    const auto resolved = std::filesystem::canonical(path, error);
    return error ? path : resolved.string();
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

/// The new file, in the folder of the one whose place it is to take. Removed at its end unless it took the place. A
/// member that gives false leaves the reason in errno.
class ReplacementFile::NewFile
{
public:
    explicit NewFile(const std::string& target)
        : folder_(FolderOf(target)),
          target_(target),
          // In the same folder, because a rename takes a file's place in one step only within one file system.
          path_(folder_ + ".tessarine-XXXXXX"),
          file_(mkostemp(path_.data(), O_CLOEXEC)),
          isThere_(file_.IsOpen())
    {
    }

    ~NewFile()
    {
        if (isThere_)
            unlink(path_.c_str());
    }

    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    bool IsOpen() const { return file_.IsOpen(); }
    int Descriptor() const { return file_.get(); }

    bool Write(std::string_view bytes)
    {
        while (!bytes.empty()) {
            const ssize_t count = write(file_.get(), bytes.data(), bytes.size());
            if (count < 0 && errno == EINTR)
                continue;
            if (count < 0)
                return false;
            bytes.remove_prefix(static_cast<std::size_t>(count));
        }
        return true;
    }

    /// Only a privileged user may give files away. For all others the new file simply is their own, which is no
    /// failure.
    void OfferTo(const Owner& owner)
    {
        if (owner.user != geteuid() || owner.group != getegid())
            // The compiler warns of an unused result in spite of the cast; the "!" makes it a used one.
            static_cast<void>(!fchown(file_.get(), owner.user, owner.group));
    }

    bool SetMode(std::uint32_t mode) { return fchmod(file_.get(), static_cast<mode_t>(mode)) == 0; }

    bool FlushToDisk() { return fsync(file_.get()) == 0; }
    bool Close() { return file_.Close(); }

    bool TakePlace()
    {
        if (std::rename(path_.c_str(), target_.c_str()) != 0)
            return false;
        isThere_ = false;
        return true;
    }

    /// Without it the rename may not last. Some network file systems can't flush a folder.
    void FlushFolder() const
    {
        const FileDescriptor folder(open(folder_.empty() ? "." : folder_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        if (folder.IsOpen())
            fsync(folder.get());
    }

private:
    std::string folder_;
    std::string target_;
    std::string path_;
    FileDescriptor file_;
    bool isThere_;
};

ReplacementFile::ReplacementFile(StringView path, bool isCopy)
    : isCopy_(isCopy), target_(ResolveLinks(NativePath(path)))
{
    struct stat old = {};
    if (stat(target_.c_str(), &old) == 0) {
        owner_ = {old.st_uid, old.st_gid};
        mode_ = old.st_mode & 07777;
        // Any other error leaves open whether there is a file to replace.
    } else if (errno != ENOENT) {
        Fail(errno, "save");
    }
}

ReplacementFile::ReplacementFile(StringView path, Missing missing) : ReplacementFile(path, false)
{
    const bool isNew = !owner_;
    if (isNew && missing == Missing::Fails)
        Fail(ENOENT, "save");
    // Renaming over a file asks only the folder for permission; a file that its owner has protected stays protected.
    if (!isNew && !MayWrite(target_))
        Fail(errno, "save");
    if (isNew)
        mode_ = ModeOfNewFiles();
    MakeNewFile();
}

ReplacementFile::ReplacementFile(StringView path, CopyOf original) : ReplacementFile(path, true)
{
    mode_ = original.mode & 07777;
    MakeNewFile();
}

ReplacementFile::~ReplacementFile() = default;

void ReplacementFile::MakeNewFile()
{
    newFile_ = std::make_unique<NewFile>(target_);
    if (!newFile_->IsOpen())
        Fail(errno, "save (no new file can be made beside)");
    pending_.reserve(bufferSize);
}

void ReplacementFile::Fail(int error, const char* attempt) const
{
    if (isCopy_)
        throw ClassicFileFailure(error, "write", target_);
    throw SystemFileFailure(error, attempt, target_);
}

void ReplacementFile::Write(std::span<const std::byte> bytes)
{
    // What is pending stays within the reserved size, unless one piece alone is longer.
    if (pending_.size() + bytes.size() > bufferSize)
        Flush();
    pending_.append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    position_ += bytes.size();
    if (pending_.size() >= bufferSize)
        Flush();
}

void ReplacementFile::Flush()
{
    if (!newFile_->Write(pending_))
        Fail(errno, "save");
    pending_.clear();
}

void ReplacementFile::CopyFrom(const RandomAccessBytes& source, std::uint64_t offset, std::uint64_t length)
{
    // The system copies from file to file without the way through this process, which pays for long ranges only.
    constexpr std::uint64_t worthACall = 16384;
    if (source.Descriptor() >= 0 && length >= worthACall) {
        // The pending bytes stand before the range.
        Flush();
        off_t from = static_cast<off_t>(offset);
        while (length > 0) {
            const ssize_t count =
                copy_file_range(source.Descriptor(), &from, newFile_->Descriptor(), nullptr, length, 0);
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
    // After the last byte, as writing takes the set-user and set-group bits away; the owner first, as that does too.
    if (owner_)
        newFile_->OfferTo(*owner_);
    if (!newFile_->SetMode(mode_))
        Fail(errno, "save with the old permissions");
    // Before the rename: after a power cut the name must not lead to a file without its bytes.
    if (!newFile_->FlushToDisk())
        Fail(errno, "save (flushing to the disk failed)");
    // Some network file systems tell of a failed write only when the file is closed.
    if (!newFile_->Close())
        Fail(errno, "save");
    if (!newFile_->TakePlace())
        Fail(errno, "save (the new file can't take the old one's place)");
    newFile_->FlushFolder();
}

void TouchFile(StringView path)
{
    const std::string name = NativePath(path);
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
