#include "batch/FilePattern.h"

#include <gtest/gtest.h>

namespace tessarine::batch
{
namespace
{

TEST(FilePattern, TakesPresentationsOfEveryKindByDefault)
{
    const FilePattern pattern(u"*.ppt*");

    EXPECT_TRUE(pattern.Matches(u"a.ppt"));
    EXPECT_TRUE(pattern.Matches(u"A.PPTX"));
    EXPECT_TRUE(pattern.Matches(u"a.b.pptm"));
    EXPECT_FALSE(pattern.Matches(u"a.pdf"));
    EXPECT_FALSE(pattern.Matches(u"ppt"));
}

TEST(FilePattern, LeavesBackupsAlone)
{
    EXPECT_FALSE(FilePattern(u"*.ppt*").Matches(u"a.ppt.bak"));
    EXPECT_FALSE(FilePattern(u"*.ppt*").Matches(u"a..bak"));
}

TEST(FilePattern, AnExtensionWithoutAStarIsTheWholeExtension)
{
    EXPECT_TRUE(FilePattern(u"*.ppt").Matches(u"a.ppt"));
    EXPECT_FALSE(FilePattern(u"*.ppt").Matches(u"a.pptx"));
}

TEST(FilePattern, LooksAtTheNameInFrontOfTheExtensionToo)
{
    const FilePattern pattern(u"Q[1-4]*.pptx");

    EXPECT_TRUE(pattern.Matches(u"q3 review.pptx"));
    EXPECT_FALSE(pattern.Matches(u"q5 review.pptx"));
    EXPECT_FALSE(pattern.Matches(u"a q3.pptx"));
}

TEST(FilePattern, WithoutADotIsMatchedAgainstTheWholeName)
{
    EXPECT_TRUE(FilePattern(u"deck*").Matches(u"deck1.pptx"));
    EXPECT_TRUE(FilePattern(u"deck*").Matches(u"deck"));
    EXPECT_FALSE(FilePattern(u"deck").Matches(u"deck.pptx"));
}

}  // namespace
}  // namespace tessarine::batch
