#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "files/Files.h"
#include "FileSizeLimit.h"
#include "FlushRecorder.h"
#include "log/Treatments.h"
#include "saving/CopyFile.h"
#include "support/OrdinaryUser.h"
#include "support/TemporaryFolder.h"

namespace tessarine
{

using testing::ElementsAre;

class CopyingAFile : public testing::Test
{
protected:
    const TemporaryFolder folder_;
};

using CopyingAFileBack = CopyingAFile;

TEST_F(CopyingAFile, GivesContentAndModeToANewFile)
{
    const std::string content = std::string(100000, 'x') + std::string("\0\r\n", 3);
    const String source = folder_.Write(u"a.ppt", content);
    SetMode(source, 0640);

    CopyFile(source, folder_.PathOf(u"a.bak"));

    EXPECT_EQ(ContentOf(folder_.PathOf(u"a.bak")), content);
    EXPECT_EQ(ModeOf(folder_.PathOf(u"a.bak")), 0640u);
}

TEST_F(CopyingAFile, OverwritesAnOlderTarget)
{
    const String source = folder_.Write(u"a.ppt", "new");
    const String target = folder_.Write(u"a.bak", "an older and longer content");

    CopyFile(source, target);

    EXPECT_EQ(ContentOf(target), "new");
    EXPECT_THAT(FilesOfFolder(folder_.Path()), ElementsAre(target, source));
}

TEST_F(CopyingAFile, TellsWhatItCopiedBeforeTheTargetChanges)
{
    const String source = folder_.Write(u"a.ppt", std::string(100000, 'x') + "123456789");
    const String target = folder_.Write(u"a.bak", "old");
    CopiedContent copied;
    std::string targetThen;

    const auto complete = [&](const CopiedContent& content) {
        copied = content;
        targetThen = ContentOf(target);
    };
    CopyFile(source, target, {complete});

    EXPECT_EQ(copied.size, 100009u);
    EXPECT_EQ(copied.checksum, 0x760299E2u);
    EXPECT_EQ(targetThen, "old");
}

TEST_F(CopyingAFile, LeavesTheOldTargetWhenItsReceiverFails)
{
    const String source = folder_.Write(u"a.ppt", "new");
    const String target = folder_.Write(u"a.bak", "old");

    EXPECT_EQ(Skip([&] { CopyFile(source, target, {[](const CopiedContent&) { throw Failure(5, u"no"); }}); }), 5);

    EXPECT_EQ(ContentOf(target), "old");
    EXPECT_THAT(FilesOfFolder(folder_.Path()), ElementsAre(target, source));
}

TEST_F(CopyingAFile, OverwritesAReadOnlyTargetToo)
{
    const String source = folder_.Write(u"a.ppt", "new");
    const String target = folder_.Write(u"a.bak", "old");
    SetMode(target, 0444);

    CopyFile(source, target);

    EXPECT_EQ(ContentOf(target), "new");
}

TEST_F(CopyingAFileBack, KeepsALinkAndReplacesItsTarget)
{
    const String source = folder_.Write(u"a.bak", "new");
    const String target = folder_.Write(u"real/a.ppt", "old");
    std::filesystem::create_symlink("real/a.ppt", ToUtf8(folder_.PathOf(u"a.ppt")));

    CopyFileBack(source, folder_.PathOf(u"a.ppt"));

    EXPECT_EQ(ContentOf(target), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(ToUtf8(folder_.PathOf(u"a.ppt"))));
}

TEST_F(CopyingAFileBack, KeepsTheOwnerOfTheDocument)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only the superuser gives files away";
    const String source = folder_.Write(u"a.ppt", "new");
    const String target = folder_.Write(u"a.bak", "old");
    ASSERT_EQ(chown(ToUtf8(target).c_str(), 12345, 23456), 0);

    CopyFileBack(source, target);

    struct stat status = {};
    ASSERT_EQ(stat(ToUtf8(target).c_str(), &status), 0);
    EXPECT_EQ(ContentOf(target), "new");
    EXPECT_EQ(status.st_uid, 12345u);
    EXPECT_EQ(status.st_gid, 23456u);
}

TEST_F(CopyingAFile, FlushesTheCopyAndThenItsFolder)
{
    const String source = folder_.Write(u"a.ppt");
    const FlushRecorder recorder;

    CopyFile(source, folder_.PathOf(u"a.bak"));

    EXPECT_THAT(recorder.Flushed(), ElementsAre("file", "folder"));
}

