#include "office/builtin/binary/Drawing.h"

#include <algorithm>
#include <map>

#include "office/builtin/limits/Damage.h"
#include "office/builtin/records/RecordTypes.h"

namespace tessarine::builtin
{

namespace
{

/// Flags of OfficeArtFSP ([MS-ODRAW] 2.2.40).
constexpr std::uint32_t patriarchFlag = 0x004;
constexpr std::uint32_t deletedFlag = 0x008;
constexpr std::uint32_t backgroundFlag = 0x400;

/// Properties of OfficeArtFOPT ([MS-ODRAW] 2.3), with the bits that tell of how the value is stored taken off.
constexpr std::uint16_t propertyBits = 0x3FFF;
constexpr std::uint16_t complexBit = 0x8000;
constexpr std::uint16_t pictureFlags = 0x0106;
constexpr std::uint16_t vertices = 0x0145;
constexpr std::uint16_t shapeName = 0x0380;
constexpr std::uint16_t tableProperties = 0x039F;
constexpr std::uint32_t isLinkedToFile = 0x8;
constexpr std::uint32_t isTable = 0x1;

/// PlaceholderEnum ([MS-PPT] 2.13.21).
PlaceholderKind KindOf(std::uint8_t placeholder)
{
    switch (placeholder) {
        case 0x00:
            return PlaceholderKind::None;
        case 0x01:
        case 0x03:
        case 0x0D:
        case 0x0F:
        case 0x11:
            return PlaceholderKind::Title;
        case 0x05:
        case 0x0B:
            return PlaceholderKind::SlideImage;
        case 0x09:
            return PlaceholderKind::Footer;
        case 0x0A:
            return PlaceholderKind::Header;
        default:
            return PlaceholderKind::Other;
    }
}

class DrawingReader
{
public:
    DrawingReader(std::string_view bytes, const std::vector<TextPlace>& outline, const Limits& limits)
        : bytes_(bytes), outline_(outline), limits_(limits)
    {
    }

    Drawing Read(const Record& page)
    {
        for (const Record& child : Records(bytes_, page))
            if (child.type == record::Drawing)
                for (const Record& drawing : Records(bytes_, child))
                    if (drawing.type == record::OfficeArtDg)
                        ReadPatriarch(drawing);
        return std::move(drawing_);
    }

private:
    /// All shapes of a page are in one group; what stands beside it is the background.
    void ReadPatriarch(const Record& drawing)
    {
        for (const Record& group : Records(bytes_, drawing))
            if (group.type == record::OfficeArtSpgr)
                for (const Record& shape : Records(bytes_, group))
                    ReadShape(shape);
    }

    void ReadShape(const Record& record)
    {
        if (record.type == record::OfficeArtSp) {
            ReadOwn(record, false);
            return;
        }
        if (record.type != record::OfficeArtSpgr)
            return;
        bool isFirst = true;
        for (const Record& child : Records(bytes_, record)) {
            // A group's own shape is the first in it.
            if (isFirst && child.type == record::OfficeArtSp)
                ReadOwn(child, true);
            else
                ReadMember(child, 1);
            isFirst = false;
        }
    }

    /// A shape in a group is none of the page's, but its links are.
    void ReadMember(const Record& record, std::uint32_t depth)
    {
        if (depth > limits_.nesting)
            throw Damage(documentStream, "its groups are nested too deeply", record.begin);
        if (record.type == record::OfficeArtSpgr) {
            for (const Record& child : Records(bytes_, record))
                ReadMember(child, depth + 1);
        } else if (record.type == record::OfficeArtSp) {
            for (const Record& part : Records(bytes_, record)) {
                if (part.type == record::OfficeArtClientData)
                    AddInteractions(part);
                else if (part.type == record::OfficeArtClientTextbox)
                    for (const TextPlace& text : TextsIn(bytes_, part.ContentBegin(), part.end))
                        AddTextLinks(text, {});
            }
        }
    }

    void ReadOwn(const Record& record, bool isGroup)
    {
        DrawnShape shape;
        shape.isGroup = isGroup;
        std::uint32_t flags = 0;
        for (const Record& part : Records(bytes_, record)) {
            if (part.type == record::OfficeArtFSP && part.Holds(8)) {
                shape.form = part.instance;
                shape.id = U32At(part.Content(bytes_), 0);
                flags = U32At(part.Content(bytes_), 4);
            } else if (part.type == record::OfficeArtFOPT || part.type == record::OfficeArtSecondaryFOPT ||
                       part.type == record::OfficeArtTertiaryFOPT) {
                ReadProperties(part, shape);
            }
        }
        if ((flags & (patriarchFlag | deletedFlag | backgroundFlag)) != 0)
            return;
        if (drawing_.shapes.size() >= limits_.shapes)
            throw Damage(documentStream, "it has too many shapes on one page", record.begin);
        for (const Record& part : Records(bytes_, record))
            if (part.type == record::OfficeArtClientData)
                ReadData(part, shape);
        for (const Record& part : Records(bytes_, record))
            if (part.type == record::OfficeArtClientTextbox)
                ReadTextbox(part, shape);
        drawing_.shapes.push_back(shape);
    }

