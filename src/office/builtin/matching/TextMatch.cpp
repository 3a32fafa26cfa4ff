#include "office/builtin/matching/TextMatch.h"

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

}  // namespace

std::optional<std::size_t> FindText(StringView searched, StringView text, const TextPattern& pattern, std::size_t from,
                                    const ProtectedRanges& protectedRanges, std::size_t offset)
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
        if (protectedRanges.Touch(offset + at, offset + end))
            continue;
        return at;
    }
    return std::nullopt;
}

}  // namespace tessarine::builtin
