#include "office/builtin/propertysets/UserProperties.h"

#include <gmock/gmock.h>

#include "NumberRaised.h"
#include "office/builtin/propertysets/BinaryProperties.h"
#include "support/BinaryProperties.h"
#include "support/LittleEndian.h"

namespace tessarine::test
{
namespace
{

using builtin::BinaryProperties;
using little::Wide;
using ppt::NumberValue;
using ppt::PropertySection;
using ppt::SectionKind;
using ppt::TextValue;
using testing::ElementsAre;
using testing::IsEmpty;

std::string UserStreamOf(const PropertySection& user)
{
    return ppt::PropertySetStream({{SectionKind::DocumentSummary, PropertySection().Put(15, TextValue("Fabrikam"))},
                                   {SectionKind::UserDefined, user}});
}

BinaryProperties OpenedWith(const PropertySection& user)
{
    return {std::nullopt, UserStreamOf(user)};
}

std::vector<String> NamesOf(BinaryProperties& properties)
{
    std::vector<String> names;
    for (std::size_t i = 0; i < properties.Custom().Count(); ++i)
        names.push_back(properties.Custom().NameOf(i));
    return names;
}

String TextAt(BinaryProperties& properties, std::size_t index)
{
    return powerpoint::TextOf(properties.Custom().Read(index));
}

TEST(UserProperties, AreThoseWithANameThatIsNotHidden)
{
    auto properties = OpenedWith(PropertySection()
                                     .Named("Revision", NumberValue(3))
                                     .Named("_PID_HLINKS", ppt::BlobValue("links"))
                                     .Named("_MarkAsFinal", ppt::TruthValue(true))
                                     .Put(0x80000000, NumberValue(1033))
                                     .Put(0x01000002, TextValue("a link"))
                                     .Named("Gr\xF6\xDF"
                                            "e",
                                            TextValue("gro\xDF"))
                                     .Named("revision", TextValue("again")));

    EXPECT_THAT(NamesOf(properties), ElementsAre(u"Revision", u"_MarkAsFinal", u"Größe", u"revision"));
    EXPECT_EQ(TextAt(properties, 0), u"3");
    EXPECT_EQ(TextAt(properties, 1), u"True");
    EXPECT_EQ(TextAt(properties, 2), u"groß");
    EXPECT_EQ(TextAt(properties, 3), u"again");
}

TEST(UserProperties, OfAFileWithoutThemAreNone)
{
    BinaryProperties noStreams(std::nullopt, std::nullopt);
    BinaryProperties noSection(std::nullopt,
                               ppt::PropertySetStream({{SectionKind::DocumentSummary, PropertySection()}}));
    auto noNames = OpenedWith(PropertySection().Put(2, TextValue("nameless")));

    EXPECT_THAT(NamesOf(noStreams), IsEmpty());
    EXPECT_THAT(NamesOf(noSection), IsEmpty());
    EXPECT_THAT(NamesOf(noNames), IsEmpty());
}

TEST(UserProperties, HaveNamesInTheCodePageOfTheirSection)
{
    auto japanese = OpenedWith(PropertySection().CodePage(932).Named("\x93\xFA\x96\x7B", TextValue("\x93\xFA")));
    auto utf8 = OpenedWith(PropertySection().CodePage(65001).Named("\xE6\x97\xA5", TextValue("\xE6\x9C\xAC")));
    auto utf16 = OpenedWith(PropertySection()
                                .CodePage(1200)
                                .Named(Wide(u"日本!"), ppt::WideValue(u"a"))
                                .Named(Wide(u"二"), ppt::WideValue(u"b")));

    EXPECT_THAT(NamesOf(japanese), ElementsAre(u"日本"));
    EXPECT_EQ(TextAt(japanese, 0), u"日");
    EXPECT_THAT(NamesOf(utf8), ElementsAre(u"日"));
    EXPECT_EQ(TextAt(utf8, 0), u"本");
    EXPECT_THAT(NamesOf(utf16), ElementsAre(u"日本!", u"二"));
    EXPECT_EQ(TextAt(utf16, 1), u"b");
}

TEST(UserProperties, ArePutAndNothingElseChanges)
{
    const auto with = [](const std::string& revision, const std::string& client) {
        return PropertySection()
            .Named("Revision", revision)
            .Named("Client", client)
            .Named("_PID_GUID", ppt::BlobValue("{4F7A}"));
    };
    auto properties = OpenedWith(with(NumberValue(3), TextValue("Fabrikam")));

    properties.Custom().Put(0, 4.0);
    properties.Custom().Put(1, String(u"Contoso i Łucja"));

    EXPECT_EQ(std::get<std::int64_t>(properties.Custom().Read(0)), 4);
    EXPECT_EQ(TextAt(properties, 1), u"Contoso i Łucja");
    EXPECT_EQ(properties.NewDocumentSummary(), UserStreamOf(with(NumberValue(4), ppt::WideValue(u"Contoso i Łucja"))));
}

TEST(UserProperties, MayBePutAgainAfterTheirBytesWereTaken)
{
    const auto with = [](const std::string& client) { return PropertySection().Named("Client", client); };
    auto properties = OpenedWith(with(TextValue("Fabrikam")));

    properties.Custom().Put(0, String(u"a longer name than before"));
    EXPECT_EQ(properties.NewDocumentSummary(), UserStreamOf(with(TextValue("a longer name than before"))));
    properties.Custom().Put(0, String(u"x"));
    EXPECT_EQ(properties.NewDocumentSummary(), UserStreamOf(with(TextValue("x"))));
}

TEST(UserProperties, OfAKindThatNobodyEditsAreRefused)
{
    auto properties = OpenedWith(PropertySection().Named("Data", ppt::BlobValue("Fabrikam")));

    EXPECT_EQ(TextAt(properties, 0), u"");
    EXPECT_EQ(NumberRaised([&] { properties.Custom().Put(0, String(u"Contoso")); }), FailureNumber::Unspecified);
    EXPECT_FALSE(properties.IsEdited());
}

TEST(UserProperties, KeepTheirNamesWhereTheDictionaryIsDamaged)
{
    const std::string bytes =
        UserStreamOf(PropertySection().Named("First", NumberValue(1)).Named("Second", NumberValue(2)));
    const std::size_t dictionary = bytes.find("First") - 12;
    const auto namesWith = [&](std::size_t at, std::uint32_t number) {
        std::string damaged = bytes;
        little::PutLong(damaged, dictionary + at, number);
        BinaryProperties properties(std::nullopt, damaged);
        return NamesOf(properties);
    };

    EXPECT_THAT(namesWith(0, 0xFFFFFFFF), testing::Contains(u"Second"));  // names
    EXPECT_THAT(namesWith(0, 1), ElementsAre(u"First"));
    EXPECT_THAT(namesWith(8, 0xFFFFFFFF), IsEmpty());  // the first one's length
    // Its id, which then is that of no property, of the dictionary, or of the code page.
    for (const std::uint32_t id : {77U, 0U, 1U})
        EXPECT_THAT(namesWith(4, id), ElementsAre(u"Second")) << id;
    EXPECT_THAT(namesWith(18, 0xFFFFFFFF), ElementsAre(u"First"));  // the second one's id
}

}  // namespace
}  // namespace tessarine::test
