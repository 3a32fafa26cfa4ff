#include "model/PropertyBag.h"

#include <gmock/gmock.h>

#include "platform/Failure.h"
#include "support/StoredBag.h"

namespace tessarine
{
namespace
{

using namespace std::string_literals;
using test::StoredRecord;
using testing::ElementsAre;
using Value = PropertyBag::Value;

std::span<const std::byte> Bytes(std::string_view block)
{
    return std::as_bytes(std::span(block));
}

/// The number and the text that a block is refused with; 0 when it is taken.
std::pair<std::int32_t, std::string> RefusalOf(const std::string& block)
{
    PropertyBag bag;
    try {
        bag.PutContents(Bytes(block));
    } catch (const Failure& failure) {
        return {failure.number, ToUtf8(failure.description)};
    }
    return {0, {}};
}

std::string TextOfRefusal(const std::string& block)
{
    const auto [number, text] = RefusalOf(block);
    EXPECT_EQ(number, 321) << text;
    return text;
}

std::string SmallBlock()
{
    return test::StoredBag({{"yes", true}, {"number", -2}, {"text", "é"s}});
}

TEST(PropertyBag, GivesNothingForANameThatItDoesNotHave)
{
    PropertyBag bag;
    bag.WriteProperty(u"name", true);

    EXPECT_EQ(bag.ReadProperty(u"other"), std::nullopt);
    EXPECT_EQ(bag.ReadProperty(u"Name"), std::nullopt);
    EXPECT_EQ(bag.ReadProperty(u""), std::nullopt);
}

TEST(PropertyBag, KeepsValuesWithTheirTypes)
{
    PropertyBag bag;
    bag.WriteProperty(u"false", false);
    bag.WriteProperty(u"zero", 0);
    bag.WriteProperty(u"empty", u"");

    EXPECT_EQ(bag.ReadProperty(u"false"), Value(false));
    EXPECT_EQ(bag.ReadProperty(u"zero"), Value(0));
    EXPECT_EQ(bag.ReadProperty(u"empty"), Value(String()));
}

TEST(PropertyBag, KeepsThePlaceOfANameThatIsWrittenAgain)
{
    PropertyBag bag;
    bag.WriteProperty(u"a", 1);
    bag.WriteProperty(u"b", 2);

    bag.WriteProperty(u"a", u"text");

    EXPECT_THAT(test::ReadStoredBag(bag.Contents()), ElementsAre(StoredRecord{"a", "text"s}, StoredRecord{"b", 2}));
}

TEST(PropertyBag, WritesTheBlockThatItsPageDescribes)
{
    PropertyBag bag;
    bag.WriteProperty(u"z", true);
    bag.WriteProperty(u"a", std::numeric_limits<std::int32_t>::min());
    bag.WriteProperty(u"ключ", u"a\0😀\xD83D"s);
    bag.WriteProperty(u"", u"");

    EXPECT_THAT(test::ReadStoredBag(bag.Contents()),
                ElementsAre(StoredRecord{"z", true}, StoredRecord{"a", std::numeric_limits<std::int32_t>::min()},
                            StoredRecord{"ключ", "a\0\xF0\x9F\x98\x80\xED\xA0\xBD"s}, StoredRecord{"", ""s}));
}

TEST(PropertyBag, WritesTheBytesOfThePagesExample)
{
    PropertyBag bag;
    bag.WriteProperty(u"x", u"AB");

    EXPECT_EQ(bag.Contents(),
              "\x89TSQ\r\n\x1A\n\x01\0\0\0\x2C\0\0\0\0\0\0\0\x01\0\0\0"
              "\x03\x01\0\0\0x\x02\0\0\0\0\0\0\0"
              "AB\x7C\xEA\xE4\xD1"s);
}

TEST(PropertyBag, WithoutValuesIsABlockAllTheSame)
{
    PropertyBag bag;

    EXPECT_THAT(test::ReadStoredBag(bag.Contents()), testing::IsEmpty());
    EXPECT_EQ(RefusalOf(bag.Contents()).first, 0);
}

TEST(PropertyBag, ReadsABlockThatAnotherProgramWrote)
{
    PropertyBag bag;
    bag.WriteProperty(u"before", true);

    bag.PutContents(Bytes(SmallBlock()));

    EXPECT_EQ(bag.ReadProperty(u"yes"), Value(true));
    EXPECT_EQ(bag.ReadProperty(u"number"), Value(-2));
    EXPECT_EQ(bag.ReadProperty(u"text"), Value(u"é"));
    EXPECT_EQ(bag.ReadProperty(u"before"), std::nullopt);
    EXPECT_EQ(bag.Contents(), SmallBlock());
}

TEST(PropertyBag, IgnoresBytesAfterTheBlock)
{
    PropertyBag bag;

    bag.PutContents(Bytes(SmallBlock() + SmallBlock() + "tail"));

    EXPECT_EQ(bag.Contents(), SmallBlock());
}

TEST(PropertyBag, TellsTheLengthOfABlockFromItsHeader)
{
    const std::string block = SmallBlock();
    const std::string other(PropertyBag::HeaderLength, 'x');

    EXPECT_EQ(PropertyBag::BlockLength(Bytes(block).first<PropertyBag::HeaderLength>()), block.size());
    EXPECT_EQ(PropertyBag::BlockLength(Bytes(other).first<PropertyBag::HeaderLength>()), std::nullopt);
}

TEST(PropertyBag, HoldsALongTextAndALongName)
{
    const String longest(3'000'000, u'漢');
    PropertyBag bag;
    bag.WriteProperty(String(70'000, u'n'), longest);
    PropertyBag read;

    read.PutContents(Bytes(bag.Contents()));

    EXPECT_EQ(read.ReadProperty(String(70'000, u'n')), Value(longest));
}

TEST(PropertyBag, TakesNoMoreValuesThanItMay)
{
    PropertyBag bag;
    for (std::size_t i = 0; i < PropertyBag::MostValues; ++i)
        bag.WriteProperty(FromUtf8(std::to_string(i)), true);

    EXPECT_THROW(bag.WriteProperty(u"one more", true), Failure);
    EXPECT_FALSE(bag.ReadProperty(u"one more"));
    EXPECT_NO_THROW(bag.WriteProperty(u"0", false));
    EXPECT_EQ(RefusalOf(bag.Contents()).first, 0);
}

TEST(DamagedBag, IsRefusedWhereverItIsCutOff)
{
    const std::string block = SmallBlock();

    for (std::size_t length = 0; length < block.size(); ++length)
        EXPECT_NE(TextOfRefusal(block.substr(0, length)), "") << "cut off at " << length;
}

TEST(DamagedBag, IsRefusedWhateverBitIsFlipped)
{
    for (std::size_t at = 0; at < SmallBlock().size(); ++at)
        for (int bit = 0; bit < 8; ++bit) {
            std::string block = SmallBlock();
            block[at] = static_cast<char>(block[at] ^ 1 << bit);
            EXPECT_NE(TextOfRefusal(block), "") << "byte " << at << " bit " << bit;
        }
}

TEST(DamagedBag, IsRefusedOrTakenWholeWhateverByteIsForged)
{
    const std::string original = SmallBlock();
    for (std::size_t at = 0; at < original.size() - 4; ++at)
        for (int value = 0; value < 256; ++value) {
            std::string block = original;
            block[at] = static_cast<char>(value);
            block = test::WithChecksum(block);
            PropertyBag bag;
            bool taken = true;
            try {
                bag.PutContents(Bytes(block));
            } catch (const Failure& failure) {
                taken = false;
                ASSERT_EQ(failure.number, 321);
            }
            ASSERT_TRUE(!taken || bag.Contents() == block) << "byte " << at << " value " << value;
        }
}

TEST(DamagedBag, LeavesTheOldValuesInPlace)
{
    PropertyBag bag;
    bag.WriteProperty(u"kept", 1);

    EXPECT_THROW(bag.PutContents(Bytes(SmallBlock().substr(0, 60))), Failure);

    EXPECT_EQ(bag.ReadProperty(u"kept"), Value(1));
    EXPECT_EQ(bag.ReadProperty(u"yes"), std::nullopt);
}

TEST(DamagedBag, IsToldApartByItsText)
{
    std::string wrongSum = SmallBlock();
    wrongSum.back() = static_cast<char>(wrongSum.back() + 1);

    EXPECT_EQ(TextOfRefusal("a text file"), "Invalid file format: this is not a project file");
    EXPECT_EQ(TextOfRefusal(""), "Invalid file format: this is not a project file");
    EXPECT_EQ(TextOfRefusal(SmallBlock().substr(0, 20)), "Invalid file format: the file ends inside its header");
    EXPECT_EQ(TextOfRefusal(test::BlockAround("", 0, 2)),
              "Invalid file format: the project file has version 2, and this program reads version 1");
    EXPECT_EQ(TextOfRefusal(wrongSum), "Invalid file format: the checksum does not match, so the file is damaged");
    EXPECT_EQ(TextOfRefusal(SmallBlock().substr(0, 50)),
              "Invalid file format: the file ends at byte 50, its block at byte 71");
    EXPECT_EQ(TextOfRefusal(test::StoredBag({{"twice", 1}, {"twice", 2}})),
              "Invalid file format: the name twice stands twice");
    EXPECT_EQ(TextOfRefusal(test::BlockAround("\4\0\0\0\0"s, 1)), "Invalid file format: at byte 29 there is no type 4");
    EXPECT_EQ(TextOfRefusal(test::BlockAround("\1\0\0\0\0\2"s, 1)),
              "Invalid file format: at byte 29 a boolean is neither 0 nor 1");
    EXPECT_EQ(TextOfRefusal(test::StoredBag({{"text", "\xC3("s}})),
              "Invalid file format: at byte 33 a text is not valid UTF-8");
    EXPECT_EQ(TextOfRefusal(test::BlockAround("x", 0)),
              "Invalid file format: the block goes on behind its last record");
    EXPECT_EQ(TextOfRefusal(test::BlockAround("", 1)),
              "Invalid file format: at byte 24 a record is longer than the block");
}

TEST(HostileBag, AsksForNoMemoryThatItsBytesDoNotFill)
{
    const std::string name = "\3\1\0\0\0n"s;
    std::string longBlock = test::BlockAround("", 0);
    longBlock.replace(12, 8, std::string(8, '\xFF'));
    std::string shortBlock = test::BlockAround("", 0);
    shortBlock.replace(12, 8, "\x1B\0\0\0\0\0\0\0"s);

    EXPECT_NE(TextOfRefusal(test::BlockAround("\3\xFF\xFF\xFF\xFFn"s, 1)), "");
    EXPECT_NE(TextOfRefusal(test::BlockAround(name + std::string(8, '\xFF'), 1)), "");
    EXPECT_NE(TextOfRefusal(test::BlockAround(name + "\0\0\0\x40\0\0\0\0"s, 1)), "");
    EXPECT_NE(TextOfRefusal(test::BlockAround(name + "\1\0\0\0\0\0\0\0"s, 1)), "");
    EXPECT_EQ(TextOfRefusal(test::BlockAround("", 0xFFFFFFFF)),
              "Invalid file format: the block holds 4294967295 values");
    EXPECT_NE(TextOfRefusal(test::BlockAround("", PropertyBag::MostValues)), "");
    EXPECT_EQ(TextOfRefusal(longBlock), "Invalid file format: the block gives its length as 18446744073709551615");
    EXPECT_EQ(TextOfRefusal(shortBlock), "Invalid file format: the block gives its length as 27");
}

}  // namespace
}  // namespace tessarine
