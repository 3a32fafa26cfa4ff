#include "engine/EndlessReplacement.h"

#include <algorithm>

#include "model/SearchLocations.h"
#include "platform/CaseFolding.h"
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

/// The replacement as it stands in a shape's text afterwards: each line end becomes a paragraph break, which is one CR.
String AsInserted(StringView with)
{
    String text;
    for (std::size_t at = 0; at < with.size(); ++at) {
        if (with[at] == u'\n' && at > 0 && with[at - 1] == u'\r')
            continue;
        text += with[at] == u'\n' ? u'\r' : with[at];
    }
    return text;
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

    const String inserted = AsInserted(with);
    const String text = setting.MatchCase ? inserted : FoldCase(inserted);
    const String wanted = setting.MatchCase ? String(find) : FoldCase(find);
    for (auto at = text.find(wanted, 1); at != String::npos; at = text.find(wanted, at + 1)) {
        if (!setting.MatchWholeWord || StandsAlone(inserted, at, wanted.size()))
            return true;
    }
    return false;
}

}  // namespace tessarine
