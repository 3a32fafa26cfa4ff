#include "files/ProfileText.h"

#include <algorithm>
#include <optional>
#include <string>

#include "files/Files.h"
#include "platform/CaseFolding.h"
#include "platform/CodePage.h"
#include "platform/Utf16.h"
#include "platform/Utf8.h"

namespace tessarine
{

namespace
{

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

bool IsBlank(char character)
{
    return character == ' ' || character == '\t';
}

std::string_view Trimmed(std::string_view text)
{
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

/// Takes the first line off `rest`. CR and LF together give an empty line between them, which does no harm. The search
/// for CR ends at the LF, so that a file without a CR is not read to its end for each line.
std::string_view TakeLine(std::string_view& rest)
{
    std::string_view line = rest.substr(0, rest.find('\n'));
    line = line.substr(0, line.find('\r'));
    rest.remove_prefix(std::min(line.size() + 1, rest.size()));
    return Trimmed(line);
}

/// The name of a section or key to look for. Windows look up several in every file of a run, so the usual case, two
/// names of ASCII letters, is compared as the bytes stand.
class Name
{
public:
    explicit Name(StringView name) : folded_(FoldCase(name)), bytes_(ToUtf8(folded_)) {}

    bool Is(std::string_view text) const
    {
        text = Trimmed(text);
        const auto isAscii = [](char letter) { return static_cast<unsigned char>(letter) < 0x80; };
        if (!std::ranges::all_of(text, isAscii))
            return FoldCase(FromUtf8(text)) == folded_;
        const auto lower = [](char letter) { return letter >= 'A' && letter <= 'Z' ? char(letter | 0x20) : letter; };
        return std::ranges::equal(text, bytes_, {}, lower);
    }

private:
    String folded_;
    std::string bytes_;
};

/// The name between the brackets of a section line; nothing for any other line.
std::optional<std::string_view> SectionOf(std::string_view line)
{
    if (!line.starts_with('['))
        return std::nullopt;
    const std::size_t end = line.find(']');
    if (end == std::string_view::npos)
        return std::nullopt;
    return line.substr(1, end - 1);
}

/// What follows the first section line of that name. Only brackets are looked for, as most lines stand in other
/// sections.
std::string_view LinesOfSection(std::string_view content, const Name& section)
{
    for (std::size_t bracket = content.find('['); bracket != std::string_view::npos; bracket = content.find('[')) {
        // In the first line no line end is found, and npos + 1 is 0.
        const std::size_t begin = content.find_last_of("\r\n", bracket) + 1;
        content.remove_prefix(begin);
        const auto name = SectionOf(TakeLine(content));
        if (name && section.Is(*name))
            return content;
    }
    return {};
}

/// What follows the equals sign on the key's line, in the first section of that name.
std::string_view AfterEqualsSign(std::string_view content, const Name& section, const Name& key)
{
    for (std::string_view rest = LinesOfSection(content, section); !rest.empty();) {
        const std::string_view line = TakeLine(rest);
        // A second section of the same name is not looked at, as the first one counts.
        if (SectionOf(line))
            return {};
        if (line.starts_with(';') || line.starts_with('['))
            continue;
        const std::size_t equals = line.find('=');
        if (equals != std::string_view::npos && key.Is(line.substr(0, equals)))
            return line.substr(equals + 1);
    }
    return {};
}

std::string_view WithoutQuotes(std::string_view value)
{
    // A single quote character is no pair, although it is the first and the last one.
    const bool isQuoted =
        value.size() >= 2 && (value.front() == '"' || value.front() == '\'') && value.front() == value.back();
    return isQuoted ? value.substr(1, value.size() - 2) : value;
}

/// The first `count` characters of a text, a surrogate pair being one.
String FirstCharacters(String text, std::size_t count)
{
    std::size_t end = 0;
    for (; end < text.size() && count > 0; --count) {
        end += IsPairAt(text, end) ? 2 : 1;
    }
    text.resize(end);
    return text;
}

/// The value as it stands in the file.
std::string_view RawValue(std::string_view content, StringView section, StringView key)
{
    // Many editors write the mark; in front of the first bracket it would hide that section.
    if (content.starts_with(byteOrderMark))
        content.remove_prefix(byteOrderMark.size());
    // A value ends at its first NUL, as the texts that the Windows calls give.
    const std::string_view raw = AfterEqualsSign(content, Name(section), Name(key));
    return WithoutQuotes(Trimmed(raw.substr(0, raw.find('\0'))));
}

/// The code page of a file that is not UTF-8.
std::string CodePageOf(std::string_view content)
{
    constexpr std::string_view mark = "code page ";
    const std::string_view line = TakeLine(content);
    const std::size_t at = line.starts_with(';') ? line.find(mark) : std::string_view::npos;
    if (at == std::string_view::npos)
        return SystemCodePage();
    const std::string_view rest = line.substr(at + mark.size());
    return "windows-" + std::string(rest.substr(0, rest.find_first_not_of("0123456789")));
}

}  // namespace

String ProfileValue(std::string_view content, StringView section, StringView key, std::size_t longest)
{
    return FirstCharacters(FromUtf8(RawValue(content, section, key)), longest);
}

String ReadProfileValue(StringView path, StringView section, StringView key, std::size_t longest)
{
    // A missing file is an empty one, so that a language without a file leaves no line in the log for each text.
    if (!FileExists(path))
        return {};
    const std::string content = ReadWholeFile(path);
    // The whole file decides: a short text may be read either way.
    if (IsUtf8(content))
        return ProfileValue(content, section, key, longest);
    // The value is cut out before: the second byte of a letter is never below 0x40, so it looks like no line end,
    // blank, equals sign or quote, and a bracket counts only where a line begins.
    return FirstCharacters(FromCodePage(RawValue(content, section, key), CodePageOf(content)), longest);
}

}  // namespace tessarine
