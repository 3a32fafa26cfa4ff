#include "run/JobInputs.h"

#include <gtest/gtest.h>

#include "support/TemporaryFolder.h"

namespace tessarine
{
namespace
{

TEST(HasExtension, LooksFromTheLastDotOnWithoutRegardToCase)
{
    EXPECT_TRUE(HasExtension(u"pairs.Csv", PairListExtensions));
    EXPECT_TRUE(HasExtension(u"/a.b/old.txt.XLS", PairListExtensions));
    EXPECT_FALSE(HasExtension(u"pairs.csv.txt", PairListExtensions));
    EXPECT_FALSE(HasExtension(u"pairscsv", PairListExtensions));
    EXPECT_FALSE(HasExtension(u"pairs.", PairListExtensions));
    EXPECT_FALSE(HasExtension(u"", FileListExtensions));
}

TEST(HasExtension, TakesNoPartOfTheListForAnExtension)
{
    EXPECT_FALSE(HasExtension(u"pairs.c", PairListExtensions));
    EXPECT_FALSE(HasExtension(u"pairs.csv;", PairListExtensions));
    EXPECT_FALSE(HasExtension(u"pairs.;", u".a;.;;.b"));
}

TEST(ValidateFile, TellsWhatIsWrongFirst)
{
    const TemporaryFolder folder;
    folder.Write(u"list.TXT");
    folder.Write(u"list.doc");
    folder.MakeFolder(u"folder.txt");

    EXPECT_EQ(ValidateFile(u"", FileListExtensions), InputTest::Empty);
    EXPECT_EQ(ValidateFile(folder.PathOf(u"gone.doc"), FileListExtensions), InputTest::FileNotFound);
    EXPECT_EQ(ValidateFile(folder.PathOf(u"folder.txt"), FileListExtensions), InputTest::FileNotFound);
    EXPECT_EQ(ValidateFile(folder.PathOf(u"list.doc"), FileListExtensions), InputTest::OtherExtension);
    EXPECT_EQ(ValidateFile(folder.PathOf(u"list.TXT"), FileListExtensions), InputTest::Valid);
}

TEST(ValidateFile, FindsNoFileAtAPathWithoutADot)
{
    const TemporaryFolder folder;
    const String path = folder.Write(u"list");
    ASSERT_EQ(path.find(u'.'), String::npos) << "the folder's own path has a dot";

    EXPECT_EQ(ValidateFile(path, FileListExtensions), InputTest::FileNotFound);
}

TEST(ValidateFolder, TellsAFolderFromEverythingElse)
{
    const TemporaryFolder folder;

    EXPECT_EQ(ValidateFolder(u""), InputTest::Empty);
    EXPECT_EQ(ValidateFolder(folder.PathOf(u"gone")), InputTest::FolderNotFound);
    EXPECT_EQ(ValidateFolder(folder.Write(u"file")), InputTest::FolderNotFound);
    EXPECT_EQ(ValidateFolder(folder.Path()), InputTest::Valid);
}

}  // namespace
}  // namespace tessarine
