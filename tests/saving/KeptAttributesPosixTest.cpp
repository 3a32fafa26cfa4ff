#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "files/Files.h"
#include "FlushRecorder.h"
#include "log/ErrorLog.h"
#include "platform/Failure.h"
#include "Replacing.h"
#include "saving/CopyFile.h"
#include "saving/ReplacementFile.h"
#include "support/AccessList.h"
#include "support/OrdinaryUser.h"
#include "support/TemporaryFolder.h"
#include "support/WarningRecorder.h"

// What a new file has of the one whose place it takes, and what becomes of a save that can't keep it.

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Pair;

using Entry = AccessEntry;

/// What a save fails with; empty when it doesn't.
std::string FailureOfReplace(StringView path, const SaveTerms& terms = {})
{
    try {
        Replace(path, "new", terms);
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.number, FailureNumber::AccessDenied);
        return ToUtf8(failure.description);
    }
    return {};
}

/// Lets one stranger read and keeps the own group out.
std::string StrangersList()
{
    return AccessList(
        {{Entry::Owner, 6}, {Entry::User, 4, stranger}, {Entry::OwningGroup, 0}, {Entry::Mask, 4}, {Entry::Others, 0}});
}

class AttributesOfAFile : public testing::Test
{
protected:
    AttributesOfAFile() { ApplicationDataFolder = data_.Path(); }
    ~AttributesOfAFile() override { ApplicationDataFolder = before_; }

    const String before_ = ApplicationDataFolder;
    const TemporaryFolder data_;
    const TemporaryFolder folder_;
    const String path_ = folder_.Write(u"a.pptx", "old");
    const WarningRecorder warnings_;
};

TEST_F(AttributesOfAFile, GoOverWithASave)
{
    if (!SetAttribute(path_, "user.origin", "scanner") || !SetAttribute(path_, "user.empty", ""))
        GTEST_SKIP() << "the file system has no extended attributes";

    Replace(path_, "new");

    EXPECT_EQ(ContentOf(path_), "new");
    EXPECT_EQ(AttributeOf(path_, "user.origin"), "scanner");
    EXPECT_EQ(AttributeOf(path_, "user.empty"), "");
}

TEST_F(AttributesOfAFile, GoOverInAnyNumberAndSize)
{
    const std::string large(3000, 'v');
    if (!SetAttribute(path_, "user.large", large))
        GTEST_SKIP() << "the file system has no extended attributes of that size";
    int count = 0;
    while (count < 20 &&
           SetAttribute(path_, ("user.a-rather-long-name-of-an-attribute." + std::to_string(count)).c_str(), "v"))
        ++count;
    ASSERT_GT(count, 12) << "the names are to take more than the first look has room for";

    Replace(path_, "new");

    EXPECT_EQ(AttributeOf(path_, "user.large"), large);
    for (int i = 0; i < count; ++i)
        EXPECT_EQ(AttributeOf(path_, ("user.a-rather-long-name-of-an-attribute." + std::to_string(i)).c_str()), "v");
}

TEST_F(AttributesOfAFile, KeepItsAccessList)
{
    if (!SetAttribute(path_, AccessListAttribute, StrangersList()))
        GTEST_SKIP() << "the file system has no access lists";
    const mode_t mode = ModeOf(path_);

    Replace(path_, "new");

    EXPECT_EQ(AttributeOf(path_, AccessListAttribute), StrangersList());
    EXPECT_EQ(ModeOf(path_), mode);
}

TEST_F(AttributesOfAFile, AreNotThoseThatItsFolderHasForNewFiles)
{
    SetMode(path_, 0640);
    const std::string forAll = AccessList(
        {{Entry::Owner, 7}, {Entry::User, 7, stranger}, {Entry::OwningGroup, 7}, {Entry::Mask, 7}, {Entry::Others, 7}});
    if (!SetAttribute(folder_.Path(), DefaultListAttribute, forAll))
        GTEST_SKIP() << "the file system has no access lists";

    Replace(path_, "new");

    EXPECT_EQ(AttributeOf(path_, AccessListAttribute), "<missing>");
    EXPECT_EQ(ModeOf(path_), 0640u);
}

TEST_F(AttributesOfAFile, AreThoseOfItsFolderWhenItIsNew)
{
    const std::string listOfFolder = AccessList(
        {{Entry::Owner, 7}, {Entry::User, 5, stranger}, {Entry::OwningGroup, 0}, {Entry::Mask, 7}, {Entry::Others, 0}});
    if (!SetAttribute(folder_.Path(), DefaultListAttribute, listOfFolder))
        GTEST_SKIP() << "the file system has no access lists";
    const String path = folder_.PathOf(u"new.tsq");

    Replace(path, "new");

    EXPECT_EQ(AttributeOf(path, AccessListAttribute), AccessList({{Entry::Owner, 6},
                                                                  {Entry::User, 4, stranger},
                                                                  {Entry::OwningGroup, 0},
                                                                  {Entry::Mask, 6},
                                                                  {Entry::Others, 0}}));
    EXPECT_EQ(ModeOf(path), 0660u) << "the group's bits are those of the mask";
}

