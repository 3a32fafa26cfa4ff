#include "office/builtin/xml/XmlText.h"

#include <algorithm>
#include <array>
#include <optional>

#include "office/builtin/limits/Damage.h"

namespace tessarine::builtin
{

namespace
{

bool IsControl(char32_t c)
{
    return c < 0x20;
}

/// The code of "_xHHHH_" at the start of the text.
template <class View>
std::optional<char32_t> EscapeCode(View text)
{
    if (text.size() < 7 || text[0] != '_' || text[1] != 'x' || text[6] != '_')
        return std::nullopt;
    char32_t code = 0;
    for (std::size_t i = 2; i < 6; ++i) {
        const auto c = static_cast<char32_t>(text[i]);
        if (c >= '0' && c <= '9')
            code = code * 16 + (c - '0');
        else if (c >= 'A' && c <= 'F')
            code = code * 16 + (c - 'A' + 10);
        else if (c >= 'a' && c <= 'f')
            code = code * 16 + (c - 'a' + 10);
        else
            return std::nullopt;
    }
    return code;
}

template <class View>
bool IsControlEscape(View text)
{
    const auto code = EscapeCode(text);
    return code && IsControl(*code);
}

void AppendEscapeCode(std::string& bytes, char16_t unit, const char* digits)
{
    bytes += "_x00";
    bytes += digits[unit >> 4 & 0xF];
    bytes += digits[unit & 0xF];
    bytes += '_';
}

/// Calls `put` with each code point; lone surrogates come as they are.
template <class Put>
void ForEachCodePoint(StringView text, Put&& put)
{
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char32_t unit = text[i];
        if (unit >= 0xD800 && unit <= 0xDBFF && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] <= 0xDFFF) {
            put(0x10000 + ((unit - 0xD800) << 10) + (text[i + 1] - 0xDC00u), i);
            ++i;
        } else {
            put(unit, i);
        }
    }
}

void AppendEscaped(std::string& bytes, char32_t c)
{
    switch (c) {
        case '&':
            bytes += "&amp;";
            break;
        case '<':
            bytes += "&lt;";
            break;
        case '>':
            bytes += "&gt;";
            break;
        case 0xFFFE:
        case 0xFFFF:
            AppendUtf8(bytes, 0xFFFD);
            break;
        default:
            AppendUtf8(bytes, c);  // which turns a lone surrogate into U+FFFD
    }
}

/// XML 1.0 has no way to hold these, not even as references.
bool IsForbidden(char32_t c)
{
    return IsControl(c) && c != '\t' && c != '\n' && c != '\r';
}

}  // namespace

std::string EscapeText(StringView text)
{
    std::string bytes;
    ForEachCodePoint(text, [&](char32_t c, std::size_t) {
        if (IsForbidden(c))
            AppendUtf8(bytes, 0xFFFD);
        else if (c == '\r')
            bytes += "&#13;";  // a raw one would be read as a line feed
        else
            AppendEscaped(bytes, c);
    });
    return bytes;
}

std::string EscapeAttribute(StringView text)
{
    std::string bytes;
    ForEachCodePoint(text, [&](char32_t c, std::size_t) {
        if (IsForbidden(c))
            AppendUtf8(bytes, 0xFFFD);
        else if (c == '"')
            bytes += "&quot;";
        else if (c == '\'')
            bytes += "&apos;";
        else if (IsControl(c))
            bytes += "&#" + std::to_string(static_cast<unsigned>(c)) + ";";  // white space would be read as blanks
        else
            AppendEscaped(bytes, c);
    });
    return bytes;
}

namespace
{

bool IsEscapedInRuns(char32_t c)
{
    return IsControl(c) && c != '\t';
}

/// True for a literal "_xHHHH_" of a control character; its last underscore may be the first of an escaped character.
bool ReadsAsControlEscape(StringView text)
{
    String seven(text.substr(0, 7));
    if (seven.size() == 7 && IsEscapedInRuns(seven.back()))
        seven.back() = u'_';
    return IsControlEscape(StringView(seven));
}

/// True behind a literal "_x005F": an escape there would make one of it, and it has none of its own.
bool StandsBehindEscapeOfUnderscore(StringView text, std::size_t at)
{
    return at >= 6 && EscapeCode(StringView(String(text.substr(at - 6, 6)) + u'_')) == U'_';
}

}  // namespace

std::string EscapeRunText(StringView text)
{
    std::string bytes;
    ForEachCodePoint(text, [&](char32_t c, std::size_t at) {
        if (IsEscapedInRuns(c) && StandsBehindEscapeOfUnderscore(text, at)) {
            AppendUtf8(bytes, 0xFFFD);
        } else if (IsEscapedInRuns(c)) {
            AppendEscapeCode(bytes, static_cast<char16_t>(c), "0123456789ABCDEF");
        } else if (c == '_' && ReadsAsControlEscape(text.substr(at))) {
            bytes += "_x005F_";
        } else {
            AppendEscaped(bytes, c);
        }
    });
    return bytes;
}

