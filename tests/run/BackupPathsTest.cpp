#include "run/BackupPaths.h"

#include <gtest/gtest.h>

namespace tessarine
{

TEST(BackupTarget, TakesThePlaceOfTheLastFourCharacters)
{
    EXPECT_EQ(BackupTargetOf(u"/x/a.ppt"), u"/x/a.bak");
    EXPECT_EQ(BackupTargetOf(u"/x/a.pptx"), u"/x/a..bak");
    EXPECT_EQ(BackupTargetOf(u"/x/a.PPT"), u"/x/a.bak");
    EXPECT_EQ(BackupTargetOf(u"/x/שלום 😀.ppt"), u"/x/שלום 😀.bak");
    EXPECT_EQ(BackupTargetOf(u"/x/a.bak"), u"/x/a.bak");
}

TEST(BackupTarget, TakesThePlaceOfEveryOccurrenceAlsoInFolders)
{
    EXPECT_EQ(BackupTargetOf(u"/a.ppt/a.ppt"), u"/a.bak/a.bak");
    EXPECT_EQ(BackupTargetOf(u"/pptx/my pptx/a.pptx"), u"/.bak/my .bak/a..bak");
    EXPECT_EQ(BackupTargetOf(u"/a.PPT/a.ppt"), u"/a.PPT/a.bak");
}

TEST(BackupTarget, DoesNotLookIntoWhatItHasPutIn)
{
    EXPECT_EQ(BackupTargetOf(u"kakakak.bakakak"), u"k.bakak.b.bakak");
    EXPECT_EQ(BackupTargetOf(u"aaaaaa"), u".bakaa");
}

TEST(BackupTarget, OfAShortPathIsTheExtensionAlone)
{
    EXPECT_EQ(BackupTargetOf(u"ppt"), u".bak");
    EXPECT_EQ(BackupTargetOf(u""), u"");
}

TEST(BackupPath, FollowsTheLastDot)
{
    EXPECT_EQ(BackupPathOf(u"/x/a.ppt"), u"/x/a.bak");
    EXPECT_EQ(BackupPathOf(u"/x/a.pptx"), u"/x/a.bak");
    EXPECT_EQ(BackupPathOf(u"/x/a.b.ppt"), u"/x/a.b.bak");
    EXPECT_EQ(BackupPathOf(u"/x.y/noextension"), u"/x.bak");
}

TEST(BackupPath, DiffersFromTheTargetForExtensionsOfFourLetters)
{
    EXPECT_EQ(BackupPathOf(u"/x/a.ppt"), BackupTargetOf(u"/x/a.ppt"));
    EXPECT_NE(BackupPathOf(u"/x/a.pptx"), BackupTargetOf(u"/x/a.pptx"));
}

}  // namespace tessarine
