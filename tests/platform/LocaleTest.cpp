#include "platform/Locale.h"

#include <gtest/gtest.h>

#include <limits>

namespace tessarine
{

namespace
{

std::tm At(int year, int month, int day, int hour, int minute, int second)
{
    std::tm time = {};
    time.tm_year = year - 1900;
    time.tm_mon = month - 1;
    time.tm_mday = day;
    time.tm_hour = hour;
    time.tm_min = minute;
    time.tm_sec = second;
    return time;
}

}  // namespace

TEST(NumberFromText, TakesSignsBlanksFractionsAndExponents)
{
    EXPECT_EQ(NumberFromText(u"1.0"), 1.0);
    EXPECT_EQ(NumberFromText(u"  -0.1\t"), -0.1);
    EXPECT_EQ(NumberFromText(u"+7"), 7.0);
    EXPECT_EQ(NumberFromText(u".5"), 0.5);
    EXPECT_EQ(NumberFromText(u"5."), 5.0);
    EXPECT_EQ(NumberFromText(u"1e3"), 1000.0);
    EXPECT_EQ(NumberFromText(u"25E-1"), 2.5);
    EXPECT_EQ(NumberFromText(u"1E+2"), 100.0);
}

TEST(NumberFromText, RefusesWhatIsNotANumber)
{
    for (const char16_t* text :
         {u"", u" ", u".", u"-", u"1.2.3", u"v1", u"1a", u"1e", u"e5", u"--1", u"inf", u"nan", u"0x10", u"1 2", u"١"})
        EXPECT_FALSE(NumberFromText(text)) << ToUtf8(text);
}

TEST(NumberFromText, RefusesWhatNoNumberCanHold)
{
    EXPECT_FALSE(NumberFromText(u"1E999"));
}

TEST(TextFromNumber, IsTheShortestThatReadsBack)
{
    EXPECT_EQ(TextFromNumber(4.0), u"4");
    EXPECT_EQ(TextFromNumber(1.5), u"1.5");
    EXPECT_EQ(TextFromNumber(-0.1), u"-0.1");
    EXPECT_EQ(TextFromNumber(0.1 + 0.2), u"0.30000000000000004");
    EXPECT_EQ(TextFromNumber(-0.0), u"0");
    EXPECT_EQ(TextFromNumber(1200), u"1200");
    EXPECT_EQ(TextFromNumber(1200.25), u"1200.25");
}

TEST(TextFromNumber, UsesAnExponentBeyondFifteenPlaces)
{
    EXPECT_EQ(TextFromNumber(999999999999999.0), u"999999999999999");
    EXPECT_EQ(TextFromNumber(1e15), u"1E+15");
    EXPECT_EQ(TextFromNumber(1e20), u"1E+20");
    EXPECT_EQ(TextFromNumber(-1.25e-7), u"-1.25E-07");
    EXPECT_EQ(TextFromNumber(0.00001), u"0.00001");
    EXPECT_EQ(TextFromNumber(1e300), u"1E+300");
}

TEST(TextFromNumber, ReadsBackAsTheSameNumber)
{
    for (const double number : {0.1, 1.0 / 3, 123456.789, 1e-300, 1.7976931348623157e308, 5e-324, 2.5e17})
        EXPECT_EQ(NumberFromText(TextFromNumber(number)), number);
}

TEST(TextFromNumber, NamesWhatIsNoNumber)
{
    EXPECT_EQ(TextFromNumber(std::numeric_limits<double>::quiet_NaN()), u"NaN");
    EXPECT_EQ(TextFromNumber(-std::numeric_limits<double>::infinity()), u"-INF");
}

TEST(DisplayDateTime, ShowsDateAndTime)
{
    EXPECT_EQ(DisplayDateTime(At(2024, 12, 31, 13, 4, 5)), u"12/31/24 13:04:05");
}

TEST(DisplayDateTime, ShowsTheDateAloneAtMidnight)
{
    EXPECT_EQ(DisplayDateTime(At(2024, 12, 31, 0, 0, 0)), u"12/31/24");
}

}  // namespace tessarine
