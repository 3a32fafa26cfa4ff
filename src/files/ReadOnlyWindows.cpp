#include "files/FileState.h"
#include "files/ReadOnly.h"
#include "platform/NativePath.h"
#include "platform/WindowsHeaders.h"

namespace tessarine
{

bool IsReadOnly(StringView path)
{
    const auto native = NativePathIfValid(path);
    const auto status = native ? StatusAt(*native) : std::nullopt;
    return status && (status->mode & FILE_ATTRIBUTE_READONLY) != 0;
}

}  // namespace tessarine
