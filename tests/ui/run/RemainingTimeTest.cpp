#include "ui/run/RemainingTime.h"

#include <gmock/gmock.h>

namespace tessarine
{

using testing::Eq;
using testing::Optional;

TEST(RemainingTime, IsNotGuessedFromTheFirstFilesAndSeconds)
{
    EXPECT_EQ(SecondsLeft(0, 100, 60), std::nullopt);
    EXPECT_EQ(SecondsLeft(2, 100, 60), std::nullopt);
    EXPECT_EQ(SecondsLeft(50, 100, 4), std::nullopt);
    EXPECT_THAT(SecondsLeft(3, 6, 5), Optional(Eq(5)));
}

TEST(RemainingTime, GoesByTheFilesThatAreDone)
{
    EXPECT_THAT(SecondsLeft(50, 100, 40), Optional(Eq(40)));
    EXPECT_THAT(SecondsLeft(10, 100, 10), Optional(Eq(90)));
}

TEST(RemainingTime, IsRoundedUpByItsLength)
{
    EXPECT_THAT(SecondsLeft(10, 20, 6), Optional(Eq(10)));
    EXPECT_THAT(SecondsLeft(10, 20, 61), Optional(Eq(90)));
    EXPECT_THAT(SecondsLeft(10, 20, 601), Optional(Eq(660)));
}

TEST(RemainingTime, EndsWithTheLastFile)
{
    EXPECT_EQ(SecondsLeft(100, 100, 40), std::nullopt);
    EXPECT_EQ(SecondsLeft(101, 100, 40), std::nullopt);
}

TEST(RemainingTime, HoldsForLongRuns)
{
    EXPECT_THAT(SecondsLeft(3, 32767, 60'000), Optional(Eq(655'280'040)));
}

}  // namespace tessarine
