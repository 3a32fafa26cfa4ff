#include "office/builtin/text/TextTree.h"

#include <algorithm>

#include "office/builtin/xml/XmlScanner.h"
#include "office/builtin/xml/XmlText.h"
#include "platform/Failure.h"

/// The pieces of a text: what becomes of those that an edit touches, and how new ones are made.
namespace tessarine::builtin
{

/// One text may add no more than a whole presentation may: a paragraph's properties may be large, and so may be the
/// number of paragraphs that are put in.
void TextTree::Grow(std::size_t bytes)
{
    growth_ += bytes;
    if (growth_ > Limits::Default().grownBytes)
        throw Failure(FailureNumber::BadFormat, u"The changed text would make the presentation too large");
}

/// The tags of a paragraph, with a copy of their bytes.
TextTree::Paragraph& TextTree::Touch(std::size_t paragraph)
{
    Item& item = items_[paragraph];
    if (!item.paragraph) {
        const std::string_view xml = document_.Bytes();
        const Node node = NodeOf(item);
        const ElementRange range = document_.RangeOf(node);
        item.paragraph = std::make_unique<Paragraph>(
            Paragraph{.before = std::string(xml.substr(item.begin, item.end - item.begin)),
                      .open = std::string(xml.substr(range.begin, range.contentBegin - range.begin)),
                      .close = std::string(xml.substr(range.contentEnd, range.end - range.contentEnd)),
                      .prefix = std::string(range.Prefix())});
        item.paragraph->scope.Enter(document_, node);
    }
    return *item.paragraph;
}

/// A piece with a copy of its bytes.
TextPiece& TextTree::TouchPiece(std::size_t at)
{
    Item& item = items_[at];
    if (!item.piece) {
        if (item.kind == PieceKind::Gap)
            item.piece = std::make_unique<TextPiece>(
                TextPiece{.bytes = std::string(document_.Bytes().substr(item.begin, item.end - item.begin))});
        else
            item.piece = std::make_unique<TextPiece>(TextPiece::Read(document_, NodeOf(item)));
    }
    return *item.piece;
}

/// Puts a piece in front of an item of the paragraph that the cursor is in.
void TextTree::PutPiece(std::size_t at, TextPiece piece)
{
    Item item{.kind = piece.kind, .length = Offset(piece.length)};
    item.piece = std::make_unique<TextPiece>(std::move(piece));
    items_[cursor_.paragraph].length += item.SaysHeight() ? 1 : 0;
    items_.Insert(at, std::move(item));
}

void TextTree::ErasePiece(std::size_t at)
{
    const Item& item = items_[at];
    items_[cursor_.paragraph].length -= item.SaysHeight() ? 1 : 0;
    std::ranges::replace(opened_, item.piece.get(), nullptr);
    items_.Erase(at);
}

void TextTree::ReplaceUnits(std::size_t at, std::size_t offset, std::size_t count, StringView with)
{
    TextPiece& piece = TouchPiece(at);
    // Edited content takes several times the memory of its bytes. A hit touches two pieces, and the next hit begins
    // in one of them.
    const auto known = std::ranges::find(opened_, &piece);
    const auto place = known == opened_.end() ? opened_.end() - 1 : known;
    if (known == opened_.end() && *place != nullptr)
        (*place)->Close();
    std::rotate(opened_.begin(), place, place + 1);
    opened_.front() = &piece;

    const bool saidHeight = items_[at].SaysHeight();
    piece.ReplaceUnits(offset, count, with);
    Grow(with.size());
    Item& item = items_[at];
    item.length = Offset(piece.length);
    items_[cursor_.paragraph].length += (item.SaysHeight() ? 1u : 0u) - (saidHeight ? 1u : 0u);
}

/// Gives a paragraph that is an empty-element tag an end tag.
void TextTree::Open(Paragraph& paragraph)
{
    if (!paragraph.close.empty())
        return;
    paragraph.open = paragraph.open.substr(0, paragraph.open.rfind('/')) + ">";
    paragraph.close = "</" + paragraph.prefix + "p>";
    Grow(paragraph.close.size());
}

/// What an element has to declare when it leaves its own scope for another one, both of this text.
NamespaceScope TextTree::NeededIn(const NamespaceScope& other, const NamespaceScope& own,
                                  std::string_view element) const
{
    return own.NeededIn(
        other, [&](std::string_view name) { return document_.DeclarationAt(body_, name); }, element);
}

/// Gives run properties another local name, and what they need to mean the same in another scope.
void TextTree::Adapt(RunProperties& properties, std::string_view localName, const NamespaceScope& scope)
{
    properties.DropErrorMark();
    const ElementRange range = ScanElement(properties.bytes, 0);
    const std::string name = std::string(range.Prefix()) + std::string(localName);
    const std::string declarations = NeededIn(scope, properties.scope, properties.bytes).Attributes();
    const std::size_t nameEnd = 1 + range.name.size();
    std::string adapted = "<" + name + declarations;
    const std::size_t newNameEnd = adapted.size();
    if (range.IsEmptyTag())
        adapted += properties.bytes.substr(nameEnd);
    else
        adapted += properties.bytes.substr(nameEnd, range.contentEnd + 2 - nameEnd) + name +
                   properties.bytes.substr(range.contentEnd + 2 + range.name.size());
    for (PieceLink& link : properties.links) {
        link.place.begin = link.place.begin - nameEnd + newNameEnd;
        link.place.end = link.place.end - nameEnd + newNameEnd;
    }
    properties.bytes = std::move(adapted);
    properties.scope = scope;
}

/// A run or break of a paragraph that begins with properties: all of it but the text and the end tag.
TextPiece TextTree::MakePiece(PieceKind kind, std::string_view open, RunProperties properties,
                              const NamespaceScope& scope)
{
    TextPiece piece{.kind = kind, .bytes = std::string(open)};
    if (properties.bytes.empty())
        return piece;
    Adapt(properties, "rPr", scope);
    const std::size_t begin = piece.bytes.size();
    piece.bytes += properties.bytes;
    piece.properties = {begin, piece.bytes.size()};
    piece.links = std::move(properties.links);
    for (PieceLink& link : piece.links) {
        link.place.begin += begin;
        link.place.end += begin;
    }
    return piece;
}

TextPiece TextTree::MakeRun(RunProperties properties, StringView text, const Paragraph& paragraph)
{
    const std::string& prefix = paragraph.prefix;
    TextPiece piece = MakePiece(PieceKind::Run, "<" + prefix + "r>", std::move(properties), paragraph.scope);
    piece.bytes += "<" + prefix + "t>";
    piece.content.begin = piece.bytes.size();
    piece.bytes += EscapeRunText(text);
    piece.content.end = piece.bytes.size();
    piece.bytes += "</" + prefix + "t></" + prefix + "r>";
    piece.length = text.size();
    Grow(piece.bytes.size());
    return piece;
}

TextPiece TextTree::MakeBreak(RunProperties properties, const Paragraph& paragraph)
{
    const std::string name = paragraph.prefix + "br";
    const bool isEmpty = properties.bytes.empty();
    TextPiece piece =
        MakePiece(PieceKind::Break, "<" + name + (isEmpty ? "/>" : ">"), std::move(properties), paragraph.scope);
    piece.length = 1;
    if (!isEmpty)
        piece.bytes += "</" + name + ">";
    Grow(piece.bytes.size());
    return piece;
}

/// A field that text is put into becomes a run with the same characters, as they are written.
void TextTree::TurnIntoRun(std::size_t at)
{
    TextPiece& piece = TouchPiece(at);
    if (piece.kind == PieceKind::Run)
        return;
    const Paragraph& paragraph = Touch(cursor_.paragraph);
    TextPiece run = MakeRun(piece.Properties(paragraph.scope), {}, paragraph);
    std::string characters;
    piece.AppendContent(characters);
    if (piece.hasElementsInContent) {  // which may need what the field declares
        String text;
        AppendContent(characters, text, InnerElements::Skipped);
        characters = EscapeRunText(text);
    }
    run.bytes.insert(run.content.begin, characters);
    run.content.end += characters.size();
    run.length = piece.length;
    piece = std::move(run);
    items_[at].kind = PieceKind::Run;
}

}  // namespace tessarine::builtin