std::string EscapePropertyText(StringView text)
{
    std::string bytes;
    ForEachCodePoint(text, [&](char32_t c, std::size_t) {
        if (IsControl(c) && c != '\t')
            AppendEscapeCode(bytes, static_cast<char16_t>(c), "0123456789abcdef");
        else
            AppendEscaped(bytes, c);
    });
    return bytes;
}

namespace
{

/// A character or entity reference at the start of a text.
struct Reference {
    char32_t codePoint;
    std::size_t length;  // bytes, from "&" to ";"
};

std::optional<char32_t> NumberOf(std::string_view digits)
{
    const bool hexadecimal = digits.starts_with('x');
    if (hexadecimal)
        digits.remove_prefix(1);
    if (digits.empty())
        return std::nullopt;
    const char32_t base = hexadecimal ? 16 : 10;
    char32_t value = 0;
    for (const char c : digits) {
        char32_t digit = base;
        if (c >= '0' && c <= '9')
            digit = static_cast<char32_t>(c - '0');
        else if (c >= 'a' && c <= 'f')
            digit = static_cast<char32_t>(c - 'a' + 10);
        else if (c >= 'A' && c <= 'F')
            digit = static_cast<char32_t>(c - 'A' + 10);
        if (digit >= base || value > 0x10FFFF)
            return std::nullopt;
        value = value * base + digit;
    }
    return value;
}

std::optional<Reference> ReadReference(std::string_view text)
{
    constexpr std::size_t longest = 32;  // with some leading zeros
    const std::size_t semicolon = text.substr(0, longest).find(';');
    if (semicolon == std::string_view::npos)
        return std::nullopt;
    const std::string_view name = text.substr(1, semicolon - 1);
    std::optional<char32_t> c;
    if (name == "amp")
        c = '&';
    else if (name == "lt")
        c = '<';
    else if (name == "gt")
        c = '>';
    else if (name == "quot")
        c = '"';
    else if (name == "apos")
        c = '\'';
    else if (name.starts_with('#'))
        c = NumberOf(name.substr(1));
    if (!c)
        return std::nullopt;
    return Reference{*c, semicolon + 1};
}

/// Reads content front to back. One unit of the text comes from one character, one reference or one escape.
class ContentReader
{
public:
    explicit ContentReader(std::string_view content) : content_(content) {}

    std::vector<ContentUnit> Read()
    {
        while (at_ < content_.size()) {
            if (inCData_ && Starts("]]>"))
                inCData_ = false, at_ += 3;
            else if (!inCData_ && content_[at_] == '<')
                SkipMarkup();
            else
                ReadCharacter();
        }
        JoinEscapes();
        return std::move(units_);
    }

private:
    bool Starts(std::string_view text) const { return content_.substr(at_).starts_with(text); }

    void SkipTo(std::string_view end)
    {
        const std::size_t found = content_.find(end, at_);
        if (found == std::string_view::npos)
            throw Damage({}, "text holds unclosed markup");
        at_ = found + end.size();
    }

    void SkipMarkup()
    {
        if (Starts("<![CDATA["))
            inCData_ = true, at_ += 9;
        else if (Starts("<!--"))
            SkipTo("-->");
        else if (Starts("<?"))
            SkipTo("?>");
        else
            throw Damage({}, "text holds an element");
    }

    void ReadCharacter()
    {
        const std::size_t begin = at_;
        if (!inCData_ && content_[at_] == '&') {
            if (const auto reference = ReadReference(content_.substr(at_))) {
                at_ += reference->length;
                Push(reference->codePoint, begin);
                return;
            }
        }
        if (content_[at_] == '\r') {  // XML 1.0 2.11: CR LF and CR are one LF
            at_ += Starts("\r\n") ? 2 : 1;
            Push('\n', begin);
            return;
        }
        const std::size_t length = std::min(SequenceLength(content_[at_]), content_.size() - at_);
        const String text = FromUtf8(content_.substr(at_, length));
        const bool whole = text.size() == 1 || (text.size() == 2 && text[0] >= 0xD800 && text[0] <= 0xDBFF);
        at_ += whole ? length : 1;  // bytes that are no UTF-8 come one by one
        for (const char16_t unit : whole ? text : FromUtf8(content_.substr(begin, 1)))
            units_.push_back({unit, begin, at_, inCData_});
    }

    static std::size_t SequenceLength(char lead)
    {
        const auto byte = static_cast<unsigned char>(lead);
        return byte < 0xC0 ? 1 : byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
    }

    void Push(char32_t c, std::size_t begin)
    {
        std::string utf8;
        AppendUtf8(utf8, c);
        for (const char16_t unit : FromUtf8(utf8))
            units_.push_back({unit, begin, at_, inCData_});
    }