TEST_F(CopyingAFile, OverALoopOfLinksKeepsTheLinks)
{
    const String source = folder_.Write(u"a.ppt");
    const std::string link = ToUtf8(folder_.PathOf(u"a.bak"));
    std::filesystem::create_symlink("a.bak", link);

    EXPECT_EQ(Skip([&] { CopyFile(source, folder_.PathOf(u"a.bak")); }), FailureNumber::PathNotFound);

    EXPECT_TRUE(std::filesystem::is_symlink(link));
}

TEST_F(CopyingAFile, TakesPathsWithoutAFolder)
{
    const String source = folder_.Write(u"a.ppt", "content");
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(ToUtf8(folder_.Path()));

    CopyFile(u"a.ppt", u"a.bak");

    std::filesystem::current_path(before);
    EXPECT_EQ(ContentOf(folder_.PathOf(u"a.bak")), "content");
}

TEST_F(CopyingAFile, OverItselfLeavesItAsItWas)
{
    const String path = folder_.Write(u"a.bak", "content");

    CopyFile(path, path);

    EXPECT_EQ(ContentOf(path), "content");
}

TEST_F(CopyingAFile, ThatIsMissingRaisesAndKeepsTheTarget)
{
    const String target = folder_.Write(u"a.bak", "old");

    EXPECT_EQ(Skip([&] { CopyFile(folder_.PathOf(u"missing.ppt"), target); }), 53);
    EXPECT_EQ(ContentOf(target), "old");
}

TEST_F(CopyingAFile, IntoAMissingFolderRaises)
{
    const String source = folder_.Write(u"a.ppt");

    EXPECT_EQ(Skip([&] { CopyFile(source, folder_.PathOf(u"missing/a.bak")); }), 76);
}

TEST_F(CopyingAFile, OverAFolderRaises)
{
    const String source = folder_.Write(u"a.ppt");
    const String target = folder_.MakeFolder(u"a.bak");

    EXPECT_EQ(Skip([&] { CopyFile(source, target); }), 70);
    EXPECT_THAT(FilesOfFolder(folder_.Path()), ElementsAre(source));
}

TEST_F(CopyingAFile, IntoAReadOnlyFolderKeepsTheTarget)
{
    const String source = folder_.Write(u"sub/a.ppt", "new");
    const String target = folder_.Write(u"sub/a.bak", "old");
    SetMode(folder_.Path(), 0755);
    SetMode(folder_.PathOf(u"sub"), 0555);

    {
        const OrdinaryUser user;
        EXPECT_EQ(Skip([&] { CopyFile(source, target); }), 70);
    }

    EXPECT_EQ(ContentOf(target), "old");
}

TEST_F(CopyingAFile, OnAFullDiskKeepsTheTarget)
{
    const String source = folder_.Write(u"a.ppt", std::string(100000, 'x'));
    const String target = folder_.Write(u"a.bak", "old");

    std::int32_t number = 0;
    {
        const FileSizeLimit limit(50000);
        number = Skip([&] { CopyFile(source, target); });
    }

    EXPECT_EQ(number, 61);
    EXPECT_EQ(ContentOf(target), "old");
    EXPECT_THAT(FilesOfFolder(folder_.Path()), ElementsAre(target, source));
}

TEST_F(CopyingAFile, WorksUnderOddNames)
{
    const String source = folder_.Write(u"שלום 😀.ppt", "content");
    const String target = folder_.PathOf(FromUtf8("caf\xE9.bak"));

    CopyFile(source, target);

    EXPECT_EQ(ContentOf(target), "content");
}

TEST_F(CopyingAFile, IsRehearsedWithoutMakingAFile)
{
    RehearseCopy(folder_.PathOf(u"a.bak"));

    EXPECT_THAT(FilesOfFolder(folder_.Path()), testing::IsEmpty());
}

TEST_F(CopyingAFile, RehearsedInAClosedFolderFailsAsTheCopyItself)
{
    const auto failureOf = [](const auto& body) {
        try {
            body();
        } catch (const Failure& failure) {
            return std::pair(failure.number, failure.description);
        }
        return std::pair(0, String());
    };
    const String source = folder_.Write(u"sub/a.ppt", "content");
    const String target = folder_.PathOf(u"sub/a.bak");
    SetMode(source, 0644);
    SetMode(folder_.Path(), 0755);
    SetMode(folder_.PathOf(u"sub"), 0555);
    std::pair<int, String> copied;
    std::pair<int, String> rehearsed;
    {
        const OrdinaryUser user;
        user.TakeOver(source);
        rehearsed = failureOf([&] { RehearseCopy(target); });
        copied = failureOf([&] { CopyFile(source, target); });
    }
    SetMode(folder_.PathOf(u"sub"), 0755);

    EXPECT_EQ(rehearsed.first, FailureNumber::PermissionDenied);
    EXPECT_EQ(rehearsed, copied);
}

}  // namespace tessarine
