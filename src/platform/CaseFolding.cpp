#include "platform/CaseFolding.h"

#include <algorithm>

#include "platform/Locale.h"
#include "platform/UnicodeTables.h"
#include "platform/Utf16.h"

namespace tessarine
{

namespace
{

constexpr char16_t dottedCapitalI = 0x130;
constexpr char16_t dotlessI = 0x131;

/// Maps the units [begin, end), and the rest of a surrogate pair that lies across the end. Gives the index after the
/// last mapped unit.
std::size_t MapRange(StringView text, String& result, std::size_t begin, std::size_t end, const CaseMapping& map)
{
    std::size_t i = begin;
    for (; i < end; ++i) {
        if (!IsPairAt(text, i)) {
            result[i] = map(text[i]);
            continue;
        }
        const char32_t mapped = map.OfPair(JoinSurrogates(text[i], text[i + 1]));
        result[i] = HighSurrogateOf(mapped);
        result[++i] = LowSurrogateOf(mapped);
    }
    return i;
}

/// Folds units that are all ASCII, in a loop that the compiler turns into wide instructions.
void FoldAscii(String& text, std::size_t begin, std::size_t end)
{
    for (std::size_t i = begin; i < end; ++i) {
        const char16_t unit = text[i];
        text[i] = static_cast<char16_t>(unit + (unit >= u'A' && unit <= u'Z' ? u'a' - u'A' : 0));
    }
}

bool IsAscii(StringView text)
{
    char16_t all = 0;
    for (const char16_t unit : text)
        all |= unit;
    return all < 0x80;
}

}  // namespace

char32_t CaseMapping::OfPair(char32_t codePoint) const
{
    const auto shift = std::ranges::lower_bound(pairs_, codePoint, {}, &CodePointShift::last);
    if (shift == pairs_.end() || codePoint < shift->first)
        return codePoint;
    return static_cast<char32_t>(static_cast<std::int32_t>(codePoint) + shift->by);
}

String FoldCase(StringView text)
{
    // Most text is ASCII with a few other characters in between.
    constexpr std::size_t stretch = 64;
    String result(text);
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(begin + stretch, text.size());
        if (IsAscii(text.substr(begin, end - begin))) {
            FoldAscii(result, begin, end);
            begin = end;
        } else {
            begin = MapRange(text, result, begin, end, simpleFolding);
        }
    }
    return result;
}

char16_t FoldCase(char16_t unit)
{
    // Without a look at the table, for the case of nearly every call.
    if (unit < 0x80)
        return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + (u'a' - u'A')) : unit;
    return simpleFolding(unit);
}

String FoldCaseLocally(StringView text)
{
    String result = FoldCase(text);
    if (!TellsDottedI())
        return result;
    for (std::size_t i = 0; i < text.size(); ++i)
        if (text[i] == u'I')
            result[i] = dotlessI;
        else if (text[i] == dottedCapitalI)
            result[i] = u'i';
    return result;
}

char16_t FoldCaseWidely(char16_t unit)
{
    return unit == dottedCapitalI || unit == dotlessI ? u'i' : FoldCase(unit);
}

String FoldCaseWidely(StringView text)
{
    String result = FoldCase(text);
    for (char16_t& unit : result)
        if (unit == dottedCapitalI || unit == dotlessI)
            unit = u'i';
    return result;
}

String ToUpper(StringView text)
{
    String result(text);
    MapRange(text, result, 0, text.size(), simpleUpperCase);
    return result;
}

bool IsWordCharacter(char32_t codePoint)
{
    // ASCII is asked for most, and the underscore has no category of its own.
    if (codePoint < 0x80)
        return (codePoint >= U'0' && codePoint <= U'9') || (codePoint >= U'A' && codePoint <= U'Z') ||
               (codePoint >= U'a' && codePoint <= U'z') || codePoint == U'_';
    const auto range = std::ranges::lower_bound(wordCharacters, codePoint, {}, &CodePointRange::last);
    return range != wordCharacters.end() && range->first <= codePoint;
}

}  // namespace tessarine
