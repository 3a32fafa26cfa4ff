#include "ui/run/ElapsedTime.h"

#include <gtest/gtest.h>

namespace tessarine
{
namespace
{

TEST(ElapsedTime, IsTheDistanceOfTwoTimesOfDay)
{
    EXPECT_EQ(ElapsedTimeText(QTime(9, 59, 58), QTime(11, 2, 3)), "Total Elapsed Time : 01:02:05");
    EXPECT_EQ(ElapsedTimeText(QTime(9, 0), QTime(9, 0)), "Total Elapsed Time : 00:00:00");
}

TEST(ElapsedTime, CountsWholeSecondsOfTheClock)
{
    EXPECT_EQ(ElapsedTimeText(QTime(9, 0, 0, 999), QTime(9, 0, 1, 0)), "Total Elapsed Time : 00:00:01");
    EXPECT_EQ(ElapsedTimeText(QTime(9, 0, 1, 0), QTime(9, 0, 1, 999)), "Total Elapsed Time : 00:00:00");
}

TEST(ElapsedTime, IsNotTheTimeThatHasPassedAcrossMidnight)
{
    EXPECT_EQ(ElapsedTimeText(QTime(23, 59, 55), QTime(0, 0, 5)), "Total Elapsed Time : 23:59:50");
}

TEST(TimeOfDay, IsTheSystemsUnlessAnotherClockIsInForce)
{
    const TimeOfDayPort before = SetTimeOfDay([] { return QTime(1, 2, 3); });
    EXPECT_EQ(TimeOfDay(), QTime(1, 2, 3));

    SetTimeOfDay({});
    EXPECT_TRUE(TimeOfDay().isValid());
    EXPECT_NE(TimeOfDay(), QTime(1, 2, 3));

    SetTimeOfDay(before);
}

}  // namespace
}  // namespace tessarine
