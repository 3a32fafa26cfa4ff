#include "files/Files.h"

#ifndef _WIN32
#include <sys/stat.h>
#endif

#include <gmock/gmock.h>

#include <filesystem>

#include "files/VisitedFolders.h"
#include "log/Treatments.h"
#include "support/FailingFolders.h"
#include "support/OrdinaryUser.h"
#include "support/TemporaryFolder.h"

namespace tessarine
{

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class Files : public testing::Test
{
protected:
    const TemporaryFolder folder_;
};

TEST_F(Files, ExistAlsoWhenHidden)
{
    EXPECT_TRUE(FileExists(folder_.Write(u".hidden.ppt")));
}

TEST_F(Files, DoNotExistUnderPathsOfNoFile)
{
    EXPECT_FALSE(FileExists(u""));
    EXPECT_FALSE(FileExists(folder_.PathOf(u"missing.ppt")));
    EXPECT_FALSE(FileExists(folder_.Path()));
    EXPECT_FALSE(FileExists(folder_.Write(u"a.ppt") + u"/b.ppt"));
}

TEST_F(Files, WithOddNamesExistAndAreListedUnderTheSameName)
{
    std::vector<String> names{u"a b.ppt", u"schön.ppt", u"שלום.ppt", u"😀.ppt"};
#ifndef _WIN32  // where names are no bytes, and hold no control characters
    names.push_back(FromUtf8("caf\xE9.ppt"));
    names.push_back(u"line\nend.ppt");
#endif
    std::vector<String> paths;
    for (const String& name : names)
        paths.push_back(folder_.Write(name));

    EXPECT_THAT(FilesOfFolder(folder_.Path()), testing::UnorderedElementsAreArray(paths));
    for (const String& path : paths)
        EXPECT_TRUE(FileExists(path)) << ToUtf8(path);
}

TEST_F(Files, OfAFolderComeInTheOrderOfTheirNames)
{
    const String b = folder_.Write(u"b.ppt");
    const String a = folder_.Write(u"a.ppt");
    const String hidden = folder_.Write(u".c.ppt");
    folder_.Write(u"sub/d.ppt");

    EXPECT_THAT(FilesOfFolder(folder_.Path()), ElementsAre(hidden, a, b));
    EXPECT_THAT(FilesOfFolder(folder_.Path() + u"/"), ElementsAre(hidden, a, b));
}

TEST_F(Files, HaveFullPathsFromTheRootOn)
{
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(ToUtf8(folder_.Path()));

    EXPECT_EQ(FullPathOf(u"a.ppt"), folder_.PathOf(u"a.ppt"));
    EXPECT_EQ(FullPathOf(u".//./sub/a.ppt"), folder_.PathOf(u"sub/a.ppt"));
    EXPECT_EQ(FullPathOf(u".hidden"), folder_.PathOf(u".hidden"));
    EXPECT_EQ(FullPathOf(u"."), folder_.Path());
    EXPECT_EQ(FullPathOf(u"./"), folder_.Path());
    EXPECT_EQ(FullPathOf(u""), u"");
#ifdef _WIN32
    EXPECT_EQ(FullPathOf(u"sub/../a.ppt"), folder_.PathOf(u"a.ppt"));
    EXPECT_EQ(FullPathOf(u"C:/a/./b"), u"C:\\a\\b");
#else
    EXPECT_EQ(FullPathOf(u"../a.ppt"), folder_.PathOf(u"../a.ppt"));
    EXPECT_EQ(FullPathOf(u"/a/./b"), u"/a/./b");
#endif

    std::filesystem::current_path(before);
}

TEST_F(Files, AreReadWholeWhateverTheyHold)
{
    std::string content = "line\r\nline\n\0\xFF" + std::string(200000, 'x');

    EXPECT_EQ(ReadWholeFile(folder_.Write(u"a.txt", content)), content);
    EXPECT_EQ(ReadWholeFile(folder_.Write(u"empty.txt", "")), "");
}

TEST_F(Files, AreDeleted)
{
    const String path = folder_.Write(u"a.bak");

    DeleteFile(path);

    EXPECT_FALSE(FileExists(path));
    EXPECT_EQ(Skip([&] { DeleteFile(path); }), 53);
}

TEST_F(Files, GetFoldersWithAllTheirParents)
{
    EXPECT_TRUE(EnsureFolderExists(folder_.PathOf(u"x/y z/😀")));
    EXPECT_TRUE(FolderExists(folder_.PathOf(u"x/y z/😀")));
    EXPECT_TRUE(EnsureFolderExists(folder_.PathOf(u"x/y z/😀/")));
}

TEST_F(Files, KeepFoldersOfTheirNameFromBeingMade)
{
    const String file = folder_.Write(u"file");

    EXPECT_FALSE(EnsureFolderExists(file));
    EXPECT_FALSE(EnsureFolderExists(file + u"/below"));
    EXPECT_FALSE(EnsureFolderExists(u""));
}

// Links, pipes, modes and other users are different things on Windows.
#ifndef _WIN32

TEST_F(Files, DoNotIncludePipes)
{
    ASSERT_EQ(mkfifo(ToUtf8(folder_.PathOf(u"pipe.ppt")).c_str(), 0600), 0);

    EXPECT_FALSE(FileExists(folder_.PathOf(u"pipe.ppt")));
    EXPECT_THAT(FilesOfFolder(folder_.Path()), IsEmpty());
}

TEST_F(Files, AreListedThroughLinksAndLinkedFoldersApart)
{
    folder_.Write(u"sub/a.ppt");
    std::filesystem::create_symlink(ToUtf8(folder_.PathOf(u"sub/a.ppt")), ToUtf8(folder_.PathOf(u"link.ppt")));
    std::filesystem::create_symlink("missing", ToUtf8(folder_.PathOf(u"broken.ppt")));
    std::filesystem::create_directory_symlink("..", ToUtf8(folder_.PathOf(u"loop")));

    EXPECT_THAT(FilesOfFolder(folder_.Path()), ElementsAre(folder_.PathOf(u"link.ppt")));
    EXPECT_THAT(ContentOfFolder(folder_.Path()).folders, ElementsAre(folder_.PathOf(u"sub")));
    EXPECT_THAT(ContentOfFolder(folder_.Path()).linkedFolders, ElementsAre(folder_.PathOf(u"loop")));
}

TEST_F(Files, CannotBeListedInAFolderThatIsMissingOrClosed)
{
    const String closed = folder_.MakeFolder(u"closed");
    SetMode(folder_.Path(), 0755);
    SetMode(closed, 0000);
    const OrdinaryUser user;

    EXPECT_EQ(Skip([&] { FilesOfFolder(folder_.PathOf(u"missing")); }), 76);
    EXPECT_EQ(Skip([&] { FilesOfFolder(closed); }), 76);
}

TEST_F(Files, ArePartOfNoFolderThatCannotBeReadToItsEnd)
{
    folder_.Write(u"a.ppt");
    folder_.Write(u"b.ppt");
    const FailingFolders failing(1);

    try {
        FilesOfFolder(folder_.Path());
        FAIL() << "part of a folder was taken for the whole";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.number, 76);
        EXPECT_EQ(failure.description,
                  u"Path not found: could not read the folder " + folder_.Path() + u" to its end (Input/output error)");
    }
}

