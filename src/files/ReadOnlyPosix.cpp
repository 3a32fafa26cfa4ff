#include <sys/stat.h>

#include "files/FileState.h"
#include "files/ReadOnly.h"
#include "platform/NativePath.h"

namespace tessarine
{

bool IsReadOnly(StringView path)
{
    const auto native = NativePathIfValid(path);
    const auto status = native ? StatusAt(*native) : std::nullopt;
    return status && (status->mode & S_IWUSR) == 0;
}

}  // namespace tessarine
