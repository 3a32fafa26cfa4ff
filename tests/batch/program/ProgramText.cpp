#include <algorithm>

#include "batch/program/Program.h"
#include "platform/PathSeparator.h"

namespace tessarine::test
{

std::string Native(std::string text)
{
    std::ranges::replace(text, '/', static_cast<char>(PathSeparator));
    return text;
}

std::string NativeInJson(std::string_view text)
{
    std::string native;
    for (const char unit : text)
        native += unit != '/' ? std::string(1, unit) : PathSeparator == u'/' ? "/" : "\\\\";
    return native;
}

}  // namespace tessarine::test
