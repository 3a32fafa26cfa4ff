#include <gmock/gmock.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>

#include "platform/Failure.h"
#include "SavedDeck.h"
#include "saving/FileSizeLimit.h"

namespace tessarine::test
{
namespace
{

std::int32_t NumberOfSave(powerpoint::Presentation& presentation)
{
    try {
        presentation.Save();
    } catch (const Failure& failure) {
        return failure.number;
    }
    return 0;
}

/// Saves with the disk full after `length` bytes.
std::int32_t SaveWithin(std::size_t length, powerpoint::Presentation& presentation)
{
    const FileSizeLimit full(length);
    return NumberOfSave(presentation);
}

void ExpectOldFileWhereverTheDiskIsFull(const SavedDeck& deck, std::size_t step)
{
    const auto presentation = deck.Edited();

    for (std::size_t length = 0; length < deck.New().size(); length += step) {
        ASSERT_EQ(SaveWithin(length, *presentation), FailureNumber::SystemDiskFull) << "full at " << length;
        ASSERT_TRUE(ContentOf(deck.Path()) == deck.Old()) << "full at " << length;
        ASSERT_THAT(deck.OtherFiles(), testing::IsEmpty()) << "full at " << length;
    }
    ASSERT_EQ(SaveWithin(deck.New().size() - 1, *presentation), FailureNumber::SystemDiskFull);
    ASSERT_TRUE(ContentOf(deck.Path()) == deck.Old());

    EXPECT_EQ(SaveWithin(deck.New().size(), *presentation), 0);
    EXPECT_TRUE(ContentOf(deck.Path()) == deck.New());
}

TEST(FullDisk, LeavesTheOldFileWhereverItStrikes)
{
    ExpectOldFileWhereverTheDiskIsFull(SavedDeck(Deck().Slide(Title(u"Fabrikam"))), 5);
}

TEST(FullDisk, LeavesTheOldFileAmidLargeEntriesToo)
{
    ExpectOldFileWhereverTheDiskIsFull(
        SavedDeck(Deck().Slide(Title(u"Fabrikam")).Media("ppt/media/film1.mp4", 300000, 1)), 4099);
}

constexpr int done = 0;
constexpr int skipped = 77;

/// Files in memory take whole pages, whose size differs between machines.
std::size_t PageSize()
{
    return static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

/// Runs in a process with mounts of its own: the deck on a file system that it nearly fills.
int SaveOnASmallFileSystem(const SavedDeck& deck)
{
    const std::string folder = ToUtf8(deck.Folder().Path());
    const std::string size = "size=" + std::to_string(16 * PageSize());
    if (unshare(CLONE_NEWNS) != 0 || mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
        mount("tmpfs", folder.c_str(), "tmpfs", 0, size.c_str()) != 0)
        return skipped;
    deck.Folder().Write(u"deck.pptx", deck.Old());
    const auto presentation = deck.Edited();
    const std::size_t free = std::filesystem::space(folder).available;
    deck.Folder().Write(u"filler", std::string(free > PageSize() ? free - PageSize() : 0, 'f'));

    if (NumberOfSave(*presentation) != FailureNumber::SystemDiskFull)
        return 1;
    if (ContentOf(deck.Path()) != deck.Old())
        return 2;
    if (deck.OtherFiles() != std::vector<std::string>{"filler"})
        return 3;
    std::filesystem::remove(folder + "/filler");
    if (NumberOfSave(*presentation) != 0 || ContentOf(deck.Path()) != deck.New())
        return 4;
    return done;
}

TEST(FullDisk, OfASmallFileSystemLeavesTheOldFileUntilThereIsRoom)
{
    const SavedDeck deck(Deck().Slide(Title(u"Fabrikam")).Media("ppt/media/film1.mp4", 5 * PageSize(), 1));
    const pid_t child = fork();
    if (child == 0)
        _exit(SaveOnASmallFileSystem(deck));

    int status = 0;
    waitpid(child, &status, 0);

    ASSERT_TRUE(WIFEXITED(status));
    if (WEXITSTATUS(status) == skipped)
        GTEST_SKIP() << "this process may not mount";
    EXPECT_EQ(WEXITSTATUS(status), done);
}

}  // namespace
}  // namespace tessarine::test
