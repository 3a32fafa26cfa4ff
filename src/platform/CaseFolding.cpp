#include "platform/CaseFolding.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <array>
#include <memory>

#include "platform/Locale.h"
#include "platform/Utf16.h"

namespace tessarine
{

namespace
{

constexpr std::size_t pageSize = 256;

constexpr char16_t dottedCapitalI = 0x130;
constexpr char16_t dotlessI = 0x131;

char32_t SimpleFold(char32_t codePoint)
{
    return static_cast<char32_t>(u_foldCase(static_cast<UChar32>(codePoint), U_FOLD_CASE_DEFAULT));
}

char32_t SimpleUpper(char32_t codePoint)
{
    return static_cast<char32_t>(u_toupper(static_cast<UChar32>(codePoint)));
}

/// A mapping of single UTF-16 units, filled a page at a time when a page is first asked for: folding is on the way of
/// every searched character, and a text touches few pages.
template <char32_t (*Map)(char32_t)>
class UnitTable
{
public:
    char16_t operator()(char16_t unit)
    {
        std::unique_ptr<Page>& page = pages_[unit / pageSize];
        if (!page)
            page = Filled(static_cast<char16_t>(unit & ~(pageSize - 1)));
        return (*page)[unit % pageSize];
    }

private:
    using Page = std::array<char16_t, pageSize>;

    static std::unique_ptr<Page> Filled(char16_t first)
    {
        auto page = std::make_unique<Page>();
        for (std::size_t i = 0; i < pageSize; ++i) {
            const char32_t unit = static_cast<char32_t>(first + i);
            // Half a pair alone is no character and stays as it is; whole pairs never come here (MapRange).
            const char32_t mapped = IsSurrogate(unit) ? unit : Map(unit);
            // A character beyond U+FFFF would take two units in the place of one.
            (*page)[i] = static_cast<char16_t>(mapped < 0x10000 ? mapped : unit);
        }
        return page;
    }

    std::array<std::unique_ptr<Page>, 0x10000 / pageSize> pages_;
};

UnitTable<SimpleFold> foldTable;
UnitTable<SimpleUpper> upperTable;

/// Maps the units [begin, end), and the rest of a surrogate pair that lies across the end. Gives the index after the
/// last mapped unit.
template <char32_t (*Map)(char32_t)>
std::size_t MapRange(StringView text, String& result, std::size_t begin, std::size_t end, UnitTable<Map>& table)
{
    std::size_t i = begin;
    for (; i < end; ++i) {
        if (!IsPairAt(text, i)) {
            result[i] = table(text[i]);
            continue;
        }
        // A mapping into one unit would change the length, so that pair stays as it is.
        if (const char32_t mapped = Map(JoinSurrogates(text[i], text[i + 1])); mapped >= 0x10000) {
            result[i] = HighSurrogateOf(mapped);
            result[i + 1] = LowSurrogateOf(mapped);
        }
        ++i;
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
            begin = MapRange(text, result, begin, end, foldTable);
        }
    }
    return result;
}

char16_t FoldCase(char16_t unit)
{
    // Without a look at the table, for the case of nearly every call.
    if (unit < 0x80)
        return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + (u'a' - u'A')) : unit;
    return foldTable(unit);
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
    MapRange(text, result, 0, text.size(), upperTable);
    return result;
}

bool IsWordCharacter(char32_t codePoint)
{
    // ASCII is asked for most, and the underscore has no category of its own.
    if (codePoint < 0x80)
        return (codePoint >= U'0' && codePoint <= U'9') || (codePoint >= U'A' && codePoint <= U'Z') ||
               (codePoint >= U'a' && codePoint <= U'z') || codePoint == U'_';
    return (U_GET_GC_MASK(static_cast<UChar32>(codePoint)) & (U_GC_L_MASK | U_GC_ND_MASK | U_GC_M_MASK)) != 0;
}

}  // namespace tessarine
