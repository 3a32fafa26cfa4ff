#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <functional>
#include <thread>

#include "files/FileLock.h"
#include "files/Files.h"
#include "FlushRecorder.h"
#include "platform/Failure.h"
#include "RenameHook.h"
#include "Replacing.h"
#include "saving/CopyFile.h"
#include "saving/Leftovers.h"
#include "saving/ReplacementFile.h"
#include "support/OrdinaryUser.h"
#include "support/OtherProcess.h"
#include "support/TemporaryFolder.h"
#include "support/WarningRecorder.h"

// What other users have put in the way of a save or a copy, and what other programs do to a file meanwhile.

namespace tessarine
{
namespace
{

using testing::HasSubstr;

struct Raised {
    std::int32_t number = 0;
    std::string text;
};

template <class Body>
Raised RaisedBy(Body body)
{
    try {
        body();
    } catch (const Failure& failure) {
        return {failure.number, ToUtf8(failure.description)};
    }
    return {};
}

class FilesOfOthers : public testing::Test
{
protected:
    void Link(const char* target, const String& link) const { std::filesystem::create_symlink(target, ToUtf8(link)); }

    std::ptrdiff_t FilesIn(const String& folder) const
    {
        return std::distance(std::filesystem::directory_iterator(ToUtf8(folder)), {});
    }

    const TemporaryFolder folder_;
    const String victim_ = folder_.Write(u"private/victim", "victim's text");
};

TEST_F(FilesOfOthers, AreNotOverwrittenByABackupThroughALink)
{
    SetMode(victim_, 0600);
    const String deck = folder_.Write(u"shared/q.pptx", "deck");
    SetMode(deck, 0644);
    const String backup = folder_.PathOf(u"shared/q..bak");
    Link("../private/victim", backup);

    const Raised raised = RaisedBy([&] { CopyFile(deck, backup); });

    EXPECT_EQ(raised.number, FailureNumber::PermissionDenied);
    EXPECT_THAT(raised.text, HasSubstr("q..bak (it is a link"));
    EXPECT_EQ(ContentOf(victim_), "victim's text");
    EXPECT_EQ(ModeOf(victim_), 0600u);
    EXPECT_TRUE(std::filesystem::is_symlink(ToUtf8(backup)));
    EXPECT_EQ(FilesIn(folder_.PathOf(u"shared")), 2);
}

TEST_F(FilesOfOthers, AreNotOverwrittenByABackupThatWouldReplaceAPipe)
{
    const String deck = folder_.Write(u"q.pptx", "deck");
    const String backup = folder_.PathOf(u"q..bak");
    ASSERT_EQ(mkfifo(ToUtf8(backup).c_str(), 0600), 0);

    const Raised raised = RaisedBy([&] { CopyFile(deck, backup); });

    EXPECT_EQ(raised.number, FailureNumber::PermissionDenied);
    EXPECT_THAT(raised.text, HasSubstr("it is not a file"));
    EXPECT_TRUE(std::filesystem::is_fifo(ToUtf8(backup)));
}

TEST_F(FilesOfOthers, AreNotReachedByALinkOfAnotherUser)
{
    const String deck = folder_.PathOf(u"shared/q.pptx");
    folder_.MakeFolder(u"shared");
    Link("../private/victim", deck);
    if (lchown(ToUtf8(deck).c_str(), stranger, stranger) != 0)
        GTEST_SKIP() << "only the superuser makes files of others";
    const String backup = folder_.Write(u"shared/q..bak", "planted");

    const Raised save = RaisedBy([&] { Replace(deck, "new"); });
    const Raised restore = RaisedBy([&] { CopyFileBack(backup, deck); });

    EXPECT_EQ(save.number, FailureNumber::AccessDenied);
    EXPECT_THAT(save.text, HasSubstr("it is a link that belongs to another user"));
    EXPECT_EQ(restore.number, FailureNumber::PermissionDenied);
    EXPECT_EQ(ContentOf(victim_), "victim's text");
}

TEST_F(FilesOfOthers, AreNotChangedThroughALinkOfTheOwn)
{
    Link("private/victim", folder_.PathOf(u"q.pptx"));
    if (chown(ToUtf8(victim_).c_str(), stranger, stranger) != 0)
        GTEST_SKIP() << "only the superuser makes files of others";

    const Raised file = RaisedBy([&] { Replace(folder_.PathOf(u"q.pptx"), "new"); });
    ASSERT_EQ(chown(ToUtf8(victim_).c_str(), 0, 0), 0);
    ASSERT_EQ(chown(ToUtf8(folder_.PathOf(u"private")).c_str(), stranger, stranger), 0);
    const Raised folder = RaisedBy([&] { Replace(folder_.PathOf(u"q.pptx"), "new"); });

    EXPECT_EQ(file.number, FailureNumber::AccessDenied);
    EXPECT_THAT(file.text, HasSubstr("it or its folder belongs to another user"));
    EXPECT_EQ(folder.number, FailureNumber::AccessDenied);
    EXPECT_EQ(ContentOf(victim_), "victim's text");
}

TEST_F(FilesOfOthers, GetNoPrivateTextByABackupThatTheyHavePlanted)
{
    const String deck = folder_.Write(u"q.pptx", "private text");
    SetMode(deck, 0600);
    const String backup = folder_.Write(u"q..bak", "planted");
    if (chown(ToUtf8(backup).c_str(), stranger, stranger) != 0)
        GTEST_SKIP() << "only the superuser makes files of others";

    CopyFile(deck, backup);

    struct stat status = {};
    ASSERT_EQ(stat(ToUtf8(backup).c_str(), &status), 0);
    EXPECT_EQ(ContentOf(backup), "private text");
    EXPECT_EQ(status.st_uid, geteuid());
    EXPECT_EQ(status.st_mode & 07777, 0600u);
}

TEST_F(FilesOfOthers, AreNotMetByAFolderThatIsSwappedMeanwhile)
{
    const String deck = folder_.Write(u"decks/q.pptx", "deck");
    folder_.Write(u"other/q.pptx", "other deck");
    ReplacementFile file(deck);
    file.Write(Bytes("new"));

    std::filesystem::rename(ToUtf8(folder_.PathOf(u"decks")), ToUtf8(folder_.PathOf(u"moved")));
    std::filesystem::rename(ToUtf8(folder_.PathOf(u"other")), ToUtf8(folder_.PathOf(u"decks")));
    file.Commit();

    EXPECT_EQ(ContentOf(folder_.PathOf(u"moved/q.pptx")), "new");
    EXPECT_EQ(ContentOf(folder_.PathOf(u"decks/q.pptx")), "other deck");
}

/// A deck that another program has open and writes into later.
class FileOpenForWriting : public FilesOfOthers
{
protected:
    void SetUp() override
    {
        const FileDescriptor file(open(ToUtf8(deck_).c_str(), O_RDONLY | O_CLOEXEC));
        if (fcntl(file.get(), F_SETLEASE, F_RDLCK) != 0)
            GTEST_SKIP() << "the file system doesn't tell who writes";
    }

