#include "report/ReportSpool.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <span>
#include <vector>

#include "files/FileFailure.h"
#include "files/ReadAt.h"
#include "platform/FolderOf.h"
#include "saving/ReplacementFile.h"

namespace tessarine
{

namespace
{

/// Bytes that a read or a write takes at once.
constexpr std::size_t bufferSize = 1 << 16;

constexpr const char* attempt = "save (its temporary file can't be kept)";

}  // namespace

ReportSpool::ReportSpool(StringView path)
    : path_(NativePath(path)), folder_(NativeString(FolderOf(NativeStringView(path_)))), file_(folder_)
{
    if (!file_.IsOpen())
        throw SystemFileFailure(errno, attempt, path_);
}

void ReportSpool::Write(const std::string& text)
{
    pending_ += text;
    if (pending_.size() >= bufferSize)
        Flush();
}

void ReportSpool::Flush()
{
    if (!file_.Write(pending_))
        throw SystemFileFailure(errno, attempt, path_);
    length_ += pending_.size();
    pending_.clear();
}

void ReportSpool::CopyTo(ReplacementFile& file)
{
    Flush();
    std::vector<std::byte> buffer(bufferSize);
    for (std::uint64_t offset = 0; offset < length_;) {
        const auto wanted = std::min<std::uint64_t>(bufferSize, length_ - offset);
        const auto piece = std::span(buffer).first(static_cast<std::size_t>(wanted));
        const auto count = ReadAt(file_.Descriptor(), offset, piece);
        if (!count || *count < piece.size())
            throw SystemFileFailure(count ? EIO : errno, attempt, path_);
        file.Write(piece);
        offset += *count;
    }
}

}  // namespace tessarine
