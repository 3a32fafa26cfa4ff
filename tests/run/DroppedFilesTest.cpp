#include <gtest/gtest.h>

#include "files/Files.h"
#include "run/DroppedFiles.h"
#include "support/TemporaryFolder.h"

namespace tessarine
{
namespace
{

class DroppedFilesTest : public testing::Test
{
protected:
    String Write(StringView name) const { return folder.Write(name); }

    const TemporaryFolder folder;
};

TEST_F(DroppedFilesTest, AreToldByTheirNames)
{
    EXPECT_EQ(KindOfDrop({folder.MakeFolder(u"decks.tsq")}), DropKind::Folder);
    EXPECT_EQ(KindOfDrop({Write(u"a.PPTX")}), DropKind::Presentations);
    EXPECT_EQ(KindOfDrop({Write(u"a.ppt"), Write(u"b.pptm")}), DropKind::Presentations);
    EXPECT_EQ(KindOfDrop({Write(u"job.Tsq")}), DropKind::Project);
    EXPECT_EQ(KindOfDrop({Write(u"files.TXT")}), DropKind::FileList);
    for (const StringView name : {u"list.xls", u"list.CSV", u"list.tab"})
        EXPECT_EQ(KindOfDrop({Write(name)}), DropKind::PairList) << ToUtf8(name);
}

TEST_F(DroppedFilesTest, OfOtherKindsAndMixturesAreUnknown)
{
    const String deck = Write(u"a.pptx");

    EXPECT_EQ(KindOfDrop({}), DropKind::Unknown);
    for (const StringView name : {u"list.xlsx", u"show.ppsx", u"~$a.pptx", u"nodot"})
        EXPECT_EQ(KindOfDrop({Write(name)}), DropKind::Unknown) << ToUtf8(name);
    EXPECT_EQ(KindOfDrop({folder.PathOf(u"missing.pptx")}), DropKind::Unknown);
    EXPECT_EQ(KindOfDrop({deck, folder.MakeFolder(u"decks")}), DropKind::Unknown);
    EXPECT_EQ(KindOfDrop({deck, Write(u"job.tsq")}), DropKind::Unknown);
    EXPECT_EQ(KindOfDrop({Write(u"a.tsq"), Write(u"b.tsq")}), DropKind::Unknown);
}

TEST_F(DroppedFilesTest, BecomeAListOfTheirOwnUnlessOneListsTheSame)
{
    const String lists = folder.PathOf(u"data/lists");

    const String first = FileListOf({u"/decks/a.pptx", u"/decks/ä.pptx"}, lists);
    const String second = FileListOf({u"/decks/a.pptx"}, lists);

    EXPECT_EQ(ContentOf(first), "\xEF\xBB\xBF/decks/a.pptx\r\n/decks/ä.pptx\r\n");
    EXPECT_EQ(ContentOf(second), "\xEF\xBB\xBF/decks/a.pptx\r\n");
    EXPECT_EQ(FileListOf({u"/decks/a.pptx", u"/decks/ä.pptx"}, lists), first);
    EXPECT_EQ(FilesOfFolder(lists).size(), 2U);
}

}  // namespace
}  // namespace tessarine