    void OpenByAnother() { theirs_ = FileDescriptor(open(ToUtf8(deck_).c_str(), O_WRONLY | O_APPEND | O_CLOEXEC)); }

    /// The save is refused, and what the other program writes now is in the deck.
    void ExpectKept(const Raised& raised, const char* text) const
    {
        EXPECT_EQ(raised.number, FailureNumber::SharingViolation);
        EXPECT_THAT(raised.text, HasSubstr(text));
        EXPECT_EQ(write(theirs_.get(), " of theirs", 10), 10);
        EXPECT_EQ(ContentOf(deck_), "deck of theirs");
    }

    const String deck_ = folder_.Write(u"q.pptx", "deck");

private:
    FileDescriptor theirs_;
};

TEST_F(FileOpenForWriting, IsNotReplaced)
{
    OpenByAnother();

    ExpectKept(RaisedBy([&] { Replace(deck_, "new"); }), "another program has it open for writing");
}

TEST_F(FileOpenForWriting, SinceTheLastMomentComesBack)
{
    const RenameHook hook({[&] {
        OpenByAnother();
        return 0;
    }});

    ExpectKept(RaisedBy([&] { Replace(deck_, "new"); }), "was changed by another program");
    EXPECT_EQ(RemoveLeftovers(folder_.Path()), 0u);
}

/// What another program may do to a file between its opening and the save.
struct Change {
    friend void PrintTo(const Change& change, std::ostream* stream) { *stream << change.name; }

