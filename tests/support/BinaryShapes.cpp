#include "support/BinaryShapes.h"

#include "support/BinaryPage.h"
#include "support/BinaryRecords.h"

namespace tessarine::test::ppt
{

namespace
{

constexpr std::uint32_t HasAnchorAndType = 0xA00;
constexpr std::uint32_t GroupShape = 0x1;
constexpr std::uint32_t ChildShape = 0x2;
constexpr std::uint32_t DeletedShape = 0x8;
constexpr std::uint32_t OleShape = 0x10;

constexpr std::uint32_t PictureProperty = 0x4104;
constexpr std::uint32_t WordArtText = 0xC0;
constexpr std::uint32_t NameProperty = 0x380;
constexpr std::uint32_t TableProperty = 0x39F;
constexpr std::uint32_t TableRows = 0x3A0;
constexpr std::uint32_t Visibility = 0x3BF;
constexpr std::uint32_t ComplexFlag = 0x8000;

constexpr int PictureFrame = 75;
constexpr int RowHeight = 400;
constexpr int ColumnWidth = 1200;

std::string Places(const std::vector<int>& numbers)
{
    std::string bytes;
    for (const int number : numbers)
        bytes += Long(static_cast<std::uint32_t>(number));
    return bytes;
}

}  // namespace

Shape& Shape::Named(String name)
{
    name_ = std::move(name);
    return *this;
}

Shape& Shape::Place(int left, int top, int right, int bottom)
{
    place_ = {left, top, right, bottom};
    return *this;
}

Shape& Shape::Click(Link link)
{
    click_ = std::move(link);
    return *this;
}

Shape& Shape::Hover(Link link)
{
    hover_ = std::move(link);
    return *this;
}

Shape& Shape::Hidden()
{
    return Property(Visibility, 0x20002);
}

Shape& Shape::Deleted()
{
    return Flags(DeletedShape);
}

Shape& Shape::Flags(std::uint32_t flags)
{
    flags_ |= flags;
    return *this;
}

Shape& Shape::InPlaceholder(int kind, int textType)
{
    placeholder_ = kind;
    textType_ = textType;
    return *this;
}

Shape& Shape::Position(int position)
{
    position_ = position;
    return *this;
}

Shape& Shape::RoundTrip(int kind)
{
    roundTrip_ = kind;
    return *this;
}

Shape& Shape::OwnText()
{
    outline_ = false;
    return *this;
}

Shape& Shape::InOutline()
{
    outline_ = true;
    return *this;
}

Shape& Shape::OutlineReference(int index)
{
    outlineReference_ = index;
    return *this;
}

Shape& Shape::Ruler()
{
    ruler_ = true;
    return *this;
}

Shape& Shape::Property(std::uint32_t id, std::uint32_t value)
{
    properties_[id] = {value, std::nullopt};
    return *this;
}

Shape& Shape::ComplexProperty(std::uint32_t id, std::string value)
{
    properties_[id] = {static_cast<std::uint32_t>(value.size()), std::move(value)};
    return *this;
}

Shape& Shape::TertiaryProperty(std::uint32_t id, std::uint32_t value)
{
    tertiary_[id] = value;
    return *this;
}

Shape& Shape::ClientData(std::string records)
{
    clientData_ += std::move(records);
    return *this;
}

Shape& Shape::ClientText(std::string records)
{
    clientText_ = std::move(records);
    return *this;
}

String Shape::Characters() const
{
    return text_ ? text_->Characters() : String();
}

bool Shape::IsTitle() const
{
    return placeholder_ == TitleKind || placeholder_ == CenterTitleKind;
}

std::string Shape::Records(BinaryPage& page) const
{
    return RecordsIn(page, false);
}

std::string Shape::RecordsIn(BinaryPage& page, bool inGroup) const
{
    if (!raw_.empty())
        return raw_;
    if (group_)
        return GroupRecords(page, inGroup);
    const std::uint32_t id = page.Parts().NextShapeId();
    const std::uint32_t flags = HasAnchorAndType | flags_ | (inGroup ? ChildShape : 0) | (object_ ? OleShape : 0);
    return Container(0xF004, Record(2, static_cast<std::uint32_t>(preset_), 0xF00A, Long(id) + Long(flags)) +
                                 Options(page) + Anchor(inGroup, page) + ClientDataOf(page) + ClientTextOf(page));
}

std::string Shape::GroupRecords(BinaryPage& page, bool inGroup) const
{
    const auto columns = rows_.empty() ? std::size_t{1} : rows_.front().size();
    const int right = 400 + static_cast<int>(columns) * ColumnWidth;
    const int bottom = 1000 + static_cast<int>(rows_.size()) * RowHeight;
    const std::uint32_t id = page.Parts().NextShapeId();
    const std::uint32_t flags = 0x200 | GroupShape | flags_ | (inGroup ? ChildShape : 0);
    const std::string head =
        Record(1, 0, 0xF009, Places({400, 1000, right, bottom})) + Record(2, 0, 0xF00A, Long(id) + Long(flags)) +
        Options(page) +
        (inGroup ? Atom(0xF00F, Places({400, 1000, right, bottom}))
                 : Atom(0xF010, Short(1000) + Short(400) + Short(static_cast<std::uint32_t>(right)) +
                                    Short(static_cast<std::uint32_t>(bottom)))) +
        ClientDataOf(page);
    std::string members = Container(0xF004, head);
    int top = 1000;
    for (const auto& row : rows_) {
        int left = 400;
        for (auto member : row) {
            if (!member.place_)
                member.Place(left, top, left + ColumnWidth, top + RowHeight);
            members += member.RecordsIn(page, true);
            left += ColumnWidth;
        }
        top += RowHeight;
    }
    return Container(0xF003, members);
}

std::string Shape::Options(BinaryPage& page) const
{
    auto properties = properties_;
    if (picture_)
        properties[PictureProperty] = {page.Parts().PictureNumber(), std::nullopt};
    if (!name_.empty()) {
        const std::string name = ppt::Wide(name_) + Short(0);
        properties[NameProperty] = {static_cast<std::uint32_t>(name.size()), name};
    }
    std::string fixed;
    std::string complex;
    for (const auto& [id, value] : properties) {
        fixed += Short(id | (value.second ? ComplexFlag : 0)) + Long(value.first);
        complex += value.second.value_or("");
    }
    std::string options =
        properties.empty() ? "" : Record(3, static_cast<std::uint32_t>(properties.size()), 0xF00B, fixed + complex);
    if (!tertiary_.empty()) {
        std::string values;
        std::string rows;
        for (const auto& [id, value] : tertiary_)
            values += Short(id) + Long(value);
        if (tertiary_.count(TableProperty) != 0) {
            const auto count = static_cast<std::uint32_t>(rows_.size());
            rows = Short(count) + Short(count) + Short(4);
            for (std::uint32_t i = 0; i < count; ++i)
                rows += Long(RowHeight);
            values += Short(TableRows | ComplexFlag) + Long(static_cast<std::uint32_t>(rows.size()));
        }
        options += Record(3, static_cast<std::uint32_t>(values.size() / 6), 0xF122, values + rows);
    }
    return options;
}

std::string Shape::Anchor(bool inGroup, BinaryPage& page) const
{
    const std::vector<int> place = place_ ? *place_ : page.NextPlace();
    if (inGroup)
        return Atom(0xF00F, Places(place));
    std::string anchor;
    for (const std::size_t side : {1U, 0U, 2U, 3U})
        anchor += Short(static_cast<std::uint32_t>(place[side]));
    return Atom(0xF010, anchor);
}

std::string Shape::ClientDataOf(BinaryPage& page) const
{
    std::string records;
    if (object_) {
        const std::string names = CString(u"Object", 1) + CString(object_->programId, 2) + CString(u"Object", 3);
        records += Atom(3009, Long(page.Parts().ObjectId(object_->kind, names, object_->storage)));
    }
    if (movie_)
        records += Atom(3009, Long(page.Parts().MovieId(*movie_)));
    if (click_)
        records += InteractiveInfo(page.Parts(), *click_, false);
    if (hover_)
        records += InteractiveInfo(page.Parts(), *hover_, true);
    if (placeholder_ != 0) {
        const std::uint32_t position = position_ ? static_cast<std::uint32_t>(*position_) : page.NextPosition();
        records += Atom(3011, Long(position) + Byte(static_cast<std::uint32_t>(placeholder_)) + Byte(0) + Short(0));
    }
    if (roundTrip_)
        records += Atom(1056, Byte(static_cast<std::uint32_t>(*roundTrip_)));
    records += clientData_;
    return records.empty() ? "" : Container(0xF011, records);
}

std::string Shape::ClientTextOf(BinaryPage& page) const
{
    if (clientText_)
        return Container(0xF00D, *clientText_);
    const std::string ruler = ruler_ ? Atom(4006, Long(1) + Short(576)) : "";
    if (outlineReference_)
        return Container(0xF00D, Atom(3998, Long(static_cast<std::uint32_t>(*outlineReference_))) + ruler);
    if (!text_)
        return {};
    if (outline_.value_or(false) && page.HasOutline())
        return Container(0xF00D, Atom(3998, Long(page.AddToOutline(*text_, textType_))) + ruler);
    return Container(0xF00D, text_->Records(page.Parts(), textType_));
}

Shape WithText(Shape shape, Text text)
{
    shape.text_ = std::move(text);
    return shape;
}

Shape WordArt(const String& text)
{
    constexpr int PlainText = 136;
    return Shape(PlainText).ComplexProperty(WordArtText, ppt::Wide(text) + Short(0));
}

Shape Line()
{
    constexpr int LinePreset = 20;
    return Shape(LinePreset);
}

Shape Picture()
{
    Shape shape(PictureFrame);
    shape.picture_ = true;
    return shape;
}

Shape LinkedPicture(const String& path)
{
    constexpr std::uint32_t FileName = 0x105;
    constexpr std::uint32_t FileFlags = 0x106;
    constexpr std::uint32_t LinkedToFileAndNotSaved = 0xE;
    return Shape(PictureFrame)
        .ComplexProperty(FileName, ppt::Wide(path) + Short(0))
        .Property(FileFlags, LinkedToFileAndNotSaved);
}

Shape Movie(String path)
{
    Shape shape = Picture();
    shape.movie_ = std::move(path);
    return shape;
}

Shape NotesImage()
{
    return Shape(1).InPlaceholder(NotesImageKind);
}

Shape GroupOf(std::vector<Shape> members)
{
    Shape shape(0);
    shape.group_ = true;
    shape.rows_.push_back(std::move(members));
    return shape;
}

Shape Table(std::vector<std::vector<Text>> rows)
{
    Shape shape(0);
    shape.group_ = true;
    for (auto& row : rows) {
        std::vector<Shape> cells;
        for (auto& cell : row)
            cells.push_back(WithText(Shape(1), std::move(cell)));
        shape.rows_.push_back(std::move(cells));
    }
    return shape.TertiaryProperty(TableProperty, 1);
}

Shape OleObject(OleKind kind, String programId, std::string storage)
{
    Shape shape = Picture();
    shape.object_ = {kind, std::move(programId), std::move(storage)};
    return shape;
}

Shape EmbeddedOle(String programId)
{
    return OleObject(OleKind::Embedded, std::move(programId), OleStorage(""));
}

Shape LinkedOle(const String& path, const String& item)
{
    return OleObject(OleKind::Linked, u"Excel.Sheet.8", OleStorage(MonikerOf(path, item)));
}

Shape OleControl(String programId)
{
    return OleObject(OleKind::Control, std::move(programId), OleStorage(""));
}

Shape RawShape(std::string record)
{
    Shape shape(0);
    shape.raw_ = std::move(record);
    return shape;
}

}  // namespace tessarine::test::ppt