    /// "_xHHHH_" of a control character is one unit that stands for all seven characters; so is "_x005F_" in front of
    /// what would be one with an underscore.
    void JoinEscapes()
    {
        String text;
        for (const ContentUnit& unit : units_)
            text += unit.unit;
        std::size_t shift = 0;
        for (std::size_t at = text.find(u"_x00"); at != String::npos; at = text.find(u"_x00", at + 1)) {
            const auto code = EscapeCode(StringView(text).substr(at));
            if (!code || !(IsControl(*code) || (*code == '_' && IsControlEscape(StringView(text).substr(at + 6)))))
                continue;
            const std::size_t first = at - shift;
            units_[first].unit = static_cast<char16_t>(*code);
            units_[first].end = units_[first + 6].end;
            units_.erase(units_.begin() + static_cast<std::ptrdiff_t>(first) + 1,
                         units_.begin() + static_cast<std::ptrdiff_t>(first) + 7);
            shift += 6;
            at += 6;
        }
    }

    std::string_view content_;
    std::size_t at_ = 0;
    bool inCData_ = false;
    std::vector<ContentUnit> units_;
};

}  // namespace

std::vector<ContentUnit> ContentUnits(std::string_view content)
{
    return ContentReader(content).Read();
}

namespace
{

/// What a character of content asks for. Bits, so that one pass over a text tells all that it needs.
enum CharacterClass : std::uint8_t { Plain = 0, NonAscii = 1, ReferenceStart = 2, Rare = 4 };

constexpr auto characterClasses = [] {
    std::array<std::uint8_t, 256> classes{};
    for (std::size_t c = 0x80; c < classes.size(); ++c)
        classes[c] = NonAscii;
    classes['&'] = ReferenceStart;
    classes['<'] = Rare;   // CDATA, comments
    classes['\r'] = Rare;  // line ends to be read as one
    classes['_'] = Rare;   // may begin an escape
    return classes;
}();

}  // namespace

void AppendContent(std::string_view content, String& text)
{
    std::uint8_t needs = Plain;
    for (const char c : content)
        needs |= characterClasses[static_cast<unsigned char>(c)];
    if (needs == Plain) {
        text.append(content.begin(), content.end());
    } else if ((needs & Rare) != 0) {
        for (const ContentUnit& unit : ContentUnits(content))
            text += unit.unit;
    } else if ((needs & ReferenceStart) == 0) {
        text += FromUtf8(content);
    } else {
        std::string decoded;
        decoded.reserve(content.size());
        for (std::size_t at = 0; at < content.size();) {
            const auto reference = content[at] == '&' ? ReadReference(content.substr(at)) : std::nullopt;
            if (reference) {
                AppendUtf8(decoded, reference->codePoint);
                at += reference->length;
            } else {
                const std::size_t next = std::min(content.find('&', at + 1), content.size());
                decoded.append(content, at, next - at);
                at = next;
            }
        }
        text += FromUtf8(decoded);
    }
}

std::string DecodeAttribute(std::string_view value)
{
    std::string decoded;
    decoded.reserve(value.size());
    for (std::size_t i = 0; i < value.size();) {
        if (value[i] == '\r' && i + 1 < value.size() && value[i + 1] == '\n')
            ++i;
        const bool isSpace = value[i] == '\r' || value[i] == '\n' || value[i] == '\t';
        if (const auto reference = value[i] == '&' ? ReadReference(value.substr(i)) : std::nullopt) {
            AppendUtf8(decoded, reference->codePoint);
            i += reference->length;
        } else {
            decoded += isSpace ? ' ' : value[i];
            ++i;
        }
    }
    return decoded;
}

std::string ReplaceContent(std::string_view content, StringView text, std::string (*escape)(StringView))
{
    const std::vector<ContentUnit> units = ContentUnits(content);
    // Bytes in a CDATA section can't be mixed with escaped ones; such content is written anew.
    if (std::ranges::any_of(units, &ContentUnit::inCData))
        return escape(text);
    const auto isLow = [](char16_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; };
    const std::size_t shorter = std::min(units.size(), text.size());
    std::size_t front = 0;
    while (front < shorter && units[front].unit == text[front])
        ++front;
    while (front > 0 &&
           ((front < units.size() && isLow(units[front].unit)) || (front < text.size() && isLow(text[front]))))
        --front;  // never half a surrogate pair
    std::size_t back = 0;
    while (back < shorter - front && units[units.size() - 1 - back].unit == text[text.size() - 1 - back])
        ++back;
    while (back > 0 && isLow(text[text.size() - back]))
        --back;
    const std::size_t frontEnd = front == 0 ? 0 : units[front - 1].end;
    const std::size_t backBegin = back == 0 ? content.size() : units[units.size() - back].begin;
    std::string result(content.substr(0, frontEnd));
    result += escape(text.substr(front, text.size() - front - back));
    result += content.substr(backBegin);
    // The pieces may have come together to what neither of them was: an escape, a reference, or "]]>", which can't
    // stand outside of CDATA (XML 1.0 2.4).
    String read;
    AppendContent(result, read);
    return read == text && result.find("]]>") == std::string::npos ? result : escape(text);
}

}  // namespace tessarine::builtin
