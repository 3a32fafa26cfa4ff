#include "platform/NativePath.h"

namespace tessarine
{

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
