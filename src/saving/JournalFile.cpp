#include "saving/JournalFile.h"

#include <cstdint>
#include <span>
#include <utility>

#include "files/FileState.h"
#include "files/ReadAt.h"
#include "files/WriteAll.h"

namespace tessarine
{

namespace
{

/// The longest journal tells of a write into a file of some gigabytes, block by block.
constexpr std::uint64_t longestJournal = std::uint64_t{64} << 20;

}  // namespace

JournalFile::JournalFile(NativeString path, FileDescriptor file) : path_(std::move(path)), file_(std::move(file)) {}

bool JournalFile::Append(std::string_view text)
{
    return WriteAll(file_.get(), text);
}

std::optional<std::string> JournalFile::Content() const
{
    const auto state = FileStateOf(file_.get());
    if (!state || state->size > longestJournal)
        return std::nullopt;
    std::string content(static_cast<std::size_t>(state->size), '\0');
    const auto length = ReadAt(file_.get(), 0, std::as_writable_bytes(std::span(content)));
    if (!length)
        return std::nullopt;
    content.resize(*length);
    return content;
}

}  // namespace tessarine
