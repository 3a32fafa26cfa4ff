#include "saving/CopyFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>

#include "files/FileDescriptor.h"
#include "files/FileFailure.h"
#include "files/OpenedFile.h"
#include "platform/Crc32.h"
#include "platform/NativePath.h"
#include "saving/ReplacementFile.h"

namespace tessarine
{

namespace
{

/// A file that is read from its beginning to its end.
class Source
{
public:
    explicit Source(StringView path) : path_(NativePath(path)), file_(Open(path_)), opened_(file_.get()) {}

    int Descriptor() const { return file_.get(); }

    /// Writes all to `copy`. Read to the end, not to the size that the file had: it may grow, and some file systems
    /// tell no size.
    CopiedContent CopyTo(ReplacementFile& copy, bool isChecksumWanted) const
    {
        CopiedContent content;
        std::array<std::byte, 64 * 1024> buffer;
        for (;;) {
            const ssize_t count = read(file_.get(), buffer.data(), buffer.size());
            if (count == 0)
                break;
            if (count < 0) {
                if (errno != EINTR)
                    throw ClassicFileFailure(errno, "read", path_);
                continue;
            }
            const auto piece = std::span<const std::byte>(buffer).first(static_cast<std::size_t>(count));
            copy.Write(piece);
            content.size += piece.size();
            if (isChecksumWanted)
                content.checksum = Crc32(piece, content.checksum);
        }
        if (!opened_.IsUnchanged())
            throw ClassicFileFailure(FileTrouble::InUse, "read", path_,
                                     "it was changed by another program while it was copied; run it again");
        return content;
    }

private:
    static FileDescriptor Open(const std::string& path)
    {
        // O_NONBLOCK keeps a named pipe from holding up a run.
        FileDescriptor file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
        struct stat status = {};
        if (!file.IsOpen() || fstat(file.get(), &status) != 0)
            throw ClassicFileFailure(errno, "open", path);
        if (!S_ISREG(status.st_mode))
            throw ClassicFileFailure(S_ISDIR(status.st_mode) ? EISDIR : EACCES, "read", path);
        return file;
    }

    std::string path_;
    FileDescriptor file_;
    OpenedFile opened_;
};

}  // namespace

void CopyFile(StringView source, StringView target, const CopyTerms& terms)
{
    const Source original(source);
    // An older target stays until the copy is complete, so that a full disk leaves it as it was.
    ReplacementFile copy(target, ReplacementFile::CopyOf{original.Descriptor(), terms.folder, terms.mustBeNew});
    const CopiedContent content = original.CopyTo(copy, static_cast<bool>(terms.complete));
    if (terms.complete)
        terms.complete(content);
    copy.Commit();
}

void CopyFileBack(StringView copy, StringView document, const SaveTerms& terms, const CopyComplete& complete)
{
    const Source kept(copy);
    ReplacementFile file(document, ReplacementFile::PutBack{kept.Descriptor(), terms});
    const CopiedContent content = kept.CopyTo(file, static_cast<bool>(complete));
    if (complete)
        complete(content);
    file.Commit();
}

}  // namespace tessarine
