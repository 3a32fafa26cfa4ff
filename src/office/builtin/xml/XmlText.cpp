#include "office/builtin/xml/XmlText.h"

#include <algorithm>
#include <array>
#include <optional>

#include "office/builtin/limits/Damage.h"
#include "office/builtin/xml/ByteBlock.h"
#include "office/builtin/xml/XmlCharacters.h"
#include "office/builtin/xml/XmlScanner.h"
#include "platform/CommonEnds.h"
#include "platform/Utf16.h"

namespace tessarine::builtin
{

namespace
{

bool IsControl(char32_t c)
{
    return c < 0x20;
}

/// The code of "_xHHHH_" at the start of the text.
std::optional<char32_t> EscapeCode(StringView text)
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

bool IsControlEscape(StringView text)
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

/// Calls `put` with each code point and where it begins; lone surrogates come as they are.
template <class Put>
void ForEachCodePoint(StringView text, Put&& put)
{
    for (std::size_t i = 0; i < text.size(); i += IsPairAt(text, i) ? 2 : 1)
        put(CodePointAt(text, i), i);
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
    return IsControlEscape(seven);
}

/// True after a literal "_x005F": an escape there would complete it to the escape of an underscore.
bool FollowsEscapeOfUnderscore(StringView text, std::size_t at)
{
    return at >= 6 && EscapeCode(String(text.substr(at - 6, 6)) + u'_') == U'_';
}

}  // namespace

namespace
{

std::string EscapeWithCodes(StringView text, const char* digits)
{
    std::string bytes;
    ForEachCodePoint(text, [&](char32_t c, std::size_t at) {
        if (IsEscapedInRuns(c) && FollowsEscapeOfUnderscore(text, at)) {
            AppendUtf8(bytes, 0xFFFD);
        } else if (IsEscapedInRuns(c)) {
            AppendEscapeCode(bytes, static_cast<char16_t>(c), digits);
        } else if (c == '_' && ReadsAsControlEscape(text.substr(at))) {
            bytes += "_x005F_";
        } else {
            AppendEscaped(bytes, c);
        }
    });
    return bytes;
}

}  // namespace

std::string EscapeRunText(StringView text)
{
    return EscapeWithCodes(text, "0123456789ABCDEF");
}

std::string EscapePropertyText(StringView text)
{
    return EscapeWithCodes(text, "0123456789abcdef");
}

bool ReadsAs(StringView read, StringView written)
{
    return std::ranges::equal(read, written, [](char16_t is, char16_t was) {
        return is == was || (is == 0xFFFD && (IsControl(was) || IsSurrogate(was) || was >= 0xFFFE));
    });
}

namespace
{

/// Reads content front to back: the one definition of what an element's content means but for the escapes, which are
/// joined in what it gives. A sink takes what is read:
///
///   Plain(bytes, begin)         characters that stand for themselves, in UTF-8
///   Unit(codePoint, begin, end) one that stands in bytes [begin, end)
///
/// and knows whether they come from a CDATA section by `inCData`.
template <class Sink>
class ContentReader
{
public:
    ContentReader(std::string_view content, InnerElements elements, Sink& sink)
        : content_(content), elements_(elements), sink_(sink)
    {
    }

    void Read()
    {
        while (at_ < content_.size()) {
            if (sink_.inCData && Starts("]]>"))
                sink_.inCData = false, at_ += 3;
            else if (!sink_.inCData && content_[at_] == '<')
                SkipMarkup();
            else if (content_[at_] == '\r')
                ReadLineEnd();
            else if (sink_.inCData || content_[at_] != '&' || !ReadReferenceHere())
                ReadPlain();
        }
        if (sink_.inCData)
            throw Damage({}, "text holds unclosed markup");
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
            sink_.inCData = true, at_ += 9;
        else if (Starts("<!--"))
            SkipTo("-->");
        else if (Starts("<?"))
            SkipTo("?>");
        else if (elements_ == InnerElements::Skipped)
            at_ = ScanElement(content_, at_).end;
        else
            throw Damage({}, "text holds an element");
    }

