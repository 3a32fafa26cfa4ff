#include "office/sheets/FieldValue.h"

#include <gtest/gtest.h>

#include "office/sheets/Table.h"

namespace tessarine::sheets
{

namespace
{

std::string ValueOf(StringView field, bool isQuoted = false)
{
    String scratch;
    return Shown(ValueOfField(field, isQuoted, scratch));
}

}  // namespace

TEST(FieldValue, OfAnEmptyFieldIsEmpty)
{
    EXPECT_EQ(ValueOf(u""), "");
}

TEST(FieldValue, OfTrueAndFalseInAnyCaseIsABoolean)
{
    for (const StringView field : {u"TRUE", u"true", u"True", u"tRuE"})
        EXPECT_EQ(ValueOf(field), "TRUE");
    for (const StringView field : {u"FALSE", u"false", u"False"})
        EXPECT_EQ(ValueOf(field), "FALSE");
    EXPECT_EQ(ValueOf(u"TRUE "), "'TRUE '");
    EXPECT_EQ(ValueOf(u"TRUES"), "'TRUES'");
    EXPECT_EQ(ValueOf(u"ＴＲＵＥ"), "'ＴＲＵＥ'");
}

TEST(FieldValue, OfAPlainNumberIsANumber)
{
    EXPECT_EQ(ValueOf(u"2024"), "2024");
    EXPECT_EQ(ValueOf(u"007"), "7");
    EXPECT_EQ(ValueOf(u"0"), "0");
    EXPECT_EQ(ValueOf(u"-1.5"), "-1.5");
    EXPECT_EQ(ValueOf(u"+5"), "5");
    EXPECT_EQ(ValueOf(u".5"), "0.5");
    EXPECT_EQ(ValueOf(u"5."), "5");
    EXPECT_EQ(ValueOf(u"1e3"), "1000");
    EXPECT_EQ(ValueOf(u"25E-1"), "2.5");
    EXPECT_EQ(ValueOf(u"0.00001"), "1e-05");
    EXPECT_EQ(ValueOf(u"123456789012345"), "123456789012345");
    EXPECT_EQ(ValueOf(u"000000000123456789012345"), "123456789012345");
}

TEST(FieldValue, OfANumberInQuotesIsText)
{
    EXPECT_EQ(ValueOf(u"007", true), "'007'");
    EXPECT_EQ(ValueOf(u"TRUE", true), "TRUE");
    EXPECT_EQ(ValueOf(u"=\"007\"", true), "'007'");
}

TEST(FieldValue, OfWhatOnlyLooksLikeANumberIsText)
{
    for (const StringView field :
         {u" 5",  u"5 ",  u"1,000", u"50%",    u"$5",   u"1/2",   u"2024-01-01", u"10:30", u"-",
          u"+",   u".",   u"e3",    u"1e",     u"1e+",  u"1.2.3", u"--1",        u"+-1",   u"0x10",
          u"inf", u"nan", u"1d",    u"\x0661", u"#N/A", u"1e400", u"1e-400"})
        EXPECT_EQ(ValueOf(field), '\'' + ToUtf8(field) + '\'');
}

TEST(FieldValue, OfANumberThatWouldLoseDigitsIsText)
{
    EXPECT_EQ(ValueOf(u"1234567890123456"), "'1234567890123456'");
    EXPECT_EQ(ValueOf(u"0.1234567890123456"), "'0.1234567890123456'");
    EXPECT_EQ(ValueOf(String(100, u'1')), '\'' + std::string(100, '1') + '\'');
}

TEST(FieldValue, OfATextWrittenAsAFormulaIsTheText)
{
    EXPECT_EQ(ValueOf(u"=\"007\""), "'007'");
    EXPECT_EQ(ValueOf(u"=\"a\"\"b\""), "'a\"b'");
    EXPECT_EQ(ValueOf(u"=\"\""), "''");
}

TEST(FieldValue, OfAnotherFormulaIsTheFormula)
{
    for (const StringView field : {u"=1+2", u"=\"a\"&\"b\"", u"=\"", u"=\"a", u"=", u"=\"a\"\"", u"=\"a\"b\""})
        EXPECT_EQ(ValueOf(field), '\'' + ToUtf8(field) + '\'');
}

TEST(FieldOfText, IsTheTextItself)
{
    for (const StringView text : {u"", u"Contoso", u" a", u"-x", u"True story", u"Windows 95", u"v2", u"3rd", u"May",
                                  u"5 USD", u"Monday 5", u"#N/A", u"中5", u"5\n6", u"\u0661", u"-"})
        EXPECT_EQ(FieldOfText(text), text);
}

TEST(FieldOfText, IsAFormulaWhenTheTextWouldReadAsSomethingElse)
{
    EXPECT_EQ(FieldOfText(u"007"), u"=\"007\"");
    EXPECT_EQ(FieldOfText(u"true"), u"=\"true\"");
    EXPECT_EQ(FieldOfText(u"=SUM(A1)"), u"=\"=SUM(A1)\"");
    EXPECT_EQ(FieldOfText(u"=\"a\""), u"=\"=\"\"a\"\"\"");
}

TEST(FieldOfText, IsAFormulaWhenOtherProgramsWouldReadANumberOrDate)
{
    for (const StringView text :
         {u"50%",         u"1/2",          u"2024-01-01",       u"10:30",    u"1,000",  u"$5", u"5 \u20AC", u"(5)",
          u"Jan 5, 2024", u"January 2024", u"Sept-24",          u"10:30 PM", u"1E3",    u" 5", u"5 ",       u"true ",
          u" =1",         u"1 1/2",        u"1234567890123456", u"5-",       u"1.000,5"})
        EXPECT_EQ(FieldOfText(text), u"=\"" + String(text) + u'"');
}

TEST(FieldOfText, ReadsBackAsTheText)
{
    for (const StringView text :
         {u"007", u"TRUE", u"=", u"=\"", u"=\"a\"", u"=\"\"\"\"", u"1e3", u"x", u"\"", u"=\"a\"\""})
        EXPECT_EQ(ValueOf(FieldOfText(text)), '\'' + ToUtf8(text) + '\'');
}

TEST(ShownNumber, HasFifteenDigits)
{
    EXPECT_EQ(ShownNumber(0.1 + 0.2), 0.3);
    EXPECT_EQ(ShownNumber(0.1), 0.1);
    EXPECT_EQ(ShownNumber(2024), 2024);
    EXPECT_EQ(ShownNumber(1234567890123456789.0), 1234567890123460000.0);
}

TEST(FieldOfNumber, ReadsBackAsTheNumber)
{
    EXPECT_EQ(FieldOfNumber(1.0 / 3), "0.333333333333333");
    EXPECT_EQ(FieldOfNumber(123456789012345), "123456789012345");
    EXPECT_EQ(FieldOfNumber(123456789012e5), "1.23456789012e+16");
    EXPECT_EQ(ValueOf(FromUtf8(FieldOfNumber(123456789012e5))), "1.23456789012e+16");
}

}  // namespace tessarine::sheets
