#include "platform/Files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "platform/FileDescriptor.h"
#include "platform/FileFailure.h"
#include "platform/NativePath.h"

namespace tessarine
{

namespace
{

/// The file that a target stands for: a link's own target, so that copying over a link keeps the link.
std::string TargetBehindLinks(const std::string& target)
{
    std::error_code error;
    const std::filesystem::path resolved = std::filesystem::canonical(target, error);
    return error ? target : resolved.string();
}

/// A new file beside `target`, removed at its end unless it was renamed over it.
class FileBesideTarget
{
public:
    explicit FileBesideTarget(const std::string& target)
        : target_(target),
          path_(target.substr(0, target.rfind('/') + 1) + ".tessarine-XXXXXX"),
          file_(mkostemp(path_.data(), O_CLOEXEC))
    {
        if (!file_.IsOpen())
            throw ClassicFileFailure(errno, "write", target_);
    }

    ~FileBesideTarget()
    {
        if (!isRenamed_)
            unlink(path_.c_str());
    }

    FileBesideTarget(const FileBesideTarget&) = delete;
    FileBesideTarget& operator=(const FileBesideTarget&) = delete;

    void Write(const char* bytes, std::size_t count)
    {
        while (count > 0) {
            const ssize_t written = write(file_.get(), bytes, count);
            if (written < 0 && errno == EINTR)
                continue;
            Require(written >= 0);
            bytes += written;
            count -= static_cast<std::size_t>(written);
        }
    }

    /// The mode of the source, and the owner of the file that is replaced, if there is one and the system allows it.
    void TakeModeAndOwner(mode_t mode)
    {
        struct stat older = {};
        if (stat(target_.c_str(), &older) == 0 && fchown(file_.get(), older.st_uid, older.st_gid) != 0) {
            // Only the superuser may give files away; for everybody else the copy simply is their own.
        }
        Require(fchmod(file_.get(), mode & 07777) == 0);
    }

    void RenameOverTarget()
    {
        Require(fsync(file_.get()) == 0);
        Require(file_.Close());
        Require(std::rename(path_.c_str(), target_.c_str()) == 0);
        isRenamed_ = true;
    }

private:
    void Require(bool succeeded) const
    {
        if (!succeeded)
            throw ClassicFileFailure(errno, "write", target_);
    }

    std::string target_;
    std::string path_;
    FileDescriptor file_;
    bool isRenamed_ = false;
};

}  // namespace

void CopyFile(StringView source, StringView target)
{
    const std::string sourcePath = NativePath(source);
    const FileDescriptor original(open(sourcePath.c_str(), O_RDONLY | O_CLOEXEC));
    struct stat status = {};
    if (!original.IsOpen() || fstat(original.get(), &status) != 0)
        throw ClassicFileFailure(errno, "open", sourcePath);

    FileBesideTarget copy(TargetBehindLinks(NativePath(target)));
    char buffer[64 * 1024];
    for (;;) {
        const ssize_t count = read(original.get(), buffer, sizeof buffer);
        if (count == 0)
            break;
        if (count > 0)
            copy.Write(buffer, static_cast<std::size_t>(count));
        else if (errno != EINTR)
            throw ClassicFileFailure(errno, "read", sourcePath);
    }
    copy.TakeModeAndOwner(status.st_mode);
    copy.RenameOverTarget();
}

}  // namespace tessarine
