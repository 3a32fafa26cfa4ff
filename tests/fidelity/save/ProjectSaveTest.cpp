#include <gmock/gmock.h>

#include <filesystem>

#include "files/Files.h"
#include "KilledProcess.h"
#include "log/ErrorLog.h"
#include "model/Project.h"
#include "saving/FileSizeLimit.h"
#include "saving/RunJournal.h"
#include "support/ErrorLogRecorder.h"
#include "support/OrdinaryUser.h"
#include "support/TemporaryFolder.h"

namespace tessarine::test
{
namespace
{

/// A project file that a shorter project is saved over, so that a tail of it stays.
class SavedProjectTest : public testing::Test
{
protected:
    SavedProjectTest()
    {
        AddItems(longer_, 40);
        AddItems(shorter_, 3);
        Save(longer_);
        old_ = ContentOf(path_);
        Save(shorter_);
        new_ = ContentOf(path_);
        Restore();
    }

    static void AddItems(const ProjectOwner& project, int count)
    {
        for (int i = 0; i < count; ++i)
            project->FindAndReplaceList->Add(u"Fabrikam", u"Contoso", std::make_shared<OptionSetting>(), project.get());
    }

    void Save(const ProjectOwner& project)
    {
        String path = path_;
        project->SaveAsProject(path, true);
    }

    /// Number of pairs that the file gives when it is loaded, -1 when it can't be.
    std::int32_t ItemsInFile() const
    {
        const ProjectOwner project;
        std::int32_t error = 0;
        return project->LoadProject(path_, error) ? project->FindAndReplaceList->Count() : -1;
    }

    std::vector<std::string> OtherFiles() const
    {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(ToUtf8(folder_.Path())))
            if (entry.path().filename() != "job.tsq")
                names.push_back(entry.path().filename());
        return names;
    }

    void Restore()
    {
        for (const std::string& name : OtherFiles())
            std::filesystem::remove(ToUtf8(folder_.PathOf(FromUtf8(name))));
        folder_.Write(u"job.tsq", old_);
    }

    const ErrorLogRecorder log_;
    const TemporaryFolder folder_;
    const String path_ = folder_.PathOf(u"job.tsq");
    const ProjectOwner longer_;
    const ProjectOwner shorter_;
    std::string old_;
    std::string new_;
};

TEST_F(SavedProjectTest, StaysTheOldOneWhereverTheDiskIsFull)
{
    for (std::size_t length = 0; length < new_.size(); length += 97) {
        {
            const FileSizeLimit full(length);
            Save(shorter_);
        }
        ASSERT_TRUE(shorter_->FileFailure) << "full at " << length;
        ASSERT_EQ(shorter_->FileFailure->number, FailureNumber::SystemDiskFull) << "full at " << length;
        ASSERT_TRUE(ContentOf(path_) == old_) << "full at " << length;
        ASSERT_THAT(OtherFiles(), testing::IsEmpty()) << "full at " << length;
    }
    EXPECT_EQ(ItemsInFile(), 40);

    const FileSizeLimit enough(new_.size());
    Save(shorter_);

    EXPECT_FALSE(shorter_->FileFailure);
    EXPECT_TRUE(ContentOf(path_) == new_);
}

TEST_F(SavedProjectTest, LoadsAsTheOldOrTheNewOneAfterAKilledSave)
{
    ASSERT_EQ(new_.size(), old_.size());
    std::size_t kills = 0;
    std::size_t oldFiles = 0;

    for (Outcome outcome = Outcome::Killed; outcome == Outcome::Killed; ++kills) {
        outcome = KillSaveAt(
            kills, [] {}, [&] { Save(shorter_); });
        if (outcome == Outcome::NotTraceable)
            GTEST_SKIP() << "processes can't be traced here";

        const std::string bytes = ContentOf(path_);
        ASSERT_TRUE(bytes == old_ || bytes == new_) << "killed at stop " << kills;
        ASSERT_EQ(ItemsInFile(), bytes == old_ ? 40 : 3) << "killed at stop " << kills;
        oldFiles += bytes == old_ ? 1 : 0;
        EXPECT_TRUE(outcome == Outcome::Killed || bytes == new_);
        Restore();
    }

    // The rename lies in between: kills before it and kills after it have both been seen.
    EXPECT_GT(oldFiles, 10u);
    EXPECT_GT(kills, oldFiles + 2);
}

TEST_F(SavedProjectTest, InAClosedFolderIsTheOldOrTheNewOneAfterTheNextStart)
{
    SetMode(path_, 0666);
    std::size_t kills = 0;
    std::size_t newFiles = 0;

    for (Outcome outcome = Outcome::Killed; outcome == Outcome::Killed; ++kills) {
        SetMode(folder_.Path(), 0555);
        outcome = KillSaveAt(
            kills, [] {},
            [&] {
                const OrdinaryUser user;
                Save(shorter_);
            });
        if (outcome == Outcome::NotTraceable)
            GTEST_SKIP() << "processes can't be traced here";
        {
            const OrdinaryUser user;
            RecoverFromKilledRuns();
        }

        const std::string bytes = ContentOf(path_);
        ASSERT_TRUE(bytes == old_ || bytes == new_) << "killed at stop " << kills;
        newFiles += bytes == new_ ? 1 : 0;
        EXPECT_TRUE(outcome == Outcome::Killed || bytes == new_);
        ASSERT_THAT(FilesOfFolder(ApplicationDataFolder), testing::IsEmpty()) << "killed at stop " << kills;
        SetMode(folder_.Path(), 0755);
        Restore();
    }

    EXPECT_GT(newFiles, 10u) << "the save was killed amid its write, too";
    EXPECT_GT(kills, newFiles + 10);
}

TEST_F(SavedProjectTest, IsMissingOrWholeAfterAKilledFirstSave)
{
    std::size_t wholeFiles = 0;

    for (std::size_t stop = 0;; ++stop) {
        std::filesystem::remove(ToUtf8(path_));
        const Outcome outcome = KillSaveAt(
            stop, [] {}, [&] { Save(shorter_); });
        if (outcome == Outcome::NotTraceable)
            GTEST_SKIP() << "processes can't be traced here";

        ASSERT_TRUE(ContentOf(path_) == "<missing>" || ItemsInFile() == 3) << "killed at stop " << stop;
        wholeFiles += ContentOf(path_) == "<missing>" ? 0 : 1;
        if (outcome == Outcome::Finished)
            break;
    }

    EXPECT_GT(wholeFiles, 1u);
}

}  // namespace
}  // namespace tessarine::test
