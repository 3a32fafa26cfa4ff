#include "platform/NativePath.h"

#include "platform/Failure.h"

namespace tessarine
{

std::string NativePath(StringView path)
{
    if (path.find(u'\0') != StringView::npos)
        throw Failure(FailureNumber::FileNotFound, u"File not found: a path can't hold a NUL character");
    return ToUtf8(path);
}

}  // namespace tessarine