TEST_F(AttributesOfAFile, GoOverToABackup)
{
    SetMode(path_, 0640);
    const bool hasList = SetAttribute(path_, AccessListAttribute, StrangersList());
    const bool isGivenAway = chown(ToUtf8(path_).c_str(), stranger, stranger) == 0;
    const mode_t mode = ModeOf(path_);

    CopyFile(path_, folder_.PathOf(u"a..bak"));

    EXPECT_EQ(ModeOf(folder_.PathOf(u"a..bak")), mode);
    EXPECT_EQ(AttributeOf(folder_.PathOf(u"a..bak"), AccessListAttribute), hasList ? StrangersList() : "<missing>");
    EXPECT_EQ(StatusOf(folder_.PathOf(u"a..bak")).st_uid, isGivenAway ? stranger : geteuid());
}

/// A file of another user that this one may write, as in a folder that many share.
class FileOfAnotherOwner : public AttributesOfAFile
{
protected:
    void SetUp() override
    {
        if (geteuid() != 0 || chown(ToUtf8(path_).c_str(), stranger, stranger) != 0)
            GTEST_SKIP() << "only the superuser makes files of others";
        SetMode(path_, 0666);
        SetMode(folder_.Path(), 0777);
        SetMode(data_.Path(), 0777);
        user_.emplace();
        if (!user_->IsAnotherUser())
            GTEST_SKIP() << "there is no other user";
    }

    std::optional<OrdinaryUser> user_;
};

TEST_F(FileOfAnotherOwner, IsNotSavedWithoutItsOwner)
{
    EXPECT_THAT(FailureOfReplace(path_), HasSubstr("its owner and group can't be given to the new file"));

    EXPECT_EQ(ContentOf(path_), "old");
    EXPECT_THAT(FilesOfFolder(folder_.Path()), ElementsAre(path_));
}

TEST_F(FileOfAnotherOwner, IsWrittenInPlaceOnRequest)
{
    const struct stat before = StatusOf(path_);

    Replace(path_, "a new and longer text", {.inPlaceWhereNotKept = true});

    EXPECT_EQ(ContentOf(path_), "a new and longer text");
    EXPECT_EQ(StatusOf(path_).st_ino, before.st_ino);
    EXPECT_EQ(StatusOf(path_).st_uid, stranger);
    EXPECT_EQ(StatusOf(path_).st_mode, before.st_mode);
    EXPECT_THAT(FilesOfFolder(folder_.Path()), ElementsAre(path_));
    EXPECT_THAT(FilesOfFolder(data_.Path()), IsEmpty());
}

TEST_F(FileOfAnotherOwner, HasABackupThatNobodyElseReads)
{
    CopyFile(path_, folder_.PathOf(u"a..bak"));

    EXPECT_EQ(ContentOf(folder_.PathOf(u"a..bak")), "old");
    EXPECT_EQ(ModeOf(folder_.PathOf(u"a..bak")), 0600u);
}

TEST_F(FileOfAnotherOwner, IsNotPutBackWithoutItsOwner)
{
    const String backup = folder_.Write(u"a..bak", "backup");

    EXPECT_THROW(CopyFileBack(backup, path_), Failure);
    EXPECT_EQ(ContentOf(path_), "old");
    CopyFileBack(backup, path_, {.inPlaceWhereNotKept = true});

    EXPECT_EQ(ContentOf(path_), "backup");
    EXPECT_EQ(StatusOf(path_).st_uid, stranger);
}

TEST_F(AttributesOfAFile, StayTheDocumentsWhenTheCopyIsSomebodyElses)
{
    const String backup = folder_.Write(u"a..bak", "backup");
    SetMode(backup, 0600);
    if (chown(ToUtf8(path_).c_str(), stranger, stranger) != 0)
        GTEST_SKIP() << "only the superuser makes files of others";
    SetMode(path_, 0464);

    CopyFileBack(backup, path_);

    EXPECT_EQ(ContentOf(path_), "backup");
    EXPECT_EQ(StatusOf(path_).st_uid, stranger);
    EXPECT_EQ(ModeOf(path_), 0664u) << "the copy may be written by its owner";
}

