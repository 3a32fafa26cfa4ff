#include <gmock/gmock.h>

#include "KilledProcess.h"
#include "model/Project.h"
#include "SavedDeck.h"

namespace tessarine::test
{
namespace
{

/// Saves the edited deck in a process of its own that is killed at a stop.
Outcome SaveKilledAt(std::size_t stop, const SavedDeck& deck)
{
    std::shared_ptr<powerpoint::Presentation> presentation;
    return KillSaveAt(
        stop, [&] { presentation = deck.Edited(); }, [&] { presentation->Save(); });
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

    // The rename lies in between: kills before it and kills after it have both been seen.
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
