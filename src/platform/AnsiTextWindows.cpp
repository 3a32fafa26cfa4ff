#include "platform/AnsiText.h"

#include "platform/CodePage.h"
#include "platform/WindowsHeaders.h"

namespace tessarine
{

std::optional<std::string> ToAnsi(StringView text)
{
    const std::wstring wide(text.begin(), text.end());
    const int length = static_cast<int>(wide.size());
    const int size = WideCharToMultiByte(CP_ACP, 0, wide.data(), length, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_ACP, 0, wide.data(), length, bytes.data(), size, nullptr, nullptr);
    // The call tells of letters that it replaced for some code pages only.
    if (FromCodePage(bytes, SystemCodePage()) != text)
        return std::nullopt;
    return bytes;
}

}  // namespace tessarine
