#include <algorithm>
#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "batch/program/ProgramWindows.h"
#include "platform/NativePath.h"
#include "platform/WindowsHeaders.h"
#include "saving/Leftovers.h"
#include "support/Deck.h"

// Replaces that are killed at many moments, each followed by a run to the end.

namespace tessarine::test
{
namespace
{

using testing::HasSubstr;
using testing::IsEmpty;

namespace fs = std::filesystem;

constexpr int deckCount = 6;

String DeckName(int number)
{
    return FromUtf8(std::to_string(number) + ".pptx");
}

/// Every third one.
bool IsReadOnly(int number)
{
    return number % 3 == 0;
}

const std::vector<std::string> replace{"replace",  "--find",      "Fabrikam", "--with", "Contoso",
                                       "--backup", "--read-only", "--format", "json",   "decks"};

class KilledProgramTest : public testing::Test
{
protected:
    void SetUp() override
    {
        for (int number = 0; number < deckCount; ++number)
            old.push_back(Deck()
                              .Slide(Title(u"Fabrikam"), NotesPage(u"Ask Fabrikam"))
                              .Media("x.bin", 100'000, static_cast<unsigned>(number + 1))
                              .Bytes());
        PutDecks();
        ASSERT_EQ(program.Run(replace).status, 0);
        for (int number = 0; number < deckCount; ++number)
            changed.push_back(Content(DeckName(number)));
        ASSERT_NE(changed.front(), old.front());
        namesAtTheEnd = Names();
    }

    fs::path Folder() const { return NativePath(program.folder.PathOf(u"decks")); }
    String PathOf(const String& name) const { return program.folder.PathOf(u"decks/" + name); }
    std::string Content(const String& name) const { return ContentOf(PathOf(name)); }

    /// The folder as it is before any run.
    void PutDecks() const
    {
        if (fs::exists(Folder()))
            for (const auto& entry : fs::directory_iterator(Folder()))
                SetMode(PathText(entry.path().native()), 0644);
        fs::remove_all(Folder());
        for (int number = 0; number < deckCount; ++number) {
            program.folder.Write(u"decks/" + DeckName(number), old[static_cast<std::size_t>(number)]);
            if (IsReadOnly(number))
                SetMode(PathOf(DeckName(number)), 0444);
        }
    }

    std::vector<String> Names() const
    {
        std::vector<String> names;
        for (const auto& entry : fs::directory_iterator(Folder()))
            names.push_back(PathText(entry.path().filename().native()));
        std::ranges::sort(names);
        return names;
    }

    std::vector<String> NewFiles() const
    {
        std::vector<String> names = Names();
        std::erase_if(names, [](const String& name) {
            return name.find(u".tessarine-") == String::npos || name == u".tessarine-backups";
        });
        return names;
    }

    /// What a deck holds, be it under its own name or, in the moment of its replacement, under that with a new file's
    /// name after it.
    std::string ContentWhereverItIs(const String& name) const
    {
        if (fs::exists(NativePath(PathOf(name))))
            return Content(name);
        for (const String& other : NewFiles())
            if (NameBeforeSave(NativePath(other)) == NativePath(name))
                return Content(other);
        return "<missing>";
    }

    /// Gives how many decks are changed.
    int CheckStop() const
    {
        int changedDecks = 0;
        for (int number = 0; number < deckCount; ++number) {
            const auto index = static_cast<std::size_t>(number);
            const std::string content = ContentWhereverItIs(DeckName(number));
            EXPECT_TRUE(content == old[index] || content == changed[index]) << "deck " << number;
            changedDecks += content == changed[index] ? 1 : 0;
            const std::string backup = Content(FromUtf8(std::to_string(number) + "..bak"));
            EXPECT_TRUE(backup == old[index] || (backup == "<missing>" && content == old[index])) << "deck " << number;
        }
        return changedDecks;
    }

    void CheckEnd() const
    {
        for (int number = 0; number < deckCount; ++number) {
            const auto index = static_cast<std::size_t>(number);
            EXPECT_TRUE(Content(DeckName(number)) == changed[index]) << "deck " << number;
            EXPECT_EQ(ModeOf(PathOf(DeckName(number))), IsReadOnly(number) ? 0444u : 0644u) << "deck " << number;
            EXPECT_TRUE(Content(FromUtf8(std::to_string(number) + "..bak")) == old[index]) << "deck " << number;
        }
        EXPECT_EQ(Names(), namesAtTheEnd);
    }

    /// Until nothing is left to do: a deck that was just being replaced is put back by the next run, and no file of it.
    void RunToTheEnd()
    {
        for (int runs = IsAnyMovedAside() ? 2 : 1; runs > 0; --runs) {
            const Outcome outcome = program.Run(replace);
            EXPECT_EQ(outcome.status, 0) << outcome.output << outcome.error;
        }
    }

    bool IsAnyMovedAside() const
    {
        return std::ranges::any_of(NewFiles(),
                                   [](const String& name) { return !NameBeforeSave(NativePath(name)).empty(); });
    }

    Program program;
    std::vector<std::string> old;
    std::vector<std::string> changed;
    std::vector<String> namesAtTheEnd;
};

TEST_F(KilledProgramTest, LeavesEachDeckOldOrNewAndTheNextRunPutsAllRight)
{
    // After each file's line, and some while into the next file. The pipe holds about two lines, so that a run that is
    // faster than this test waits for it.
    constexpr int momentsPerFile = 4;
    constexpr int linesThatArePassedOn = deckCount - 3;
    LARGE_INTEGER frequency{};
    QueryPerformanceFrequency(&frequency);
    const LONGLONG step = frequency.QuadPart / 500;

    for (int moment = 0; moment < linesThatArePassedOn * momentsPerFile; ++moment) {
        SCOPED_TRACE("moment " + std::to_string(moment));
        PutDecks();
        NarrowPipe pipe(256);
        {
            RunningProgram process(program, replace, {NoFile, pipe.writer(), NoFile});
            pipe.CloseWriter();
            for (int line = 0; line < 1 + moment / momentsPerFile; ++line)
                ASSERT_THAT(pipe.ReadLine(), HasSubstr("\"changed\""));
            LARGE_INTEGER now{};
            QueryPerformanceCounter(&now);
            for (const LONGLONG end = now.QuadPart + step * (moment % momentsPerFile); now.QuadPart < end;)
                QueryPerformanceCounter(&now);
            process.Kill();
        }

        const int changedDecks = CheckStop();
        EXPECT_GT(changedDecks, moment / momentsPerFile);
        EXPECT_LT(changedDecks, deckCount);

        RunToTheEnd();
        CheckEnd();
        if (HasFailure())
            break;
    }
}

TEST_F(KilledProgramTest, InTheMiddleOfASaveLeavesTheOldDeckAndNothingAfterTheNextRun)
{
    // As soon as a new file shows. A look may come too late for it, so it is tried until one is left.
    std::size_t leftovers = 0;
    for (int attempt = 0; leftovers == 0 && attempt < 100; ++attempt) {
        PutDecks();
        {
            RunningProgram process(program, replace, {});
            while (NewFiles().empty() && !process.HasEnded()) {
            }
            process.Kill();
        }
        leftovers = NewFiles().size();
        CheckStop();

        RunToTheEnd();
        CheckEnd();
    }

    EXPECT_GT(leftovers, 0u);
}

TEST_F(KilledProgramTest, OverOneFolderAgainAndAgainGetsToTheEnd)
{
    PutDecks();
    for (int lines = 1; lines < deckCount - 2; ++lines) {
        NarrowPipe pipe(256);
        RunningProgram process(program, replace, {NoFile, pipe.writer(), NoFile});
        pipe.CloseWriter();
        for (int line = 0; line < lines; ++line)
            pipe.ReadLine();
        process.Kill();
        CheckStop();
    }

    RunToTheEnd();
    CheckEnd();
}

}  // namespace
}  // namespace tessarine::test
