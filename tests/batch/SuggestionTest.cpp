#include "batch/Suggestion.h"

#include <array>

#include <gtest/gtest.h>

namespace tessarine::batch
{
namespace
{

constexpr std::array<std::string_view, 5> names{"--find", "--files-from", "--format", "--follow", "--in"};

TEST(Suggestion, NamesTheNearestOne)
{
    EXPECT_EQ(DidYouMean("--fnid", names), "; did you mean \"--find\"?");
    EXPECT_EQ(DidYouMean("--formt", names), "; did you mean \"--format\"?");
    EXPECT_EQ(DidYouMean("--folow", names), "; did you mean \"--follow\"?");
}

TEST(Suggestion, TakesTheStartOfANameForIt)
{
    EXPECT_EQ(DidYouMean("--files", names), "; did you mean \"--files-from\"?");
}

TEST(Suggestion, SaysNothingWhenNoNameIsNear)
{
    EXPECT_EQ(DidYouMean("--tables", names), "");
    EXPECT_EQ(DidYouMean("--xy", names), "");
    EXPECT_EQ(DidYouMean("--", names), "");
    EXPECT_EQ(DidYouMean("", names), "");
    EXPECT_EQ(DidYouMean(std::string(100000, 'f'), names), "");
}

}  // namespace
}  // namespace tessarine::batch
