#include "platform/NativePath.h"

#include <utility>

#include "platform/Failure.h"

namespace tessarine
{

NativeString NativePath(StringView path)
{
    if (auto native = NativePathIfValid(path))
        return *std::move(native);
    // The system would end the path at the NUL and open another file.
    throw Failure(FailureNumber::FileNotFound, u"File not found: a path can't hold a NUL character");
}

}  // namespace tessarine
