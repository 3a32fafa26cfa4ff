#include "office/builtin/propertysets/BinaryProperties.h"

#include <gmock/gmock.h>

#include "NumberRaised.h"
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
using ppt::NumberValue;
using ppt::PropertySection;
using ppt::SectionKind;
using ppt::TextValue;

std::string SomeSummary()
{
    return ppt::PropertySetStream({{SectionKind::Summary, PropertySection()
                                                              .Put(2, TextValue("About Fabrikam"))
                                                              .Put(4, ppt::WideValue(u"Fabrikam"))
                                                              .Put(10, ppt::TimeValue(600'000'000))
                                                              .Put(12, ppt::TimeValue(133594528890000000))
                                                              .Put(15, NumberValue(7))}});
}

std::string DocumentSummaryWith(const std::string& titles)
{
    return ppt::PropertySetStream(
        {{SectionKind::DocumentSummary,
          PropertySection().Put(3, TextValue("On-screen Show")).Put(13, titles).Put(15, TextValue("Fabrikam Limited"))},
         {SectionKind::UserDefined, PropertySection()
                                        .Named("Client", TextValue("Fabrikam"))
                                        .Named("Revision", NumberValue(3))
                                        .Named("_PID_LINKBASE", ppt::BlobValue(Wide(u"x")))}});
}

std::string SomeDocumentSummary()
{
    return DocumentSummaryWith(ppt::TextsValue({"Arial", "About Fabrikam", "End"}));
}

/// The texts of all properties, "-" for what can't be read; and an attempt at putting something into each of them.
std::string WalkAndPut(BinaryProperties& properties)
{
    std::string texts;
    for (std::size_t i = 0; i < builtin::builtInPropertyCount; ++i) {
        const auto property = static_cast<BuiltInProperty>(i);
        const auto value = properties.BuiltIn().Read(property);
        texts += (value ? ToUtf8(powerpoint::TextOf(*value)) : "-") + "\n";
        NumberRaised([&] { properties.BuiltIn().Put(property, u"Contoso " + FromUtf8(std::to_string(i))); });
    }
    for (std::size_t i = 0; i < properties.Custom().Count(); ++i) {
        texts += ToUtf8(properties.Custom().NameOf(i) + u"=" + powerpoint::TextOf(properties.Custom().Read(i))) + "\n";
        NumberRaised([&] { properties.Custom().Put(i, String(u"Contoso")); });
    }
    NumberRaised([&] { properties.EmptyLinkList(); });
    NumberRaised([&] { properties.FollowTitles({{0, u"About Fabrikam", u"About Contoso"}}, 2); });
    return texts;
}

TEST(BinaryProperties, LeaveNothingOfAReplacedTextInTheFile)
{
    BinaryProperties properties(SomeSummary(), SomeDocumentSummary());
    const auto replace = [&](BuiltInProperty property, const String& text) {
        properties.BuiltIn().Put(property, text);
    };

    replace(BuiltInProperty::Title, u"About Contoso");
    replace(BuiltInProperty::Author, u"C");
    replace(BuiltInProperty::Company, u"C Limited");
    properties.Custom().Put(0, String(u"Contoso and others"));
    properties.FollowTitles({{0, u"About Fabrikam", u"About C"}}, 2);

    for (const std::string& bytes : {*properties.NewSummary(), *properties.NewDocumentSummary()}) {
        EXPECT_EQ(bytes.find("abrikam"), std::string::npos);
        EXPECT_EQ(bytes.find(Wide(u"abrikam")), std::string::npos);
    }
}

TEST(BinaryProperties, ComeBackToTheirBytesWhenTheTextDoes)
{
    BinaryProperties properties(SomeSummary(), SomeDocumentSummary());
    properties.BuiltIn().Put(BuiltInProperty::Title, u"About the much longer name Contoso");
    properties.Custom().Put(0, String(u"C"));

    BinaryProperties again(*properties.NewSummary(), *properties.NewDocumentSummary());
    again.BuiltIn().Put(BuiltInProperty::Title, u"About Fabrikam");
    again.Custom().Put(0, String(u"Fabrikam"));

    EXPECT_EQ(again.NewSummary(), SomeSummary());
    EXPECT_EQ(again.NewDocumentSummary(), SomeDocumentSummary());
}

/// A text of a list in UTF-16: as a value of its own, without the type.
std::string ListedWide(StringView text)
{
    return ppt::WideValue(text).substr(4);
}

std::optional<std::string> AfterTitles(const std::string& titles, const std::vector<builtin::ChangedTitle>& changed,
                                       std::size_t slides = 2)
{
    BinaryProperties properties(std::nullopt, DocumentSummaryWith(titles));
    properties.FollowTitles(changed, slides);
    return properties.NewDocumentSummary();
}

TEST(BinaryProperties, ListTheTitlesThatTheSlidesHave)
{
    EXPECT_EQ(AfterTitles(ppt::TextsValue({"Fabrikam", "Fabrikam", "End"}), {{0, u"Fabrikam", u"Contoso\v& Co"}}),
              DocumentSummaryWith(ppt::TextsValue({"Fabrikam", "Contoso & Co", "End"})));
    EXPECT_EQ(
        AfterTitles(ppt::TextsValue({"Arial", "Fabrikam", "End"}), {{0, u"Fabrikam", u"Łódź"}}),
        DocumentSummaryWith(Long(0x101F) + Long(3) + ListedWide(u"Arial") + ListedWide(u"Łódź") + ListedWide(u"End")));
}

