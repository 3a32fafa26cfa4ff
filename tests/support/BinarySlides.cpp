#include "support/BinarySlides.h"

#include "support/BinaryRecords.h"
#include "support/ZipBuilder.h"

namespace tessarine::test::ppt
{

namespace
{

constexpr std::uint32_t HasDate = 0x01;
constexpr std::uint32_t HasUserDate = 0x04;
constexpr std::uint32_t HasHeader = 0x10;
constexpr std::uint32_t HasFooter = 0x20;

}  // namespace

HeadersFooters& HeadersFooters::Footer(String text)
{
    footer_ = std::move(text);
    flags_ |= HasFooter;
    return *this;
}

HeadersFooters& HeadersFooters::Header(String text)
{
    header_ = std::move(text);
    flags_ |= HasHeader;
    return *this;
}

HeadersFooters& HeadersFooters::Date(String text)
{
    date_ = std::move(text);
    flags_ |= HasDate | HasUserDate;
    return *this;
}

HeadersFooters& HeadersFooters::FooterWithoutText()
{
    flags_ |= HasFooter;
    return *this;
}

HeadersFooters& HeadersFooters::FooterNotShown()
{
    flags_ &= ~HasFooter;
    return *this;
}

std::string HeadersFooters::Record(std::uint32_t instance) const
{
    std::string records = Atom(4058, Short(0) + Short(flags_));
    if (date_)
        records += CString(*date_, 0);
    if (header_)
        records += CString(*header_, 1);
    if (footer_)
        records += CString(*footer_, 2);
    return Container(4057, records, instance);
}

NotesPage::NotesPage(Text text) : shapes{NotesImage(), Placeholder(NotesBodyKind, NotesText, std::move(text))} {}

NotesPage& NotesPage::Footers(HeadersFooters footers)
{
    headersFooters = std::move(footers);
    return *this;
}

SlideRecords TextAnimation(int begin, int end, std::uint32_t shapeId)
{
    constexpr std::uint32_t TextRange = 2;
    const std::string shape =
        Atom(0x2AFB, Long(TextRange) + Long(1) + Long(shapeId) + Long(static_cast<std::uint32_t>(begin)) +
                         Long(static_cast<std::uint32_t>(end)));
    const std::string effect = Container(0xF144, Container(0xF13C, shape), 1);
    return {Container(5000, Container(5002, CString(u"___PPT10") + Atom(5003, effect)))};
}

String SlideContent::Title() const
{
    for (const auto& shape : shapes)
        if (shape.IsTitle())
            return shape.Characters();
    return {};
}

MainMaster::MainMaster(String name)
    : MainMaster(
          std::move(name), Placeholder(MasterTitle, TitleText, u"Click to edit Master title style"),
          Placeholder(MasterBody, BodyText, Text(u"Click to edit Master text styles\rSecond level").Levels({0, 1})))
{
}

MainMaster& MainMaster::Nameless()
{
    nameless_ = true;
    return *this;
}

MainMaster& MainMaster::Theme(const String& name)
{
    const std::string head = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";
    const std::string relationships = "http://schemas.openxmlformats.org/officeDocument/2006/relationships/";
    const auto related = [&](const std::string& type, const std::string& target) {
        return head +
               "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\"><Relationship "
               "Id=\"rId1\" Type=\"" +
               relationships + type + "\" Target=\"" + target + "\"/></Relationships>";
    };
    const std::string drawing = "xmlns:a=\"http://schemas.openxmlformats.org/drawingml/2006/main\"";
    ZipBuilder package;
    package.entries.push_back(
        {.name = "[Content_Types].xml",
         .bytes = head +
                  "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\"><Default "
                  "Extension=\"rels\" ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>"
                  "<Default Extension=\"xml\" ContentType=\"application/vnd.openxmlformats-officedocument.theme+xml\"/>"
                  "</Types>"});
    package.entries.push_back(
        {.name = "_rels/.rels", .bytes = related("officeDocument", "theme/theme/themeManager.xml")});
    package.entries.push_back(
        {.name = "theme/theme/themeManager.xml", .bytes = head + "<a:themeManager " + drawing + "/>"});
    package.entries.push_back(
        {.name = "theme/theme/theme1.xml",
         .bytes = head + "<a:theme " + drawing + " name=\"" + ToUtf8(name) + "\"><a:themeElements/></a:theme>"});
    package.entries.push_back(
        {.name = "theme/theme/_rels/themeManager.xml.rels", .bytes = related("theme", "theme1.xml")});
    return Records(Atom(1038, package.Bytes()));
}

MainMaster& MainMaster::Original(std::uint32_t id)
{
    return Records(Atom(1052, Long(id)));
}

MainMaster& MainMaster::CopyOf(std::uint32_t id)
{
    return Records(Atom(1053, Long(id)));
}

MainMaster& MainMaster::Footers(HeadersFooters footers)
{
    headersFooters_ = std::move(footers);
    return *this;
}

MainMaster& MainMaster::Records(std::string records)
{
    records_ += std::move(records);
    return *this;
}

}  // namespace tessarine::test::ppt
