#include "platform/FileDateTime.h"

#include <gmock/gmock.h>

#include "platform/Files.h"
#include "support/ErrorLogRecorder.h"
#include "support/OrdinaryUser.h"
#include "support/TemporaryFolder.h"

namespace tessarine
{

using testing::ElementsAre;
using testing::IsEmpty;

class FileDates : public testing::Test
{
protected:
    const ErrorLogRecorder log_;
    const TemporaryFolder folder_;
};

TEST_F(FileDates, ComeBackToTheNanosecond)
{
    const String path = folder_.Write(u"a.ppt");
    const FileTimes old{{1000000000, 123456789}, {1100000000, 987654321}, true};
    ASSERT_TRUE(SetFileDateTime(path, old));

    const FileTimes saved = GetFileDateTime(path);
    folder_.Write(u"a.ppt", "changed");
    EXPECT_TRUE(SetFileDateTime(path, saved));

    const FileTimes now = GetFileDateTime(path);
    EXPECT_EQ(now.lastAccess.tv_sec, 1000000000);
    EXPECT_EQ(now.lastAccess.tv_nsec, 123456789);
    EXPECT_EQ(now.lastWrite.tv_sec, 1100000000);
    EXPECT_EQ(now.lastWrite.tv_nsec, 987654321);
}

TEST_F(FileDates, BeforeTheEpochComeBackToo)
{
    const String path = folder_.Write(u"a.ppt");

    EXPECT_TRUE(SetFileDateTime(path, {{-5, 0}, {-1000000, 500}, true}));

    EXPECT_EQ(GetFileDateTime(path).lastWrite.tv_sec, -1000000);
    EXPECT_EQ(GetFileDateTime(path).lastWrite.tv_nsec, 500);
}

TEST_F(FileDates, OfAMissingFileAreNotValidAndSetNothing)
{
    const FileTimes none = GetFileDateTime(folder_.PathOf(u"missing.ppt"));
    const String path = folder_.Write(u"a.ppt");
    SetFileDateTime(path, {{1, 2}, {3, 4}, true});

    EXPECT_FALSE(none.valid);
    EXPECT_FALSE(SetFileDateTime(path, none));
    EXPECT_EQ(GetFileDateTime(path).lastWrite.tv_sec, 3);
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(FileDates, OfAFileThatCannotBeOpenedStay)
{
    const String path = folder_.Write(u"a.ppt");
    SetFileDateTime(path, {{1, 2}, {3, 4}, true});
    SetMode(folder_.Path(), 0755);
    SetMode(path, 0444);

    {
        const OrdinaryUser user;
        EXPECT_FALSE(SetFileDateTime(path, {{5, 6}, {7, 8}, true}));
    }

    EXPECT_FALSE(SetFileDateTime(folder_.PathOf(u"missing.ppt"), {{5, 6}, {7, 8}, true}));
    EXPECT_EQ(GetFileDateTime(path).lastWrite.tv_sec, 3);
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(FileDates, ThatTheSystemRefusesAreLogged)
{
    const String path = folder_.Write(u"a.ppt");

    EXPECT_FALSE(SetFileDateTime(path, {{1, 2'000'000'000}, {3, 4}, true}));

    EXPECT_THAT(
        log_.Lines(),
        ElementsAre("Error 57 (Device I/O error (Invalid argument): could not set the times of " + ToUtf8(path) +
                    ") in procedure SetFileDateTime at Line No. 0 of Module modFileDateTime at time"));
}

}  // namespace tessarine
