#include "office/builtin/binary/GatheredTexts.h"

#include <algorithm>
#include <array>

#include "office/builtin/records/Record.h"
#include "office/builtin/records/RecordTypes.h"
#include "platform/CaseFolding.h"

namespace tessarine::builtin
{

namespace
{

constexpr char16_t betweenTexts = u'\n';

bool IsControl(char16_t unit)
{
    return unit < u' ';
}

/// The first 256 units folded, which most texts are made of.
std::array<char16_t, 256> FoldedBytes()
{
    std::array<char16_t, 256> units;
    for (char16_t unit = 0; unit < units.size(); ++unit)
        units[unit] = FoldCaseWidely(unit);
    return units;
}

void AppendFoldedBytes(std::string_view content, String& gathered)
{
    static const auto folded = FoldedBytes();
    const std::size_t size = gathered.size();
    gathered.resize(size + content.size());
    char16_t* target = gathered.data() + size;
    for (const char byte : content)
        if (const auto unit = static_cast<unsigned char>(byte); !IsControl(unit))
            *target++ = folded[unit];
    gathered.resize(static_cast<std::size_t>(target - gathered.data()));
}

void AppendFoldedUnits(std::string_view content, String& gathered)
{
    String text = Utf16Content(content);
    std::erase_if(text, IsControl);
    gathered += FoldCaseWidely(text);
}

}  // namespace

void AppendGatheredTexts(std::string_view bytes, std::size_t begin, std::size_t end, String& gathered)
{
    ForEachRecord(bytes, begin, end, [&](const Record& atom) {
        if (atom.type == record::TextBytesAtom)
            AppendFoldedBytes(atom.Content(bytes), gathered);
        else if (atom.type == record::TextCharsAtom)
            AppendFoldedUnits(atom.Content(bytes), gathered);
        else
            return;
        gathered += betweenTexts;
    });
}

}  // namespace tessarine::builtin
