#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "support/BinaryOle.h"
#include "support/BinaryText.h"

/// Shapes of a binary deck under construction. Functions make them, members dress them:
/// `TextBox(u"Fabrikam").Named(u"Owner")`.
namespace tessarine::test::ppt
{

class BinaryPage;

/// What a placeholder is for, as PlaceholderAtom says (placementId).
enum PlaceholderKind {
    MasterTitle = 1,
    MasterBody = 2,
    MasterCenterTitle = 3,
    MasterSubtitle = 4,
    MasterNotesImage = 5,
    MasterNotesBody = 6,
    MasterDate = 7,
    MasterSlideNumber = 8,
    MasterFooter = 9,
    MasterHeader = 10,
    NotesImageKind = 11,
    NotesBodyKind = 12,
    TitleKind = 13,
    BodyKind = 14,
    CenterTitleKind = 15,
    SubtitleKind = 16,
    ObjectKind = 19,
    TableKind = 21,
    PictureKind = 26,
};

/// Textbox types of a text's header.
enum TextType {
    TitleText = 0,
    BodyText = 1,
    NotesText = 2,
    OtherText = 4,
    CenterBodyText = 5,
    CenterTitleText = 6,
    HalfBodyText = 7,
    QuarterBodyText = 8,
};

/// One shape of a slide, notes page or master.
class Shape
{
public:
    explicit Shape(int preset) : preset_(preset) {}

    Shape& Named(String name);
    Shape& Place(int left, int top, int right, int bottom);  ///< In 576ths of an inch; a slide has 5760 by 4320.
    Shape& Click(Link link);                                 ///< A link of the whole shape, not of its text.
    Shape& Hover(Link link);
    Shape& Hidden();
    Shape& Deleted();                   ///< fDeleted: no shape of the page.
    Shape& Flags(std::uint32_t flags);  ///< Further flags of the shape's record.
    Shape& InPlaceholder(int kind, int textType = OtherText);
    Shape& Position(int position);  ///< Of the placeholder, -1 for none; else they count up.
    Shape& RoundTrip(int kind);     ///< RoundTripHFPlaceholder12Atom: 7 date, 8 number, 9 footer, 10 header.
    Shape& OwnText();               ///< In the shape, where the outline would hold it.
    Shape& InOutline();
    Shape& OutlineReference(int index);                      ///< An OutlineTextRefAtom with this index and no text.
    Shape& Ruler();                                          ///< A TextRulerAtom beside the outline's reference.
    Shape& Property(std::uint32_t id, std::uint32_t value);  ///< Of OfficeArtFOPT.
    Shape& ComplexProperty(std::uint32_t id, std::string value);
    Shape& TertiaryProperty(std::uint32_t id, std::uint32_t value);  ///< Of OfficeArtTertiaryFOPT.
    Shape& ClientData(std::string records);                          ///< Further records of the client data.
    Shape& ClientText(std::string records);                          ///< The whole client textbox.

    String Characters() const;  ///< Of its own or outline text.
    bool IsTitle() const;

    /// The shape's records on a page, with a place of its own.
    std::string Records(BinaryPage& page) const;

private:
    friend Shape WithText(Shape shape, Text text);
    friend Shape GroupOf(std::vector<Shape> members);
    friend Shape Table(std::vector<std::vector<Text>> rows);
    friend Shape OleObject(OleKind kind, String programId, std::string storage);
    friend Shape Picture();
    friend Shape Movie(String path);
    friend Shape RawShape(std::string record);

    struct Object {
        OleKind kind;
        String programId;
        std::string storage;
    };

    std::string GroupRecords(BinaryPage& page, bool inGroup) const;
    std::string RecordsIn(BinaryPage& page, bool inGroup) const;
    std::string Options(BinaryPage& page) const;
    std::string Anchor(bool inGroup, BinaryPage& page) const;
    std::string ClientDataOf(BinaryPage& page) const;
    std::string ClientTextOf(BinaryPage& page) const;