    /// XML 1.0 2.11: CR LF and CR are one LF.
    void ReadLineEnd()
    {
        const std::size_t begin = at_;
        at_ += Starts("\r\n") ? 2 : 1;
        sink_.Unit(U'\n', begin, at_);
    }

    bool ReadReferenceHere()
    {
        const auto reference = ReadReference(content_.substr(at_));
        if (!reference)
            return false;
        const std::size_t begin = at_;
        at_ += reference->length;
        const bool isCharacter = reference->codePoint <= 0x10FFFF && !IsSurrogate(reference->codePoint);
        sink_.Unit(isCharacter ? reference->codePoint : 0xFFFD, begin, at_);
        return true;
    }

    /// The character here, whatever it is, and those after it that can't mean anything else.
    void ReadPlain()
    {
        const std::string_view special = sink_.inCData ? "]\r" : "<&\r";
        const std::size_t end = std::min(content_.find_first_of(special, at_ + 1), content_.size());
        sink_.Plain(content_.substr(at_, end - at_), at_);
        at_ = end;
    }

    std::string_view content_;
    InnerElements elements_;
    Sink& sink_;
    std::size_t at_ = 0;
};

constexpr std::size_t escapeLength = 7;
/// Of a text that tells whether an escape is at its start: two escapes that share an underscore.
constexpr std::size_t escapeReach = 2 * escapeLength - 1;

/// What an escape at the start of a text stands for: "_xHHHH_" for a control character, and "_x005F_" for an underscore
/// in front of what would be an escape with it.
std::optional<char16_t> EscapedUnit(StringView text)
{
    const auto code = EscapeCode(text);
    const bool isEscape =
        code && (IsControl(*code) || (*code == '_' && IsControlEscape(text.substr(escapeLength - 1))));
    return isEscape ? std::optional(static_cast<char16_t>(*code)) : std::nullopt;
}

/// Puts what escapes stand for in their place, in one pass over the units from `begin` on.
void JoinEscapes(String& text, std::size_t begin)
{
    constexpr StringView start = u"_x00";
    std::size_t from = begin;  // of what still has to be moved
    std::size_t to = begin;
    const auto moveUpTo = [&](std::size_t end) {
        std::char_traits<char16_t>::move(text.data() + to, text.data() + from, end - from);
        to += end - from;
    };
    for (std::size_t at = text.find(start, begin); at != String::npos; at = text.find(start, at)) {
        const auto unit = EscapedUnit(StringView(text).substr(at, escapeReach));
        if (!unit) {
            ++at;
            continue;
        }
        moveUpTo(at);
        text[to++] = *unit;
        from = at += escapeLength;
    }
    if (from == to)
        return;
    moveUpTo(text.size());
    text.resize(to);
}

/// Takes content as text alone.
struct TextSink {
    void Plain(std::string_view bytes, std::size_t) { text += FromUtf8(bytes); }
    void Unit(char32_t codePoint, std::size_t, std::size_t) { AppendUtf16(text, codePoint); }

    String& text;
    bool inCData = false;
};

/// Takes content as units with their bytes. Escapes are joined as soon as they have been read: seven units for each
/// character of a long text would take many times its part.
struct UnitSink {
    /// Each unit tells how many bytes it comes from: a byte that is no UTF-8 is a lone low surrogate (see FromUtf8).
    void Plain(std::string_view bytes, std::size_t begin)
    {
        const String text = FromUtf8(bytes);
        for (std::size_t i = 0; i < text.size(); ++i) {
            const char16_t unit = text[i];
            const bool isPair = IsPairAt(text, i);
            const std::size_t length = isPair ? 4 : unit < 0x80 || IsSurrogate(unit) ? 1 : unit < 0x800 ? 2 : 3;
            Put(unit, begin, begin + length);
            if (isPair)
                Put(text[++i], begin, begin + length);
            begin += length;
        }
    }

    void Unit(char32_t codePoint, std::size_t begin, std::size_t end)
    {
        String text;
        AppendUtf16(text, codePoint);
        for (const char16_t unit : text)
            Put(unit, begin, end);
    }

    void Put(char16_t unit, std::size_t begin, std::size_t end)
    {
        units.push_back({unit, inCData, static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(end)});
        if (units.size() - joined == escapeReach)
            JoinNext();
    }

