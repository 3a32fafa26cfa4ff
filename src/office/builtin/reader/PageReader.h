#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "office/builtin/matching/SoughtText.h"
#include "office/builtin/matching/TextMatch.h"
#include "platform/String.h"

namespace tessarine::builtin
{

/// What kind a shape is.
struct ShapeFacts {
    std::int32_t type = 0;      ///< powerpoint::MsoShapeType
    bool hasTextFrame = false;  ///< True for a shape that can hold text, though it may hold none.
};

/// Which of a page's two texts is meant. Notes and handouts have both, slides and their masters footers only.
enum class HeaderFooterKind { Header, Footer };

/// A page as a file holds it: a slide, a notes page, or a master of any kind. It gives the page's shapes, the header
/// and footer text and the hyperlinks, and takes edits of them; the file on the disk changes when the presentation is
/// saved.
///
/// Shapes and links are named by an index. A shape's index counts from 0 below ShapeCount, and is the same shape for as
/// long as the presentation is open, whatever is edited. Positions in texts are UTF-16 units from 0.
///
/// Texts of all formats are alike: a CR stands between two paragraphs, so that one at the end means an empty last
/// paragraph, and a VT is a line break. Every member may raise `FileCorrupt` when the page can't be read.
class PageReader
{
public:
    virtual ~PageReader() = default;

    /// The shapes that lie on the page itself, from back to front. A group is one shape; shapes that the page shows but
    /// its master holds don't count.
    virtual std::size_t ShapeCount() = 0;
    virtual ShapeFacts Shape(std::size_t shape) = 0;

    /// What a person calls the shape, for warnings and hits. A format without names keeps this answer.
    virtual String ShapeName(std::size_t /*shape*/) { return {}; }

    /// The text of the page's title, empty without one. For hits; a format without titles keeps this answer.
    virtual String Title() { return {}; }

    /// Up to `length` units of a shape's text from `begin` on, fewer where the text ends; empty for a shape without
    /// text. For the context of hits, so that it may be asked for each of them.
    virtual String TextAt(std::size_t shape, std::size_t begin, std::size_t length) = 0;

    /// A hint that may spare a walk over the shapes: false only when no shape's text holds what is sought, whatever the
    /// case (see TextFilter). A format that has no quick way to tell keeps this answer.
    virtual bool MayHold(const SoughtText& /*sought*/) { return true; }

    /// The first hit in a shape's text that begins at `from` or later, by the rules of the free function FindText;
    /// nothing when there is no hit, and for a shape without text.
    virtual std::optional<std::size_t> FindText(std::size_t shape, const TextPattern& pattern, std::size_t from) = 0;

    /// Puts `with` in the place of `length` units of a shape's text, where FindText has found a hit, and returns how
    /// many units were put in. The new text takes the formatting of the first unit replaced; what lies outside keeps
    /// its own. A CR in `with` divides the paragraph; line feeds don't occur. Replacing a text by itself is no edit.
    virtual std::size_t ReplaceText(std::size_t shape, std::size_t begin, std::size_t length, StringView with) = 0;

    /// Where the object in a shape of type `msoLinkedOLEObject` is linked from ("C:\Sales\Book.xlsx!Sheet1!R1C1").
    virtual String LinkSource(std::size_t shape) = 0;

    /// Never called with the source that is there. Raises `Unspecified` where the format can't store another, and
    /// `BadArgument` for one that is too long.
    virtual void PutLinkSource(std::size_t shape, const String& source) = 0;

    /// The text of the page's header or footer; nothing when the page shows none.
    virtual std::optional<String> HeaderFooter(HeaderFooterKind kind) = 0;

    /// Replaces that whole text. Never called with the text that is there, nor for one that the page doesn't show.
    /// Raises `InvalidRequest` where the file has no place for a text.
    virtual void PutHeaderFooter(HeaderFooterKind kind, StringView text) = 0;

    /// The hyperlinks of the page's shapes and texts in the order of the page, as indices for the two members below. A
    /// link that an edit of the text has removed is left out; the others keep their indices.
    virtual std::vector<std::size_t> HyperlinkIndices() = 0;

    /// The address of a link, "" for a jump inside the file. Raises `InvalidRequest` for a link that has gone.
    virtual String HyperlinkAddress(std::size_t link) = 0;

    /// Never called with the address that is there. An empty address removes the link, unless it leads to a place
    /// inside the file as well. Raises as HyperlinkAddress does, and `BadArgument` for an address that is too long.
    virtual void PutHyperlinkAddress(std::size_t link, const String& address) = 0;
};

}  // namespace tessarine::builtin
