#include "platform/CommonEnds.h"

#include <gtest/gtest.h>

namespace tessarine
{
namespace
{

void ExpectEnds(StringView before, StringView after, std::size_t front, std::size_t back)
{
    const CommonEnds ends = CommonEndsOf(before, after);
    EXPECT_EQ(ends.front, front);
    EXPECT_EQ(ends.back, back);
}

TEST(CommonEnds, CountsBothEnds)
{
    ExpectEnds(u"red cat here", u"red dog here", 4, 5);
}

TEST(CommonEnds, OfEqualTextsAreAllFront)
{
    ExpectEnds(u"cat", u"cat", 3, 0);
}

TEST(CommonEnds, NeverOverlap)
{
    ExpectEnds(u"aa", u"aaa", 2, 0);
    ExpectEnds(u"abab", u"ab", 2, 0);
}

TEST(CommonEnds, OfEmptyTextsAreEmpty)
{
    ExpectEnds(u"", u"", 0, 0);
    ExpectEnds(u"", u"a", 0, 0);
}

TEST(CommonEnds, KeepPairsWithTheSameHighSurrogateWhole)
{
    ExpectEnds(u"a\U0001F600b", u"a\U0001F601b", 1, 1);
}

TEST(CommonEnds, KeepPairsWithTheSameLowSurrogateWhole)
{
    ExpectEnds(u"a\U0001F600b", u"a\U00020200b", 1, 1);
}

TEST(CommonEnds, KeepAPairWholeBesideHalfOfIt)
{
    ExpectEnds(u"\U0001F600", StringView(u"\U0001F600").substr(0, 1), 0, 0);
    ExpectEnds(u"\U0001F600", StringView(u"\U0001F600").substr(1), 0, 0);
}

}  // namespace
}  // namespace tessarine
