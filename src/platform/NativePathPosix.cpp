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

std::optional<NativeString> NativePathIfValid(StringView path)
{
    if (path.find(u'\0') != StringView::npos)
        return std::nullopt;
    return ToUtf8(path);
}

String PathText(NativeStringView path)
{
    return FromUtf8(path);
}

bool IsFullPath(std::string_view path)
{
    return path.starts_with('/');
}

NativeString NativeName(std::string_view ascii)
{
    return NativeString(ascii);
}

}  // namespace tessarine
