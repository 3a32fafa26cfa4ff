#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "office/builtin/text/TextPiece.h"
#include "platform/String.h"

namespace tessarine::builtin
{

/// The paragraphs of a text body taken apart for editing. Every piece keeps its bytes as they stand in the part; an
/// edit changes the pieces it touches and no others, so that putting the pieces together again gives back all bytes
/// outside of the edited text.
class TextTree
{
public:
    /// Takes apart a text body (`p:txBody`), by the rules of TextMarkup. Keeps no reference to the document.
    TextTree(const XmlDocument& document, Node body);

    /// The bytes of the part that the pieces stand for: from the first paragraph to the end of the last.
    std::size_t Begin() const { return begin_; }
    std::size_t End() const { return end_; }

    String Text() const;                                  ///< As TextBody describes it.
    std::vector<ProtectedRange> ProtectedRanges() const;  ///< What no hit may touch now.
    std::string Bytes() const;                            ///< The pieces put together.

    /// Replaces units of the text. In `with`, CR begins a new paragraph (with the properties of the one it is in) and
    /// VT a new line. Raises `InvalidRequest` for a text body without a paragraph.
    ///
    /// The new text takes the formatting of the first replaced character; an insertion that of the text in front. A
    /// replaced paragraph break joins the paragraphs under the properties of the first. A run left empty goes, unless
    /// it is its paragraph's only one: then its properties stay as those of the paragraph's end, so that the line keeps
    /// its height.
    void Replace(std::size_t begin, std::size_t length, StringView with);

    /// The links of the text, front to back, as those of a body with this index. Their elements are counted from 0, the
    /// click of a run before its hover; an edit of the text or RemoveLink counts them anew.
    std::vector<LinkRecord> Links(std::size_t body) const;
    /// Leads a link element elsewhere, or removes it; the text stays. Both raise `InvalidRequest` for an element that
    /// isn't there.
    void Retarget(std::size_t element, const LinkTarget& target);
    void RemoveLink(std::size_t element);

private:
    struct Paragraph {
        std::string before = {};  // bytes between the paragraph before and this one
        std::string open = {};    // start tag
        std::vector<TextPiece> pieces = {};
        std::string close = {};     // end tag; "" while the paragraph is an empty-element tag
        std::string prefix = {};    // of the drawing namespace here, with its colon
        NamespaceScope scope = {};  // what the start tag declares
    };
    /// Where a position of the text is in the pieces. A piece's index may be that after the last one.
    struct Place {
        std::size_t paragraph;
        std::size_t piece;
        std::size_t offset;  // units into the piece
    };

    static Paragraph ReadParagraph(const XmlDocument& document, Node node);

    Place PlaceOf(std::size_t position) const;
    Place Anchor(std::size_t begin, std::size_t length);
    RunProperties PropertiesNear(const Place& place, std::size_t length) const;
    void Remove(Place from, std::size_t length);
    std::size_t JoinNextParagraph(std::size_t paragraph);
    std::size_t SplitParagraph(std::size_t paragraph, std::size_t from);
    void Insert(Place at, StringView with);
    void DropIfEmpty(const Place& anchor);
    void KeepHeight(Paragraph& paragraph, RunProperties properties) const;
    /// The index of the paragraph's end properties, or after its last piece.
    static std::size_t EndOfText(const Paragraph& paragraph);
    static void Open(Paragraph& paragraph);

    void Adapt(RunProperties& properties, std::string_view localName, const NamespaceScope& scope) const;
    TextPiece MakePiece(PieceKind kind, std::string_view open, RunProperties properties,
                        const NamespaceScope& scope) const;
    TextPiece MakeRun(RunProperties properties, StringView text, const Paragraph& paragraph) const;
    TextPiece MakeBreak(RunProperties properties, const Paragraph& paragraph) const;
    void TurnIntoRun(TextPiece& piece, const Paragraph& paragraph) const;

    std::pair<TextPiece*, std::size_t> FindLink(std::size_t element);

    std::size_t begin_ = 0;
    std::size_t end_ = 0;
    std::vector<Paragraph> paragraphs_;
    NamespaceScope shared_;  // around the text: what the names mean that paragraphs and runs declare
};

}  // namespace tessarine::builtin
