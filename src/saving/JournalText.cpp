#include "saving/JournalText.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <span>

#include "platform/Crc32.h"

namespace tessarine
{

namespace
{

constexpr std::size_t checksumLength = 8;

std::string ChecksumOf(std::string_view text)
{
    std::array<char, checksumLength + 1> digits{};
    std::snprintf(digits.data(), digits.size(), "%08x", unsigned{Crc32(std::as_bytes(std::span(text)))});
    return digits.data();
}

/// A value without the characters that end fields and lines, which a file's name may hold.
std::string Escaped(std::string_view value)
{
    std::string text;
    for (const char byte : value) {
        if (byte == '\\')
            text += "\\\\";
        else if (byte == '\t')
            text += "\\t";
        else if (byte == '\n')
            text += "\\n";
        else
            text += byte;
    }
    return text;
}

std::string Unescaped(std::string_view text)
{
    std::string value;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\' || i + 1 == text.size())
            value += text[i];
        else if (const char escaped = text[++i]; escaped == 't')
            value += '\t';
        else
            value += escaped == 'n' ? '\n' : escaped;
    }
    return value;
}

}  // namespace

std::string JournalLine(const JournalFields& fields)
{
    std::string line;
    for (const std::string& field : fields)
        line += Escaped(field) + '\t';
    return line + ChecksumOf(line) + '\n';
}

std::optional<JournalFields> JournalFieldsIn(std::string_view line)
{
    if (line.size() < checksumLength)
        return std::nullopt;
    std::string_view content = line.substr(0, line.size() - checksumLength);
    if (ChecksumOf(content) != line.substr(content.size()))
        return std::nullopt;
    JournalFields fields;
    for (std::size_t end = content.find('\t'); end != std::string_view::npos; end = content.find('\t')) {
        fields.push_back(Unescaped(content.substr(0, end)));
        content.remove_prefix(end + 1);
    }
    return fields;
}

std::vector<JournalFields> ReadJournal(std::string_view text)
{
    std::vector<JournalFields> lines;
    for (std::size_t end = text.find('\n'); end != std::string_view::npos; end = text.find('\n')) {
        auto fields = JournalFieldsIn(text.substr(0, end));
        if (!fields || fields->empty())
            break;
        lines.push_back(*std::move(fields));
        text.remove_prefix(end + 1);
    }
    return lines;
}

}  // namespace tessarine
