#include "engine/EndlessReplacement.h"

#include "platform/CaseFolding.h"

namespace tessarine
{

namespace
{

bool SearchesShapeText(const OptionSetting& setting)
{
    return setting.InSlides || setting.InShapesAndTextboxes || setting.InNotes || setting.InSlideMasterPerSlide ||
           setting.InSlideMasterPerPresentation || setting.InTitleMaster || setting.InHandoutMaster ||
           setting.InNotesMaster;
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

bool IsSurrogate(char16_t unit, char16_t first)
{
    return (unit & 0xFC00) == first;
}

/// The character that ends before `position`; a surrogate pair is one character.
char32_t CharacterBefore(StringView text, std::size_t position)
{
    const char16_t low = text[position - 1];
    if (IsSurrogate(low, 0xDC00) && position >= 2 && IsSurrogate(text[position - 2], 0xD800))
        return 0x10000 + ((static_cast<char32_t>(text[position - 2]) & 0x3FF) << 10) + (low & 0x3FFu);
    return low;
}

char32_t CharacterAt(StringView text, std::size_t position)
{
    const char16_t high = text[position];
    if (IsSurrogate(high, 0xD800) && position + 1 < text.size() && IsSurrogate(text[position + 1], 0xDC00))
        return 0x10000 + ((static_cast<char32_t>(high) & 0x3FF) << 10) + (text[position + 1] & 0x3FFu);
    return high;
}

/// Whether a hit inside the inserted text stands alone. What follows the inserted text is never a word character,
/// because the hit that it took the place of stood alone too.
bool StandsAlone(StringView text, std::size_t start, std::size_t length)
{
    const std::size_t end = start + length;
    return !IsWordCharacter(CharacterBefore(text, start)) &&
           (end == text.size() || !IsWordCharacter(CharacterAt(text, end)));
}

}  // namespace

bool NeverEnds(StringView find, StringView with, const OptionSetting& setting)
{
    if (find.empty() || !SearchesShapeText(setting))
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
