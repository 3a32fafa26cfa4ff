#include "office/builtin/shapes/ShapeTreePart.h"

#include <algorithm>
#include <utility>

#include "office/builtin/reader/Refusals.h"
#include "office/builtin/shapes/LinkedObjects.h"
#include "office/builtin/shapes/ShapeKind.h"
#include "office/builtin/text/GatheredText.h"

namespace tessarine::builtin
{

ShapeTreePart::ShapeTreePart(Package& package, Package::Entry entry)
    : Part(package.Kept()), entry_(entry), edits_(package, entry, *this), filter_([this, &package, entry] {
          Use();
          return GatherText(package.ReadXmlOnce(entry));
      })
{
}

ShapeFacts ShapeTreePart::Shape(std::size_t shape)
{
    const ShapeRecord& record = Shapes()[shape];
    return {record.type, record.hasTextFrame};
}

String ShapeTreePart::ShapeName(std::size_t shape)
{
    const ShapeTree& tree = Read();
    if (!tree.names.empty())
        return FromUtf8(tree.names[shape]);
    const std::size_t offset = tree.shapes[shape].offset;
    const XmlDocument& document = edits_.Document();
    return FromUtf8(ShapeNameIn(document, document.ElementAt(offset)));
}

String ShapeTreePart::Title()
{
    // A hostile title may be as long as its part, and each shape of the slide asks for it.
    constexpr std::size_t most = 1000;
    const std::vector<ShapeRecord>& shapes = Shapes();
    // Looked for once, as there may be many shapes. It stays, because edits neither add nor move shapes.
    if (!titleShape_)
        titleShape_ = static_cast<std::size_t>(
            std::ranges::find(shapes, Placeholder::Title, &ShapeRecord::placeholder) - shapes.begin());
    return *titleShape_ < shapes.size() ? TextAt(*titleShape_, 0, most) : String();
}

String ShapeTreePart::TextAt(std::size_t shape, std::size_t begin, std::size_t length)
{
    const TextBody* const text = TextOf(shape);
    return text == nullptr ? String() : text->Text(begin, length);
}

TextBody* ShapeTreePart::TextOf(std::size_t shape)
{
    const std::optional<std::size_t> body = Shapes()[shape].body;
    return body ? &Body(*body) : nullptr;
}

std::optional<std::size_t> ShapeTreePart::FindText(std::size_t shape, const TextPattern& pattern, std::size_t from)
{
    TextBody* const text = TextOf(shape);
    return text == nullptr ? std::nullopt : text->Find(pattern, from);
}

std::size_t ShapeTreePart::ReplaceText(std::size_t shape, std::size_t begin, std::size_t length, StringView with)
{
    const TextBody::DocumentSource document = [this]() -> const XmlDocument& { return edits_.Document(); };
    ShapeRecord& record = edits_.Tree().shapes[shape];
    TextBody& body = Body(record.body.value());
    TextBody* const twin = record.twin ? &Body(*record.twin) : nullptr;
    const auto counts = [&] { return std::pair(body.EditCount(), twin->EditCount()); };
    // Asked before the first of the two changes. Texts that were alike and had the same edits since are not compared.
    const bool twinAgrees = twin != nullptr && (record.alike == counts() || twin->Text() == body.Text());
    const auto growth = [&] { return body.Growth() + (twin == nullptr ? 0 : twin->Growth()); };
    return edits_.Try([&] {
        const std::size_t before = growth();
        const std::size_t count = body.Replace(begin, length, with, document);
        if (twinAgrees) {
            twin->Replace(begin, length, with, document);
            record.alike = counts();
        }
        edits_.Grow(growth() - before);
        TextChanged(*record.body);
        return count;
    });
}

/// The shape, if the page shows one.
std::optional<std::size_t> ShapeTreePart::FirstHeaderFooter(HeaderFooterKind kind)
{
    const Placeholder placeholder = kind == HeaderFooterKind::Header ? Placeholder::Header : Placeholder::Footer;
    const auto found = std::ranges::find(Shapes(), placeholder, &ShapeRecord::placeholder);
    if (found == Shapes().end())
        return std::nullopt;
    return static_cast<std::size_t>(found - Shapes().begin());
}

std::optional<String> ShapeTreePart::HeaderFooter(HeaderFooterKind kind)
{
    const std::optional<std::size_t> shape = FirstHeaderFooter(kind);
    if (!shape)
        return std::nullopt;
    const TextBody* const text = TextOf(*shape);
    // A placeholder without p:txBody is an empty one.
    return text == nullptr ? String() : text->Text();
}

void ShapeTreePart::PutHeaderFooter(HeaderFooterKind kind, StringView text)
{
    const std::optional<std::size_t> shape = FirstHeaderFooter(kind);
    const std::optional<std::size_t> body = shape ? Shapes()[*shape].body : std::nullopt;
    if (!body)
        throw NoHeaderFooter();
    edits_.Try([&] {
        Body(*body).PutText(text, [this]() -> const XmlDocument& { return edits_.Document(); });
        TextChanged(*body);
    });
}

void ShapeTreePart::TextChanged(std::size_t body)
{
    if (Body(body).Edited() == nullptr)
        return;  // a text was put in place of itself
    // What it has gathered is the text before the edit.
    filter_.Decline();
    uses_.CountAgain();
    hyperlinks_.TextChanged(body);
}

String ShapeTreePart::LinkSource(std::size_t shape)
{
    return LinkSourceOf(edits_, Shapes()[shape]);
}

void ShapeTreePart::PutLinkSource(std::size_t shape, const String& source)
{
    ShapeRecord& record = edits_.Tree().shapes[shape];
    edits_.Try([&] { builtin::PutLinkSource(edits_, uses_, record, source); });
}

void ShapeTreePart::PutHyperlinkAddress(std::size_t link, const String& address)
{
    edits_.Try([&] { hyperlinks_.PutAddress(link, address); });
}

ShapeTreePart::Flushed ShapeTreePart::Flush()
{
    HandOver();
    return std::exchange(flushed_, {});
}

void ShapeTreePart::HandOver()
{
    flushed_.leavesOtherText = flushed_.leavesOtherText || edits_.LeavesOtherText();
    std::optional<TextChange> title = edits_.TitleChange();
    hyperlinks_.Update();
    // What can't be handed on is lost, so that the package can't be saved then.
    const auto check = [this](const ShapeTree& readAgain) { hyperlinks_.CheckReadAgain(readAgain.links); };
    if (edits_.Try([&] { return edits_.Flush(check); }))
        hyperlinks_.LetGo();
    if (!title)
        return;
    if (flushed_.title)
        title->before = std::move(flushed_.title->before);
    flushed_.title = std::move(title);
}

std::size_t ShapeTreePart::KeptBytes() const
{
    return sizeof(ShapeTreePart) + edits_.KeptBytes() + uses_.KeptBytes() + hyperlinks_.KeptBytes() +
           filter_.KeptBytes();
}

void ShapeTreePart::LetGo()
{
    if (edits_.HasEdits()) {
        try {
            HandOver();
        } catch (const Failure&) {
            // It belongs to this part, and another one is being read. Try has told the package.
            return;
        }
    }
    hyperlinks_.LetGo();
    uses_.CountAgain();
    edits_.LetGo();
    filter_.LetGo();
}

}  // namespace tessarine::builtin
