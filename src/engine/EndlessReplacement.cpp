#include "engine/EndlessReplacement.h"

#include <algorithm>

#include "model/SearchLocations.h"
#include "platform/CaseFolding.h"
#include "platform/ParagraphBreaks.h"
#include "platform/Utf16.h"

namespace tessarine
{

namespace
{

bool SearchesReplacedTextAgain(const OptionSetting& setting)
{
    return std::ranges::any_of(SearchLocations, [&](const SearchLocation& row) {
        return row.replacedText == ReplacedText::IsSearchedAgain && setting.*row.isOn;
    });
}

/// Whether a hit inside the inserted text stands alone. What follows the inserted text is never a word character,
/// because the hit that it took the place of stood alone too.
bool StandsAlone(StringView text, std::size_t start, std::size_t length)
{
    const std::size_t end = start + length;
    return !IsWordCharacter(CodePointBefore(text, start)) &&
           (end == text.size() || !IsWordCharacter(CodePointAt(text, end)));
}

}  // namespace

bool NeverEnds(StringView find, StringView with, const OptionSetting& setting)
{
    if (find.empty() || !SearchesReplacedTextAgain(setting))
        return false;

    const String inserted = WithParagraphBreaks(with);  // as it stands in a shape's text afterwards
    const String text = setting.MatchCase ? inserted : FoldCaseLocally(inserted);
    const String wanted = setting.MatchCase ? String(find) : FoldCaseLocally(find);
    for (auto at = text.find(wanted, 1); at != String::npos; at = text.find(wanted, at + 1)) {
        if (!setting.MatchWholeWord || StandsAlone(inserted, at, wanted.size()))
            return true;
    }
    return false;
}

}  // namespace tessarine
