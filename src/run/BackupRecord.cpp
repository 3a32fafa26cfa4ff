#include "run/BackupRecord.h"

#include <charconv>
#include <cstdio>

#include "platform/Utf16.h"

namespace tessarine
{

namespace
{

constexpr int decimal = 10;
constexpr int hexadecimal = 16;
constexpr std::size_t checksumDigits = 8;

std::string Hex(std::uint32_t value, std::size_t digits)
{
    char text[checksumDigits + 1] = {};
    std::snprintf(text, sizeof text, "%0*X", static_cast<int>(digits), value);
    return text;
}

template <class Number>
std::optional<Number> NumberIn(std::string_view text, int base)
{
    Number number{};
    const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
    if (text.empty() || error != std::errc() || stop != text.data() + text.size())
        return std::nullopt;
    return number;
}

/// The name with what would end a line or a field, and bytes that aren't UTF-8, as "\x" and two digits.
std::string Escaped(StringView name)
{
    std::string text;
    for (std::size_t at = 0; at < name.size(); at += IsPairAt(name, at) ? 2 : 1) {
        const char32_t codePoint = CodePointAt(name, at);
        if (codePoint == U'\\')
            text += "\\\\";
        else if (codePoint < 0x20 || codePoint == 0x7F)
            text += "\\x" + Hex(codePoint, 2);
        else if (IsSurrogate(codePoint))
            text += "\\x" + Hex(codePoint & 0xFF, 2);  // stands for this byte (FromUtf8)
        else
            AppendUtf8(text, codePoint);
    }
    return text;
}

std::optional<String> Unescaped(std::string_view text)
{
    std::string bytes;
    while (!text.empty()) {
        if (text.front() != '\\') {
            bytes += text.front();
            text.remove_prefix(1);
        } else if (text.starts_with("\\\\")) {
            bytes += '\\';
            text.remove_prefix(2);
        } else {
            const auto byte =
                text.starts_with("\\x") ? NumberIn<std::uint8_t>(text.substr(2, 2), hexadecimal) : std::nullopt;
            if (!byte || text.size() < 4)
                return std::nullopt;
            bytes += static_cast<char>(*byte);
            text.remove_prefix(4);
        }
    }
    return bytes.empty() ? std::nullopt : std::optional(FromUtf8(bytes));
}

/// Takes the field off the front of a line, up to the next tab. Nothing when there is none.
std::optional<std::string_view> TakeField(std::string_view& line)
{
    const std::size_t end = line.find('\t');
    if (end == std::string_view::npos)
        return std::nullopt;
    const std::string_view field = line.substr(0, end);
    line.remove_prefix(end + 1);
    return field;
}

}  // namespace

std::string LineOf(const RecordedBackup& backup)
{
    // The checksum stands last, as it shows by its length that nothing of the line is missing.
    return Escaped(backup.name) + '\t' + Escaped(backup.original) + '\t' + std::to_string(backup.content.size) + '\t' +
           Hex(backup.content.checksum, checksumDigits) + '\n';
}

std::optional<RecordedBackup> RecordedBackupIn(std::string_view line)
{
    const auto name = TakeField(line);
    const auto original = TakeField(line);
    const auto size = TakeField(line);
    if (!name || !original || !size || line.size() != checksumDigits)
        return std::nullopt;

    auto nameValue = Unescaped(*name);
    auto originalValue = Unescaped(*original);
    const auto sizeValue = NumberIn<std::uint64_t>(*size, decimal);
    const auto checksumValue = NumberIn<std::uint32_t>(line, hexadecimal);
    if (!nameValue || !originalValue || !sizeValue || !checksumValue)
        return std::nullopt;
    return RecordedBackup{*std::move(nameValue), *std::move(originalValue), {*sizeValue, *checksumValue}};
}

}  // namespace tessarine