    /// Six bytes each, and behind them what doesn't fit in there ([MS-ODRAW] 2.3.1).
    void ReadProperties(const Record& table, DrawnShape& shape)
    {
        constexpr std::size_t size = 6;
        const std::string_view content = table.Content(bytes_);
        const std::size_t count = std::min<std::size_t>(table.instance, content.size() / size);
        std::size_t complex = count * size;
        for (std::size_t at = 0; at < count * size; at += size) {
            const std::uint16_t id = U16At(content, at);
            const std::uint32_t value = U32At(content, at + 2);
            const bool isComplex = (id & complexBit) != 0;
            const std::size_t room = content.size() - complex;
            switch (id & propertyBits) {
                case pictureFlags:
                    shape.isLinkedPicture = (value & isLinkedToFile) != 0;
                    break;
                case vertices:
                    shape.hasVertices = isComplex;
                    break;
                case tableProperties:
                    shape.isTable = (value & isTable) != 0;
                    break;
                case shapeName:
                    if (isComplex) {
                        shape.name = table.ContentBegin() + complex;
                        shape.nameSize = std::min<std::size_t>(value, room);
                    }
                    break;
                default:
                    break;
            }
            if (isComplex)
                complex += std::min<std::size_t>(value, room);
        }
    }

    void ReadData(const Record& data, DrawnShape& shape)
    {
        for (const Record& atom : Records(bytes_, data)) {
            const std::string_view content = atom.Content(bytes_);
            if (atom.type == record::PlaceholderAtom && atom.Holds(5)) {
                // Also of one without a position: later versions write it for placeholders of layouts.
                const PlaceholderKind kind = KindOf(static_cast<std::uint8_t>(content[4]));
                if (shape.placeholder == PlaceholderKind::None)
                    shape.placeholder = kind;
            } else if (atom.type == record::RoundTripHFPlaceholder12Atom && atom.Holds(1)) {
                if (const auto kind = KindOf(static_cast<std::uint8_t>(content[0])); kind != PlaceholderKind::None)
                    shape.placeholder = kind;
            } else if (atom.type == record::ExternalObjectRefAtom && atom.Holds(4)) {
                shape.externalObject = U32At(content, 0);
            }
        }
        AddInteractions(data);
    }

    void ReadTextbox(const Record& textbox, DrawnShape& shape)
    {
        std::vector<TextPlace> texts = TextsIn(bytes_, textbox.ContentBegin(), textbox.end);
        if (texts.empty()) {
            // The text of a title or body of a slide stands in the document's list of slides.
            for (const Record& atom : Records(bytes_, textbox))
                if (atom.type == record::OutlineTextRefAtom && atom.Holds(4))
                    if (const std::size_t index = U32At(atom.Content(bytes_), 0); index < outline_.size())
                        texts.push_back(outline_[index]);
        }
        if (texts.empty() || shape.text)
            return;
        // Two shapes that name one text of the list have one text.
        const auto [known, isNew] = textAt_.try_emplace(texts.front().begin, drawing_.texts.size());
        shape.text = known->second;
        if (!isNew)
            return;
        drawing_.texts.push_back(texts.front());
        AddTextLinks(texts.front(), shape.text);
    }

    void AddInteractions(const Record& data)
    {
        for (const Record& info : Records(bytes_, data))
            if (info.type == record::InteractiveInfo)
                Add({info, {}, {}});
    }

    void AddTextLinks(const TextPlace& text, std::optional<std::size_t> index)
    {
        for (const TextLink& link : TextLinksOf(bytes_, text))
            Add({link.info, link, index});
    }

    void Add(Interaction interaction)
    {
        if (drawing_.interactions.size() >= limits_.links)
            throw Damage(documentStream, "it has too many links on one page", interaction.info.begin);
        drawing_.interactions.push_back(interaction);
    }

    std::string_view bytes_;
    const std::vector<TextPlace>& outline_;
    const Limits& limits_;
    Drawing drawing_;
    std::map<std::size_t, std::size_t> textAt_;  // index of the text that begins there
};

}  // namespace

Drawing ReadDrawing(std::string_view bytes, const Record& page, const std::vector<TextPlace>& outline,
                    const Limits& limits)
{
    return DrawingReader(bytes, outline, limits).Read(page);
}

}  // namespace tessarine::builtin
