#include "platform/FolderOf.h"

#include <gtest/gtest.h>

namespace tessarine
{

TEST(FolderOf, IsAllUpToTheLastSeparator)
{
    EXPECT_EQ(FolderOf(u"/a/b/c.pptx"), u"/a/b/");
    EXPECT_EQ(FolderOf(u"/c.pptx"), u"/");
    EXPECT_EQ(FolderOf(u"a//c.pptx"), u"a//");
    EXPECT_EQ(FolderOf(NativeStringView(NativePath(u"/a/b/c.pptx"))), NativePath(u"/a/b/"));
}

TEST(FolderOf, IsEmptyForANameAlone)
{
    EXPECT_EQ(FolderOf(u"c.pptx"), u"");
    EXPECT_EQ(FolderOf(u""), u"");
    EXPECT_EQ(FolderOf(NativeStringView(NativeName("c.pptx"))), NativeString());
}

TEST(FolderOf, IsAllOfAPathThatEndsInASeparator)
{
    EXPECT_EQ(FolderOf(u"/a/b/"), u"/a/b/");
    EXPECT_EQ(FolderOf(u"/"), u"/");
}

TEST(FileNameOf, IsWhatFollowsTheLastSeparator)
{
    EXPECT_EQ(FileNameOf(u"/a/b c.pptx"), u"b c.pptx");
    EXPECT_EQ(FileNameOf(u"c.pptx"), u"c.pptx");
    EXPECT_EQ(FileNameOf(u"/a/b/"), u"");
    EXPECT_EQ(FileNameOf(u""), u"");
}

TEST(WithoutTrailingSeparator, TakesOneSeparatorOffAndLeavesTheRoot)
{
    EXPECT_EQ(WithoutTrailingSeparator(u"/a/b/"), u"/a/b");
    EXPECT_EQ(WithoutTrailingSeparator(u"/a/b//"), u"/a/b/");
    EXPECT_EQ(WithoutTrailingSeparator(u"/a/b"), u"/a/b");
    EXPECT_EQ(WithoutTrailingSeparator(u"/"), u"/");
    EXPECT_EQ(WithoutTrailingSeparator(u""), u"");
}

}  // namespace tessarine
