#include "platform/AnsiText.h"

#include "platform/CodePage.h"

namespace tessarine
{

std::optional<std::string> ToAnsi(StringView text)
{
    return ToCodePage(text, SystemCodePage());
}

}  // namespace tessarine