    int preset_;
    std::uint32_t flags_ = 0;
    String name_;
    std::optional<std::vector<int>> place_;
    std::optional<Link> click_;
    std::optional<Link> hover_;
    int placeholder_ = 0;
    int textType_ = OtherText;
    std::optional<int> position_;
    std::optional<int> roundTrip_;
    std::optional<bool> outline_;
    std::optional<int> outlineReference_;
    bool ruler_ = false;
    bool picture_ = false;
    std::map<std::uint32_t, std::pair<std::uint32_t, std::optional<std::string>>> properties_;
    std::map<std::uint32_t, std::uint32_t> tertiary_;
    std::optional<Text> text_;
    std::optional<Object> object_;
    std::optional<String> movie_;
    std::vector<std::vector<Shape>> rows_;  ///< Of a group, whose members are its one row, or a table.
    bool group_ = false;
    std::string clientData_;
    std::optional<std::string> clientText_;
    std::string raw_;
};

Shape WithText(Shape shape, Text text);

/// Each takes a text, or runs.
template <class... Parts>
Shape AutoShape(int preset, Parts... parts)
{
    return WithText(Shape(preset), Text(std::move(parts)...));
}
template <class... Parts>
Shape TextBox(Parts... parts)
{
    return AutoShape(202, std::move(parts)...);
}
template <class... Parts>
Shape Placeholder(int kind, int textType, Parts... parts)
{
    return AutoShape(1, std::move(parts)...).InPlaceholder(kind, textType);
}

/// On slides the outline holds the texts of these; on masters the shape does.
template <class... Parts>
Shape Title(Parts... parts)
{
    return Placeholder(TitleKind, TitleText, std::move(parts)...).InOutline();
}
template <class... Parts>
Shape Body(Parts... parts)
{
    return Placeholder(BodyKind, BodyText, std::move(parts)...).InOutline();
}
template <class... Parts>
Shape CenterTitle(Parts... parts)
{
    return Placeholder(CenterTitleKind, CenterTitleText, std::move(parts)...).InOutline();
}
template <class... Parts>
Shape Subtitle(Parts... parts)
{
    return Placeholder(SubtitleKind, CenterBodyText, std::move(parts)...).InOutline();
}

/// As PowerPoint 2007 and later write them on slides: a placeholder at position -1 and the record of its kind.
template <class... Parts>
Shape FooterShape(Parts... parts)
{
    return Placeholder(MasterFooter, OtherText, std::move(parts)...).Position(-1).RoundTrip(MasterFooter);
}

template <class... Parts>
Shape Freeform(Parts... parts)
{
    // An array of three points: count, count of memory, bytes of each.
    static const std::string points("\x03\x00\x03\x00\x04\x00\x00\x00\x00\x00\x10\x00\x00\x00\x10\x00\x10\x00", 18);
    return AutoShape(0, std::move(parts)...).ComplexProperty(0x145, points);
}

Shape WordArt(const String& text);  ///< No text of its own: the characters are a property of the drawing.
Shape Line();
Shape Picture();                          ///< A PNG of one pixel, in the stream of pictures.
Shape LinkedPicture(const String& path);  ///< With nothing in the stream of pictures.
Shape Movie(String path);
Shape NotesImage();

Shape GroupOf(std::vector<Shape> members);
template <class... Members>
Shape Group(Members... members)
{
    return GroupOf({std::move(members)...});
}
Shape Table(std::vector<std::vector<Text>> rows);

/// An OLE object; its storage is what ExOleObjStg holds, a compound file.
Shape OleObject(OleKind kind, String programId, std::string storage);
Shape EmbeddedOle(String programId = u"Excel.Sheet.8");
Shape LinkedOle(const String& path, const String& item = {});  ///< A moniker of "path" or of "path!item".
Shape OleControl(String programId = u"Forms.TextBox.1");       ///< On the first slide.

/// A shape whose whole record is given.
Shape RawShape(std::string record);

}  // namespace tessarine::test::ppt
