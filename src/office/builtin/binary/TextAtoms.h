#pragma once

#include <cstddef>
#include <set>
#include <string_view>
#include <vector>

#include "office/builtin/binary/TextEdits.h"
#include "office/builtin/matching/ProtectedRanges.h"
#include "office/builtin/records/Record.h"
#include "office/builtin/records/RecordEdits.h"
#include "platform/String.h"

namespace tessarine::builtin
{

/// Where the atoms of one text lie in the document stream: from its TextHeaderAtom up to the next one, or to the end of
/// what holds them ([MS-PPT] 2.9.42). Either a shape's textbox holds them or, for titles and bodies of slides, the
/// document's list of slides.
struct TextPlace {
    std::size_t begin = 0;
    std::size_t end = 0;
};

/// A link on units of a text: InteractiveInfo with the TextInteractiveInfoAtom behind it.
struct TextLink {
    Record info;
    Record range;
    std::size_t begin = 0;  ///< Units of the text, cut to it.
    std::size_t end = 0;
};

/// Takes note of an atom behind others: it begins a text or belongs to the last one.
void AddToTexts(std::vector<TextPlace>& texts, const Record& atom);

/// The texts among the records between two offsets. What stands in front of the first header is none.
std::vector<TextPlace> TextsIn(std::string_view bytes, std::size_t begin, std::size_t end);

/// A text as its atoms have it: CR between paragraphs, VT for a line break, "*" for a field.
String ReadText(std::string_view bytes, const TextPlace& place);

/// Fields, which PowerPoint fills in when it shows the text: no hit may touch one.
ProtectedRanges FieldsOf(std::string_view bytes, const TextPlace& place, std::size_t textUnits);

/// Whether the text is a header's or footer's field alone, as on masters.
bool IsHeaderFooterField(std::string_view bytes, const TextPlace& place);

/// In the order of the atoms.
std::vector<TextLink> TextLinksOf(std::string_view bytes, const TextPlace& place);

/// Puts an edited text into its atoms, with all that goes by units of the text: runs of format, languages and levels,
/// fields, links and bookmarks. A link whose text has gone goes with it. Raises `FileCorrupt` where an atom can't be
/// read, so that nobody knows what it would mean then. Links in `removed`, named by where their InteractiveInfo begins,
/// are left to the caller.
void PutText(std::string_view bytes, const TextPlace& place, StringView text, const TextEdits& edits,
             const std::set<std::size_t>& removed, RecordEdits& target);

}  // namespace tessarine::builtin
