#include "office/builtin/matching/TextMatch.h"

#include <algorithm>

#include "platform/CaseFolding.h"
#include "platform/Utf16.h"

namespace tessarine::builtin
{

namespace
{

bool WordCharacterBefore(StringView text, std::size_t position)
{
    return position > 0 && IsWordCharacter(CodePointBefore(text, position));
}

bool WordCharacterAt(StringView text, std::size_t position)
{
    return position < text.size() && IsWordCharacter(CodePointAt(text, position));
}

bool Touches(const ProtectedRange& range, std::size_t begin, std::size_t end)
{
    // A place: a hit may end or begin there.
    if (range.length == 0)
        return begin < range.begin && range.begin < end;
    return begin < range.begin + range.length && range.begin < end;
}

}  // namespace

std::optional<std::size_t> FindText(StringView searched, StringView text, const TextPattern& pattern, std::size_t from,
                                    const std::vector<ProtectedRange>& protectedRanges)
{
    const StringView wanted = pattern.Units();
    if (wanted.empty())
        return std::nullopt;
    // On by one unit: an occurrence that is refused may overlap the one that is a hit.
    for (std::size_t at = searched.find(wanted, from); at != StringView::npos; at = searched.find(wanted, at + 1)) {
        const std::size_t end = at + wanted.size();
        if (DividesPair(text, at) || DividesPair(text, end))
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
