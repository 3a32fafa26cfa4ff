#include "files/OpenedFile.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fstream>

#include "files/FileDescriptor.h"
#include "support/TemporaryFolder.h"

namespace tessarine
{
namespace
{

constexpr std::int64_t second = 1'000'000'000;

class AnOpenedFile : public testing::Test
{
protected:
    bool IsRacy(std::int64_t lastWrite, std::int64_t lastChange, std::int64_t clock) const
    {
        FileState state = *FileStateOf(file_.get());
        state.lastWrite = lastWrite;
        state.lastChange = lastChange;
        return OpenedFile(file_.get(), state, clock).IsRacy();
    }

    const TemporaryFolder folder_;
    const String path_ = folder_.Write(u"file", "content");
    const FileDescriptor file_{open(ToUtf8(path_).c_str(), O_RDWR | O_CLOEXEC)};
};

TEST_F(AnOpenedFile, IsUnchangedUntilSomebodyTouchesIt)
{
    const OpenedFile opened(file_.get());
    EXPECT_TRUE(opened.IsUnchanged());

    std::ofstream(ToUtf8(path_), std::ios::app) << "more";

    EXPECT_FALSE(opened.IsUnchanged());
}

TEST_F(AnOpenedFile, NoticesAWriteThatKeepsSizeAndDate)
{
    const OpenedFile opened(file_.get());
    struct stat before = {};
    ASSERT_EQ(fstat(file_.get(), &before), 0);

    ASSERT_EQ(pwrite(file_.get(), "C", 1, 0), 1);
    const timespec times[2] = {before.st_atim, before.st_mtim};
    ASSERT_EQ(futimens(file_.get(), times), 0);

    EXPECT_FALSE(opened.IsUnchanged());
}

TEST_F(AnOpenedFile, NoticesAWriteThatLeavesNoTraceInItsState)
{
    // Only the first write to a page of a mapped file moves the file's times.
    void* const memory = mmap(nullptr, 7, PROT_READ | PROT_WRITE, MAP_SHARED, file_.get(), 0);
    ASSERT_NE(memory, MAP_FAILED);
    char* const bytes = static_cast<char*>(memory);
    bytes[0] = 'C';
    const OpenedFile opened(file_.get(), *FileStateOf(file_.get()), FileStateOf(file_.get())->lastChange);
    ASSERT_TRUE(opened.IsRacy());
    ASSERT_TRUE(opened.IsUnchanged());

    bytes[1] = 'O';

    EXPECT_FALSE(opened.IsUnchanged());
    munmap(memory, 7);
}

TEST_F(AnOpenedFile, IsRacyWhileTheClockHasNotMovedOn)
{
    const std::int64_t time = 1'000'000 * second + 5;

    EXPECT_TRUE(IsRacy(time, time, time));
    EXPECT_TRUE(IsRacy(time - 10 * second, time, time)) << "the younger time counts";
    EXPECT_TRUE(IsRacy(time, time - 10 * second, time)) << "the younger time counts";
    EXPECT_FALSE(IsRacy(time, time, time + second / 2));
}

TEST_F(AnOpenedFile, OfTheFutureIsAlwaysRacy)
{
    const std::int64_t time = 1'000'000 * second + 5;

    EXPECT_TRUE(IsRacy(time + 1000 * second, time, time + second));
    EXPECT_TRUE(IsRacy(time, time + 1000 * second, time + second));
}

TEST_F(AnOpenedFile, WithTimesInWholeSecondsIsRacyForTwo)
{
    const std::int64_t time = 1'000'000 * second;

    EXPECT_TRUE(IsRacy(time, time, time + second));
    EXPECT_FALSE(IsRacy(time, time, time + 2 * second + 1));
    EXPECT_FALSE(IsRacy(time, time + 1, time + second)) << "one of the two is exact";
}

TEST_F(AnOpenedFile, ExpectsWhatASaveHasPutInItsPlace)
{
    OpenedFile opened(file_.get());
    const String saved = folder_.Write(u"saved", "saved");
    ASSERT_EQ(unlink(ToUtf8(path_).c_str()), 0);

    opened.NoteOwnSave(*FileStateOf(saved));

    EXPECT_EQ(opened.Expected(), FileStateOf(saved));
    EXPECT_TRUE(opened.IsUnchanged()) << "the lost name is our own doing";
}

TEST(AnOpenedFileThatIsNone, CountsAsChanged)
{
    EXPECT_FALSE(OpenedFile(-1).IsUnchanged());
}

}  // namespace
}  // namespace tessarine