    const char* name;
    std::function<void(const TemporaryFolder& folder, const std::string& path)> make;
    std::string left;  ///< The content that has to be there in the end.
};

class ChangedByOthers : public testing::TestWithParam<Change>
{
protected:
    void MakeChange() { GetParam().make(folder_, ToUtf8(path_)); }

    /// The change is reported, it is all there, and nothing else is left.
    void ExpectNotLost(const Raised& raised) const
    {
        const bool isGone = GetParam().left == "<missing>" && raised.number == FailureNumber::SystemFileNotFound;
        EXPECT_EQ(raised.number, isGone ? FailureNumber::SystemFileNotFound : FailureNumber::SharingViolation);
        EXPECT_THAT(raised.text, HasSubstr(isGone ? "No such file" : "was changed by another program"));
        EXPECT_EQ(ContentOf(path_), GetParam().left);
        for (const auto& entry : std::filesystem::directory_iterator(ToUtf8(folder_.Path())))
            EXPECT_NE(entry.path().filename().string().substr(0, 11), ".tessarine-");
    }

    const TemporaryFolder folder_;
    const String path_ = folder_.Write(u"q.pptx", "deck");
};

TEST_P(ChangedByOthers, AfterItWasOpenedIsNoticedBeforeTheSave)
{
    RandomAccessFile opened(path_);
    MakeChange();

    ExpectNotLost(RaisedBy([&] {
        ReplacementFile file(path_, *opened.Opened());
        file.Write(Bytes("new"));
        file.Commit();
    }));
}

TEST_P(ChangedByOthers, AmidTheSaveIsNoticed)
{
    RandomAccessFile opened(path_);
    auto file = std::make_unique<ReplacementFile>(path_, *opened.Opened());
    file->Write(Bytes("new"));
    MakeChange();

    const Raised raised = RaisedBy([&] { file->Commit(); });
    file.reset();

    ExpectNotLost(raised);
}

TEST_P(ChangedByOthers, AmidASaveOfAFileThatWasNotOpenedIsNoticed)
{
    auto file = std::make_unique<ReplacementFile>(path_);
    file->Write(Bytes("new"));
    MakeChange();

    const Raised raised = RaisedBy([&] { file->Commit(); });
    file.reset();

    ExpectNotLost(raised);
}

TEST_P(ChangedByOthers, InTheLastMomentIsNotLost)
{
    // This alone moves no time but that of the last change, as the rename itself does.
    if (std::string(GetParam().name) == "Protected" || std::string(GetParam().name) == "RewrittenWithItsOldDate")
        GTEST_SKIP() << "the state before the rename is no measure";
    RandomAccessFile opened(path_);
    auto file = std::make_unique<ReplacementFile>(path_, *opened.Opened());
    file->Write(Bytes("new"));
    const RenameHook hook({[&] {
        MakeChange();
        return 0;
    }});

    const Raised raised = RaisedBy([&] { file->Commit(); });
    file.reset();

    EXPECT_NE(raised.number, 0);
    EXPECT_EQ(ContentOf(path_), GetParam().left);
    EXPECT_EQ(RemoveLeftovers(folder_.Path()), 0u);
}

TEST_P(ChangedByOthers, BetweenItsOpeningAndItsBackupMakesNoBackup)
{
    RandomAccessFile opened(path_, RandomAccessFile::Use::Saving);
    const auto check = [&](const CopiedContent&) {
        if (!opened.Opened()->IsUnchanged())
            throw Failure(FailureNumber::SharingViolation, u"changed");
    };
    MakeChange();

    const Raised raised = RaisedBy([&] { CopyFile(path_, folder_.PathOf(u"q..bak"), {check}); });

    EXPECT_NE(raised.number, 0);
    EXPECT_EQ(ContentOf(folder_.PathOf(u"q..bak")), "<missing>");
    EXPECT_EQ(ContentOf(path_), GetParam().left);
}

TEST_P(ChangedByOthers, AmidACopyBackIsNoticed)
{
    const String copy = folder_.Write(u"q..bak", "backup");
    const FileDescriptor kept(open(ToUtf8(copy).c_str(), O_RDONLY | O_CLOEXEC));
    ReplacementFile file(path_, ReplacementFile::PutBack{kept.get()});
    MakeChange();

    const Raised raised = RaisedBy([&] { file.Commit(); });

    EXPECT_EQ(raised.number, FailureNumber::PermissionDenied);
    EXPECT_THAT(raised.text, HasSubstr("was changed by another program"));
    EXPECT_EQ(ContentOf(path_), GetParam().left);
}

TEST_P(ChangedByOthers, IsNoticedWhenOnlyItsDateWouldMove)
{
    RandomAccessFile opened(path_);
    MakeChange();

    ExpectNotLost(RaisedBy([&] { TouchFile(path_, *opened.Opened()); }));
}

INSTANTIATE_TEST_SUITE_P(
    File, ChangedByOthers,
    testing::Values(
        Change{"Rewritten", [](const auto&, const std::string& path) { std::ofstream(path) << "DECK"; }, "DECK"},
        Change{"Extended",
               [](const auto&, const std::string& path) { std::ofstream(path, std::ios::app) << " and more"; },
               "deck and more"},
        Change{"RewrittenWithItsOldDate",
               [](const auto&, const std::string& path) {
                   struct stat before = {};
                   stat(path.c_str(), &before);
                   std::ofstream(path) << "DECK";
                   const timespec times[2] = {before.st_atim, before.st_mtim};
                   utimensat(AT_FDCWD, path.c_str(), times, 0);
               },
               "DECK"},
        Change{"Replaced",
               [](const TemporaryFolder& folder, const std::string& path) {
                   std::filesystem::rename(ToUtf8(folder.Write(u"theirs", "deck")), path);
               },
               "deck"},
        Change{"Deleted", [](const auto&, const std::string& path) { std::filesystem::remove(path); }, "<missing>"},
        Change{"TurnedIntoALink",
               [](const TemporaryFolder& folder, const std::string& path) {
                   folder.Write(u"theirs", "deck");
                   std::filesystem::remove(path);
                   std::filesystem::create_symlink("theirs", path);
               },
               "deck"},
        Change{"Protected", [](const auto&, const std::string& path) { SetMode(FromUtf8(path), 0640); }, "deck"}),
    [](const auto& parameter) { return parameter.param.name; });

TEST(ANewFile, DoesNotReplaceOneThatWasMadeMeanwhile)
{
    const TemporaryFolder folder;
    const String path = folder.PathOf(u"job.tsq");
    ReplacementFile file(path, ReplacementFile::Missing::IsMade);
    file.Write(Bytes("new"));
    folder.Write(u"job.tsq", "theirs");

    const Raised raised = RaisedBy([&] { file.Commit(); });

    EXPECT_EQ(raised.number, FailureNumber::SharingViolation);
    EXPECT_EQ(ContentOf(path), "theirs");
}

/// A step before a rename in which another program writes the file itself.
std::function<int()> Writes(const TemporaryFolder& folder)
{
    return [&folder] {
        folder.Write(u"job.tsq", "theirs");
        return 0;
    };
}

TEST(AChangeInTheLastMoment, IsKeptWhereItCannotGoBack)
{
    const TemporaryFolder folder;
    const WarningRecorder warnings;
    const String path = folder.Write(u"job.tsq", "old");
    ReplacementFile file(path);
    file.Write(Bytes("new"));
    const auto fails = [] { return EIO; };
    const RenameHook hook({Writes(folder), fails, fails});

    file.Commit();

    EXPECT_EQ(ContentOf(path), "new");
    ASSERT_EQ(warnings.Warnings().size(), 1u);
    EXPECT_THAT(warnings.Warnings().front().second, HasSubstr("what was there is kept as \".tessarine-"));
    const std::string& text = warnings.Warnings().front().second;
    const std::size_t begin = text.find('"') + 1;
    EXPECT_EQ(ContentOf(folder.PathOf(FromUtf8(text.substr(begin, text.find('"', begin) - begin)))), "theirs");
}

TEST(AChangeInTheLastMoment, GivesWayToALaterOneThatReplacedTheNewFile)
{
    const TemporaryFolder folder;
    const String path = folder.Write(u"job.tsq", "old");
    const auto raised = RaisedBy([&] {
        ReplacementFile file(path);
        file.Write(Bytes("new"));
        const RenameHook hook({Writes(folder), [&] {
                                   const String latest = folder.Write(u"latest", "their latest");
                                   std::filesystem::rename(ToUtf8(latest), ToUtf8(path));
                                   return 0;
                               }});
        file.Commit();
    });

    EXPECT_EQ(raised.number, FailureNumber::SharingViolation);
    EXPECT_EQ(ContentOf(path), "their latest");
    EXPECT_EQ(FilesOfFolder(folder.Path()).size(), 1u);
}

TEST(AChangeInTheLastMoment, GivesWayToALaterOneThatWroteIntoTheNewFile)
{
    const TemporaryFolder folder;
    const WarningRecorder warnings;
    const String path = folder.Write(u"job.tsq", "old");
    const auto raised = RaisedBy([&] {
        ReplacementFile file(path);
        file.Write(Bytes("new"));
        const RenameHook hook({[&] {
                                   const String theirs = folder.Write(u"aside", "theirs");
                                   std::filesystem::rename(ToUtf8(theirs), ToUtf8(path));
                                   return 0;
                               },
                               [&] {
                                   folder.Write(u"job.tsq", "their latest");
                                   return 0;
                               }});
        file.Commit();
    });

    EXPECT_EQ(raised.number, FailureNumber::SharingViolation);
    EXPECT_EQ(ContentOf(path), "their latest");
    EXPECT_EQ(ContentOf(folder.PathOf(u"job.tsq.kept")), "theirs");
    ASSERT_EQ(warnings.Warnings().size(), 1u);
    EXPECT_THAT(warnings.Warnings().front().second, HasSubstr("job.tsq.kept\""));
}

/// The file that a save has taken out of its place and not removed yet.
String WhatCameOut(const TemporaryFolder& folder)
{
    for (const auto& entry : std::filesystem::directory_iterator(ToUtf8(folder.Path()))) {
        if (IsNewFileName(entry.path().filename().native()))
            return FromUtf8(entry.path().native());
    }
    return {};
}

/// Saves a file that another program has found before the rename, and opens only after it.
Raised SaveBesideALateWriter(const String& path, const std::function<void()>& opensLate)
{
    FlushRecorder flushes;
    flushes.BeforeFolder(opensLate);
    return RaisedBy([&] { Replace(path, "new"); });
}

TEST(AChangeAfterTheRename, OfTheOldFileGoesBack)
{
    const TemporaryFolder folder;
    const String path = folder.Write(u"job.tsq", "old");

    const Raised raised = SaveBesideALateWriter(path, [&] { std::ofstream(ToUtf8(WhatCameOut(folder))) << "theirs"; });

    EXPECT_EQ(raised.number, FailureNumber::SharingViolation);
    EXPECT_EQ(ContentOf(path), "theirs");
    EXPECT_EQ(FilesOfFolder(folder.Path()).size(), 1u);
}

TEST(AChangeAfterTheRename, MayStillComeWhileTheOldFileIsOpenForWriting)
{
    const TemporaryFolder folder;
    const String path = folder.Write(u"job.tsq", "old");
    std::ofstream theirs;

    const Raised raised =
        SaveBesideALateWriter(path, [&] { theirs.open(ToUtf8(WhatCameOut(folder)), std::ios::in | std::ios::out); });
    theirs << "theirs" << std::flush;

    EXPECT_EQ(raised.number, FailureNumber::SharingViolation);
    EXPECT_EQ(ContentOf(path), "theirs");
    EXPECT_EQ(FilesOfFolder(folder.Path()).size(), 1u);
}

TEST(AnOldFile, MayBeTakenForALeftoverOnceItHasLostItsPlace)
{
    const TemporaryFolder folder;
    const WarningRecorder warnings;
    const String path = folder.Write(u"job.tsq", "old");

    const Raised raised = SaveBesideALateWriter(path, [&] { RemoveLeftovers(folder.Path()); });

    EXPECT_EQ(raised.number, 0);
    EXPECT_EQ(ContentOf(path), "new");
    EXPECT_TRUE(warnings.Warnings().empty());
}

TEST(AChangeInTheLastMoment, GoesBackWhereTheNewFileWasDeletedMeanwhile)
{
    const TemporaryFolder folder;
    const String path = folder.Write(u"job.tsq", "old");
    const auto raised = RaisedBy([&] {
        ReplacementFile file(path);
        file.Write(Bytes("new"));
        const RenameHook hook({Writes(folder), [&] {
                                   DeleteFile(path);
                                   return 0;
                               }});
        file.Commit();
    });

    EXPECT_EQ(raised.number, FailureNumber::SharingViolation);
    EXPECT_EQ(ContentOf(path), "theirs");
}

TEST(ANewFile, DoesNotReplaceOneThatWasMadeInTheLastMoment)
{
    const TemporaryFolder folder;
    const String path = folder.PathOf(u"job.tsq");
    const RenameHook hook({Writes(folder)});

    const Raised raised = RaisedBy([&] {
        ReplacementFile file(path, ReplacementFile::Missing::IsMade);
        file.Write(Bytes("new"));
        file.Commit();
    });

    EXPECT_EQ(raised.number, FailureNumber::SharingViolation);
    EXPECT_EQ(ContentOf(path), "theirs");
}

TEST(ASavedFile, NeedsNoFileSystemThatExchangesFiles)
{
    const TemporaryFolder folder;
    const String path = folder.Write(u"q.pptx", "deck");
    const auto isNotSupported = [] { return EINVAL; };
    const RenameHook hook({isNotSupported, isNotSupported});

    Replace(path, "new");
    {
        ReplacementFile file(folder.PathOf(u"job.tsq"), ReplacementFile::Missing::IsMade);
        file.Write(Bytes("job"));
        file.Commit();
    }

    EXPECT_EQ(ContentOf(path), "new");
    EXPECT_EQ(ContentOf(folder.PathOf(u"job.tsq")), "job");
    EXPECT_EQ(FilesOfFolder(folder.Path()).size(), 2u);
}

TEST(ASavedFile, IsTheOneThatTheNextSaveExpects)
{
    const TemporaryFolder folder;
    const String path = folder.Write(u"q.pptx", "deck");
    RandomAccessFile opened(path);
    const auto save = [&](std::string_view text) {
        ReplacementFile file(path, *opened.Opened());
        file.Write(Bytes(text));
        file.Commit();
    };

    save("first");
    save("second");
    TouchFile(path, *opened.Opened());
    save("third");
    EXPECT_EQ(ContentOf(path), "third");

    std::ofstream(ToUtf8(path)) << "theirs";
    EXPECT_EQ(RaisedBy([&] { save("fourth"); }).number, FailureNumber::SharingViolation);
    EXPECT_EQ(ContentOf(path), "theirs");
}

TEST(ASavedFile, StaysLockedWhenTheOldOneWas)
{
    const TemporaryFolder folder;
    const String path = folder.Write(u"q.pptx", "deck");
    const FileLock lock(path);

    Replace(path, "new");

    EXPECT_TRUE(FileLock::IsHeldHere(*RandomAccessFile::IdOf(path)));
    EXPECT_THAT(RaisedBy([&] { const FileLock second(path); }).text, HasSubstr("is in use by another run"));
    EXPECT_EQ(RandomAccessFile(path).Size(), 3u);
}

TEST(ACopy, OfAFileThatChangesMeanwhileFailsOrIsWhole)
{
    const TemporaryFolder folder;
    const std::size_t size = 16 << 20;
    int failures = 0;

    // The other program changes the first and the last byte as soon as it sees the copy begin. Until that once falls
    // into the time in between, no round has shown anything.
    for (int round = 0; round < 200 && failures == 0; ++round) {
        const String source = folder.Write(u"q.pptx", std::string(size, 'a'));
        std::filesystem::remove(ToUtf8(folder.PathOf(u"q..bak")));
        std::thread other([&] {
            const FileDescriptor file(open(ToUtf8(source).c_str(), O_WRONLY | O_CLOEXEC));
            for (int looks = 0; looks < 1'000'000 && FilesOfFolder(folder.Path()).size() < 2; ++looks)
                std::this_thread::yield();
            static_cast<void>(!pwrite(file.get(), "b", 1, 0));
            static_cast<void>(!pwrite(file.get(), "b", 1, static_cast<off_t>(size) - 1));
        });

        const Raised raised = RaisedBy([&] { CopyFile(source, folder.PathOf(u"q..bak")); });
        other.join();

        const std::string copy = ContentOf(folder.PathOf(u"q..bak"));
        if (raised.number == 0) {
            ASSERT_EQ(copy.front(), copy.back());
        } else {
            ++failures;
            EXPECT_EQ(raised.number, FailureNumber::PermissionDenied);
            EXPECT_THAT(raised.text, HasSubstr("changed by another program while it was copied"));
            EXPECT_EQ(copy, "<missing>");
        }
    }

    EXPECT_EQ(failures, 1) << "the change never fell into a copy";
}

}  // namespace
}  // namespace tessarine
