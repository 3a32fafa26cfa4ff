#include "shell/OpenNamedFile.h"

#include "platform/NativePath.h"

namespace tessarine
{

std::int32_t OpenNamedFile(const String& name, const DocumentOpenerPort& open)
{
    NativePath(name);  // raises for a NUL; the shell has its own way with all else
    return open(name);
}

}  // namespace tessarine
