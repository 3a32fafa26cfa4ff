#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstring>

#include "files/FilePlace.h"
#include "files/OpenFolderPosix.h"
#include "platform/FolderOf.h"

namespace tessarine
{

FilePlace::FilePlace(const std::string& givenPath, Links links, const MakeFailure& failure)
    : path(givenPath), folder(std::string(FolderOf(path))), name(FileNameOf(std::string_view(path)))
{
    const auto fail = [&](int error) -> Failure {
        return failure(FileTroubleOf(error, path), path, std::strerror(error));
    };
    if (!folder.IsOpen())
        throw fail(errno);

    bool isLink = false;
    for (int links_left = 40;; --links_left) {
        struct stat status = {};
        if (name.empty())
            throw fail(ENOENT);
        if (fstatat(folder.get(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) {
            if (errno == ENOENT && !isLink)
                return;
            throw fail(errno);
        }
        if (!S_ISLNK(status.st_mode)) {
            if (S_ISDIR(status.st_mode))
                throw fail(EISDIR);
            if (!S_ISREG(status.st_mode))
                throw failure(FileTrouble::NotPermitted, path, "it is not a file");
            struct stat around = {};
            if (isLink &&
                (status.st_uid != geteuid() || fstat(folder.get(), &around) != 0 || around.st_uid != geteuid()))
                throw failure(FileTrouble::NotPermitted, path,
                              "a link leads there, and it or its folder belongs to another user; name it by its own "
                              "path");
            return;
        }

        struct stat end = {};
        if (links_left == 0 || (fstatat(folder.get(), name.c_str(), &end, 0) != 0 && errno == ELOOP))
            throw fail(ELOOP);
        if (links == Links::Refused)
            throw failure(FileTrouble::NotPermitted, path, "it is a link; move that away");
        if (status.st_uid != geteuid() && status.st_uid != 0)
            throw failure(FileTrouble::NotPermitted, path,
                          "it is a link that belongs to another user; name the file by its own path");
        std::array<char, PATH_MAX> target{};
        const ssize_t length = readlinkat(folder.get(), name.c_str(), target.data(), target.size());
        if (length < 0 || length == static_cast<ssize_t>(target.size()))
            throw fail(length < 0 ? errno : ENAMETOOLONG);
        isLink = true;
        const std::string next(target.data(), static_cast<std::size_t>(length));
        const std::string nextFolder(FolderOf(next));
        path = next.starts_with('/') ? next : std::string(FolderOf(path)) + next;
        name = FileNameOf(std::string_view(next));
        if (!nextFolder.empty()) {
            folder = HeldFolder(OpenFolder(folder.get(), nextFolder), std::string(FolderOf(path)));
            if (!folder.IsOpen())
                throw fail(errno);
        }
    }
}

}  // namespace tessarine
