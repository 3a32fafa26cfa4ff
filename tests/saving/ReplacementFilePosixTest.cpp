#include "saving/ReplacementFile.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "FileSizeLimit.h"
#include "FlushRecorder.h"
#include "platform/Failure.h"
#include "Replacing.h"
#include "support/OrdinaryUser.h"
#include "support/TemporaryFolder.h"

namespace tessarine
{
namespace
{

template <class Body>
std::int32_t NumberOf(Body body)
{
    try {
        body();
    } catch (const Failure& failure) {
        return failure.number;
    }
    return 0;
}

std::ptrdiff_t FilesIn(const TemporaryFolder& folder)
{
    return std::distance(std::filesystem::directory_iterator(ToUtf8(folder.Path())), {});
}

TEST(ReplacementFile, ReplacesTheOldFileOnlyWhenCommitted)
{
    const TemporaryFolder folder;
    const String path = folder.Write(u"file", "old");
    ReplacementFile file(path);

    file.Write(Bytes("ne"));
    file.Write(Bytes("w"));
    EXPECT_EQ(ContentOf(path), "old");
    EXPECT_EQ(file.Position(), 3u);
    file.Commit();

    EXPECT_EQ(ContentOf(path), "new");
    EXPECT_EQ(FilesIn(folder), 1);
}

TEST(ReplacementFile, LeavesNothingBehindWhenItIsNotCommitted)
{
    const TemporaryFolder folder;
    const String path = folder.Write(u"file", "old");

    {
        ReplacementFile file(path);
        file.Write(Bytes(std::string(200000, 'n')));
    }

    EXPECT_EQ(ContentOf(path), "old");
    EXPECT_EQ(FilesIn(folder), 1);
}

TEST(ReplacementFile, CopiesRangesOfFilesAndMemoryBetweenWrites)
{
    const TemporaryFolder folder;
    std::string large(300000, '\0');
    for (std::size_t i = 0; i < large.size(); ++i)
        large[i] = static_cast<char>(i * 31 % 251);
    const RandomAccessFile source(folder.Write(u"source", large));
    const auto memory = BytesInMemory(Bytes(large));
    const String path = folder.Write(u"file", "old");
    ReplacementFile file(path);

    file.Write(Bytes("a"));
    file.CopyFrom(source, 1000, 200000);
    file.Write(Bytes("b"));
    file.CopyFrom(source, 5, 7);
    file.CopyFrom(*memory, 3, 100000);
    file.CopyFrom(source, 300000, 0);
    EXPECT_EQ(file.Position(), 300009u);
    file.Commit();

    EXPECT_TRUE(ContentOf(path) ==
                "a" + large.substr(1000, 200000) + "b" + large.substr(5, 7) + large.substr(3, 100000));
}

TEST(ReplacementFile, FailsWhenTheSourceEndsEarly)
{
    const TemporaryFolder folder;
    const RandomAccessFile source(folder.Write(u"source", "short"));
    const String path = folder.Write(u"file", "old");

    EXPECT_EQ(NumberOf([&] {
                  ReplacementFile file(path);
                  file.CopyFrom(source, 0, 100000);
                  file.Commit();
              }),
              FailureNumber::FileCorrupt);

    EXPECT_EQ(ContentOf(path), "old");
    EXPECT_EQ(FilesIn(folder), 2);
}

TEST(ReplacementFile, KeepsModeAndOwner)
{
    const TemporaryFolder folder;
    const String path = folder.Write(u"file", "old");
    // Only who may give files away may also keep the bit that runs them as their owner.
    const bool isPrivileged = chown(ToUtf8(path).c_str(), 12345, 23456) == 0;
    SetMode(path, isPrivileged ? 04750 : 0750);
    const struct stat before = StatusOf(path);

    Replace(path, "new");

    EXPECT_EQ(StatusOf(path).st_mode, before.st_mode);
    EXPECT_EQ(StatusOf(path).st_uid, before.st_uid);
    EXPECT_EQ(StatusOf(path).st_gid, before.st_gid);
}

TEST(ReplacementFile, KeepsTheSetUserBitOfAnOrdinaryUsersFile)
{
    const TemporaryFolder folder;
    SetMode(folder.Path(), 0777);
    const String path = folder.PathOf(u"file");
    const OrdinaryUser user;
    std::ofstream(ToUtf8(path)) << "old";
    SetMode(path, 04750);

    Replace(path, "new");

    EXPECT_EQ(ContentOf(path), "new");
    EXPECT_EQ(ModeOf(path), 04750u);
}

TEST(ReplacementFile, BelongsToItsOwnerAloneUntilCommitted)
{
    const TemporaryFolder folder;
    const String path = folder.Write(u"file", "old");
    SetMode(path, 0666);
    ReplacementFile file(path);
    file.Write(Bytes(std::string(200000, 'n')));

    for (const auto& entry : std::filesystem::directory_iterator(ToUtf8(folder.Path()))) {
        const bool isOld = entry.path().filename() == "file";
        EXPECT_EQ(ModeOf(FromUtf8(entry.path().string())), isOld ? 0666u : 0600u);
    }
    file.Commit();

    EXPECT_EQ(ModeOf(path), 0666u);
}

TEST(ReplacementFile, IsFlushedAndThenItsFolder)
{
    const TemporaryFolder folder;
    const String path = folder.Write(u"file", "old");
    const FlushRecorder recorder;

    Replace(path, "new");

    EXPECT_THAT(recorder.Flushed(), testing::ElementsAre("file", "folder"));
}

TEST(ReplacementFile, OfACopyFailsInTheClassicFamily)
{
    const TemporaryFolder folder;
    const RandomAccessFile source(folder.Write(u"source", "content"));
    const ReplacementFile::CopyOf original{source.Descriptor()};

    EXPECT_EQ(NumberOf([&] { ReplacementFile file(folder.PathOf(u"none/file"), original); }),
              FailureNumber::PathNotFound);
    EXPECT_EQ(NumberOf([&] {
                  const FileSizeLimit full(100);
                  ReplacementFile file(folder.PathOf(u"file"), original);
                  file.Write(Bytes(std::string(101, 'n')));
                  file.Commit();
              }),
              FailureNumber::DiskFull);
    EXPECT_EQ(FilesIn(folder), 1);
}

TEST(ReplacementFile, FollowsChainsOfLinks)
{
    const TemporaryFolder folder;
    const String path = folder.Write(u"deep/file", "old");
    std::filesystem::create_symlink("deep/file", ToUtf8(folder.PathOf(u"one")));
    std::filesystem::create_symlink("one", ToUtf8(folder.PathOf(u"two")));

    Replace(folder.PathOf(u"two"), "new");

    EXPECT_EQ(ContentOf(path), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(ToUtf8(folder.PathOf(u"one"))));
    EXPECT_TRUE(std::filesystem::is_symlink(ToUtf8(folder.PathOf(u"two"))));
}

TEST(ReplacementFile, ReplacesAFileNamedWithoutItsFolder)
{
    const TemporaryFolder folder;
    folder.Write(u"file", "old");
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(ToUtf8(folder.Path()));

    Replace(u"file", "new");

    std::filesystem::current_path(before);
    EXPECT_EQ(ContentOf(folder.PathOf(u"file")), "new");
}

TEST(ReplacementFile, NeedsAnOldFile)
{
    const TemporaryFolder folder;
    std::filesystem::create_symlink("nowhere", ToUtf8(folder.PathOf(u"dangling")));

    EXPECT_EQ(NumberOf([&] { ReplacementFile file(folder.PathOf(u"none")); }), FailureNumber::SystemFileNotFound);
    EXPECT_EQ(NumberOf([&] { ReplacementFile file(folder.PathOf(u"none/file")); }), FailureNumber::SystemPathNotFound);
    EXPECT_EQ(NumberOf([&] { ReplacementFile file(folder.PathOf(u"dangling")); }), FailureNumber::SystemFileNotFound);
}

TEST(ReplacementFile, ReportsAFullDiskAndKeepsTheOldFile)
{
    const TemporaryFolder folder;
    const String path = folder.Write(u"file", "old");
    const FileSizeLimit full(100);

    EXPECT_EQ(NumberOf([&] { Replace(path, std::string(101, 'n')); }), FailureNumber::SystemDiskFull);

    EXPECT_EQ(ContentOf(path), "old");
    EXPECT_EQ(FilesIn(folder), 1);
}

TEST(ReplacementFile, RespectsAReadOnlyFileAndFolder)
{
    const TemporaryFolder folder;
    const String path = folder.Write(u"file", "old");
    SetMode(folder.Path(), 0777);
    SetMode(path, 0444);
    {
        const OrdinaryUser user;
        EXPECT_EQ(NumberOf([&] { ReplacementFile file(path); }), FailureNumber::AccessDenied);
        EXPECT_EQ(NumberOf([&] { TouchFile(path); }), FailureNumber::AccessDenied);
    }
    SetMode(folder.Path(), 0555);
    SetMode(path, 0666);
    const OrdinaryUser user;

    EXPECT_EQ(NumberOf([&] { ReplacementFile file(path); }), FailureNumber::AccessDenied);
    EXPECT_EQ(ContentOf(path), "old");
}

TEST(TouchFile, MovesTheModificationTimeAlone)
{
    const TemporaryFolder folder;
    const String path = folder.Write(u"file", "old");
    const timespec times[2] = {{1000, 5}, {1000, 5}};
    utimensat(AT_FDCWD, ToUtf8(path).c_str(), times, 0);
    const struct stat before = StatusOf(path);  // as exact as the file system keeps times

    TouchFile(path);

    EXPECT_GT(StatusOf(path).st_mtim.tv_sec, before.st_mtim.tv_sec);
    EXPECT_EQ(StatusOf(path).st_atim.tv_sec, before.st_atim.tv_sec);
    EXPECT_EQ(StatusOf(path).st_atim.tv_nsec, before.st_atim.tv_nsec);
    EXPECT_EQ(ContentOf(path), "old");
}

TEST(TouchFile, WorksOnAWritableFileOfAnotherOwner)
{
    const TemporaryFolder folder;
    const String path = folder.Write(u"file", "old");
    SetMode(folder.Path(), 0755);
    SetMode(path, 0666);
    const timespec times[2] = {{1000, 0}, {1000, 0}};
    utimensat(AT_FDCWD, ToUtf8(path).c_str(), times, 0);
    const OrdinaryUser user;

    TouchFile(path);

    EXPECT_GT(StatusOf(path).st_mtim.tv_sec, 1000);
}

TEST(TouchFile, OfAnAbsentFileFails)
{
    const TemporaryFolder folder;

    EXPECT_EQ(NumberOf([&] { TouchFile(folder.PathOf(u"none")); }), FailureNumber::SystemFileNotFound);
}

}  // namespace
}  // namespace tessarine
