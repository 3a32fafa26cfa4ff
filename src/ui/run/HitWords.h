#pragma once

#include <QString>

#include "report/HitText.h"
#include "ui/run/RunTexts.h"

/// A hit in the words of the window's language; report/HitText.h says the same in English.
namespace tessarine
{

/// Where a hit stands, from the outside to the inside: `Slide 3 "Plan", shape "Text 1", paragraph 2`. What the hit does
/// not tell is left out. Titles and names are cut when they are long.
QString PlaceWords(const RunTexts& texts, const Hit& hit);

/// What is unusual about a hit: that it is not counted, or that a replace run could not change it. Empty as a rule.
QString RemarkWords(const RunTexts& texts, const Hit& hit, bool replaces);

}  // namespace tessarine
