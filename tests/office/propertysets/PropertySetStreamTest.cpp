#include "office/builtin/propertysets/PropertySetStream.h"

#include <gmock/gmock.h>

#include "NumberRaised.h"
#include "support/BinaryProperties.h"
#include "support/LittleEndian.h"

namespace tessarine::test
{
namespace
{

using builtin::PropertySetStream;
using little::Long;
using ppt::NumberValue;
using ppt::PropertySection;
using ppt::SectionKind;
using ppt::TextValue;

PropertySetStream Opened(std::string bytes)
{
    return {std::move(bytes), "SummaryInformation"};
}

std::string StreamWith(const PropertySection& summary)
{
    return ppt::PropertySetStream({{SectionKind::Summary, summary}});
}

std::string With(std::string bytes, std::size_t at, std::uint32_t number)
{
    little::PutLong(bytes, at, number);
    return bytes;
}

// Where the builder puts things: the offset of the first section, that section, and its first entry.
constexpr std::size_t sectionOffset = 44;
constexpr std::size_t sectionBegin = 48;
constexpr std::size_t firstEntry = sectionBegin + 8;

/// The stream after one value was put.
std::string AfterPut(const std::string& bytes, std::uint32_t id, const std::string& value, std::size_t replaced)
{
    PropertySetStream stream = Opened(bytes);
    stream.Put(*stream.Find(builtin::summaryFormat), id, value, replaced);
    return stream.Bytes();
}

TEST(PropertySetStream, HandsOutTheBytesOfValues)
{
    const auto stream = Opened(StreamWith(PropertySection().Put(2, TextValue("Fabrikam")).Put(14, NumberValue(3))));
    const auto* const summary = stream.Find(builtin::summaryFormat);

    ASSERT_NE(summary, nullptr);
    EXPECT_EQ(stream.Value(*summary, 2), TextValue("Fabrikam"));
    EXPECT_EQ(stream.Value(*summary, 14), NumberValue(3));
    EXPECT_EQ(stream.Value(*summary, 3), std::nullopt);
    EXPECT_EQ(stream.Find(builtin::userDefinedFormat), nullptr);
    EXPECT_EQ(stream.Bytes(), StreamWith(PropertySection().Put(2, TextValue("Fabrikam")).Put(14, NumberValue(3))));
}

TEST(PropertySetStream, ReadsTheCodePageAsANumberWithoutSign)
{
    for (const int codePage : {1252, 932, 65001, 10000}) {
        const auto stream = Opened(StreamWith(PropertySection().CodePage(codePage)));

        EXPECT_EQ(stream.Find(builtin::summaryFormat)->codePage, codePage);
    }
    const auto without = Opened(StreamWith(PropertySection().CodePage(0).Put(2, NumberValue(3))));
    EXPECT_EQ(without.Find(builtin::summaryFormat)->codePage, 1252);
}

TEST(PropertySetStream, PutsLongerAndShorterValues)
{
    const auto with = [](const std::string& title) {
        return ppt::PropertySetStream(
            {{SectionKind::DocumentSummary,
              PropertySection().Put(14, TextValue("Anna")).Put(2, TextValue(title)).Put(6, NumberValue(3))},
             {SectionKind::UserDefined, PropertySection().Named("Revision", NumberValue(3))}});
    };
    for (const std::string after : {"", "a", "abc", "abcd", "abcde", "a much longer title than it was"}) {
        PropertySetStream stream = Opened(with("Fabrikam"));
        stream.Put(*stream.Find(builtin::documentSummaryFormat), 2, TextValue(after), TextValue("Fabrikam").size());

        EXPECT_EQ(stream.Bytes(), with(after));
    }
}

TEST(PropertySetStream, PutsSeveralValuesAndOneOfThemTwice)
{
    const auto with = [](const std::string& title, const std::string& author, const std::string& comment) {
        return StreamWith(PropertySection()
                              .Put(2, TextValue(title))
                              .Put(4, TextValue(author))
                              .Put(9, NumberValue(1))
                              .Put(6, TextValue(comment)));
    };
    PropertySetStream stream = Opened(with("Fabrikam", "Anna", "x"));
    const auto& summary = *stream.Find(builtin::summaryFormat);

    stream.Put(summary, 6, TextValue("something"), TextValue("x").size());
    stream.Put(summary, 2, TextValue("a title between"), TextValue("Fabrikam").size());
    stream.Put(summary, 2, TextValue("Contoso"), TextValue("a title between").size());

    EXPECT_EQ(stream.Value(summary, 2), TextValue("Contoso"));
    EXPECT_EQ(stream.Bytes(), with("Contoso", "Anna", "something"));
}

TEST(PropertySetStream, KeepsGapsAndWhatFollowsTheLastSection)
{
    const auto with = [](const std::string& title) {
        return StreamWith(PropertySection().Put(2, TextValue(title) + "four gap bytes: 16").Put(4, TextValue("Anna"))) +
               "what follows";
    };

    EXPECT_EQ(AfterPut(with("Fabrikam"), 2, TextValue("Contoso Limited"), TextValue("Fabrikam").size()),
              with("Contoso Limited"));
    EXPECT_EQ(AfterPut(with("Fabrikam"), 4, TextValue("Berta and Carla"), TextValue("Anna").size()),
              StreamWith(PropertySection()
                             .Put(2, TextValue("Fabrikam") + "four gap bytes: 16")
                             .Put(4, TextValue("Berta and Carla"))) +
                  "what follows");
}

TEST(PropertySetStream, KeepsTheAlignmentOfWhatFollows)
{
    // Written without padding, as on the Macintosh: 4 + 4 + 6 bytes.
    const std::string unpadded = Long(30) + Long(6) + std::string("Hello\0", 6);
    const std::string bytes = StreamWith(PropertySection().Put(2, unpadded).Put(4, TextValue("Anna")));

    const std::string after = AfterPut(bytes, 2, Long(30) + Long(8) + std::string("Contoso\0", 8), unpadded.size());

    EXPECT_EQ(
        after,
        StreamWith(
            PropertySection().Put(2, Long(30) + Long(8) + std::string("Contoso\0\0\0", 10)).Put(4, TextValue("Anna"))));
}

TEST(PropertySetStream, AddsAValueAtTheEndOfItsSection)
{
    const auto with = [](PropertySection first) {
        return ppt::PropertySetStream({{SectionKind::Summary, std::move(first)},
                                       {SectionKind::UserDefined, PropertySection().Named("P", NumberValue(3))}});
    };
    const std::string before = with(PropertySection().Put(2, TextValue("Fabrikam")));

    EXPECT_EQ(AfterPut(before, 4, TextValue("Anna"), 0),
              with(PropertySection().Put(2, TextValue("Fabrikam")).Put(4, TextValue("Anna"))));
}

TEST(PropertySetStream, AddsAfterAnEndThatIsNotAligned)
{
    const std::string unpadded = Long(30) + Long(6) + std::string("Hello\0", 6);

    EXPECT_EQ(AfterPut(StreamWith(PropertySection().Put(2, unpadded)), 4, TextValue("Anna"), 0),
              StreamWith(PropertySection().Put(2, unpadded + std::string(2, '\0')).Put(4, TextValue("Anna"))));
}

TEST(PropertySetStream, TakesSectionsInAnyOrder)
{
    const PropertySection first = PropertySection().Put(2, TextValue("Fabrikam"));
    const PropertySection second = PropertySection().Named("P", NumberValue(3));
    // The second row of the list names the section that comes first.
    const auto with = [&](const PropertySection& summary) {
        const std::string bytes =
            ppt::PropertySetStream({{SectionKind::UserDefined, second}, {SectionKind::Summary, summary}});
        return bytes.substr(0, 28) + bytes.substr(48, 20) + bytes.substr(28, 20) + bytes.substr(68);
    };

    EXPECT_EQ(AfterPut(with(first), 2, TextValue("Contoso Limited"), TextValue("Fabrikam").size()),
              with(PropertySection().Put(2, TextValue("Contoso Limited"))));
}

TEST(PropertySetStream, OfTwoValuesWithOneIdReadsTheFirst)
{
    const auto stream = Opened(StreamWith(PropertySection().Put(2, TextValue("first")).Put(2, TextValue("second"))));

    EXPECT_EQ(stream.Value(*stream.Find(builtin::summaryFormat), 2), TextValue("first"));
}

TEST(PropertySetStream, DoesNotChangeBytesThatTwoPropertiesShare)
{
    const std::string bytes =
        StreamWith(PropertySection().CodePage(0).Put(2, TextValue("Fabrikam")).Put(3, TextValue("Anna")));
    const std::string shared = With(bytes, firstEntry + 12, 24);  // the second entry's offset
    PropertySetStream stream = Opened(shared);
    const auto& summary = *stream.Find(builtin::summaryFormat);

    EXPECT_EQ(NumberRaised([&] { stream.Put(summary, 2, TextValue("Contoso"), 17); }), FailureNumber::Unspecified);
    EXPECT_EQ(stream.Value(summary, 3), std::nullopt);
    EXPECT_EQ(stream.Bytes(), shared);
}

TEST(PropertySetStream, LosesOnlyTheValueThatLiesOutside)
{
    const std::string bytes =
        StreamWith(PropertySection().CodePage(0).Put(2, TextValue("Fabrikam")).Put(3, TextValue("Anna")));
    for (const std::uint32_t offset : {0U, 23U, 100000U, 0xFFFFFFFFU}) {
        const std::string damaged = With(bytes, firstEntry + 4, offset);
        PropertySetStream stream = Opened(damaged);
        const auto& summary = *stream.Find(builtin::summaryFormat);

        EXPECT_EQ(stream.Value(summary, 2), std::nullopt) << offset;
        EXPECT_EQ(stream.Value(summary, 3), TextValue("Anna"));
        stream.Put(summary, 3, TextValue("Bert"), 13);
        std::string expected = damaged;
        expected.replace(expected.find("Anna"), 4, "Bert");
        EXPECT_EQ(stream.Bytes(), expected);
    }
}

TEST(PropertySetStream, DoesNotBelieveTheSizeOfASection)
{
    const std::string bytes = StreamWith(PropertySection().Put(2, TextValue("Fabrikam")).Put(3, TextValue("Anna")));
    for (const std::uint32_t size : {0U, 30U, 100000U, 0xFFFFFFFFU}) {
        const auto stream = Opened(With(bytes, sectionBegin, size));

        EXPECT_EQ(stream.Value(*stream.Find(builtin::summaryFormat), 3), TextValue("Anna")) << size;
    }
}

TEST(PropertySetStream, RefusesWhatIsNone)
{
    const std::string bytes = StreamWith(PropertySection().Put(2, TextValue("Fabrikam")));
    const std::string two = ppt::PropertySetStream(
        {{SectionKind::Summary, PropertySection()}, {SectionKind::UserDefined, PropertySection()}});
    for (const std::string& damaged :
         {std::string(), std::string("Fabrikam"), std::string(100, '\0'), bytes.substr(0, 27), bytes.substr(0, 47),
          bytes.substr(0, 55),               // in the section's head
          With(bytes, 24, 0xFFFFFFFF),       // sections
          With(bytes, sectionOffset, 0),     // over the list of sections
          With(bytes, sectionOffset, 1000),  // beyond the end
          With(bytes, sectionOffset, 0xFFFFFFFF), With(bytes, sectionBegin + 4, 0xFFFFFFFF),  // properties
          With(two, 64, 68),                                                                  // both at one place
          With(two, 64, 70)})
        EXPECT_EQ(NumberRaised([&] { Opened(damaged); }), FailureNumber::FileCorrupt)
            << testing::PrintToString(damaged);
}

TEST(PropertySetStream, RefusesMorePropertiesThanAnybodyHas)
{
    const auto withEntries = [](std::uint32_t count) {
        return Opened(With(StreamWith(PropertySection()) + std::string(8 * 70000, '\0'), sectionBegin + 4, count));
    };

    EXPECT_EQ(NumberRaised([&] { withEntries(65535); }), 0);
    EXPECT_EQ(NumberRaised([&] { withEntries(65536); }), FailureNumber::FileCorrupt);
}

TEST(PropertySetStream, SavesEveryEditOrRefuses)
{
    // Whatever four bytes are damaged: what was put is read again, or nothing is handed out.
    const std::string bytes = ppt::PropertySetStream(
        {{SectionKind::Summary, PropertySection().Put(2, TextValue("Fabrikam")).Put(3, TextValue("Anna"))},
         {SectionKind::UserDefined, PropertySection().Named("P", NumberValue(3))}});
    std::size_t saved = 0;
    for (std::size_t at = 0; at + 4 <= bytes.size(); ++at)
        for (const std::uint32_t number : {0U, 1U, 8U, 40U, 70U, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
            try {
                PropertySetStream stream = Opened(With(bytes, at, number));
                const auto* const summary = stream.Find(builtin::summaryFormat);
                if (summary == nullptr)
                    continue;
                stream.Put(*summary, 2, TextValue("Contoso Limited"), TextValue("Fabrikam").size());
                const auto again = Opened(stream.Bytes());
                EXPECT_EQ(again.Value(*again.Find(builtin::summaryFormat), 2)->substr(0, 24),
                          TextValue("Contoso Limited"));
                ++saved;
            } catch (const Failure&) {
            }
        }
    EXPECT_GT(saved, 500u);
}

}  // namespace
}  // namespace tessarine::test
