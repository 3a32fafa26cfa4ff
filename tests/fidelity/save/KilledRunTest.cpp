#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "files/Files.h"
#include "KilledProcess.h"
#include "log/ErrorLog.h"
#include "model/Project.h"
#include "office/builtin/Provider.h"
#include "saving/RunJournal.h"
#include "support/Deck.h"
#include "support/ErrorLogRecorder.h"
#include "support/TemporaryFolder.h"

// A run over a read-only presentation whose dates are kept, killed at every system call of the file that it is at: the
// next start leaves a presentation that is read-only and has its old date.

namespace tessarine::test
{
namespace
{

constexpr time_t oldDate = 1100000000;

class KilledRun : public testing::Test
{
protected:
    void PutDeck() const
    {
        folder_.Write(u"a.pptx", old_);
        const timespec times[] = {{oldDate, 0}, {oldDate, 0}};
        ASSERT_EQ(utimensat(AT_FDCWD, ToUtf8(path_).c_str(), times, 0), 0);
        SetMode(path_, 0444);
    }

    void Replace(const String& find) const
    {
        const ProjectOwner project(builtin::CreateProvider());
        const auto options = std::make_shared<OptionSetting>();
        options->InSlides = true;
        project->FindAndReplaceList->Add(find, u"Contoso", options, project.get());
        project->FilesToProcess = {path_};
        project->options->ProcessReadonlyFiles = true;
        project->options->KeepOriginalFileDate = true;
        project->Replacement();
    }

    static time_t DateOf(const String& path)
    {
        struct stat status = {};
        EXPECT_EQ(stat(ToUtf8(path).c_str(), &status), 0);
        return status.st_mtim.tv_sec;
    }

    const ErrorLogRecorder log_;
    const TemporaryFolder folder_;
    const std::string old_ = Deck().Slide(Title(u"Fabrikam")).Bytes();
    const String path_ = folder_.PathOf(u"a.pptx");
};

TEST_F(KilledRun, LeavesModeAndDatesToTheNextStartWhereverItIsKilled)
{
    PutDeck();
    Replace(u"Fabrikam");
    const std::string changed = ContentOf(path_);
    ASSERT_NE(changed, old_);

    Outcome outcome = Outcome::Killed;
    std::size_t newFiles = 0;
    for (std::size_t stop = 1; outcome == Outcome::Killed; ++stop) {
        std::filesystem::remove(ToUtf8(path_));
        PutDeck();
        outcome = KillSaveAt(
            stop, [] {}, [this] { Replace(u"Fabrikam"); });
        if (outcome == Outcome::NotTraceable)
            GTEST_SKIP() << "the system lets no process be traced";

        const auto recovered = RecoverFromKilledRuns();

        const std::string content = ContentOf(path_);
        ASSERT_TRUE(content == old_ || content == changed) << "stopped at call " << stop;
        newFiles += content == changed ? 1 : 0;
        ASSERT_EQ(ModeOf(path_), 0444u) << "stopped at call " << stop;
        ASSERT_EQ(DateOf(path_), oldDate) << "stopped at call " << stop;
        for (const RecoveredFile& file : recovered)
            ASSERT_EQ(file.path, path_) << ToUtf8(file.text);
    }
    EXPECT_GT(newFiles, 10u) << "the run was killed after its rename, too";
    for (const auto& entry : std::filesystem::directory_iterator(ToUtf8(ApplicationDataFolder)))
        EXPECT_NE(entry.path().extension(), ".journal");
}

TEST_F(KilledRun, LeavesThemOfAFileWithoutAHitToo)
{
    Outcome outcome = Outcome::Killed;
    for (std::size_t stop = 1; outcome == Outcome::Killed; ++stop) {
        std::filesystem::remove(ToUtf8(path_));
        PutDeck();
        outcome = KillSaveAt(
            stop, [] {}, [this] { Replace(u"nowhere"); });
        if (outcome == Outcome::NotTraceable)
            GTEST_SKIP() << "the system lets no process be traced";

        RecoverFromKilledRuns();

        ASSERT_TRUE(ContentOf(path_) == old_) << "stopped at call " << stop;
        ASSERT_EQ(ModeOf(path_), 0444u) << "stopped at call " << stop;
        ASSERT_EQ(DateOf(path_), oldDate) << "stopped at call " << stop;
    }
}

}  // namespace
}  // namespace tessarine::test