TEST_F(AttributesOfAFile, AreLeftToAFileInAClosedFolderThatIsWrittenInPlace)
{
    SetMode(folder_.Path(), 0555);
    SetMode(path_, 0666);
    SetMode(data_.Path(), 0777);
    const ino_t before = StatusOf(path_).st_ino;
    const OrdinaryUser user;

    EXPECT_THAT(FailureOfReplace(path_), HasSubstr("no new file can be made beside"));
    EXPECT_EQ(ContentOf(path_), "old");
    Replace(path_, "a new and longer text", {.inPlaceWhereFolderIsClosed = true});
    EXPECT_EQ(ContentOf(path_), "a new and longer text");
    Replace(path_, "n", {.inPlaceWhereFolderIsClosed = true});

    EXPECT_EQ(ContentOf(path_), "n");
    EXPECT_EQ(StatusOf(path_).st_ino, before);
    EXPECT_THAT(FilesOfFolder(data_.Path()), IsEmpty());
}

TEST_F(AttributesOfAFile, InAClosedFolderStayWithoutAFolderForTheCopy)
{
    SetMode(folder_.Path(), 0555);
    SetMode(path_, 0666);
    ApplicationDataFolder = data_.PathOf(u"none");
    const OrdinaryUser user;

    EXPECT_THAT(FailureOfReplace(path_, {.inPlaceWhereFolderIsClosed = true}),
                HasSubstr("no new file can be made beside"));
    EXPECT_EQ(ContentOf(path_), "old");
}

TEST_F(AttributesOfAFile, WriteOfAClosedFolderNoticesAnotherProgram)
{
    SetMode(folder_.Path(), 0555);
    SetMode(path_, 0666);
    SetMode(data_.Path(), 0777);
    const OrdinaryUser user;
    ReplacementFile file(path_, ReplacementFile::Missing::Fails, {.inPlaceWhereFolderIsClosed = true});
    file.Write(std::as_bytes(std::span("new", 3)));
    const FileDescriptor other(open(ToUtf8(path_).c_str(), O_WRONLY | O_CLOEXEC));
    ASSERT_EQ(write(other.get(), "OLD", 3), 3);

    EXPECT_THROW(file.Commit(), Failure);

    EXPECT_EQ(ContentOf(path_), "OLD");
}

TEST_F(AttributesOfAFile, CountOtherNamesThatKeepTheOldText)
{
    const String two = folder_.PathOf(u"two.pptx");
    std::filesystem::create_hard_link(ToUtf8(path_), ToUtf8(two));
    Replace(path_, "new");
    EXPECT_THAT(warnings_.Warnings(), ElementsAre(Pair(path_, "has 1 more name that keeps the old text")));
    EXPECT_EQ(ContentOf(two), "old");

    std::filesystem::create_hard_link(ToUtf8(two), ToUtf8(folder_.PathOf(u"three.pptx")));
    std::filesystem::create_hard_link(ToUtf8(two), ToUtf8(folder_.PathOf(u"four.pptx")));
    Replace(two, "new");

    EXPECT_THAT(warnings_.Warnings(), ElementsAre(testing::_, Pair(two, "has 2 more names that keep the old text")));
}

TEST_F(AttributesOfAFile, ShowTheNewTextUnderAllNamesOnRequest)
{
    const String two = folder_.PathOf(u"two.pptx");
    std::filesystem::create_hard_link(ToUtf8(path_), ToUtf8(two));

    Replace(path_, "new text", {.inPlaceLinks = true});

    EXPECT_EQ(ContentOf(path_), "new text");
    EXPECT_EQ(ContentOf(two), "new text");
    EXPECT_EQ(StatusOf(path_).st_ino, StatusOf(two).st_ino);
    EXPECT_THAT(warnings_.Warnings(), IsEmpty());
    EXPECT_THAT(FilesOfFolder(folder_.Path()), ElementsAre(path_, two));
}

TEST_F(AttributesOfAFile, OfOneNameNeedNoWriteInPlace)
{
    const ino_t before = StatusOf(path_).st_ino;

    Replace(path_, "new", {.inPlaceLinks = true, .inPlaceWhereNotKept = true, .inPlaceWhereFolderIsClosed = true});

    EXPECT_EQ(ContentOf(path_), "new");
    EXPECT_NE(StatusOf(path_).st_ino, before);
}

TEST_F(AttributesOfAFile, AreSavedWithAWarningWhenTheFolderCannotBeFlushed)
{
    FlushRecorder recorder;
    recorder.FailFolders();

    Replace(path_, "new");

    EXPECT_EQ(ContentOf(path_), "new");
    ASSERT_EQ(warnings_.Warnings().size(), 1u);
    EXPECT_EQ(warnings_.Warnings()[0].first, path_);
    EXPECT_THAT(warnings_.Warnings()[0].second, HasSubstr("its folder could not be flushed to the disk"));
}

}  // namespace
}  // namespace tessarine
