#pragma once

#include "model/OptionSetting.h"
#include "platform/String.h"

namespace tessarine
{

/// True when replacing `find` by `with` under `setting` never ends on a text that holds `find` once.
///
/// In a shape's text each search starts one unit after the start of the text inserted last, so only the inserted text
/// without its first unit, and what follows it, is searched again. A pair runs forever exactly when `find` occurs in
/// `with` at a position after the first, under the pair's case rule and, with whole words, standing alone there: each
/// replacement then leaves a further hit. Otherwise every hit uses up some of the text that follows the inserted one (a
/// hit may begin in the inserted text, but must end after it), and that text is finite. In "cat" by "cats" and "aa" by
/// "ba" the walk ends; in "cat" by "a cat" it does not.
///
/// The other locations hold plain values, whose replaced text is never searched again (ReplacedText::IsDone); with only
/// such locations on, no pair runs forever.
bool NeverEnds(StringView find, StringView with, const OptionSetting& setting);

}  // namespace tessarine
