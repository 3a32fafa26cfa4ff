#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "DeckOnDisk.h"
#include "engine/SearchFunctions.h"
#include "model/Project.h"
#include "model/SearchLocations.h"
#include "support/ErrorLogRecorder.h"
#include "support/Fixtures.h"

namespace tessarine::test
{
namespace
{

constexpr time_t longAgo = 1000000000;

struct Times {
    timespec accessed;
    timespec modified;
    timespec changed;

    bool operator==(const Times& other) const
    {
        const auto same = [](const timespec& a, const timespec& b) {
            return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec;
        };
        return same(accessed, other.accessed) && same(modified, other.modified) && same(changed, other.changed);
    }
};

Times TimesOf(const String& path)
{
    struct stat status = {};
    stat(ToUtf8(path).c_str(), &status);
    return {status.st_atim, status.st_mtim, status.st_ctim};
}

/// Read long before it was written, so that any reading that counts shows.
void MakeOld(const String& path)
{
    const timespec times[2] = {{longAgo, 0}, {longAgo + 1000, 0}};
    utimensat(AT_FDCWD, ToUtf8(path).c_str(), times, 0);
}

/// False where the system keeps no access times at all; then there is nothing to see.
bool AccessTimesMove(const TemporaryFolder& folder)
{
    const String path = folder.Write(u"probe", "probe");
    MakeOld(path);
    const int file = open(ToUtf8(path).c_str(), O_RDONLY);
    char byte = 0;
    const bool read = ::read(file, &byte, 1) == 1;
    close(file);
    return read && TimesOf(path).accessed.tv_sec != longAgo;
}

class FindRun : public testing::TestWithParam<fixtures::NamedDeck>
{
};

TEST_P(FindRun, WithAllLocationsLeavesBytesAndTimesOfTheFile)
{
    const ErrorLogRecorder log;
    const DeckOnDisk deck(GetParam().deck);
    const std::string before = deck.Bytes();
    MakeOld(deck.Path());
    const Times times = TimesOf(deck.Path());
    const ProjectOwner project;
    const auto item = project->FindAndReplaceList->Add(u"Fabrikam", u"Contoso", nullptr, project.get());
    item->OptionSetting = std::make_shared<OptionSetting>();
    for (const auto& location : SearchLocations)
        (*item->OptionSetting).*location.isOn = true;
    SearchFunctions engine;
    engine.mItems = project->FindAndReplaceList;
    engine.mIsFindOnly = true;
    engine.IsRequiredCount = true;
    engine.xPresentation = deck.Open();

    std::int32_t status = FileStatus::NotProcessed;
    const Raised raised =
        RaisedBy([&] { status = engine.ProcessFile(deck.Path(), u"", item->OptionSetting)->FileStausAfterProcess; });

    EXPECT_EQ(status, FileStatus::Counted) << raised.text;
    EXPECT_TRUE(TimesOf(deck.Path()) == times);
    EXPECT_EQ(deck.Bytes(), before);
}

std::vector<fixtures::NamedDeck> DecksThatOpen()
{
    auto decks = fixtures::ReadableDecks();
    std::erase_if(decks, [](const auto& deck) { return deck.name == "ModifyPassword"; });
    return decks;
}

INSTANTIATE_TEST_SUITE_P(OfTheFixtures, FindRun, testing::ValuesIn(DecksThatOpen()),
                         [](const auto& tested) { return tested.param.name; });

TEST(FindRunTimes, AreSeenToMoveHereWhenAFileIsRead)
{
    const TemporaryFolder folder;

    if (!AccessTimesMove(folder))
        GTEST_SKIP() << "this file system keeps no access times";
}

class RefusedFile : public testing::TestWithParam<fixtures::NamedFile>
{
};

TEST_P(RefusedFile, KeepsBytesAndTimesToo)
{
    const DeckOnDisk deck(GetParam().bytes);
    MakeOld(deck.Path());
    const Times times = TimesOf(deck.Path());

    RaisedBy([&] { WalkEverything(*deck.Open()); });

    EXPECT_TRUE(TimesOf(deck.Path()) == times);
    EXPECT_EQ(deck.Bytes(), GetParam().bytes);
}

INSTANTIATE_TEST_SUITE_P(OfTheFixtures, RefusedFile, testing::ValuesIn(fixtures::UnreadableFiles()),
                         [](const auto& tested) { return tested.param.name; });

}  // namespace
}  // namespace tessarine::test
