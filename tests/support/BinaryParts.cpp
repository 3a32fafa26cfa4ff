#include "support/BinaryParts.h"

#include "support/BinaryRecords.h"

namespace tessarine::test::ppt
{

namespace
{

constexpr std::uint32_t ShapesOfCluster = 1024;
constexpr std::uint32_t HyperlinkObject = 4055;
constexpr std::uint32_t EmbeddedObject = 4044;
constexpr std::uint32_t LinkedObject = 4046;
constexpr std::uint32_t ControlObject = 4078;
constexpr std::uint32_t MovieObject = 4102;

std::uint32_t TypeOf(OleKind kind)
{
    if (kind == OleKind::Control)
        return ControlObject;
    return kind == OleKind::Linked ? LinkedObject : EmbeddedObject;
}

/// A PNG of one pixel.
std::string OnePixel()
{
    static constexpr unsigned char bytes[] = {
        0x89, 0x50, 0x4E, 0x47, 0x0D, 0x0A, 0x1A, 0x0A, 0x00, 0x00, 0x00, 0x0D, 0x49, 0x48, 0x44, 0x52, 0x00, 0x00,
        0x00, 0x01, 0x00, 0x00, 0x00, 0x01, 0x08, 0x02, 0x00, 0x00, 0x00, 0x90, 0x77, 0x53, 0xDE, 0x00, 0x00, 0x00,
        0x0C, 0x49, 0x44, 0x41, 0x54, 0x78, 0x9C, 0x63, 0x70, 0x29, 0x3A, 0x02, 0x00, 0x02, 0x78, 0x01, 0x7B, 0xF8,
        0x41, 0x44, 0xCC, 0x00, 0x00, 0x00, 0x00, 0x49, 0x45, 0x4E, 0x44, 0xAE, 0x42, 0x60, 0x82};
    return {reinterpret_cast<const char*>(bytes), sizeof bytes};
}

const std::string PictureDigest(16, 'T');

/// OfficeArtBlipPNG, as the stream of pictures holds it.
std::string Blip()
{
    return Record(0, 0x6E0, 0xF01E, PictureDigest + Byte(0xFF) + OnePixel());
}

}  // namespace

std::uint32_t BinaryParts::LinkId(const Link& link)
{
    if (link.shared)
        for (const auto& [known, id] : linkIds_)
            if (known == link)
                return id;
    const auto id = static_cast<std::uint32_t>(objects_.size() + 1);
    std::string records = Atom(4051, Long(id));
    if (!link.friendly.empty())
        records += CString(link.friendly, 0);
    if (link.address)
        records += CString(*link.address, 1);
    if (const std::string location = LocationOf(link); !location.empty())
        records += Atom(4026, location, 3);
    objects_.push_back({.type = HyperlinkObject, .id = id, .records = records});
    linkIds_.emplace_back(link, id);
    return id;
}

std::string BinaryParts::LocationOf(const Link& link) const
{
    if (link.slide == 0)
        return ppt::Wide(link.location);
    const std::string number = std::to_string(255 + link.slide) + "," + std::to_string(link.slide) + ",";
    const auto index = static_cast<std::size_t>(link.slide - 1);
    return ppt::Wide(FromUtf8(number) + (index < slideTitles_.size() ? slideTitles_[index] : String()));
}

std::uint32_t BinaryParts::ObjectId(OleKind kind, const std::string& names, std::string storage)
{
    const auto id = static_cast<std::uint32_t>(objects_.size() + 1);
    objects_.push_back({.type = TypeOf(kind), .id = id, .records = names, .storage = storages_.size()});
    storages_.push_back(std::move(storage));
    return id;
}

std::uint32_t BinaryParts::MovieId(const String& path)
{
    const auto id = static_cast<std::uint32_t>(objects_.size() + 1);
    const std::string video = Atom(4100, Long(id) + Long(0)) + CString(path);
    objects_.push_back({.type = MovieObject, .id = id, .records = Container(4101, video)});
    return id;
}

std::uint32_t BinaryParts::PictureNumber()
{
    picture_ = true;
    return 1;
}

void BinaryParts::BeginDrawing()
{
    ++drawing_;
    inDrawing_ = 0;
    clusters_.push_back({drawing_, 0});
}

std::uint32_t BinaryParts::NextShapeId()
{
    if (clusters_.back().used == ShapesOfCluster)
        clusters_.push_back({drawing_, 0});
    ++shapes_;
    ++inDrawing_;
    lastShape_ = static_cast<std::uint32_t>(clusters_.size()) * ShapesOfCluster + clusters_.back().used++;
    return lastShape_;
}

std::string BinaryParts::ExternalObjects(std::uint32_t firstStorage, std::uint32_t step) const
{
    if (objects_.empty())
        return {};
    std::string list = Atom(1034, Long(static_cast<std::uint32_t>(objects_.size())));
    for (const auto& object : objects_) {
        if (object.type == HyperlinkObject || object.type == MovieObject) {
            list += Container(object.type, object.records);
            continue;
        }
        std::uint32_t number = 0;
        std::string kind = Atom(4045, Long(0) + Long(0));
        if (object.type == LinkedObject) {
            number = 1;
            kind = Atom(4049, Long(0) + Long(1) + Long(0));
        } else if (object.type == ControlObject) {
            constexpr std::uint32_t FirstSlide = 256;
            number = 2;
            kind = Atom(4091, Long(FirstSlide));
        }
        const std::uint32_t persist = firstStorage + static_cast<std::uint32_t>(object.storage) * step;
        const std::string atom =
            Record(1, 0, 4035, Long(1) + Long(number) + Long(object.id) + Long(3) + Long(persist) + Long(0));
        list += Container(object.type, kind + atom + object.records);
    }
    return Container(1033, list);
}

std::string BinaryParts::DrawingGroup() const
{
    std::string drawings = Long(static_cast<std::uint32_t>(clusters_.size() + 1) * ShapesOfCluster) +
                           Long(static_cast<std::uint32_t>(clusters_.size() + 1)) + Long(shapes_) + Long(drawing_);
    for (const auto& cluster : clusters_)
        drawings += Long(cluster.drawing) + Long(cluster.used);
    std::string group = Atom(0xF006, drawings);
    if (picture_) {
        const std::string entry = Byte(6) + Byte(6) + PictureDigest + Short(0xFF) +
                                  Long(static_cast<std::uint32_t>(Blip().size())) + Long(1) + Long(0) + Long(0);
        group += Container(0xF001, Record(2, 6, 0xF007, entry), 1);
    }
    return Container(1035, Container(0xF000, group));
}

std::string BinaryParts::Pictures() const
{
    return picture_ ? Blip() : std::string();
}

}  // namespace tessarine::test::ppt
