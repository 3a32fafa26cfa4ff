#include "office/builtin/propertysets/TypedValue.h"

#include <gmock/gmock.h>

#include <bit>
#include <ostream>

#include "NumberRaised.h"
#include "support/BinaryProperties.h"
#include "support/LittleEndian.h"

namespace tessarine::test
{
namespace
{

using builtin::LengthOf;
using builtin::ReadTextList;
using builtin::ReadTyped;
using builtin::TypedPut;
using builtin::TypedText;
using builtin::TypedTextList;
using builtin::ValueType;
using little::Byte;
using little::Long;
using little::LongLong;
using little::Short;
using little::Wide;
using powerpoint::Value;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::size_t anyLength = 1000;

std::string Currency(std::int64_t tenThousandths)
{
    return Long(6) + LongLong(static_cast<std::uint64_t>(tenThousandths));
}

std::string Single(float number)
{
    return Long(4) + Long(std::bit_cast<std::uint32_t>(number));
}

std::string Decimal(std::uint32_t scale, std::uint32_t sign, std::uint64_t whole)
{
    return Long(14) + Short(0) + Byte(scale) + Byte(sign) + Long(0) + LongLong(whole);
}

std::string Days(double days)
{
    return Long(7) + little::Double(days);
}

struct KindCase {
    const char* name;
    std::string typed;
    const char* reads;
};

void PrintTo(const KindCase& item, std::ostream* out)
{
    *out << item.name;
}

const auto nameOf = [](const auto& tested) { return std::string(tested.param.name); };

class TypedValueKind : public testing::TestWithParam<KindCase>
{
};

TEST_P(TypedValueKind, ReadsAsItsText)
{
    EXPECT_EQ(ToUtf8(powerpoint::TextOf(ReadTyped(GetParam().typed, 1252, anyLength))), GetParam().reads);
}

TEST_P(TypedValueKind, ReadsWithoutItsLastBytesToo)
{
    for (std::size_t size = 0; size < GetParam().typed.size(); ++size) {
        const std::string cut = GetParam().typed.substr(0, size);

        EXPECT_LE(powerpoint::TextOf(ReadTyped(cut, 1252, anyLength)).size(), anyLength) << size;
        EXPECT_LE(LengthOf(cut), size);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Every, TypedValueKind,
    testing::Values(
        KindCase{"Empty", Long(0), ""}, KindCase{"Null", Long(1), ""},
        KindCase{"I2", Long(2) + Short(0xFFFE) + Short(0), "-2"}, KindCase{"I4", ppt::NumberValue(-7), "-7"},
        KindCase{"R4", Single(1.1F), "1.1"}, KindCase{"R8", ppt::RealValue(4), "4"},
        KindCase{"R8NoNumber", Long(5) + LongLong(0x7FF8000000000000), ""},
        KindCase{"Currency", Currency(-199900), "-19.99"}, KindCase{"Bstr", Long(8) + Long(2) + "a", "a"},
        KindCase{"True", ppt::TruthValue(true), "True"}, KindCase{"False", ppt::TruthValue(false), "False"},
        KindCase{"Decimal", Decimal(2, 0x80, 250), "-2.5"}, KindCase{"I1", Long(16) + Byte(0xFF), "-1"},
        KindCase{"Ui1", Long(17) + Byte(0xFF), "255"}, KindCase{"Ui2", Long(18) + Short(0xFFFF), "65535"},
        KindCase{"Ui4", Long(19) + Long(0xFFFFFFFF), "4294967295"},
        KindCase{"I8", Long(20) + LongLong(9007199254740993), "9007199254740993"},
        KindCase{"Ui8", Long(21) + LongLong(0xFFFFFFFFFFFFFFFF), "18446744073709551615"},
        KindCase{"Int", Long(22) + Long(3), "3"}, KindCase{"Uint", Long(23) + Long(3), "3"},
        KindCase{"Lpstr", ppt::TextValue("S\xF6hne"), "S\xC3\xB6hne"},
        KindCase{"LpstrUpToItsNul", Long(30) + Long(8) + std::string("abc\0old", 7) + '\0', "abc"},
        KindCase{"LpstrWithoutNul", Long(30) + Long(3) + "abc", "abc"},
        KindCase{"LpstrOfNoBytes", Long(30) + Long(0), ""},
        KindCase{"LpstrBeyondTheBytes", Long(30) + Long(0xFFFFFFFF) + "abc", "abc"},
        KindCase{"Lpwstr", ppt::WideValue(u"S\u00F6hne"), "S\xC3\xB6hne"},
        KindCase{"LpwstrBeyondTheBytes", Long(31) + Long(0x80000001) + Wide(u"abc"), "abc"},
        KindCase{"Blob", ppt::BlobValue("Fabrikam"), ""}, KindCase{"ClipboardData", Long(71) + Long(4) + "abcd", ""},
        KindCase{"ListOfTexts", ppt::TextsValue({"a"}), ""}, KindCase{"Error", Long(10) + Long(1), ""},
        KindCase{"Unknown", Long(0x7777) + Long(1), ""}, KindCase{"DaysBeyondTheYear9999", Days(2958466), ""},
        KindCase{"DaysThatAreNoNumber", Long(7) + LongLong(0x7FF8000000000000), ""}),
    nameOf);

/// Year, month, day; hour, minute, second; day of the week and of the year, both from 0.
std::vector<int> FieldsOf(const Value& date)
{
    const std::tm& local = std::get<powerpoint::Date>(date).local;
    return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour,
            local.tm_min,         local.tm_sec,     local.tm_wday, local.tm_yday};
}

TEST(TypedValue, ReadsDaysAsTheyStandInLocalTime)
{
    const auto fieldsOf = [](double days) { return FieldsOf(ReadTyped(Days(days), 1252, anyLength)); };

    EXPECT_THAT(fieldsOf(0), ElementsAre(1899, 12, 30, 0, 0, 0, 6, 363));
    EXPECT_THAT(fieldsOf(1.5), ElementsAre(1899, 12, 31, 12, 0, 0, 0, 364));
    EXPECT_THAT(fieldsOf(-1.5), ElementsAre(1899, 12, 29, 12, 0, 0, 5, 362));
    EXPECT_THAT(fieldsOf(45418 + 25689.0 / 86400), ElementsAre(2024, 5, 6, 7, 8, 9, 1, 126));
    EXPECT_THAT(fieldsOf(-657434), ElementsAre(100, 1, 1, 0, 0, 0, 5, 0));
    EXPECT_THAT(fieldsOf(2958465), ElementsAre(9999, 12, 31, 0, 0, 0, 5, 364));
}

TEST(TypedValue, ReadsFileTimesInLocalTime)
{
    const Value value = ReadTyped(ppt::TimeValue(133594528890000000), 1252, anyLength);

    std::tm local = std::get<powerpoint::Date>(value).local;
    EXPECT_EQ(std::mktime(&local), 1714979289);
}

struct CodePageCase {
    const char* name;
    std::uint16_t codePage;
    std::string bytes;
    const char16_t* text;
};

void PrintTo(const CodePageCase& item, std::ostream* out)
{
    *out << item.name;
}

class TextInCodePage : public testing::TestWithParam<CodePageCase>
{
};

TEST_P(TextInCodePage, IsReadAndWrittenInIt)
{
    const auto& [name, codePage, bytes, text] = GetParam();
    const bool isWide = codePage == 1200;
    const std::string typed = Long(30) + Long(static_cast<std::uint32_t>(bytes.size() + (isWide ? 2 : 1))) + bytes +
                              std::string(isWide ? 2 : 1, '\0');

    EXPECT_EQ(std::get<String>(ReadTyped(typed, codePage, anyLength)), text);
    EXPECT_EQ(TypedText(ValueType::Lpstr, text, codePage), typed);
}

INSTANTIATE_TEST_SUITE_P(Every, TextInCodePage,
                         testing::Values(CodePageCase{"Western", 1252, "\x80 caf\xE9", u"€ café"},
                                         CodePageCase{"CentralEuropean", 1250, "\xA3\xF3", u"Łó"},
                                         CodePageCase{"Cyrillic", 1251, "\xCF\xF0\xE8", u"При"},
                                         CodePageCase{"Hebrew", 1255, "\xF9\xEC", u"של"},
                                         CodePageCase{"Japanese", 932, "\x93\xFA\x96\x7B", u"日本"},
                                         CodePageCase{"SimplifiedChinese", 936, "\xD6\xD0", u"中"},
                                         CodePageCase{"Korean", 949, "\xC7\xD1", u"한"},
                                         CodePageCase{"TraditionalChinese", 950, "\xA4\xA4", u"中"},
                                         CodePageCase{"Macintosh", 10000, "\x8E", u"é"},
                                         CodePageCase{"CentralEuropeanMacintosh", 10029, "\xFC\x8F", u"ŁŹ"},
                                         CodePageCase{"Utf8", 65001, "\xE6\x97\xA5", u"日"},
                                         CodePageCase{"Utf16", 1200, Wide(u"日本"), u"日本"},
                                         CodePageCase{"Unknown", 1, "caf\xE9", u"café"}),
                         nameOf);

TEST(TypedValue, WritesATextThatTheCodePageCannotHoldInUtf16)
{
    EXPECT_EQ(TypedText(ValueType::Lpstr, u"日本", 1252), Long(31) + Long(3) + Wide(u"日本") + Short(0));
    EXPECT_EQ(TypedText(ValueType::Bstr, u"Ł", 1252), Long(31) + Long(2) + Wide(u"Ł") + Short(0));
    EXPECT_EQ(TypedText(ValueType::Lpstr, u"a\xD83D", 65001), Long(31) + Long(3) + Wide(u"a\xD83D") + Short(0));
}

TEST(TypedValue, RefusesATextThatIsTooLongOrHasAnEndInIt)
{
    EXPECT_EQ(NumberRaised([] { ReadTyped(ppt::TextValue("Fabrikam"), 1252, 8); }), 0);
    EXPECT_EQ(NumberRaised([] { ReadTyped(ppt::TextValue("Fabrikam"), 1252, 7); }), FailureNumber::FileCorrupt);
    EXPECT_EQ(NumberRaised([] { ReadTyped(ppt::WideValue(u"Fabrikam"), 1252, 7); }), FailureNumber::FileCorrupt);
    EXPECT_EQ(NumberRaised([] { TypedText(ValueType::Lpstr, StringView(u"a\0b", 3), 1252); }),
              FailureNumber::FileCorrupt);
}

struct PutCase {
    const char* name;
    std::string before;
    Value put;
    std::string after;
};

void PrintTo(const PutCase& item, std::ostream* out)
{
    *out << item.name;
}

class TypedValuePut : public testing::TestWithParam<PutCase>
{
};

TEST_P(TypedValuePut, HasTheTypeThatFits)
{
    std::string after = TypedPut(u"P", GetParam().before, GetParam().put, 1252);

    after.resize((after.size() + 3) / 4 * 4);
    EXPECT_EQ(after, GetParam().after);
}

INSTANTIATE_TEST_SUITE_P(
    Every, TypedValuePut,
    testing::Values(
        PutCase{"TextOverText", ppt::TextValue("a"), String(u"b & c"), ppt::TextValue("b & c")},
        PutCase{"TextOverWideText", ppt::WideValue(u"a"), String(u"b"), ppt::WideValue(u"b")},
        PutCase{"TextOverNumber", ppt::NumberValue(3), String(u"three"), ppt::TextValue("three")},
        PutCase{"NumericTextOverNumber", ppt::NumberValue(3), String(u"4"), ppt::TextValue("4")},
        PutCase{"TextOverBool", ppt::TruthValue(true), String(u"No"), ppt::TextValue("No")},
        PutCase{"TextOverDate", ppt::TimeValue(133594528890000000), String(u"today"), ppt::TextValue("today")},
        PutCase{"TextOverEmpty", Long(0), String(u"x"), ppt::TextValue("x")},
        PutCase{"ForeignTextOverNumber", ppt::NumberValue(3), String(u"日"), ppt::WideValue(u"日")},
        PutCase{"NumberOverInteger", ppt::NumberValue(3), 4.0, ppt::NumberValue(4)},
        PutCase{"NumberOverTheLargestInteger", ppt::NumberValue(3), 2147483647.0, ppt::NumberValue(2147483647)},
        PutCase{"NumberBeyondAnInteger", ppt::NumberValue(3), 2147483648.0, ppt::RealValue(2147483648.0)},
        PutCase{"NumberBelowAnUnsigned", Long(18) + Long(3), -1.0, ppt::RealValue(-1)},
        PutCase{"NumberOverAShort", ppt::ShortValue(3), -4.0, Long(2) + Short(0xFFFC) + Short(0)},
        PutCase{"FractionOverInteger", ppt::NumberValue(1), 1.5, ppt::RealValue(1.5)},
        PutCase{"NumberOverReal", ppt::RealValue(1), 1.5, ppt::RealValue(1.5)},
        PutCase{"NumberOverSingle", Single(1), 1.1, Single(1.1F)},
        PutCase{"NumberBeyondASingle", Single(1), 0.123456789, ppt::RealValue(0.123456789)},
        PutCase{"NumberOverCurrency", Currency(10000), 19.99, Currency(199900)},
        PutCase{"NumberOverDecimal", Decimal(0, 0, 1), -2.5, Decimal(1, 0x80, 25)},
        PutCase{"NumberBeyondADecimal", Decimal(0, 0, 1), 1e30, ppt::RealValue(1e30)},
        PutCase{"NumberOverText", ppt::TextValue("3"), 4.0, ppt::TextValue("4")},
        PutCase{"FractionOverText", ppt::TextValue("0.2"), 0.1 + 0.2, ppt::TextValue("0.3")},
        PutCase{"NumberOverBool", ppt::TruthValue(true), 2.0, ppt::RealValue(2)},
        PutCase{"NumberOverDate", ppt::TimeValue(133594528890000000), 2.0, ppt::RealValue(2)}),
    nameOf);

TEST(TypedValue, RefusesAKindThatNobodyEdits)
{
    for (const std::string& opaque : {ppt::BlobValue("a"), ppt::TextsValue({"a"}), Long(71), Long(10), Long(0x7777)})
        EXPECT_EQ(NumberRaised([&] { TypedPut(u"P", opaque, String(u"x"), 1252); }), FailureNumber::Unspecified);
}

TEST(TypedValue, RefusesANumberThatIsInfiniteOrWouldGetDigitsOfItsOwn)
{
    EXPECT_EQ(NumberRaised([] { TypedPut(u"P", ppt::NumberValue(1), 1e308 * 10, 1252); }), FailureNumber::Overflow);
    EXPECT_EQ(NumberRaised([] { TypedPut(u"P", ppt::TextValue("1"), 1e308 * 10, 1252); }), FailureNumber::Overflow);
    EXPECT_EQ(NumberRaised([] { TypedPut(u"P", Currency(1), 1e15, 1252); }), FailureNumber::Overflow);
    EXPECT_EQ(NumberRaised([] { TypedPut(u"P", Long(20) + LongLong(1), 9007199254740994.0, 1252); }),
              FailureNumber::Overflow);
}

TEST(TypedValue, KnowsHowManyBytesAreItsOwn)
{
    EXPECT_EQ(LengthOf(ppt::TextValue("ab") + "old"), 4u + 4 + 3);
    EXPECT_EQ(LengthOf(ppt::WideValue(u"ab") + "old"), 4u + 4 + 6);
    EXPECT_EQ(LengthOf(ppt::ShortValue(1)), 6u);
    EXPECT_EQ(LengthOf(Long(7) + std::string(20, 'x')), 12u);
    EXPECT_EQ(LengthOf(Long(14) + std::string(20, 'x')), 20u);
    EXPECT_EQ(LengthOf(Long(0x101E) + Long(1) + Long(3) + std::string("ab\0rest", 6)), 4u + 4 + 4 + 3);
    EXPECT_EQ(LengthOf(Long(0x7777) + "unknown"), 11u);
}

std::string AlignedTexts()
{
    return Long(0x101E) + Long(2) + Long(2) + std::string("a\0\0\0", 4) + Long(3) + std::string("bc\0\0", 4);
}

TEST(TextLists, AreReadWithAndWithoutPadding)
{
    EXPECT_THAT(ReadTextList(ppt::TextsValue({"a", "bc", ""}), 1252, anyLength), ElementsAre(u"a", u"bc", u""));
    EXPECT_THAT(ReadTextList(AlignedTexts(), 1252, anyLength), ElementsAre(u"a", u"bc"));
    EXPECT_THAT(ReadTextList(Long(0x101F) + Long(1) + Long(2) + Wide(u"Ł") + Short(0), 1252, anyLength),
                ElementsAre(u"Ł"));
}

TEST(TextLists, ThatNoProgramWouldWriteAreNone)
{
    EXPECT_THAT(ReadTextList(Long(0x101E) + Long(0xFFFFFFFF), 1252, anyLength), IsEmpty());
    EXPECT_THAT(ReadTextList(Long(0x101E) + Long(2) + Long(2) + "a", 1252, anyLength), IsEmpty());
    EXPECT_THAT(ReadTextList(Long(0x101E) + Long(1) + Long(0xFFFFFFFF) + "abc", 1252, anyLength), IsEmpty());
    EXPECT_THAT(ReadTextList(ppt::TextValue("a"), 1252, anyLength), IsEmpty());
}

TEST(TextLists, AreWrittenAsTheyWere)
{
    EXPECT_EQ(TypedTextList(ppt::TextsValue({"x"}), {u"a", u"b\u00E9"}, 1252),
              Long(0x101E) + Long(2) + Long(2) + std::string("a\0", 2) + Long(3) + std::string("b\xE9\0", 3));
    EXPECT_EQ(TypedTextList(AlignedTexts(), {u"a", u"bc"}, 1252), AlignedTexts());
}

TEST(TextLists, WithATextThatTheCodePageCannotHoldAreInUtf16)
{
    EXPECT_EQ(TypedTextList(ppt::TextsValue({"x", "y"}), {u"a", u"日"}, 1252),
              Long(0x101F) + Long(2) + Long(2) + Wide(u"a") + Short(0) + Long(2) + Wide(u"日") + Short(0));
}

}  // namespace
}  // namespace tessarine::test
