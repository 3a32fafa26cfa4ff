#include <gmock/gmock.h>

#include "KilledProcess.h"
#include "model/Project.h"
#include "SavedDeck.h"
#include "saving/Leftovers.h"
#include "support/AccessList.h"

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

TEST(KilledSave, LetsNobodyInWhomTheOldFileKeepsOut)
{
    const SavedDeck deck(SmallDeck());
    using Entry = AccessEntry;
    // One stranger may read, the own group may not: without the list, the mode 0640 would let the group in.
    const std::string list = AccessList(
        {{Entry::Owner, 6}, {Entry::User, 4, 12345}, {Entry::OwningGroup, 0}, {Entry::Mask, 4}, {Entry::Others, 0}});
    std::size_t kills = 0;
    std::size_t leftovers = 0;

    for (Outcome outcome = Outcome::Killed; outcome == Outcome::Killed; ++kills) {
        SetMode(deck.Path(), 0640);
        const bool hasList = SetAttribute(deck.Path(), AccessListAttribute, list);
        outcome = SaveKilledAt(kills, deck);
        if (outcome == Outcome::NotTraceable)
            GTEST_SKIP() << "processes can't be traced here";

        ASSERT_EQ(ModeOf(deck.Path()), 0640u) << "killed at stop " << kills;
        ASSERT_EQ(AttributeOf(deck.Path(), AccessListAttribute), hasList ? list : "<missing>")
            << "killed at stop " << kills;
        for (const std::string& name : deck.OtherFiles()) {
            const String path = deck.Folder().PathOf(FromUtf8(name));
            const bool isOwnersAlone = ModeOf(path) == 0600u;
            const bool isAsTheOld =
                ModeOf(path) == 0640u && AttributeOf(path, AccessListAttribute) == (hasList ? list : "<missing>");
            ASSERT_TRUE(isOwnersAlone || isAsTheOld) << "killed at stop " << kills;
            ++leftovers;
        }
        EXPECT_LE(RemoveLeftovers(deck.Folder().Path()), 1u);
        ASSERT_THAT(deck.OtherFiles(), testing::IsEmpty()) << "killed at stop " << kills;
        deck.Restore();
    }

    EXPECT_GT(leftovers, 10u);
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

TEST_F(LeftoverTest, OfAKilledSaveIsRemovedOnRequest)
{
    EXPECT_EQ(RemoveLeftovers(deck_.Folder().Path()), 1u);

    EXPECT_THAT(deck_.OtherFiles(), testing::IsEmpty());
    EXPECT_TRUE(deck_.Opens());
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
