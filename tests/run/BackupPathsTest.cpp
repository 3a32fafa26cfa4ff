#include "run/BackupPaths.h"

#include <gtest/gtest.h>

#include "support/TemporaryFolder.h"

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

TEST(BackupTarget, IsCountedWhereAFileStandsInItsWay)
{
    const TemporaryFolder folder;
    folder.Write(u"a.bak");
    folder.Write(u"b..bak");
    folder.MakeFolder(u"c.bak");
    std::vector<String> paths;
    // The first two have one backup.
    for (const char16_t* name : {u"a.ppt", u"a.pot", u"b.pptx", u"c.ppt", u"d.pptx"})
        paths.push_back(folder.PathOf(name));

    EXPECT_EQ(CountOfBackupsInTheWay(paths), 2);
    EXPECT_EQ(CountOfBackupsInTheWay({}), 0);
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
