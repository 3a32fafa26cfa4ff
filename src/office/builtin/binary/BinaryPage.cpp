#include "office/builtin/binary/BinaryPage.h"

#include <algorithm>
#include <utility>

#include "office/builtin/binary/AnimatedText.h"
#include "office/builtin/binary/GatheredTexts.h"
#include "office/builtin/binary/LinkedSource.h"
#include "office/builtin/binary/ShapeTypes.h"
#include "office/builtin/limits/Damage.h"
#include "office/builtin/reader/Refusals.h"
#include "office/builtin/records/RecordTypes.h"
#include "platform/Failure.h"

namespace tessarine::builtin
{

namespace
{

PlaceholderKind PlaceholderFor(HeaderFooterKind kind)
{
    return kind == HeaderFooterKind::Header ? PlaceholderKind::Header : PlaceholderKind::Footer;
}

}  // namespace

BinaryPage::BinaryPage(BinaryDocument& document, PagePlace place, Kind kind)
    : Part(document.Kept()), document_(document), place_(std::move(place)), kind_(kind), filter_([this] {
          Use();
          return GatherText();
      })
{
}

/// Of all texts on the page, whether or not a shape shows them.
std::optional<String> BinaryPage::GatherText()
{
    String gathered;
    const std::string_view bytes = document_.Bytes();
    if (!place_.outline.empty())
        AppendGatheredTexts(bytes, place_.outline.front().begin, place_.outline.back().end, gathered);
    for (const Record& child : Records(bytes, place_.record))
        if (child.type == record::Drawing)
            AppendGatheredTexts(bytes, child.ContentBegin(), child.end, gathered);
    return gathered;
}

const Drawing& BinaryPage::Read()
{
    if (!drawing_) {
        Use();
        drawing_ = ReadDrawing(document_.Bytes(), place_.record, place_.outline, document_.limits());
        texts_.resize(drawing_->texts.size());
    }
    return *drawing_;
}

BinaryPage::OpenText& BinaryPage::Open(std::size_t text)
{
    const TextPlace& place = Read().texts[text];
    if (!texts_[text]) {
        String units = ReadText(document_.Bytes(), place);
        if (units.size() > document_.limits().textUnits)
            throw Damage(documentStream, "a text is too long", place.begin);
        ProtectedRanges fields = FieldsOf(document_.Bytes(), place, units.size());
        texts_[text] =
            std::make_unique<OpenText>(OpenText{SearchedText(std::move(units), std::move(fields)), std::nullopt});
    }
    return *texts_[text];
}

ShapeFacts BinaryPage::Shape(std::size_t shape)
{
    return FactsOf(Shapes()[shape], document_.External());
}

String BinaryPage::ShapeName(std::size_t shape)
{
    const DrawnShape& drawn = Shapes()[shape];
    String name = Utf16Content(document_.Bytes().substr(drawn.name, drawn.nameSize));
    // It ends with a NUL.
    name.resize(std::min(name.find(u'\0'), name.size()));
    return name;
}

std::optional<std::size_t> BinaryPage::TitleText()
{
    for (const DrawnShape& shape : Shapes())
        if (shape.placeholder == PlaceholderKind::Title && shape.text)
            return shape.text;
    return {};
}

String BinaryPage::Title()
{
    constexpr std::size_t most = 1000;
    const auto text = TitleText();
    return text ? Open(*text).text.Text(0, most) : String();
}

String BinaryPage::TextAt(std::size_t shape, std::size_t begin, std::size_t length)
{
    const auto text = TextOf(shape);
    return text ? Open(*text).text.Text(begin, length) : String();
}

std::optional<std::size_t> BinaryPage::FindText(std::size_t shape, const TextPattern& pattern, std::size_t from)
{
    const auto text = TextOf(shape);
    return text ? Open(*text).text.Find(pattern, from) : std::nullopt;
}

std::size_t BinaryPage::ReplaceText(std::size_t shape, std::size_t begin, std::size_t length, StringView with)
{
    const String inserted = HeldText(with);
    ReplaceIn(TextOf(shape).value(), begin, length, inserted);
    return inserted.size();
}

void BinaryPage::ReplaceIn(std::size_t text, std::size_t begin, std::size_t length, StringView with)
{
    OpenText& open = Open(text);
    const std::size_t size = std::min(length, open.text.Size() - begin);
    if (open.text.Reads(begin, size, with))
        return;
    document_.Grow(2 * with.size() - std::min(2 * with.size(), 2 * size));
    if (open.text.Size() - size + with.size() > document_.limits().textUnits)
        throw Failure(FailureNumber::BadFormat, u"A text would become too long");
    if (!open.edits)
        open.edits.emplace(ReadText(document_.Bytes(), Read().texts[text]));
    open.edits->Replace(begin, size, with.size());
    // A hit touches no field; a text that is put as a whole takes them with it.
    if (!open.text.Replace(begin, size, with))
        open.text.Protect({});
    filter_.Decline();
    isEdited_ = true;
}

String BinaryPage::LinkSource(std::size_t shape)
{
    const auto object = Shapes()[shape].externalObject;
    const auto storage = object ? document_.External().StorageOf(*object) : std::nullopt;
    const auto offset = storage ? document_.Objects().Find(*storage) : std::nullopt;
    if (!offset)
        throw Failure(FailureNumber::InvalidRequest, u"A linked object names no source");
    return SourceInStorage(document_.Bytes(), RecordAt(document_.Bytes(), *offset, document_.Bytes().size()),
                           document_.limits());
}

void BinaryPage::PutLinkSource(std::size_t /*shape*/, const String& /*source*/)
{
    throw Failure(FailureNumber::Unspecified,
                  u"The source of a linked object can't be changed in a binary presentation");
}

/// A placeholder that has a text of its own.
std::optional<std::size_t> BinaryPage::OwnHeaderFooter(HeaderFooterKind kind)
{
    for (const DrawnShape& shape : Shapes())
        if (shape.placeholder == PlaceholderFor(kind) && shape.text &&
            !IsHeaderFooterField(document_.Bytes(), Read().texts[*shape.text]))
            return shape.text;
    return {};
}

/// The page's own, or those that it shares with others; null where it has neither.
HeadersFootersText* BinaryPage::HeadersFootersOf()
{
    if (std::exchange(looksForOwn_, false))
        for (const Record& child : Records(document_.Bytes(), place_.record))
            if (child.type == record::HeadersFooters && !ownHeadersFooters_)
                ownHeadersFooters_.emplace(document_.Bytes(), child);
    if (ownHeadersFooters_)
        return &*ownHeadersFooters_;
    switch (kind_) {
        case Kind::Slide:
            return document_.OfSlides();
        case Kind::Notes:
            return document_.OfNotes();
        case Kind::Master:
            break;
    }
    return nullptr;
}

std::optional<String> BinaryPage::HeaderFooter(HeaderFooterKind kind)
{
    if (const auto text = OwnHeaderFooter(kind))
        return Open(*text).text.Text();
    const HeadersFootersText* const container = HeadersFootersOf();
    return container == nullptr ? std::nullopt : container->Text(kind);
}

void BinaryPage::PutHeaderFooter(HeaderFooterKind kind, StringView text)
{
    if (const auto own = OwnHeaderFooter(kind)) {
        ReplaceIn(*own, 0, Open(*own).text.Size(), HeldText(text));
        return;
    }
    HeadersFootersText* container = HeadersFootersOf();
    if (container == nullptr)
        throw NoHeaderFooter();
    document_.Grow(2 * text.size());
    if (kind_ == Kind::Slide && !ownHeadersFooters_) {
        // The text of all slides stays: this one gets a container of its own, which stands in front of the drawing.
        for (const Record& child : Records(document_.Bytes(), place_.record))
            if (child.type == record::Drawing && !copyInFrontOf_)
                copyInFrontOf_ = child;
        if (!copyInFrontOf_)
            throw NoHeaderFooter();
        ownHeadersFooters_ = *container;
        container = &*ownHeadersFooters_;
    }
    container->PutText(kind, HeldText(text));
    isEdited_ = true;
}

const std::vector<std::optional<BinaryPage::HyperlinkState>>& BinaryPage::Hyperlinks()
{
    if (!links_) {
        links_.emplace();
        for (const Interaction& interaction : Read().interactions) {
            const auto target = HyperlinkOf(document_.Bytes(), interaction.info);
            const bool isLink = target && document_.External().IsHyperlink(*target);
            links_->push_back(isLink ? std::optional(HyperlinkState{*target, false}) : std::nullopt);
        }
    }
    return *links_;
}

/// Whether the text that it was on has gone.
bool BinaryPage::HasGone(std::size_t link)
{
    const Interaction& interaction = Read().interactions[link];
    if (!interaction.textLink)
        return false;
    const TextLink& place = *interaction.textLink;
    const OpenText* const open = interaction.text ? texts_[*interaction.text].get() : nullptr;
    if (open == nullptr || !open->edits)
        return false;
    return open->edits->PositionOf(place.begin) >= open->edits->PositionOf(place.end);
}

std::vector<std::size_t> BinaryPage::HyperlinkIndices()
{
    const auto& links = Hyperlinks();
    std::vector<std::size_t> indices;
    for (std::size_t link = 0; link < links.size(); ++link)
        if (links[link] && !links[link]->isRemoved && !HasGone(link))
            indices.push_back(link);
    return indices;
}

BinaryPage::HyperlinkState& BinaryPage::KnownHyperlink(std::size_t link)
{
    Hyperlinks();
    if (link >= links_->size() || !(*links_)[link] || (*links_)[link]->isRemoved || HasGone(link))
        throw NoHyperlink();
    return *(*links_)[link];
}

String BinaryPage::HyperlinkAddress(std::size_t link)
{
    return document_.External().Address(KnownHyperlink(link).target);
}

/// The link goes, and its target with the last that leads there.
void BinaryPage::DropUse(HyperlinkState& state)
{
    if (!std::exchange(state.isRemoved, true) && --document_.UsesOf(state.target) == 0)
        document_.External().Remove(state.target);
}

void BinaryPage::PutHyperlinkAddress(std::size_t link, const String& address)
{
    HyperlinkState& state = KnownHyperlink(link);
    CheckAddressLength(address, true);
    ExternalObjects& external = document_.External();
    std::size_t& uses = document_.UsesOf(state.target);
    document_.Grow(2 * address.size());
    isEdited_ = true;
    if (address.empty() && !external.LeadsInside(state.target)) {
        DropUse(state);
    } else if (uses > 1) {
        // Others lead there, too.
        --uses;
        state.target = external.Copy(state.target, address);
        document_.UsesOf(state.target) = 1;
    } else {
        external.PutAddress(state.target, address);
    }
}

bool BinaryPage::ReadsAs(BinaryPage& other)
{
    if (ShapeCount() != other.ShapeCount())
        return false;
    for (std::size_t shape = 0; shape < ShapeCount(); ++shape) {
        const auto text = TextOf(shape);
        const auto otherText = other.TextOf(shape);
        if (text.has_value() != otherText.has_value() ||
            (text && Open(*text).text.Text() != other.Open(*otherText).text.Text()))
            return false;
    }
    const auto addressesOf = [](BinaryPage& page) {
        std::vector<String> addresses;
        for (const std::size_t link : page.HyperlinkIndices())
            addresses.push_back(page.HyperlinkAddress(link));
        return addresses;
    };
    return addressesOf(*this) == addressesOf(other) &&
           HeaderFooter(HeaderFooterKind::Header) == other.HeaderFooter(HeaderFooterKind::Header) &&
           HeaderFooter(HeaderFooterKind::Footer) == other.HeaderFooter(HeaderFooterKind::Footer);
}

void BinaryPage::Put(RecordEdits& target)
{
    if (!isEdited_)
        return;
    const Drawing& drawing = Read();
    const std::string_view bytes = document_.Bytes();
    std::set<std::size_t> removed;
    Hyperlinks();  // also where nobody has asked for them: some may go with their text
    for (std::size_t link = 0; link < links_->size(); ++link) {
        auto& state = (*links_)[link];
        const Interaction& interaction = drawing.interactions[link];
        if (!state)
            continue;
        if (HasGone(link)) {
            DropUse(*state);  // PutText removes what was around the text
            continue;
        }
        if (state->isRemoved) {
            removed.insert(interaction.info.begin);
            target.Replace(interaction.info.begin, interaction.info.end, {});
            if (interaction.textLink)
                target.Replace(interaction.textLink->range.begin, interaction.textLink->range.end, {});
        } else if (HyperlinkOf(bytes, interaction.info) != state->target) {
            std::string number;
            AppendU32(number, state->target);
            target.Overwrite(HyperlinkFieldOf(bytes, interaction.info), std::move(number));
        }
    }
    for (std::size_t text = 0; text < texts_.size(); ++text)
        if (texts_[text] && texts_[text]->edits)
            PutText(bytes, drawing.texts[text], texts_[text]->text.Text(), *texts_[text]->edits, removed, target);
    EditedShapes edited;
    for (const DrawnShape& shape : drawing.shapes)
        if (shape.text && texts_[*shape.text] && texts_[*shape.text]->edits)
            edited.emplace(shape.id, &*texts_[*shape.text]->edits);
    if (!edited.empty())
        MoveAnimatedRanges(bytes, place_.record, edited, target);
    if (copyInFrontOf_)
        ownHeadersFooters_->PutCopy(copyInFrontOf_->begin, target);
    else if (ownHeadersFooters_)
        ownHeadersFooters_->Put(target);
}

std::optional<BinaryPage::TitleChange> BinaryPage::ChangedTitle()
{
    if (!isEdited_)
        return {};
    const auto text = TitleText();
    if (!text || !texts_[*text] || !texts_[*text]->edits)
        return {};
    return TitleChange{ReadText(document_.Bytes(), Read().texts[*text]), texts_[*text]->text.Text()};
}

std::size_t BinaryPage::KeptBytes() const
{
    std::size_t bytes = sizeof(BinaryPage) + filter_.KeptBytes();
    if (drawing_)
        bytes += drawing_->shapes.capacity() * sizeof(DrawnShape) + drawing_->texts.capacity() * sizeof(TextPlace) +
                 drawing_->interactions.capacity() * sizeof(Interaction);
    for (const auto& text : texts_)
        bytes += sizeof(text) + (text ? text->text.KeptBytes() : 0);
    return bytes;
}

void BinaryPage::LetGo()
{
    filter_.LetGo();
    // Edits go by the indices of what was read.
    if (isEdited_)
        return;
    drawing_.reset();
    links_.reset();
    texts_.clear();
}

}  // namespace tessarine::builtin
