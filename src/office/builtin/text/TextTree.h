#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "office/builtin/matching/TextMatch.h"
#include "platform/String.h"

namespace tessarine::builtin
{

struct StartTag;

/// The paragraphs of a text body taken apart for editing (ECMA-376 21.1.2.2.6 `a:p`, 21.1.2.3.8 `a:r`). Every piece
/// keeps its bytes as they stand in the part; an edit changes the pieces it touches and no others, so that putting the
/// pieces together again gives back all bytes outside the edited text.
class TextTree
{
public:
    /// Takes apart the text body (`p:txBody`) whose "<" stands at `body`. Raises -2147023504 when the markup is not
    /// that of a text body.
    TextTree(std::string_view xml, std::size_t body);

    /// The bytes of the part that the pieces stand for: from the first paragraph to the end of the last.
    std::size_t Begin() const { return begin_; }
    std::size_t End() const { return end_; }

    String Text() const;  ///< As TextBody describes it.
    std::vector<ProtectedRange> ProtectedRanges() const;
    std::string Bytes() const;  ///< The pieces put together.

    /// Replaces units of the text. In `with`, CR begins a new paragraph (with the properties of the one it is in) and
    /// VT a new line.
    ///
    /// The new text takes the formatting of the first replaced character; an insertion that of the text in front.
    /// A replaced paragraph break joins the paragraphs under the properties of the first. A run left empty goes, unless
    /// it is its paragraph's only one: then its properties stay as those of the paragraph's end, so that the line keeps
    /// its height.
    void Replace(std::size_t begin, std::size_t length, StringView with);

private:
    enum class Kind {
        Run,
        Break,
        Field,          // a field whose text is ordinary text
        VolatileField,  // slide number or date: rewritten by PowerPoint, so no hit may touch it
        Opaque,         // content of no length that a hit may not span, such as an equation
        Properties,     // a:pPr
        EndProperties,  // a:endParaRPr
        Other           // white space, comments
    };
    struct Piece {
        Kind kind = Kind::Other;
        std::string bytes;
        std::size_t contentBegin = 0;  // of the a:t, within bytes; both 0 when there is none to write into
        std::size_t contentEnd = 0;
        std::size_t length = 0;  // UTF-16 units

        std::string_view Content() const
        {
            return std::string_view(bytes).substr(contentBegin, contentEnd - contentBegin);
        }
    };
    struct Paragraph {
        std::string before;  // bytes between the paragraph before and this one
        std::string open;    // start tag
        std::vector<Piece> pieces;
        std::string close;  // end tag
    };
    struct Place {
        std::size_t paragraph;
        std::size_t piece;
        std::size_t offset;  // units into the piece
    };

    static Paragraph ReadParagraph(std::string_view xml, const StartTag& tag, std::size_t& end);
    static Piece ReadPiece(std::string_view xml, std::size_t at, std::size_t& end);

    static bool IsText(const Piece& piece) { return piece.length > 0 && piece.kind != Kind::Break; }
    Piece MakeRun(std::string_view properties, StringView text) const;
    Piece MakeBreak(std::string_view properties) const;
    static std::string PropertiesOf(const Piece& piece);
    static void ReplaceUnits(Piece& piece, std::size_t offset, std::size_t length, StringView with);
    void TurnIntoRun(Piece& piece) const;

    Place PlaceOf(std::size_t position) const;
    Place Anchor(std::size_t begin, std::size_t length);
    std::string PropertiesNear(const Place& place, std::size_t length) const;
    void Remove(Place from, std::size_t length);
    std::size_t JoinNextParagraph(std::size_t paragraph);
    std::size_t SplitParagraph(std::size_t paragraph, std::size_t from);
    void Insert(Place at, StringView with);
    void DropIfEmpty(const Place& anchor);
    static void KeepHeight(Paragraph& paragraph, std::string_view properties);
    static std::size_t EndOfText(const Paragraph& paragraph);
    void Open(Paragraph& paragraph) const;

    std::string prefix_;  // of the drawing namespace here, with its colon
    std::size_t begin_ = 0;
    std::size_t end_ = 0;
    std::vector<Paragraph> paragraphs_;
};

}  // namespace tessarine::builtin
