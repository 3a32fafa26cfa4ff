#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "office/builtin/matching/SearchedText.h"
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
    TextBody(std::size_t offset, String text, ProtectedRanges protectedRanges);
    /// The text of a `p:txBody`, as it reads.
    static TextBody Read(const XmlDocument& document, Node body);

    String Text() const { return text_.Text(); }
    /// As much of these units as there is.
    String Text(std::size_t begin, std::size_t length) const { return text_.Text(begin, length); }
    std::size_t Size() const { return text_.Size(); }  ///< Of the text, in UTF-16 units.
    std::size_t Offset() const { return offset_; }

    /// As FindText, in the text as it is now.
    std::optional<std::size_t> Find(const TextPattern& pattern, std::size_t from) { return text_.Find(pattern, from); }

    /// Gives the part's document, the one that the body was read from; asked for when it is needed.
    using DocumentSource = std::function<const XmlDocument&()>;

    /// Replaces units of the text by what HeldText makes of `with`. Returns the number of units that were put in.
    /// Replacing text by itself is no edit. Raises as Open and TextTree::Replace do.
    std::size_t Replace(std::size_t begin, std::size_t length, StringView with, const DocumentSource& document);

    /// Replaces the whole text, which takes the format of its first run and paragraph. Putting what is there is no
    /// edit.
    void PutText(StringView text, const DocumentSource& document);

    /// The text taken apart, for an edit of its links. Raises `FileCorrupt` when the document does not hold what was
    /// read: the file was changed by somebody else.
    TextTree& Open(const DocumentSource& document);

    const TextTree* Edited() const { return tree_.get(); }  ///< Null while nothing was changed.
    /// Gives the memory of the edits back once their bytes have been taken. The text stays as they have left it.
    void CloseEdits() { tree_.reset(); }

    /// About what it takes of memory.
    std::size_t KeptBytes() const;
    /// See TextTree::Growth.
    std::size_t Growth() const { return tree_ ? tree_->Growth() : 0; }
    std::size_t EditCount() const { return edits_; }  ///< How often the text was changed.

private:
    std::size_t offset_;
    SearchedText text_;
    std::size_t edits_ = 0;
    std::unique_ptr<TextTree> tree_;
};

}  // namespace tessarine::builtin
