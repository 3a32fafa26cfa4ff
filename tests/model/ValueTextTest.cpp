#include <gtest/gtest.h>

#include "model/PowerPoint.h"

namespace tessarine
{

TEST(ValueText, IsTheTextItself)
{
    EXPECT_EQ(powerpoint::TextOf(String(u"Fabrikam 😀")), u"Fabrikam 😀");
    EXPECT_EQ(powerpoint::TextOf(powerpoint::Value()), u"");
}

TEST(ValueText, NamesTruthInEnglish)
{
    EXPECT_EQ(powerpoint::TextOf(true), u"True");
    EXPECT_EQ(powerpoint::TextOf(false), u"False");
}

TEST(ValueText, ShowsNumbersInTheirShortestForm)
{
    EXPECT_EQ(powerpoint::TextOf(std::int64_t{-42}), u"-42");
    EXPECT_EQ(powerpoint::TextOf(1.10), u"1.1");
    EXPECT_EQ(powerpoint::TextOf(2.0), u"2");
}

TEST(ValueText, ShowsDatesAsTheSystemDoes)
{
    powerpoint::Date date;
    date.local.tm_year = 124;
    date.local.tm_mon = 1;
    date.local.tm_mday = 29;
    date.local.tm_hour = 23;

    EXPECT_EQ(powerpoint::TextOf(date), u"02/29/24 23:00:00");
}

}  // namespace tessarine
