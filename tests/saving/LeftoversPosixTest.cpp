#include "saving/Leftovers.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include <filesystem>
#include <optional>

#include "files/Files.h"
#include "platform/Failure.h"
#include "saving/ReplacementFile.h"
#include "support/OrdinaryUser.h"
#include "support/OtherProcess.h"
#include "support/TemporaryFolder.h"

namespace tessarine
{
namespace
{

using testing::ElementsAre;

class Leftovers : public testing::Test
{
protected:
    const TemporaryFolder folder_;
};

TEST_F(Leftovers, AreToldByTheirNames)
{
    EXPECT_TRUE(IsNewFileName(".tessarine-a0Z9zA"));
    EXPECT_FALSE(IsNewFileName(".tessarine-a0Z9z"));
    EXPECT_FALSE(IsNewFileName(".tessarine-a0Z9zAA"));
    EXPECT_FALSE(IsNewFileName(".tessarine-a0Z9z."));
    EXPECT_FALSE(IsNewFileName(".tessarine-a0Z9zA.copy"));
    EXPECT_FALSE(IsNewFileName("x.tessarine-a0Z9zA"));
    EXPECT_FALSE(IsNewFileName(".tessarine-backups"));
}

TEST_F(Leftovers, AreRemovedAndNothingElse)
{
    const String deck = folder_.Write(u"a.pptx");
    const String copy = folder_.Write(u".tessarine-AAAAAA.copy");
    folder_.Write(u".tessarine-AAAAAA");
    folder_.Write(u".tessarine-BBBBBB");
    folder_.MakeFolder(u".tessarine-CCCCCC");
    std::filesystem::create_symlink("a.pptx", ToUtf8(folder_.PathOf(u".tessarine-DDDDDD")));

    EXPECT_EQ(RemoveLeftovers(folder_.Path()), 2u);

    EXPECT_THAT(FilesOfFolder(folder_.Path()), ElementsAre(copy, folder_.PathOf(u".tessarine-DDDDDD"), deck));
    EXPECT_TRUE(FolderExists(folder_.PathOf(u".tessarine-CCCCCC")));
    EXPECT_EQ(ContentOf(deck), "content");
}

TEST_F(Leftovers, AreNotFilesThatAnotherRunIsWriting)
{
    const String path = folder_.Write(u"a.pptx", "old");
    {
        const OtherProcess other([&] {
            static std::optional<ReplacementFile> file;
            file.emplace(path);
            return true;
        });
        ASSERT_THAT(FilesOfFolder(folder_.Path()), testing::SizeIs(2));

        EXPECT_EQ(RemoveLeftovers(folder_.Path()), 0u);
        EXPECT_THAT(FilesOfFolder(folder_.Path()), testing::SizeIs(2));
    }

    // The other process ended without its destructors, as a killed one does.
    EXPECT_EQ(RemoveLeftovers(folder_.Path()), 1u);
    EXPECT_THAT(FilesOfFolder(folder_.Path()), ElementsAre(path));
}

TEST_F(Leftovers, OfAnotherUserStay)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only the superuser makes files of others";
    const String leftover = folder_.Write(u".tessarine-AAAAAA");
    SetMode(leftover, 0666);
    SetMode(folder_.Path(), 0777);
    {
        const OrdinaryUser user;
        if (!user.IsAnotherUser())
            GTEST_SKIP() << "there is no other user";
        EXPECT_EQ(RemoveLeftovers(folder_.Path()), 0u);
    }
    EXPECT_EQ(ContentOf(leftover), "content");
}

TEST_F(Leftovers, OfAFolderThatCannotBeReadAreNone)
{
    EXPECT_EQ(RemoveLeftovers(folder_.PathOf(u"none")), 0u);
    EXPECT_EQ(RemoveLeftovers(folder_.Write(u"file")), 0u);
    EXPECT_EQ(RemoveLeftovers(String(u"a\0b", 3)), 0u);
}

TEST_F(Leftovers, AreNotLeftByAProcessThatEndsItselfAtOnce)
{
    const String path = folder_.Write(u"a.pptx", "old");
    const OtherProcess other([&] {
        static std::optional<ReplacementFile> file;
        file.emplace(path);
        file->Write(std::as_bytes(std::span("new", 3)));
        RemoveNewFilesNow();
        return true;
    });

    EXPECT_THAT(FilesOfFolder(folder_.Path()), ElementsAre(path));
    EXPECT_EQ(ContentOf(path), "old");
}

TEST_F(Leftovers, RemovedAmidASaveLeaveTheOldFile)
{
    const String path = folder_.Write(u"a.pptx", "old");
    ReplacementFile file(path);
    file.Write(std::as_bytes(std::span("new", 3)));
    RemoveNewFilesNow();

    EXPECT_THROW(file.Commit(), Failure);

    EXPECT_EQ(ContentOf(path), "old");
    EXPECT_THAT(FilesOfFolder(folder_.Path()), ElementsAre(path));
}

TEST_F(Leftovers, AreOnlyRemovedWhileTheyAreInWork)
{
    const String path = folder_.Write(u"a.pptx", "old");
    {
        ReplacementFile file(path);
        file.Write(std::as_bytes(std::span("new", 3)));
        file.Commit();
    }

    RemoveNewFilesNow();

    EXPECT_EQ(ContentOf(path), "new");
}

}  // namespace
}  // namespace tessarine
