#pragma once

#include <optional>

#include "engine/Hit.h"
#include "platform/String.h"

/// What a report says of a hit in plain English. Reports for programs tell the fields of the hit themselves.
namespace tessarine
{

/// Where a hit stands, from the outside to the inside: `slide 3 "Our plan", shape 2 "Text 1", paragraph 2`. What the
/// hit doesn't tell is left out. Titles and names are cut to 40 characters, with "..." in place of the rest.
String PlaceText(const Hit& hit);

/// The two parts of it: what all hits of one text have in common, and ", paragraph 2".
String TextPlaceText(const HitPlace& place);
String ParagraphText(const Hit& hit);

/// What is unusual about a hit: "not counted", "stays as it is" for one that a replace run could not change, or both
/// with a comma between them. Empty as a rule. `replaces` tells a replace run from a find.
String RemarkText(const Hit& hit, bool replaces);

/// A hit and the text around it, for one line. The parts stand behind each other without anything between them.
struct HitLine {
    String before;  ///< "..." in front where the paragraph begins earlier.
    String found;
    std::optional<String> becomes;  ///< What stands in place of `found` after a replacement; see Hit::becomes.
    String after;                   ///< "..." at the end where the paragraph goes on.
};

/// The line of a hit, by the rule of OneLineText. `find` is the text of the hit's pair, which stands in for a hit that
/// doesn't tell its own.
HitLine LineOf(const Hit& hit, StringView find);

/// A piece of a presentation's text for one line: a line end or a tab becomes a blank, and other control characters
/// become escapes (platform/VisibleText.h).
String OneLineText(StringView text);

}  // namespace tessarine
