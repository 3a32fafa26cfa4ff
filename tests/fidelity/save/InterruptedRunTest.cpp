#include <cstdio>
#include <filesystem>
#include <memory>

#include <gmock/gmock.h>

#include "batch/BatchCall.h"
#include "batch/BatchProgram.h"
#include "batch/Output.h"
#include "KilledProcess.h"
#include "office/builtin/Provider.h"
#include "support/Deck.h"
#include "support/TemporaryFolder.h"

namespace tessarine::test
{
namespace
{

/// One presentation in a folder, and a run with backups over it.
class InterruptedRun : public testing::Test
{
protected:
    void Run()
    {
        batch::BatchCall call;
        call.command = batch::Command::Replace;
        call.pairs = {{u"Fabrikam", u"Contoso"}};
        call.setting.InSlides = true;
        call.backup = true;
        call.paths = {deck_};
        batch::Output output(nowhere_.get(), nowhere_.get());
        EXPECT_EQ(batch::Perform(call, {builtin::CreateProvider()}, output), batch::ExitStatus::Done);
    }

    const std::string original_ = Deck().Slide(Title(u"Fabrikam")).Bytes();
    const TemporaryFolder folder_;
    const String deck_ = folder_.PathOf(u"a.pptx");
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> nowhere_{std::fopen("/dev/null", "w"), &std::fclose};
};

TEST_F(InterruptedRun, StartedAgainKeepsTheOriginalWhereverItWasKilled)
{
    folder_.Write(u"a.pptx", original_);
    Run();
    const std::string changed = ContentOf(deck_);
    ASSERT_NE(changed, original_);
    std::size_t killsAfterTheChange = 0;

    Outcome outcome = Outcome::Killed;
    for (std::size_t stop = 0; outcome == Outcome::Killed; ++stop) {
        std::filesystem::remove_all(ToUtf8(folder_.Path()));
        folder_.Write(u"a.pptx", original_);
        outcome = KillSaveAt(
            stop, [] {}, [&] { Run(); });
        if (outcome == Outcome::NotTraceable)
            GTEST_SKIP() << "processes can't be traced here";
        killsAfterTheChange += outcome == Outcome::Killed && ContentOf(deck_) == changed ? 1 : 0;

        Run();

        ASSERT_EQ(ContentOf(folder_.PathOf(u"a..bak")), original_) << "killed at stop " << stop;
        ASSERT_EQ(ContentOf(deck_), changed) << "killed at stop " << stop;
    }

    // Kills in between are what a second copy would have lost the original by.
    EXPECT_GT(killsAfterTheChange, 5u);
}

}  // namespace
}  // namespace tessarine::test
