#include "app/GlobalState.h"

#include <gtest/gtest.h>

namespace tessarine
{

TEST(GlobalState, IsEmptyUntilTheProgramsEntrySettlesIt)
{
    EXPECT_EQ(CurrentProject, nullptr);
    EXPECT_EQ(CurrentLanguageFile, u"");
    EXPECT_FALSE(IsSearchRun);
}

}  // namespace tessarine
