#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "files/Files.h"
#include "log/Treatments.h"
#include "support/OrdinaryUser.h"
#include "support/TemporaryFolder.h"

namespace tessarine
{

class Attributes : public testing::Test
{
protected:
    const TemporaryFolder folder_;
};

TEST_F(Attributes, ShowReadOnlyByTheOwnersWriteBit)
{
    const String path = folder_.Write(u"a.ppt");

    for (const mode_t readOnly : {0444u, 0400u, 0466u, 0577u, 0000u}) {
        SetMode(path, readOnly);
        EXPECT_EQ(GetAttributes(path).bits, FileAttribute::ReadOnly) << readOnly;
    }
    for (const mode_t writable : {0644u, 0200u, 0755u}) {
        SetMode(path, writable);
        EXPECT_EQ(GetAttributes(path).bits, FileAttribute::Normal) << writable;
    }
}

TEST_F(Attributes, ClearedAddTheOwnersWriteBitAlone)
{
    const String path = folder_.Write(u"a.ppt");
    SetMode(path, 0454);

    ClearAttributes(path, GetAttributes(path));

    EXPECT_EQ(ModeOf(path), 0654u);
    EXPECT_EQ(GetAttributes(path).bits, FileAttribute::Normal);
}

TEST_F(Attributes, ComeBackToTheLastBit)
{
    const String path = folder_.Write(u"a.ppt");
    SetMode(path, 04541);
    const FileAttributes saved = GetAttributes(path);
    ClearAttributes(path, GetAttributes(path));

    SetAttributes(path, saved);

    EXPECT_EQ(ModeOf(path), 04541u);
}

/// Attributes of a file go to no other one that `link` has put there meanwhile.
void ExpectNeverSetThrough(const TemporaryFolder& folder,
                           void (*link)(const std::string& victim, const std::string& path))
{
    const String path = folder.Write(u"a.ppt");
    const String victim = folder.Write(u"victim");
    SetMode(path, 0644);
    const FileAttributes saved = GetAttributes(path);
    SetMode(victim, 0400);
    DeleteFile(path);
    link(ToUtf8(victim), ToUtf8(path));

    EXPECT_EQ(Skip([&] { SetAttributes(path, saved); }), 70);
    EXPECT_EQ(Skip([&] { ClearAttributes(path, saved); }), 70);

    EXPECT_EQ(ModeOf(victim), 0400u);
}

TEST_F(Attributes, AreNeverSetThroughALinkPutThereMeanwhile)
{
    ExpectNeverSetThrough(folder_, [](const std::string& victim, const std::string& path) {
        std::filesystem::create_symlink(victim, path);
    });
}

TEST_F(Attributes, AreNeverSetOnAHardLinkPutThereMeanwhile)
{
    ExpectNeverSetThrough(folder_, [](const std::string& victim, const std::string& path) {
        std::filesystem::create_hard_link(victim, path);
    });
}

TEST_F(Attributes, OfAnotherUsersFileAreNotClearedThroughALink)
{
    const String target = folder_.Write(u"a.ppt");
    const String path = folder_.PathOf(u"link.ppt");
    std::filesystem::create_symlink(ToUtf8(target), ToUtf8(path));
    SetMode(target, 0444);
    if (chown(ToUtf8(target).c_str(), 65534, 65534) != 0)
        GTEST_SKIP() << "only the superuser can make another user's file";

    EXPECT_EQ(Skip([&] { ClearAttributes(path, GetAttributes(path)); }), 70);

    EXPECT_EQ(ModeOf(target), 0444u);
}

TEST_F(Attributes, ComeBackOnTheNewContentOfASave)
{
    const String path = folder_.Write(u"a.ppt");
    SetMode(path, 0444);
    const FileAttributes saved = GetAttributes(path);
    const String content = folder_.Write(u"new");
    SetMode(content, 0644);
    std::filesystem::rename(ToUtf8(content), ToUtf8(path));

    SetAttributes(path, saved);

    EXPECT_EQ(ModeOf(path), 0444u);
}

TEST_F(Attributes, OfAMissingFileRaise)
{
    const String path = folder_.PathOf(u"missing.ppt");

    EXPECT_EQ(Skip([&] { GetAttributes(path); }), 53);
    EXPECT_EQ(Skip([&] { SetAttributes(path, {}); }), 53);
    EXPECT_EQ(Skip([&] { ClearAttributes(path, {}); }), 53);
    EXPECT_EQ(Skip([&] { GetAttributes(u""); }), 53);
}

TEST_F(Attributes, OfAnothersFileCanOnlyBePutBackUnchanged)
{
    const String path = folder_.Write(u"a.ppt");
    SetMode(folder_.Path(), 0755);
    SetMode(path, 0664);
    const OrdinaryUser user;
    if (!user.IsAnotherUser())
        GTEST_SKIP() << "needs a file of another user";

    EXPECT_EQ(Skip([&] { SetAttributes(path, GetAttributes(path)); }), 0);
    EXPECT_EQ(Skip([&] { SetAttributes(path, {FileAttribute::ReadOnly, 0444}); }), 70);
}

}  // namespace tessarine
