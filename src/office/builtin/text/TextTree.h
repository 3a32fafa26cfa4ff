#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "office/builtin/matching/GapBuffer.h"
#include "office/builtin/text/TextPiece.h"
#include "platform/String.h"

namespace tessarine::builtin
{

/// The paragraphs of a text body taken apart for editing. Every piece keeps its bytes as they stand in the part; an
/// edit changes the pieces it touches and no others, so that putting the pieces together again gives back all bytes
/// outside of the edited text.
///
/// Edits go from front to back, as replacing all hits of a text does. Each then costs what it changes, however many
/// pieces the text has: a place is looked for from the last one, and pieces come in and go in a GapBuffer. A piece that
/// no edit has touched is a few offsets into the part.
class TextTree
{
public:
    /// Takes apart a text body (`p:txBody`), by the rules of TextMarkup. The document must outlive the tree. Raises
    /// `FileCorrupt` unless `text` is what the body reads as: the file was changed by somebody else since.
    TextTree(const XmlDocument& document, Node body, StringView text);

    /// The bytes of the part that the pieces stand for: from the first paragraph to the end of the last.
    std::size_t Begin() const { return begin_; }
    std::size_t End() const { return end_; }

    String Text() const;                                  ///< As TextBody describes it.
    std::vector<ProtectedRange> ProtectedRanges() const;  ///< What no hit may touch now.
    std::string Bytes() const;                            ///< The pieces put together.

    /// Replaces units of the text. In `with`, CR begins a new paragraph (with the properties of the one it is in) and
    /// VT a new line. Raises `InvalidRequest` for a text body without a paragraph, and
    /// `BadFormat` when the edits add more bytes than a presentation may grow.
    ///
    /// The new text takes the formatting of the first replaced character; an insertion that of the text in front. A
    /// replaced paragraph break joins the paragraphs under the properties of the first. A run left empty goes, unless
    /// it is its paragraph's only one: then its properties stay as those of the paragraph's end, so that the line keeps
    /// its height.
    void Replace(std::size_t begin, std::size_t length, StringView with);

    /// Bytes that edits have added so far: new text, and properties written once more for new runs and paragraphs.
    std::size_t Growth() const { return growth_; }

    std::size_t KeptBytes() const;  ///< About what the tree takes of memory.

    /// The links of the text, front to back, as those of a body with this index. Their elements are counted from 0, the
    /// click of a run before its hover. An edit of the text or this call counts them anew; RemoveLink leaves the other
    /// elements their numbers.
    std::vector<LinkRecord> Links(std::size_t body);
    /// Leads a link element elsewhere, or removes it; the text stays. Both raise `InvalidRequest` for an element that
    /// isn't there.
    void Retarget(std::size_t element, const LinkTarget& target);
    void RemoveLink(std::size_t element);

private:
    static constexpr char16_t paragraphBreak = u'\r';
    static constexpr char16_t lineBreak = u'\v';

    /// The tags of a paragraph, once they are needed for an edit.
    struct Paragraph {
        std::string before = {};    // bytes between the paragraph before and this one
        std::string open = {};      // start tag
        std::string close = {};     // end tag; "" while the paragraph is an empty-element tag
        std::string prefix = {};    // of the drawing namespace here, with its colon
        NamespaceScope scope = {};  // what the start tag declares
    };
    /// A paragraph's beginning, or a piece of the paragraph in front of it.
    struct Item {
        PieceKind kind = PieceKind::Gap;
        bool isParagraph = false;
        /// UTF-16 units; of a paragraph, how many of its pieces give its line a height (see KeepHeight).
        std::uint32_t length = 0;
        // Its bytes in the part; of a paragraph, those between the one before and its "<".
        std::uint32_t begin = 0;
        std::uint32_t end = 0;
        // Null while untouched; then the document tells.
        std::unique_ptr<TextPiece> piece = nullptr;
        std::unique_ptr<Paragraph> paragraph = nullptr;

        bool IsText() const { return !isParagraph && length > 0 && kind != PieceKind::Break; }
        bool SaysHeight() const { return IsText() || kind == PieceKind::EndProperties; }
    };
    /// Where a position of the text is among the items. The item may be the one after a paragraph's last piece.
    struct Place {
        std::size_t item;
        std::size_t offset;  // units into the piece
    };
    /// A place whose position is known, to look for others from.
    struct Cursor {
        std::size_t item = 0;
        std::size_t units = 0;      // in front of the item
        std::size_t paragraph = 0;  // the item that begins the paragraph of what is in front
    };

    /// Offsets and lengths in a part fit into 32 bits (see XmlDocument).
    static std::uint32_t Offset(std::size_t value) { return static_cast<std::uint32_t>(value); }

    bool IsEndOfParagraph(std::size_t item) const { return item >= items_.Size() || items_[item].isParagraph; }
    std::size_t EndOfParagraph(std::size_t from) const;
    Place PlaceOf(std::size_t position);
    Place Anchor(std::size_t begin, std::size_t length);
    RunProperties PropertiesNear(const Place& place, std::size_t length);
    void Remove(std::size_t from, std::size_t length);
    std::size_t JoinParagraph(std::size_t next);
    std::size_t SplitParagraph(std::size_t from);
    void Insert(const Place& at, StringView with);
    void DropIfEmpty(std::size_t item);
    void KeepHeight(std::size_t paragraph, std::size_t end, RunProperties properties);
    std::size_t EndOfText(std::size_t endOfParagraph) const;
    void Open(Paragraph& paragraph);

    void Adapt(RunProperties& properties, std::string_view localName, const NamespaceScope& scope);
    TextPiece MakePiece(PieceKind kind, std::string_view open, RunProperties properties, const NamespaceScope& scope);
    TextPiece MakeRun(RunProperties properties, StringView text, const Paragraph& paragraph);
    TextPiece MakeBreak(RunProperties properties, const Paragraph& paragraph);
    void TurnIntoRun(std::size_t item);
    NamespaceScope NeededIn(const NamespaceScope& other, const NamespaceScope& own, std::string_view element) const;

    void Grow(std::size_t bytes);
    Paragraph& Touch(std::size_t paragraph);
    TextPiece& TouchPiece(std::size_t item);
    void PutPiece(std::size_t at, TextPiece piece);
    void ErasePiece(std::size_t item);
    void ReplaceUnits(std::size_t item, std::size_t offset, std::size_t count, StringView with);
    void AppendText(const Item& item, String& text) const;
    Node NodeOf(const Item& item) const { return document_.ElementAt(item.isParagraph ? item.end : item.begin); }

    std::pair<TextPiece*, std::size_t> FindLink(std::size_t element);
    std::size_t CountLinks(const Item& item) const;

    const XmlDocument& document_;
    Node body_;
    std::size_t begin_ = 0;
    std::size_t end_ = 0;
    std::size_t growth_ = 0;
    GapBuffer<std::vector<Item>> items_;
    Cursor cursor_;
    Cursor linkCursor_;                   // units are link elements
    std::array<TextPiece*, 4> opened_{};  // pieces whose content is being edited, the last one first
};

}  // namespace tessarine::builtin
