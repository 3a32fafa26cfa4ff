#include "platform/PathKey.h"

#include <gtest/gtest.h>

namespace tessarine
{

TEST(PathKey, IsThePathItself)
{
    EXPECT_EQ(PathKey(u"/Decks/a\\B.pptx"), u"/Decks/a\\B.pptx");
}

}  // namespace tessarine
