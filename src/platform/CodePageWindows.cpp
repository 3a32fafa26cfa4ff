#include <algorithm>
#include <charconv>
#include <limits>
#include <optional>

#include "platform/CodePage.h"
#include "platform/WindowsHeaders.h"

namespace tessarine
{

namespace
{

constexpr UINT usual = 1252;

/// The number in a name like "windows-1250" or "cp850", the usual code page for a name that the system doesn't know.
UINT NumberOf(std::string_view name)
{
    if (name == "macintosh")
        return 10000;
    UINT number = 0;
    const std::size_t digits = std::min(name.find_first_of("0123456789"), name.size());
    std::from_chars(name.data() + digits, name.data() + name.size(), number);
    return IsValidCodePage(number) ? number : usual;
}

/// Nothing when some of the bytes, which are not none, have no meaning.
std::optional<String> Converted(std::string_view bytes, UINT codePage)
{
    const int size = static_cast<int>(bytes.size());
    const int length = MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, bytes.data(), size, nullptr, 0);
    if (length == 0)
        return std::nullopt;
    std::wstring text(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, bytes.data(), size, text.data(), length);
    return String(text.begin(), text.end());
}

/// Character by character, so that only bytes without a meaning are lost.
String ConvertedInPieces(std::string_view bytes, UINT codePage)
{
    String text;
    text.reserve(bytes.size());
    while (!bytes.empty()) {
        const std::size_t length = IsDBCSLeadByteEx(codePage, static_cast<BYTE>(bytes.front())) ? 2 : 1;
        const auto character = length <= bytes.size() ? Converted(bytes.substr(0, length), codePage) : std::nullopt;
        text += character.value_or(u"\xFFFD");
        bytes.remove_prefix(character ? length : 1);
    }
    return text;
}

}  // namespace

String FromCodePage(std::string_view bytes, const std::string& name)
{
    // The system counts bytes in an int.
    constexpr std::size_t most = std::numeric_limits<int>::max();
    const UINT codePage = NumberOf(name);
    if (bytes.empty())
        return {};
    if (bytes.size() <= most)
        if (auto text = Converted(bytes, codePage))
            return *std::move(text);
    return ConvertedInPieces(bytes, codePage);
}

std::optional<std::string> ToCodePage(StringView text, const std::string& name)
{
    constexpr std::size_t most = std::numeric_limits<int>::max() / 4;  // no character takes more bytes
    if (text.empty())
        return std::string();
    if (text.size() > most)
        return std::nullopt;
    const UINT codePage = NumberOf(name);
    const std::wstring wide(text.begin(), text.end());
    const int units = static_cast<int>(wide.size());
    const int size = WideCharToMultiByte(codePage, 0, wide.data(), units, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(codePage, 0, wide.data(), units, bytes.data(), size, nullptr, nullptr);
    // For what it lacks, the system takes a character that looks alike, or a question mark.
    return FromCodePage(bytes, name) == text ? std::optional(std::move(bytes)) : std::nullopt;
}

std::string SystemCodePage()
{
    return "windows-" + std::to_string(GetACP());
}

}  // namespace tessarine
