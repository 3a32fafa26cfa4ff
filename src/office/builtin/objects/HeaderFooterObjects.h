#pragma once

#include <memory>

#include "model/PowerPoint.h"
#include "office/builtin/objects/OpenFile.h"

namespace tessarine::builtin
{

/// What a kind of page has, whatever a file says. A text that the page shows no placeholder for raises `InvalidRequest`
/// on reading and on putting, as a header of FooterOnly always does.
enum class PageTexts {
    FooterOnly,       ///< Slides and their masters.
    HeaderAndFooter,  ///< Handout masters.

    /// Notes masters: both texts, and where a placeholder was deleted, the text reads "" and only putting another one
    /// raises. PowerPoint raises on reading, too, and one deck in eight is like that: the search of the notes master
    /// would end each of them.
    BothEvenIfDeleted
};

/// The header and footer of a page. They are there as objects always; their text raises `InvalidRequest` where the page
/// shows none (see PageTexts). Putting the text that is there is no edit. Line ends that are put become paragraph
/// breaks. A page that can't be read raises, and is a warning of the file as well.
std::shared_ptr<powerpoint::HeadersFooters> MakeHeadersFooters(OpenFileReference file, PageReader& page,
                                                               PageTexts texts);

}  // namespace tessarine::builtin
