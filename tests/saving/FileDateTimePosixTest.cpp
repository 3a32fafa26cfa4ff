#include "saving/FileDateTime.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <filesystem>

#include "files/Files.h"
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
    /// A file with these times, as exactly as the file system keeps them: not each knows nanoseconds or times before
    /// 1970.
    String WriteWithTimes(timespec lastAccess, timespec lastWrite) const
    {
        String path = folder_.Write(u"a.ppt");
        const timespec times[] = {lastAccess, lastWrite};
        EXPECT_EQ(utimensat(AT_FDCWD, ToUtf8(path).c_str(), times, 0), 0);
        return path;
    }

    static struct stat StatusOf(StringView path)
    {
        struct stat status = {};
        EXPECT_EQ(stat(ToUtf8(path).c_str(), &status), 0);
        return status;
    }

    static void ExpectTimes(StringView path, const struct stat& expected)
    {
        const struct stat status = StatusOf(path);
        EXPECT_EQ(status.st_atim.tv_sec, expected.st_atim.tv_sec);
        EXPECT_EQ(status.st_atim.tv_nsec, expected.st_atim.tv_nsec);
        EXPECT_EQ(status.st_mtim.tv_sec, expected.st_mtim.tv_sec);
        EXPECT_EQ(status.st_mtim.tv_nsec, expected.st_mtim.tv_nsec);
    }

    const ErrorLogRecorder log_;
    const TemporaryFolder folder_;
};

TEST_F(FileDates, ComeBackToTheNanosecond)
{
    const String path = WriteWithTimes({1000000000, 123456789}, {1100000000, 987654321});
    const struct stat before = StatusOf(path);

    const FileTimes saved = GetFileDateTime(path);
    folder_.Write(u"a.ppt", "changed");
    EXPECT_NE(StatusOf(path).st_mtim.tv_sec, before.st_mtim.tv_sec);
    EXPECT_TRUE(SetFileDateTime(path, saved));

    ExpectTimes(path, before);
}

TEST_F(FileDates, BeforeTheEpochComeBackToo)
{
    const String path = WriteWithTimes({-5, 0}, {-1000000, 500});
    const struct stat before = StatusOf(path);

    const FileTimes saved = GetFileDateTime(path);
    folder_.Write(u"a.ppt", "changed");
    EXPECT_TRUE(SetFileDateTime(path, saved));

    ExpectTimes(path, before);
}

TEST_F(FileDates, OfAMissingFileAreNotValidAndSetNothing)
{
    const FileTimes none = GetFileDateTime(folder_.PathOf(u"missing.ppt"));
    const String path = WriteWithTimes({1000, 2}, {3000, 4});
    const struct stat before = StatusOf(path);

    EXPECT_FALSE(none.valid);
    EXPECT_FALSE(SetFileDateTime(path, none));
    ExpectTimes(path, before);
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(FileDates, OfAFileThatCannotBeOpenedStay)
{
    const String path = WriteWithTimes({1000, 2}, {3000, 4});
    const struct stat before = StatusOf(path);
    SetMode(folder_.Path(), 0755);
    SetMode(path, 0444);

    {
        const OrdinaryUser user;
        EXPECT_FALSE(SetFileDateTime(path, {{5000, 6}, {7000, 8}, true}));
    }

    EXPECT_FALSE(SetFileDateTime(folder_.PathOf(u"missing.ppt"), {{5000, 6}, {7000, 8}, true}));
    ExpectTimes(path, before);
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(FileDates, AreNeverSetThroughALinkPutThereMeanwhile)
{
    const String path = WriteWithTimes({1000, 2}, {3000, 4});
    const FileTimes saved = GetFileDateTime(path);
    const String victim = folder_.Write(u"victim");
    DeleteFile(path);
    std::filesystem::create_symlink(ToUtf8(victim), ToUtf8(path));

    EXPECT_FALSE(SetFileDateTime(path, saved));

    EXPECT_NE(StatusOf(victim).st_mtim.tv_sec, 3000);
    EXPECT_THAT(log_.Lines(), ElementsAre(testing::HasSubstr("(another file has taken its place)")));
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