    void JoinAll()
    {
        while (joined < units.size())
            JoinNext();
    }

    /// Joins the next unit with those after it if it begins an escape.
    void JoinNext()
    {
        const auto first = units.begin() + static_cast<std::ptrdiff_t>(joined++);
        if (first->unit != u'_')
            return;
        std::array<char16_t, escapeReach> text{};
        const auto end =
            std::transform(first, units.end(), text.begin(), [](const ContentUnit& each) { return each.unit; });
        if (const auto unit = EscapedUnit(StringView(text.begin(), end))) {
            first->unit = *unit;
            first->end = first[escapeLength - 1].end;
            units.erase(first + 1, first + escapeLength);
        }
    }

    std::vector<ContentUnit> units;
    std::size_t joined = 0;  // units at the beginning that stay as they are; fewer than an escape's reach follow
    bool inCData = false;
};

/// What a character of content asks for. Bits, so that one pass over a text tells all that it needs.
enum CharacterClass : std::uint8_t { Ascii = 0, NonAscii = 1, Special = 2 };

constexpr auto characterClasses = [] {
    std::array<std::uint8_t, 256> classes{};
    for (std::size_t c = 0x80; c < classes.size(); ++c)
        classes[c] = NonAscii;
    classes['&'] = Special;   // references
    classes['<'] = Special;   // CDATA, comments, elements
    classes['\r'] = Special;  // line ends to be read as one
    classes['_'] = Special;   // may begin an escape
    return classes;
}();

}  // namespace

std::vector<ContentUnit> ContentUnits(std::string_view content, InnerElements elements)
{
    UnitSink sink;
    // A vector that grows takes three times its memory at times. There are no more units than bytes.
    constexpr std::size_t most = 1u << 24;
    sink.units.reserve(std::min(content.size(), most));
    ContentReader(content, elements, sink).Read();
    sink.JoinAll();
    return std::move(sink.units);
}

namespace
{

/// Appends content in which each byte stands for itself. False, and nothing is appended, for any other.
bool AppendAscii(std::string_view content, String& text)
{
    const auto isAscii = [](const ByteBlock& bytes) {
        return (bytes | bytes.Matches('&') | bytes.Matches('<') | bytes.Matches('\r') | bytes.Matches('_')).TopBits() ==
               0;
    };
    const std::size_t begin = text.size();
    text.resize(begin + content.size());
    char16_t* const target = text.data() + begin;
    bool isPlain = true;
    if (content.size() < ByteBlock::size) {
        for (std::size_t i = 0; i < content.size(); ++i) {
            const auto c = static_cast<unsigned char>(content[i]);
            isPlain = isPlain && characterClasses[c] == Ascii;
            target[i] = c;
        }
    } else {
        // The last block overlaps the one before it.
        const std::size_t last = content.size() - ByteBlock::size;
        for (std::size_t at = 0; isPlain; at = std::min(at + ByteBlock::size, last)) {
            const ByteBlock bytes(content.data() + at);
            isPlain = isAscii(bytes);
            bytes.WriteUnits(target + at);
            if (at == last)
                break;
        }
    }
    if (!isPlain)
        text.resize(begin);
    return isPlain;
}

}  // namespace

void AppendContent(std::string_view content, String& text, InnerElements elements)
{
    // In most texts each character stands for itself: the reader would give the same, more slowly.
    if (AppendAscii(content, text))
        return;
    std::uint8_t needs = Ascii;
    for (const char c : content)
        needs |= characterClasses[static_cast<unsigned char>(c)];
    if (needs == NonAscii) {
        text += FromUtf8(content);
        return;
    }
    const std::size_t begin = text.size();
    TextSink sink{text};
    ContentReader(content, elements, sink).Read();
    JoinEscapes(text, begin);
}

void AppendCharacters(std::string_view content, String& text, InnerElements elements)
{
    TextSink sink{text};
    ContentReader(content, elements, sink).Read();
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
    String before(units.size(), u'\0');
    std::ranges::transform(units, before.begin(), &ContentUnit::unit);
    const auto [front, back] = CommonEndsOf(before, text);
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