TEST_F(Files, AreNotReadFromPipesAndDevices)
{
    const String pipe = folder_.PathOf(u"pipe.txt");
    ASSERT_EQ(mkfifo(ToUtf8(pipe).c_str(), 0600), 0);

    EXPECT_EQ(Skip([&] { ReadWholeFile(pipe); }), 70);
    EXPECT_EQ(Skip([] { ReadWholeFile(u"/dev/zero"); }), 70);
}

TEST_F(Files, OfAFolderAreVisitedOnceWhateverTheirPaths)
{
    const String sub = folder_.MakeFolder(u"sub");
    std::filesystem::create_directory_symlink(ToUtf8(sub), ToUtf8(folder_.PathOf(u"link")));
    VisitedFolders visited;

    EXPECT_TRUE(visited.Enter(sub));
    EXPECT_FALSE(visited.Enter(folder_.PathOf(u"link")));
    EXPECT_FALSE(visited.Enter(folder_.PathOf(u"sub/../sub")));
    EXPECT_TRUE(visited.Enter(folder_.Path()));
    EXPECT_TRUE(visited.Enter(folder_.PathOf(u"missing")));
}

TEST_F(Files, ThatCannotBeReadTellWhyAndWhich)
{
    const String closed = folder_.Write(u"closed.txt");
    SetMode(folder_.Path(), 0755);
    SetMode(closed, 0000);
    const OrdinaryUser user;

    EXPECT_EQ(Skip([&] { ReadWholeFile(folder_.PathOf(u"missing.txt")); }), 53);
    EXPECT_EQ(Skip([&] { ReadWholeFile(folder_.PathOf(u"no/folder.txt")); }), 76);
    EXPECT_EQ(Skip([&] { ReadWholeFile(folder_.Path()); }), 70);
    try {
        ReadWholeFile(closed);
        FAIL() << "a closed file was read";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.number, 70);
        EXPECT_EQ(failure.description, u"Permission denied: could not open " + closed);
    }
}

TEST_F(Files, InAReadOnlyFolderAreNotDeleted)
{
    const String path = folder_.Write(u"sub/a.bak");
    SetMode(folder_.Path(), 0755);
    SetMode(folder_.PathOf(u"sub"), 0555);
    const OrdinaryUser user;

    EXPECT_EQ(Skip([&] { DeleteFile(path); }), 70);
    EXPECT_TRUE(FileExists(path));
}

#endif

}  // namespace tessarine
