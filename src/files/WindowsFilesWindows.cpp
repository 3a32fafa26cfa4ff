#include "files/WindowsFiles.h"

#include <cerrno>
#include <memory>

#include "files/FileState.h"
#include "files/WindowsErrors.h"
#include "platform/WindowsHeaders.h"

#include <sddl.h>

namespace tessarine
{

namespace
{

constexpr std::int64_t ticksTo1970 = 116'444'736'000'000'000;
constexpr std::int64_t nanosecondsPerTick = 100;

FileDescriptor Open(const NativeString& path, unsigned long access, unsigned long share, unsigned long flags)
{
    // Of no path the system says that its folder is missing.
    if (path.empty()) {
        errno = ENOENT;
        return {};
    }
    FileDescriptor file(
        CreateFileW(path.c_str(), access, share, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS | flags, nullptr));
    if (!file.IsOpen())
        LeaveErrorInErrno();
    return file;
}

}  // namespace

FileDescriptor OpenExisting(const NativeString& path, unsigned long access, unsigned long share)
{
    return Open(path, access, share, 0);
}

FileDescriptor OpenItself(const NativeString& path, unsigned long access, unsigned long share)
{
    return Open(path, access, share, FILE_FLAG_OPEN_REPARSE_POINT);
}

FileDescriptor OpenNoLink(const NativeString& path, unsigned long access, unsigned long share)
{
    if (HasAttribute(path, FILE_ATTRIBUTE_REPARSE_POINT)) {
        const FileDescriptor itself = OpenItself(path, FILE_READ_ATTRIBUTES);
        const auto status = itself.IsOpen() ? StatusOf(itself.get()) : std::nullopt;
        if (status && status->kind == FileKind::Link) {
            errno = ELOOP;
            return {};
        }
    }
    return OpenExisting(path, access, share);
}

FileDescriptor OpenForAttributeChange(const NativeString& path)
{
    constexpr DWORD looking = FILE_READ_ATTRIBUTES | READ_CONTROL;
    FileDescriptor file = OpenExisting(path, looking | FILE_WRITE_ATTRIBUTES);
    // Wine takes the right for one to write into the file, which a protected one refuses, and doesn't ask for it later.
    if (!file.IsOpen() && errno == EACCES)
        file = OpenExisting(path, looking);
    return file;
}

bool IsThere(const NativeString& path)
{
    return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool HasAttribute(const NativeString& path, unsigned long attribute)
{
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & attribute) != 0;
}

bool DeleteEvenIfProtected(const NativeString& path)
{
    if (DeleteFileW(path.c_str()))
        return true;
    const DWORD error = GetLastError();
    const DWORD attributes = GetFileAttributesW(path.c_str());
    const bool isProtected = attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0;
    if (error == ERROR_ACCESS_DENIED && isProtected && SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL)) {
        if (DeleteFileW(path.c_str()))
            return true;
        SetFileAttributesW(path.c_str(), attributes);
    }
    errno = ErrnoOf(error);
    return false;
}

unsigned long SettableAttributes(unsigned long attributes)
{
    constexpr DWORD settable = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM |
                               FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;
    return (attributes & settable) == 0 ? FILE_ATTRIBUTE_NORMAL : attributes & settable;
}

NativeString FinalPathOf(NativeFile file)
{
    NativeString path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetFinalPathNameByHandleW(file, path.data(), static_cast<DWORD>(path.size()), 0);
        if (length == 0)
            LeaveErrorInErrno();
        const bool fits = length < path.size();
        // A length that doesn't fit counts the NUL at the end.
        path.resize(length);
        if (fits)
            return path;
    }
}

std::int64_t NanosecondsFrom(std::int64_t ticks)
{
    // Unsigned, as years far from ours wrap around.
    return static_cast<std::int64_t>((static_cast<std::uint64_t>(ticks) - std::uint64_t{ticksTo1970}) *
                                     std::uint64_t{nanosecondsPerTick});
}

std::int64_t TicksFrom(std::int64_t nanoseconds)
{
    return nanoseconds / nanosecondsPerTick + ticksTo1970;
}

std::string TextOfIdentifier(void* identifier)
{
    char* text = nullptr;
    if (!ConvertSidToStringSidA(identifier, &text))
        return {};
    const std::unique_ptr<char, void (*)(void*)> owned(text, [](void* memory) { LocalFree(memory); });
    return text;
}

}  // namespace tessarine
