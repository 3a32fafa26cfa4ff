#include "office/builtin/propertysets/SummaryProperties.h"

#include <gmock/gmock.h>

#include <ctime>
#include <utility>

#include "NumberRaised.h"
#include "office/builtin/propertysets/BinaryProperties.h"
#include "support/BinaryProperties.h"
#include "support/LittleEndian.h"

namespace tessarine::test
{
namespace
{

using builtin::BinaryProperties;
using builtin::BuiltInProperty;
using little::Long;
using little::Wide;
using powerpoint::Value;
using ppt::NumberValue;
using ppt::PropertySection;
using ppt::SectionKind;
using ppt::TextValue;

std::string SummaryOf(const PropertySection& section)
{
    return ppt::PropertySetStream({{SectionKind::Summary, section}});
}

std::string DocumentSummaryOf(const PropertySection& section, const PropertySection& user = {})
{
    if (user.IsEmpty())
        return ppt::PropertySetStream({{SectionKind::DocumentSummary, section}});
    return ppt::PropertySetStream({{SectionKind::DocumentSummary, section}, {SectionKind::UserDefined, user}});
}

String TextOf(BinaryProperties& properties, BuiltInProperty property)
{
    const auto value = properties.BuiltIn().Read(property);
    return value ? powerpoint::TextOf(*value) : u"nothing";
}

TEST(SummaryProperties, AreFoundByTheirIds)
{
    PropertySection summary;
    for (std::uint32_t id = 2; id <= 9; ++id)
        summary.Put(id, TextValue("summary " + std::to_string(id)));
    summary.Put(18, TextValue("summary 18"));
    for (const std::uint32_t id : {14U, 15U, 16U, 19U})
        summary.Put(id, NumberValue(static_cast<int>(100 + id)));
    PropertySection document;
    for (const std::uint32_t id : {2U, 3U, 14U, 15U, 26U, 27U, 28U, 29U})
        document.Put(id, TextValue("document " + std::to_string(id)));
    for (const std::uint32_t id : {4U, 5U, 6U, 7U, 8U, 9U, 10U, 17U})
        document.Put(id, NumberValue(static_cast<int>(200 + id)));
    BinaryProperties properties(SummaryOf(summary), DocumentSummaryOf(document));
    const std::vector<std::pair<BuiltInProperty, StringView>> all{
        {BuiltInProperty::Title, u"summary 2"},
        {BuiltInProperty::Subject, u"summary 3"},
        {BuiltInProperty::Author, u"summary 4"},
        {BuiltInProperty::Keywords, u"summary 5"},
        {BuiltInProperty::Comments, u"summary 6"},
        {BuiltInProperty::Template, u"summary 7"},
        {BuiltInProperty::LastAuthor, u"summary 8"},
        {BuiltInProperty::RevisionNumber, u"summary 9"},
        {BuiltInProperty::ApplicationName, u"summary 18"},
        {BuiltInProperty::LastPrintDate, u"nothing"},
        {BuiltInProperty::CreationDate, u"nothing"},
        {BuiltInProperty::LastSaveTime, u"nothing"},
        {BuiltInProperty::TotalEditingTime, u"nothing"},
        {BuiltInProperty::NumberOfPages, u"114"},
        {BuiltInProperty::NumberOfWords, u"115"},
        {BuiltInProperty::NumberOfCharacters, u"116"},
        {BuiltInProperty::Security, u"119"},
        {BuiltInProperty::Category, u"document 2"},
        {BuiltInProperty::Format, u"document 3"},
        {BuiltInProperty::Manager, u"document 14"},
        {BuiltInProperty::Company, u"document 15"},
        {BuiltInProperty::NumberOfBytes, u"204"},
        {BuiltInProperty::NumberOfLines, u"205"},
        {BuiltInProperty::NumberOfParagraphs, u"206"},
        {BuiltInProperty::NumberOfSlides, u"207"},
        {BuiltInProperty::NumberOfNotes, u"208"},
        {BuiltInProperty::NumberOfHiddenSlides, u"209"},
        {BuiltInProperty::NumberOfMultimediaClips, u"210"},
        {BuiltInProperty::HyperlinkBase, u"nothing"},
        {BuiltInProperty::NumberOfCharactersWithSpaces, u"217"},
        {BuiltInProperty::ContentType, u"document 26"},
        {BuiltInProperty::ContentStatus, u"document 27"},
        {BuiltInProperty::Language, u"document 28"},
        {BuiltInProperty::DocumentVersion, u"document 29"},
    };

    ASSERT_EQ(all.size(), builtin::builtInPropertyCount);
    for (const auto& [property, text] : all)
        EXPECT_EQ(TextOf(properties, property), text) << static_cast<int>(property);
    EXPECT_FALSE(properties.IsEdited());
}

TEST(SummaryProperties, OfAFileWithoutStreamsAreNothing)
{
    BinaryProperties properties(std::nullopt, std::nullopt);

    for (std::size_t i = 0; i < builtin::builtInPropertyCount; ++i)
        EXPECT_FALSE(properties.BuiltIn().Read(static_cast<BuiltInProperty>(i))) << i;
    EXPECT_TRUE(properties.Remarks().empty());
}

TEST(SummaryProperties, GiveDatesInLocalTimeAndUnsetOnesNotAtAll)
{
    BinaryProperties properties(SummaryOf(PropertySection()
                                              .Put(11, ppt::TimeValue(0))
                                              .Put(12, ppt::TimeValue(133594528890000000))
                                              .Put(13, TextValue("2024"))),
                                std::nullopt);

    const auto created = properties.BuiltIn().Read(BuiltInProperty::CreationDate);
    ASSERT_TRUE(created);
    std::tm local = std::get<powerpoint::Date>(*created).local;
    EXPECT_EQ(std::mktime(&local), 1714979289);
    EXPECT_FALSE(properties.BuiltIn().Read(BuiltInProperty::LastPrintDate));
    EXPECT_FALSE(properties.BuiltIn().Read(BuiltInProperty::LastSaveTime));
}

TEST(SummaryProperties, GiveTheEditingTimeInMinutes)
{
    const auto minutes = [](const std::string& value) {
        BinaryProperties properties(SummaryOf(PropertySection().Put(10, value)), std::nullopt);
        return TextOf(properties, BuiltInProperty::TotalEditingTime);
    };

    EXPECT_EQ(minutes(ppt::TimeValue(std::uint64_t{600'000'000} * 90)), u"90");
    EXPECT_EQ(minutes(ppt::TimeValue(599'999'999)), u"0");
    EXPECT_EQ(minutes(ppt::TimeValue(0)), u"0");
    EXPECT_EQ(minutes(TextValue("90")), u"0");
}

TEST(SummaryProperties, OfAnUnexpectedTypeReadAsWhatTheyAre)
{
    BinaryProperties properties(SummaryOf(PropertySection()
                                              .Put(2, NumberValue(2024))
                                              .Put(3, Long(71) + Long(0))
                                              .Put(4, ppt::WideValue(u"Łucja"))
                                              .Put(15, TextValue("many"))),
                                std::nullopt);

    EXPECT_EQ(TextOf(properties, BuiltInProperty::Title), u"2024");
    EXPECT_EQ(TextOf(properties, BuiltInProperty::Subject), u"nothing");
    EXPECT_EQ(TextOf(properties, BuiltInProperty::Author), u"Łucja");
    EXPECT_EQ(TextOf(properties, BuiltInProperty::NumberOfWords), u"0");
}

TEST(SummaryProperties, ArePutIntoTheStreamThatHoldsThem)
{
    const auto summary = [](const std::string& title) {
        return SummaryOf(PropertySection().Put(2, TextValue(title)).Put(4, TextValue("Anna")));
    };
    const auto document = [](const std::string& company) {
        return DocumentSummaryOf(PropertySection().Put(15, TextValue(company)).Put(7, NumberValue(3)));
    };

    BinaryProperties title(summary("Fabrikam"), document("Fabrikam Limited"));
    title.BuiltIn().Put(BuiltInProperty::Title, u"Contoso");
    EXPECT_EQ(TextOf(title, BuiltInProperty::Title), u"Contoso");
    EXPECT_EQ(title.NewSummary(), summary("Contoso"));
    EXPECT_EQ(title.NewDocumentSummary(), std::nullopt);
    EXPECT_TRUE(title.IsEdited());

    BinaryProperties company(summary("Fabrikam"), document("Fabrikam Limited"));
    company.BuiltIn().Put(BuiltInProperty::Company, u"Contoso and everybody else");
    EXPECT_EQ(company.NewSummary(), std::nullopt);
    EXPECT_EQ(company.NewDocumentSummary(), document("Contoso and everybody else"));
    EXPECT_TRUE(company.IsEdited());
}

TEST(SummaryProperties, AreAddedWhereTheSetHasNone)
{
    BinaryProperties properties(SummaryOf(PropertySection().Put(2, TextValue("Fabrikam"))), std::nullopt);

    properties.BuiltIn().Put(BuiltInProperty::Keywords, u"");
    EXPECT_FALSE(properties.IsEdited());
    properties.BuiltIn().Put(BuiltInProperty::Subject, u"ożóg");
    properties.BuiltIn().Put(BuiltInProperty::Author, u"Anna");

    EXPECT_EQ(
        properties.NewSummary(),
        SummaryOf(
            PropertySection().Put(2, TextValue("Fabrikam")).Put(3, ppt::WideValue(u"ożóg")).Put(4, TextValue("Anna"))));
}

TEST(SummaryProperties, HaveNoPlaceInAFileWithoutTheSet)
{
    BinaryProperties properties(std::nullopt,
                                DocumentSummaryOf(PropertySection().CodePage(1252), PropertySection().CodePage(1252)));
    const auto put = [&](BuiltInProperty property, const String& text) {
        return NumberRaised([&] { properties.BuiltIn().Put(property, text); });
    };

    EXPECT_EQ(put(BuiltInProperty::Title, u"Contoso"), FailureNumber::Unspecified);
    EXPECT_EQ(put(BuiltInProperty::HyperlinkBase, u"Contoso"), FailureNumber::Unspecified);
    EXPECT_EQ(put(BuiltInProperty::Title, u""), 0);
    EXPECT_EQ(put(BuiltInProperty::HyperlinkBase, u""), 0);
    EXPECT_FALSE(properties.IsEdited());
}

std::string WithLinkBase(const std::string& value)
{
    return DocumentSummaryOf(PropertySection().Put(15, TextValue("Fabrikam")),
                             PropertySection().Named("Client", TextValue("Anna")).Named("_PID_LINKBASE", value));
}

std::string LinkBase(StringView text)
{
    return ppt::BlobValue(Wide(text) + std::string(2, '\0'));
}

TEST(SummaryProperties, KeepTheHyperlinkBaseAmongTheUserDefinedOnes)
{
    BinaryProperties properties(std::nullopt, WithLinkBase(LinkBase(u"https://fabrikam.example/")));
    EXPECT_EQ(TextOf(properties, BuiltInProperty::HyperlinkBase), u"https://fabrikam.example/");

    properties.BuiltIn().Put(BuiltInProperty::HyperlinkBase, u"https://łódź.example/");

    EXPECT_EQ(TextOf(properties, BuiltInProperty::HyperlinkBase), u"https://łódź.example/");
    EXPECT_EQ(properties.NewDocumentSummary(), WithLinkBase(LinkBase(u"https://łódź.example/")));
}

TEST(SummaryProperties, TakeAHyperlinkBaseThatIsAText)
{
    BinaryProperties properties(std::nullopt, WithLinkBase(TextValue("fabrikam")));

    EXPECT_EQ(TextOf(properties, BuiltInProperty::HyperlinkBase), u"fabrikam");
    properties.BuiltIn().Put(BuiltInProperty::HyperlinkBase, u"contoso");
    EXPECT_EQ(properties.NewDocumentSummary(), WithLinkBase(TextValue("contoso")));
}

}  // namespace
}  // namespace tessarine::test
