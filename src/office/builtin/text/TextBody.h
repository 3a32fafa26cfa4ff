#pragma once

#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "office/builtin/matching/TextMatch.h"
#include "office/builtin/text/TextTree.h"
#include "platform/String.h"

namespace tessarine::builtin
{

/// The text of one shape as a person sees it: its runs are one text, however many runs the file splits it into.
///
/// Between paragraphs stands CR, for a line break VT (a:br); fields give their cached text; control characters written
/// "_xHHHH_" are decoded. Positions are UTF-16 units from 0. Slide number and date fields are part of the text, but no
/// hit may touch them: PowerPoint writes them anew.
class TextBody
{
public:
    /// `offset` is where the body's "<" stands in the bytes of its part.
    TextBody(std::size_t offset, String text, std::vector<ProtectedRange> protectedRanges);

    const String& Text() const { return text_; }
    std::size_t Offset() const { return offset_; }

    std::optional<std::size_t> Find(const TextPattern& pattern, std::size_t from);

    /// Replaces units of the text; line ends (CR, LF, CR LF) in `with` are paragraph breaks, characters that XML can't
    /// hold become U+FFFD. Returns the number of units that were put in. Replacing text by itself is no edit. `xml` is
    /// the part's text, needed for the first edit of a body. Raises -2147023504 when the markup does not hold what was
    /// read.
    std::size_t Replace(std::size_t begin, std::size_t length, StringView with, std::string_view xml);

    /// Replaces the whole text, leaving alone what the new text has in common with the old at both ends.
    void PutText(StringView text, std::string_view xml);

    const TextTree* Edited() const { return tree_.get(); }  ///< Null while nothing was changed.

private:
    std::size_t offset_;
    String text_;
    String folded_;  // made when first needed
    std::vector<ProtectedRange> protectedRanges_;
    std::unique_ptr<TextTree> tree_;
};

}  // namespace tessarine::builtin
