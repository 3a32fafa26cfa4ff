#include "desktop/SingleInstance.h"

#include <gtest/gtest.h>

#include <optional>

namespace tessarine
{

TEST(SingleInstanceTest, FindsTheOneBeforeForAsLongAsThatLives)
{
    std::optional<SingleInstance> first(std::in_place);
    EXPECT_FALSE(first->IsPreviousInstanceRunning());

    EXPECT_TRUE(SingleInstance().IsPreviousInstanceRunning());
    EXPECT_TRUE(SingleInstance().IsPreviousInstanceRunning());
    first.reset();

    EXPECT_FALSE(SingleInstance().IsPreviousInstanceRunning());
}

}  // namespace tessarine
