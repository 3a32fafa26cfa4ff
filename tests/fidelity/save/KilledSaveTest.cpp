#include <gmock/gmock.h>
#include <signal.h>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

#include "model/Project.h"
#include "SavedDeck.h"

namespace tessarine::test
{
namespace
{

enum class Outcome { Killed, Finished, NotTraceable };

/// Saves in a process of its own that is killed where it enters or leaves a system call for the `stop`th time.
Outcome SaveKilledAt(std::size_t stop, const SavedDeck& deck)
{
    const pid_t child = fork();
    if (child == 0) {
        const auto presentation = deck.Edited();
        if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0)
            _exit(1);
        raise(SIGSTOP);
        presentation->Save();
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    if (!WIFSTOPPED(status))
        return Outcome::NotTraceable;
    ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_EXITKILL | PTRACE_O_TRACESYSGOOD);
    for (std::size_t met = 0; met < stop; ++met) {
        ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
        waitpid(child, &status, 0);
        if (WIFEXITED(status))
            return Outcome::Finished;
    }
    kill(child, SIGKILL);
    waitpid(child, &status, 0);
    return Outcome::Killed;
}

Deck SmallDeck()
{
    return Deck().Slide(Title(u"Fabrikam")).Core("dc:title", u"Fabrikam");
}

TEST(KilledSave, LeavesTheOldOrTheNewFileAtEverySystemCall)
{
    const SavedDeck deck(SmallDeck());
    std::size_t kills = 0;
    std::size_t oldFiles = 0;

    for (Outcome outcome = Outcome::Killed; outcome == Outcome::Killed; ++kills) {
        outcome = SaveKilledAt(kills, deck);
        if (outcome == Outcome::NotTraceable)
            GTEST_SKIP() << "processes can't be traced here";

        const std::string bytes = ContentOf(deck.Path());
        ASSERT_TRUE(bytes == deck.Old() || bytes == deck.New()) << "killed at stop " << kills;
        ASSERT_TRUE(deck.Opens()) << "killed at stop " << kills;
        oldFiles += bytes == deck.Old() ? 1 : 0;
        EXPECT_TRUE(outcome == Outcome::Killed || bytes == deck.New());
        deck.Restore();
    }

    // The rename lies in between: kills before it and kills behind it have both been seen.
    EXPECT_GT(oldFiles, 10u);
    EXPECT_GT(kills, oldFiles + 2);
}

/// A folder in which a save was killed halfway, with the half-written file that it left.
class LeftoverTest : public testing::Test
{
protected:
    void SetUp() override
    {
        for (std::size_t stop = 0; deck_.OtherFiles().empty(); stop += 2) {
            const Outcome outcome = SaveKilledAt(stop, deck_);
            if (outcome == Outcome::NotTraceable)
                GTEST_SKIP() << "processes can't be traced here";
            ASSERT_EQ(outcome, Outcome::Killed) << "no kill left a file behind";
        }
    }

    const SavedDeck deck_{SmallDeck()};
};

TEST_F(LeftoverTest, OfAKilledSaveIsNoFileOfTheNextJob)
{
    const ProjectOwner project;
    project->options->FileToProcessFolderPath = deck_.Folder().Path();
    project->options->ComaSepAllowedExtensions = u"*.ppt*";

    EXPECT_EQ(project->GetFileToProcessFileCount(), 1);
    EXPECT_THAT(project->FilesToProcess, testing::ElementsAre(deck_.Path()));
}

TEST_F(LeftoverTest, OfAKilledSaveDoesNotDisturbTheNextSave)
{
    const std::vector<std::string> leftover = deck_.OtherFiles();

    deck_.Edited()->Save();

    EXPECT_TRUE(ContentOf(deck_.Path()) == deck_.New());
    EXPECT_EQ(deck_.OtherFiles(), leftover);
}

}  // namespace
}  // namespace tessarine::test
