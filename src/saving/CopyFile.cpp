#include "saving/CopyFile.h"

#include <array>
#include <cerrno>
#include <span>

#include "files/FileFailure.h"
#include "files/FilePlace.h"
#include "files/OpenedFile.h"
#include "files/OpenForReading.h"
#include "files/ReadAt.h"
#include "platform/Crc32.h"
#include "platform/NativePath.h"
#include "saving/ReplacementCalls.h"
#include "saving/ReplacementFile.h"

namespace tessarine
{

namespace
{

/// Reads a file to its end, not to the size that it had: it may grow, and some file systems tell no size. False when it
/// can't be read, with the reason in errno.
template <class Take>
bool ReadPieces(NativeFile file, Take&& take)
{
    std::array<std::byte, 64 * 1024> buffer;
    for (std::uint64_t offset = 0;;) {
        const auto count = ReadSome(file, offset, buffer);
        if (!count)
            return false;
        if (*count == 0)
            return true;
        take(std::span<const std::byte>(buffer).first(*count));
        offset += *count;
    }
}

/// A file that is read from its beginning to its end.
class Source
{
public:
    explicit Source(StringView path)
        : path_(NativePath(path)), file_(Open(path_, state_)), opened_(file_.get(), state_, clock_)
    {
    }

    NativeFile Descriptor() const { return file_.get(); }

    /// Writes all to `copy`.
    CopiedContent CopyTo(ReplacementFile& copy, bool isChecksumWanted) const
    {
        CopiedContent content;
        const bool isRead = ReadPieces(file_.get(), [&](std::span<const std::byte> piece) {
            copy.Write(piece);
            content.size += piece.size();
            if (isChecksumWanted)
                content.checksum = Crc32(piece, content.checksum);
        });
        if (!isRead)
            throw ClassicFileFailure(errno, "read", path_);
        if (!opened_.IsUnchanged())
            throw ClassicFileFailure(FileTrouble::InUse, "read", path_,
                                     "it was changed by another program while it was copied; run it again");
        return content;
    }

private:
    static FileDescriptor Open(const NativeString& path, FileState& state)
    {
        FileDescriptor file = OpenForReading(path);
        const auto status = file.IsOpen() ? StatusOf(file.get()) : std::nullopt;
        if (!status)
            throw ClassicFileFailure(errno, "open", path);
        if (status->kind != FileKind::File)
            throw ClassicFileFailure(status->kind == FileKind::Folder ? EISDIR : EACCES, "read", path);
        state = status->state;
        return file;
    }

    NativeString path_;
    std::int64_t clock_ = OpenedFile::Clock();  // before the state, as OpenedFile asks for
    FileState state_;                           // which opening the file fills in
    FileDescriptor file_;
    OpenedFile opened_;
};

}  // namespace

std::optional<CopiedContent> ContentIn(NativeFile file)
{
    CopiedContent content;
    const bool isRead = ReadPieces(file, [&](std::span<const std::byte> piece) {
        content.size += piece.size();
        content.checksum = Crc32(piece, content.checksum);
    });
    return isRead ? std::optional(content) : std::nullopt;
}

CopiedContent ContentOfFile(StringView path)
{
    const Source file(path);
    if (const auto content = ContentIn(file.Descriptor()))
        return *content;
    throw ClassicFileFailure(errno, "read", NativePath(path));
}

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

void RehearseCopy(StringView target)
{
    const FilePlace place(NativePath(target), FilePlace::Links::Refused,
                          [](FileTrouble trouble, const NativeString& at, const std::string& reason) {
                              return ClassicFileFailure(trouble, "write", at, reason);
                          });
    if (!MayMakeFiles(place.folder))
        throw ClassicFileFailure(errno, "write", place.path);
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
