#include <cerrno>
#include <memory>

#include "files/OpenForReading.h"
#include "files/ReadAt.h"
#include "files/WindowsErrors.h"
#include "files/WindowsFiles.h"
#include "files/WriteAll.h"
#include "platform/WindowsHeaders.h"
#include "saving/ReplacementCalls.h"

#include <array>
#include <span>

namespace tessarine
{

namespace
{

void CopyStream(const NativeString& from, const NativeString& to)
{
    const FileDescriptor source = OpenForReading(from);
    const FileDescriptor target(
        CreateFileW(to.c_str(), GENERIC_WRITE, SharedWithAll, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!source.IsOpen() || !target.IsOpen())
        return;
    std::array<char, 16 * 1024> buffer;
    for (std::uint64_t offset = 0;;) {
        const auto count = ReadSome(source.get(), offset, std::as_writable_bytes(std::span(buffer)));
        if (!count || *count == 0 || !WriteAll(target.get(), {buffer.data(), *count}))
            return;
        offset += *count;
    }
}

}  // namespace

bool MayWrite(const HeldFolder& folder, const NativeString& name)
{
    // A write protection fails this, too.
    return OpenExisting(folder.PathOf(name), GENERIC_WRITE).IsOpen();
}

bool MayUnprotect(const HeldFolder& folder, const NativeString& name)
{
    const DWORD attributes = GetFileAttributesW(folder.PathOf(name).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0;
}

bool MayMakeFiles(const HeldFolder&)
{
    return true;
}

FileDescriptor OpenForAttributes(const HeldFolder& folder, const NativeString& name)
{
    return OpenExisting(folder.PathOf(name), FILE_READ_ATTRIBUTES | READ_CONTROL);
}

FileDescriptor OpenForWriting(const HeldFolder& folder, const NativeString& name)
{
    return OpenNoLink(folder.PathOf(name), GENERIC_READ | GENERIC_WRITE);
}

FileDescriptor OpenForDate(const HeldFolder& folder, const NativeString& name)
{
    return OpenNoLink(folder.PathOf(name), FILE_READ_ATTRIBUTES | FILE_WRITE_ATTRIBUTES);
}

std::uint64_t CopyRange(NativeFile, std::uint64_t, NativeFile, std::uint64_t)
{
    return 0;
}

void CopyStreams(NativeFile original, NativeFile copy)
{
    const NativeString from = FinalPathOf(original);
    WIN32_FIND_STREAM_DATA stream{};
    const HANDLE search = FindFirstStreamW(from.c_str(), FindStreamInfoStandard, &stream, 0);
    // Most volumes that aren't of Windows itself know no streams.
    if (search == INVALID_HANDLE_VALUE)
        return;
    const std::unique_ptr<void, BOOL (*)(HANDLE)> owned(search, &FindClose);
    constexpr NativeStringView content = L"::$DATA";
    NativeString to;
    do {
        const NativeString name = stream.cStreamName;
        if (name == content)
            continue;
        if (to.empty())
            to = FinalPathOf(copy);
        CopyStream(from + name, to + name);
    } while (FindNextStreamW(search, &stream));
}

// The next start takes a file of this user's, whoever else may read it.
void MakeOwnAlone(NativeFile) {}

WriteBarrier WriteBarrier::On(const HeldFolder& folder, const NativeString& name)
{
    WriteBarrier barrier;
    barrier.file_ = OpenExisting(folder.PathOf(name), GENERIC_READ, SharedWithReaders);
    // A file that can't be read can be replaced all the same.
    barrier.isUp_ = barrier.file_.IsOpen() || errno == EACCES;
    return barrier;
}

bool IsOpenForWriting(const HeldFolder&, const NativeString&)
{
    return false;
}

bool FlushFolder(const HeldFolder& folder)
{
    if (FlushFileBuffers(folder.get()))
        return true;
    LeaveErrorInErrno();
    // Who may not make files in a folder can't flush it; other file systems have no such thing.
    return errno == EACCES || errno == ENOSYS;
}

}  // namespace tessarine
