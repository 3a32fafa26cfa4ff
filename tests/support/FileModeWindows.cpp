#include <stdexcept>

#include "platform/NativePath.h"
#include "platform/WindowsHeaders.h"
#include "support/TemporaryFolder.h"

namespace tessarine
{

namespace
{

constexpr mode_t everyonesToWrite = 0222;

DWORD AttributesOf(StringView path)
{
    const DWORD attributes = GetFileAttributesW(NativePath(path).c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES)
        throw std::runtime_error("missing: " + ToUtf8(path));
    return attributes;
}

}  // namespace

mode_t ModeOf(StringView path)
{
    return AttributesOf(path) & FILE_ATTRIBUTE_READONLY ? 0444 : 0644;
}

void SetMode(StringView path, mode_t mode)
{
    const DWORD others = AttributesOf(path) & ~static_cast<DWORD>(FILE_ATTRIBUTE_READONLY);
    if (!SetFileAttributesW(NativePath(path).c_str(), others | (mode & everyonesToWrite ? 0 : FILE_ATTRIBUTE_READONLY)))
        throw std::runtime_error("could not set the mode of " + ToUtf8(path));
}

}  // namespace tessarine
