#include <gtest/gtest.h>

#include "platform/Files.h"
#include "platform/Treatments.h"
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

    ClearAttributes(path);

    EXPECT_EQ(ModeOf(path), 0654u);
    EXPECT_EQ(GetAttributes(path).bits, FileAttribute::Normal);
}

TEST_F(Attributes, ComeBackToTheLastBit)
{
    const String path = folder_.Write(u"a.ppt");
    SetMode(path, 04541);
    const FileAttributes saved = GetAttributes(path);
    ClearAttributes(path);

    SetAttributes(path, saved);

    EXPECT_EQ(ModeOf(path), 04541u);
}

TEST_F(Attributes, OfAMissingFileRaise)
{
    const String path = folder_.PathOf(u"missing.ppt");

    EXPECT_EQ(Skip([&] { GetAttributes(path); }), 53);
    EXPECT_EQ(Skip([&] { SetAttributes(path, {}); }), 53);
    EXPECT_EQ(Skip([&] { ClearAttributes(path); }), 53);
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
