#include "platform/LocalTime.h"

#include <gtest/gtest.h>

namespace tessarine
{

// The tests' time zone is that of Greenwich.

TEST(ALocalTime, IsToldByCalendarAndClock)
{
    const auto time = LocalTime(1'709'210'096);

    ASSERT_TRUE(time);
    EXPECT_EQ(time->tm_year, 124);
    EXPECT_EQ(time->tm_mon, 1);
    EXPECT_EQ(time->tm_mday, 29);
    EXPECT_EQ(time->tm_hour, 12);
    EXPECT_EQ(time->tm_min, 34);
    EXPECT_EQ(time->tm_sec, 56);
    EXPECT_EQ(time->tm_wday, 4);
    EXPECT_EQ(time->tm_yday, 59);
}

TEST(ALocalTime, IsKnownLongBefore1970)
{
    const auto time = LocalTime(-11'644'387'200);  // documents' dates begin here

    ASSERT_TRUE(time);
    EXPECT_EQ(time->tm_year, 1601 - 1900);
    EXPECT_EQ(time->tm_mon, 0);
    EXPECT_EQ(time->tm_mday, 2);
    EXPECT_EQ(time->tm_hour, 0);
}

TEST(ALocalTime, IsUnknownBeyondTheYearsThatTheSystemCounts)
{
    EXPECT_FALSE(LocalTime(std::time_t{1} << 62));
}

}  // namespace tessarine
