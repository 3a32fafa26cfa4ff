#include "office/builtin/xml/ByteBlock.h"

#include <gmock/gmock.h>

#include <random>
#include <string>
#include <vector>

#include "office/builtin/xml/MarkupMarks.h"

namespace tessarine::builtin
{
namespace
{

#if defined(__SSE2__)
using Blocks = testing::Types<PlainBlock, Sse2Block>;
#else
using Blocks = testing::Types<PlainBlock>;
#endif

/// Bytes of markup and text, and others, the same for the same seed everywhere.
std::string RandomBytes(std::mt19937& random, std::size_t size)
{
    constexpr std::string_view frequent = "<>/:t!?\"'=& aZ@[`{";
    std::string bytes;
    for (std::size_t i = 0; i < size; ++i)
        bytes += random() % 4 == 0 ? static_cast<char>(random() % 256) : frequent[random() % frequent.size()];
    return bytes;
}

std::string RandomAscii(std::mt19937& random, std::size_t size)
{
    std::string bytes;
    for (std::size_t i = 0; i < size; ++i)
        bytes += static_cast<char>(random() % 128);
    return bytes;
}

template <class Block>
class ByteBlockTest : public testing::Test
{
};

TYPED_TEST_SUITE(ByteBlockTest, Blocks);

TYPED_TEST(ByteBlockTest, MarksTheBytesThatMatch)
{
    const TypeParam block("<a:t>t\xC3\xBC</a:t>.\xFF");

    EXPECT_EQ(block.Matches('t').TopBits(), 0b0001'0000'0010'1000u);
    EXPECT_EQ((block.Matches('<') | block.Matches('>')).TopBits(), 0b0010'0001'0001'0001u);
    EXPECT_EQ((block.Matches('<') & block.Matches('>')).TopBits(), 0u);
    EXPECT_EQ(block.TopBits(), 0b1000'0000'1100'0000u);
}

TYPED_TEST(ByteBlockTest, ComparesBytesAsSignedNumbers)
{
    const TypeParam block(" ~\x7F\x1F\x80\xFF<>\tabcdefg");
    const TypeParam edges("\x7F\x80\xBF\xC0\xC1\xDF\xE0\xFF          ");

    EXPECT_EQ(block.LessThan(' ').TopBits(), 0b0000'0001'0011'1000u);
    EXPECT_EQ(edges.LessThan('\xC0').TopBits(), 0b0000'0110u);
    EXPECT_EQ(edges.LessThan('\xE0').TopBits(), 0b0011'1110u);
    EXPECT_EQ(edges.GreaterThan('@').TopBits(), 0b0000'0001u);
    EXPECT_EQ(edges.GreaterThan('\xBF').TopBits(), 0b1111'1111'1111'1001u);
}

TYPED_TEST(ByteBlockTest, WritesBytesAsUnits)
{
    std::u16string text(TypeParam::size + 1, u'?');

    TypeParam("@AMZ[`az{09 \t\r\n\x7F").WriteUnits(text.data());

    EXPECT_EQ(text, u"@AMZ[`az{09 \t\r\n\x7F?");
}

TYPED_TEST(ByteBlockTest, WritesCapitalLettersSmallAndAllElseAsItIs)
{
    std::u16string text(TypeParam::size, u'?');

    TypeParam("@AMZ[`az{09 \t\r\n\x7F").WriteInLowerCase(text.data());

    EXPECT_EQ(text, u"@amz[`az{09 \t\r\n\x7F");
}

TYPED_TEST(ByteBlockTest, AddsUpAndSubtractsMatches)
{
    typename TypeParam::Counter counter;
    const TypeParam two = TypeParam("x.x.............").Matches('x');
    const TypeParam one = TypeParam(".............x..").Matches('x');

    for (int i = 0; i < TypeParam::Counter::mostSteps; ++i) {
        counter.Add(two);
        counter.Subtract(one);
    }

    EXPECT_EQ(counter.Sum(), TypeParam::Counter::mostSteps);
}

#if defined(__SSE2__)
TEST(ByteBlocks, DoTheSameOnRandomBytes)
{
    std::mt19937 random(1);
    PlainBlock::Counter plainCounter;
    Sse2Block::Counter wideCounter;
    for (int round = 0; round < 5000; ++round) {
        const std::string bytes = RandomBytes(random, PlainBlock::size);
        SCOPED_TRACE(testing::PrintToString(bytes));
        const PlainBlock plain(bytes.data());
        const Sse2Block wide(bytes.data());
        const char one = bytes[random() % bytes.size()];
        const char other = bytes[random() % bytes.size()];

        ASSERT_EQ(wide.TopBits(), plain.TopBits());
        ASSERT_EQ(wide.Matches(one).TopBits(), plain.Matches(one).TopBits());
        ASSERT_EQ((wide | wide.Matches(other)).TopBits(), (plain | plain.Matches(other)).TopBits());
        ASSERT_EQ((wide & wide.Matches(other)).TopBits(), (plain & plain.Matches(other)).TopBits());
        if (round < Sse2Block::Counter::mostSteps) {
            plainCounter.Add(plain.Matches(one));
            wideCounter.Add(wide.Matches(one));
            plainCounter.Subtract(plain.Matches(other));
            wideCounter.Subtract(wide.Matches(other));
            ASSERT_EQ(wideCounter.Sum(), plainCounter.Sum());
        }
    }
}

TEST(ByteBlocks, WriteTheSameForRandomAscii)
{
    std::mt19937 random(2);
    for (int round = 0; round < 1000; ++round) {
        const std::string bytes = RandomAscii(random, PlainBlock::size);
        std::u16string plain(PlainBlock::size, u'?');
        std::u16string wide(PlainBlock::size, u'!');

        PlainBlock(bytes.data()).WriteInLowerCase(plain.data());
        Sse2Block(bytes.data()).WriteInLowerCase(wide.data());
        ASSERT_EQ(wide, plain);

        PlainBlock(bytes.data()).WriteUnits(plain.data());
        Sse2Block(bytes.data()).WriteUnits(wide.data());
        ASSERT_EQ(wide, plain);
    }
}
#endif

std::vector<std::size_t> PlacesOfMarkup(std::string_view text)
{
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < text.size(); ++i)
        if (std::string_view("<>\"'").find(text[i]) != std::string_view::npos)
            places.push_back(i);
    return places;
}

TEST(MarkupMarks, AreThePlacesOfMarkupWhateverTheLength)
{
    std::mt19937 random(4);
    for (std::size_t size = 0; size < 300; ++size) {
        const std::string text = RandomBytes(random, size);
        SCOPED_TRACE(testing::PrintToString(text));
        MarkupMarks marks(text);

        std::vector<std::size_t> places;
        for (std::size_t place = marks.Next(); place != text.size(); place = marks.Next())
            places.push_back(place);

        ASSERT_EQ(places, PlacesOfMarkup(text));
    }
}

TEST(MarkupMarks, GoOnFromAnyLaterPlace)
{
    std::mt19937 random(5);
    const std::string text = RandomBytes(random, 400);
    const std::vector<std::size_t> places = PlacesOfMarkup(text);

    for (std::size_t step = 1; step < 150; ++step) {
        MarkupMarks marks(text);
        for (std::size_t from = 0; from < text.size(); from += step) {
            const auto next = std::ranges::lower_bound(places, from);
            const std::size_t expected = next == places.end() ? text.size() : *next;
            const std::size_t found = marks.NextFrom(from);
            ASSERT_EQ(found, expected) << "from " << from << " in steps of " << step;
            from = found - found % step;
        }
    }
}

}  // namespace
}  // namespace tessarine::builtin