TEST(BinaryProperties, LeaveAListWithoutTheTitleAlone)
{
    EXPECT_EQ(AfterTitles(ppt::TextsValue({"Arial", "End"}), {{0, u"Fabrikam", u"Contoso"}}), std::nullopt);
    EXPECT_EQ(AfterTitles(TextValue("Fabrikam"), {{0, u"Fabrikam", u"Contoso"}}), std::nullopt);

    BinaryProperties without(std::nullopt, std::nullopt);
    without.FollowTitles({{0, u"Fabrikam", u"Contoso"}}, 1);
    EXPECT_FALSE(without.IsEdited());
}

TEST(BinaryProperties, TakeAllLinksOffTheirList)
{
    const auto with = [](const std::string& links) {
        return ppt::PropertySetStream({{SectionKind::UserDefined, PropertySection()
                                                                      .Named("Client", TextValue("Fabrikam"))
                                                                      .Named("_PID_HLINKS", links)
                                                                      .Named("Revision", NumberValue(3))}});
    };
    const std::string links = Long(6) + NumberValue(1) + NumberValue(2) + NumberValue(3) + NumberValue(4) +
                              ppt::WideValue(u"https://fabrikam.example/") + ppt::WideValue(u"");
    BinaryProperties properties(std::nullopt, with(ppt::BlobValue(links)));

    properties.EmptyLinkList();

    EXPECT_EQ(properties.NewDocumentSummary(), with(ppt::BlobValue(Long(0))));
}

TEST(BinaryProperties, WithoutAListOfLinksHaveNoneToEmpty)
{
    BinaryProperties properties(std::nullopt, SomeDocumentSummary());
    BinaryProperties withoutStreams(std::nullopt, std::nullopt);

    properties.EmptyLinkList();
    withoutStreams.EmptyLinkList();

    EXPECT_FALSE(properties.IsEdited());
    EXPECT_FALSE(withoutStreams.IsEdited());
}

TEST(BinaryProperties, OfAStreamThatCannotBeReadAreARemark)
{
    BinaryProperties properties(std::string("no property set, though long enough to be one"), SomeDocumentSummary());

    ASSERT_EQ(properties.Remarks().size(), 1u);
    EXPECT_EQ(properties.Remarks()[0],
              u"has document properties that can't be read; they stay as they are. The file is damaged: "
              u"SummaryInformation: no document properties");
    EXPECT_FALSE(properties.BuiltIn().Read(BuiltInProperty::Title));
    EXPECT_EQ(NumberRaised([&] { properties.BuiltIn().Put(BuiltInProperty::Title, u"x"); }),
              FailureNumber::Unspecified);
    properties.BuiltIn().Put(BuiltInProperty::Company, u"Contoso");
    EXPECT_EQ(properties.NewSummary(), std::nullopt);
    EXPECT_NE(properties.NewDocumentSummary(), std::nullopt);
}

TEST(BinaryProperties, OfAStreamBeyondTheLimitsAreARemark)
{
    const builtin::Limits limits{.partBytes = SomeSummary().size() - 1};
    const BinaryProperties properties(SomeSummary(), std::nullopt, limits);

    EXPECT_EQ(properties.Remarks().size(), 1u);
}

TEST(BinaryProperties, WithATextBeyondTheLimitsRaiseWhenItIsRead)
{
    const builtin::Limits limits{.textUnits = 10};
    BinaryProperties properties(SomeSummary(), SomeDocumentSummary(), limits);

    EXPECT_EQ(NumberRaised([&] { properties.BuiltIn().Read(BuiltInProperty::Title); }), FailureNumber::FileCorrupt);
    EXPECT_EQ(NumberRaised([&] { properties.FollowTitles({{0, u"End", u"Start"}}, 1); }), FailureNumber::FileCorrupt);
    EXPECT_EQ(NumberRaised([&] { properties.Custom().Read(0); }), 0);
}

TEST(BinaryProperties, OfACutStreamAreReadAsFarAsTheyGo)
{
    const std::string whole = SomeDocumentSummary();
    for (std::size_t size = 0; size <= whole.size(); ++size) {
        BinaryProperties properties(std::nullopt, whole.substr(0, size));
        WalkAndPut(properties);

        // What was put comes back, unless it was refused.
        NumberRaised([&] {
            if (const auto bytes = properties.NewDocumentSummary()) {
                BinaryProperties again(std::nullopt, *bytes);
                EXPECT_TRUE(again.Remarks().empty()) << size;
                EXPECT_EQ(again.Custom().Count(), properties.Custom().Count()) << size;
                for (std::size_t i = 0; i < again.Custom().Count(); ++i)
                    EXPECT_EQ(powerpoint::TextOf(again.Custom().Read(i)),
                              powerpoint::TextOf(properties.Custom().Read(i)))
                        << size;
            }
        });
    }
}

TEST(BinaryProperties, SurviveEveryChangedByte)
{
    const std::string whole = SomeDocumentSummary();
    std::size_t readable = 0;
    for (std::size_t at = 0; at < whole.size(); ++at)
        for (const char byte : {'\0', '\x01', '\x1F', '\x7F', '\xFF'}) {
            std::string damaged = whole;
            damaged[at] = byte;
            BinaryProperties properties(std::nullopt, damaged);
            if (properties.Remarks().empty())
                ++readable;
            EXPECT_FALSE(properties.IsEdited());
            WalkAndPut(properties);
            NumberRaised([&] { properties.NewDocumentSummary(); });
        }
    EXPECT_GT(readable, whole.size());  // most bytes are of values
}

}  // namespace
}  // namespace tessarine::test
