#include "office/sheets/CellFormats.h"

#include <gtest/gtest.h>

#include <limits>

namespace tessarine::sheets
{

TEST(CellFormats, KnowsACodeThatShowsADate)
{
    for (const StringView code : {u"yyyy-mm-dd", u"D.M.YY", u"h:mm", u"[$-409]mmmm", u"\"on\" d", u"[Red]ss"})
        EXPECT_TRUE(ShowsDate(code)) << ToUtf8(code);
}

TEST(CellFormats, KnowsACodeThatShowsANumber)
{
    for (const StringView code : {u"General", u"0.00", u"#,##0\\ \"days\"", u"[Red]0", u"0_d", u"*d0", u"0\\d",
                                  u"0;yyyy", u"\"unclosed d", u"[h"})
        EXPECT_FALSE(ShowsDate(code)) << ToUtf8(code);
}

TEST(CellFormats, CountsDaysOf1900)
{
    EXPECT_EQ(DateText(1, false), u"01/01/00");
    EXPECT_EQ(DateText(59, false), u"02/28/00");
    EXPECT_EQ(DateText(61, false), u"03/01/00");
    EXPECT_EQ(DateText(45292, false), u"01/01/24");
    EXPECT_EQ(DateText(2958465, false), u"12/31/99");
}

TEST(CellFormats, ShowsTheTimeOfADay)
{
    EXPECT_EQ(DateText(45292.75, false), u"01/01/24 18:00:00");
    EXPECT_EQ(DateText(45291.999999, false), u"01/01/24");
}

TEST(CellFormats, LeavesNumbersOutsideOfTheCalendar)
{
    for (const double value : {0.0, 0.5, -1.0, 2958466.0, 1e300, std::numeric_limits<double>::quiet_NaN()})
        EXPECT_EQ(DateText(value, false), std::nullopt) << value;
}

TEST(CellFormats, TrustsTheNumbersOfBuiltInFormatsMoreThanTheirCodes)
{
    CellFormats formats(Limits::Default());
    formats.AddNumberFormat(0, u"Standard");
    formats.AddNumberFormat(14, u"0");
    formats.AddCellFormat(0);
    formats.AddCellFormat(14);

    EXPECT_FALSE(formats.IsDate(0));
    EXPECT_TRUE(formats.IsDate(1));
    EXPECT_FALSE(formats.IsDate(2));
}

}  // namespace tessarine::sheets
