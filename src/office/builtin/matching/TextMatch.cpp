#include "office/builtin/matching/TextMatch.h"

#include <algorithm>

#include "platform/CaseFolding.h"

namespace tessarine::builtin
{

namespace
{

bool IsHigh(char16_t unit)
{
    return unit >= 0xD800 && unit <= 0xDBFF;
}

bool IsLow(char16_t unit)
{
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

char32_t Join(char16_t high, char16_t low)
{
    return 0x10000 + ((static_cast<char32_t>(high) - 0xD800) << 10) + (static_cast<char32_t>(low) - 0xDC00);
}

bool WordCharacterBefore(StringView text, std::size_t position)
{
    if (position == 0)
        return false;
    if (position >= 2 && IsLow(text[position - 1]) && IsHigh(text[position - 2]))
        return IsWordCharacter(Join(text[position - 2], text[position - 1]));
    return IsWordCharacter(text[position - 1]);
}

bool WordCharacterAt(StringView text, std::size_t position)
{
    if (position >= text.size())
        return false;
    if (position + 1 < text.size() && IsHigh(text[position]) && IsLow(text[position + 1]))
        return IsWordCharacter(Join(text[position], text[position + 1]));
    return IsWordCharacter(text[position]);
}

bool SplitsPair(StringView text, std::size_t position)
{
    return position > 0 && position < text.size() && IsHigh(text[position - 1]) && IsLow(text[position]);
}

bool Touches(const ProtectedRange& range, std::size_t begin, std::size_t end)
{
    if (range.length == 0)
        return begin < range.begin && range.begin < end;
    return begin < range.begin + range.length && range.begin < end;
}

}  // namespace

TextPattern::TextPattern(const String& findWhat, bool matchCase, bool wholeWords)
    : findWhat_(findWhat),
      units_(matchCase ? findWhat : FoldCase(StringView(findWhat))),
      matchCase_(matchCase),
      wholeWords_(wholeWords)
{
}

std::optional<std::size_t> FindText(StringView searched, StringView text, const TextPattern& pattern, std::size_t from,
                                    const std::vector<ProtectedRange>& protectedRanges)
{
    const StringView wanted = pattern.Units();
    if (wanted.empty())
        return std::nullopt;
    for (std::size_t at = searched.find(wanted, from); at != StringView::npos; at = searched.find(wanted, at + 1)) {
        const std::size_t end = at + wanted.size();
        if (SplitsPair(text, at) || SplitsPair(text, end))
            continue;
        if (pattern.WholeWords() && (WordCharacterBefore(text, at) || WordCharacterAt(text, end)))
            continue;
        if (std::ranges::any_of(protectedRanges, [&](const ProtectedRange& range) { return Touches(range, at, end); }))
            continue;
        return at;
    }
    return std::nullopt;
}

}  // namespace tessarine::builtin
