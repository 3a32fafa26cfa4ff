#include "batch/ProgressText.h"

#include <gtest/gtest.h>

namespace tessarine::batch
{
namespace
{

TEST(ProgressText, TellsPositionAndPercent)
{
    EXPECT_EQ(ProgressText({.done = 0, .files = 400}), "[1/400] 0%");
    EXPECT_EQ(ProgressText({.done = 399, .files = 400}), "[400/400] 99%");
}

TEST(ProgressText, TellsFailuresWhereThereAreAny)
{
    EXPECT_EQ(ProgressText({.done = 100, .files = 400, .failed = 2}), "[101/400] 25%, 2 failed");
}

TEST(ProgressText, TellsTheTimeLeftOnceThereIsSomethingToGoBy)
{
    EXPECT_EQ(ProgressText({.done = 2, .files = 400, .seconds = 10}), "[3/400] 0%");
    EXPECT_EQ(ProgressText({.done = 300, .files = 400, .seconds = 1}), "[301/400] 75%");
    EXPECT_EQ(ProgressText({.done = 100, .files = 400, .failed = 1, .seconds = 60}),
              "[101/400] 25%, 1 failed, 3:00 left");
}

TEST(ProgressText, RoundsTheTimeLeftUp)
{
    EXPECT_EQ(ProgressText({.done = 399, .files = 400, .seconds = 2}), "[400/400] 99%, 0:01 left");
}

}  // namespace
}  // namespace tessarine::batch
