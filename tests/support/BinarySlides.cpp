#include "support/BinarySlides.h"

#include "support/BinaryRecords.h"

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
