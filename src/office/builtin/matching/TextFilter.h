#pragma once

#include "office/builtin/matching/SoughtText.h"

namespace tessarine::builtin
{

/// Stands in front of a search: may a text occur in this part (a slide, a notes page, a master), or in any of these?
/// Most parts of most files hold nothing of what is looked for, and after a no they need not be read.
///
/// **Never a wrong no.** Where FindText finds the text in a shape of a part, whether or not case and whole words count,
/// the answer is yes. This holds for every part that can be read; of a damaged one nothing is said.
///
/// **Sometimes a wrong yes.** A part is asked as one text, so that what spans two shapes, or is in a table, counts as
/// there. The answer is always yes for a text with control characters, and from parts that decline: those whose text
/// can't be told without reading them (their Gather gives nothing), and those that were edited.
///
/// **After an edit** the part that was edited declines, up to the end of the file. Answers about other parts stay true.
///
/// **Cost.** The first question about a part gathers its text, which is kept folded, two bytes a unit. The first text
/// is looked for in it from end to end. A second one makes a table of the text, two bytes a unit again; from then on a
/// text that is not there costs no more than a look at that table for each of its own units, and a group of parts has
/// one table for all of them. Asking again for the last text costs nothing. A part whose text was let go, as there is
/// too much of all, gathers it again for each further text that the group may hold.
class TextFilter
{
public:
    virtual ~TextFilter() = default;

    /// False only when no shape's text holds what is sought. Raises what reading a part raises.
    virtual bool MayHold(const SoughtText& sought) = 0;
};

}  // namespace tessarine::builtin
