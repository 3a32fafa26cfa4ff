#include <gmock/gmock.h>

#include <algorithm>

#include "files/Files.h"
#include "platform/GivingUp.h"
#include "RunTest.h"
#include "saving/FileDateTime.h"
#include "support/Deliveries.h"

namespace tessarine
{

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class AnyRun : public RunTest
{
protected:
    void AddFiles(int count)
    {
        for (int i = 1; i <= count; ++i)
            AddFile(FromUtf8(std::to_string(i) + ".ppt"));
    }
};

using FindRun = AnyRun;
using ReplaceRun = AnyRun;
using CancelledRun = AnyRun;
using LongRun = AnyRun;

TEST_F(FindRun, OpensAndClosesAFileAndSavesNothing)
{
    AddFile(u"a.ppt");
    AddPair(u"cat", u"dog");

    project_->Search();

    EXPECT_THAT(Calls(), ElementsAre("CreateApplication", "Application.DisplayAlerts = 0",
                                     "Application.AutomationSecurity = 3", "Presentations.Open a.ppt",
                                     "Presentation.Close a.ppt", "Application.Quit", "AttachToRunning"));
    EXPECT_THAT(events_, ElementsAre("before a.ppt", "after a.ppt 1"));
    EXPECT_EQ(TextOfFile(u"a.ppt"), u"a cat");
    EXPECT_EQ(powerPoint_.Running(), 0);
    EXPECT_THAT(log_.Lines(), IsEmpty());
    EXPECT_THAT(passedOver_, IsEmpty());
}

TEST_F(FindRun, TakesTheFilesInTheOrderOfTheList)
{
    AddFile(u"b.ppt");
    AddFile(u"a.ppt", u"a dog");
    project_->FilesToProcess.push_back(project_->FilesToProcess.front());
    AddPair(u"cat", u"");

    project_->Search();

    EXPECT_THAT(events_, ElementsAre("before b.ppt", "after b.ppt 1", "before a.ppt", "after a.ppt 2", "before b.ppt",
                                     "after b.ppt 1"));
}

TEST_F(FindRun, TakesOddNames)
{
    AddFile(u"my deck 😀.ppt");
    AddFile(u"שלום.ppt");

    project_->Search();

    EXPECT_THAT(events_,
                ElementsAre("before my deck 😀.ppt", "after my deck 😀.ppt 2", "before שלום.ppt", "after שלום.ppt 2"));
}

TEST_F(FindRun, ShowsTheHourglassWhileItRuns)
{
    project_->Search();

    EXPECT_THAT(messages_.Pointers(), ElementsAre(MousePointer::Hourglass, MousePointer::Default));
    EXPECT_THAT(messages_.Messages(), IsEmpty());
}

TEST_F(FindRun, LetsPowerPointShowItsAlertsWhenAllowed)
{
    project_->options->AllowAlerts = true;

    project_->Search();

    EXPECT_EQ(CallsOf("Application.DisplayAlerts = -1"), 1u);
    EXPECT_EQ(CallsOf("Application.DisplayAlerts = 0"), 0u);
}

TEST_F(FindRun, CopiesTheCountOption)
{
    project_->options->RequiredFindAndReplaceCount = true;
    AddFile(u"a.ppt", u"cat cat cat");
    AddPair(u"cat", u"");

    project_->Search();

    EXPECT_TRUE(project_->IsReqCount);
    ASSERT_THAT(results_, SizeIs(1));
    EXPECT_EQ(results_[0]->Item(1)->Slides_Replaced(), 3);
}

TEST_F(FindRun, StopsAtTheFirstOccurrenceWithoutTheCountOption)
{
    project_->IsReqCount = true;
    AddFile(u"a.ppt", u"cat cat cat");
    AddPair(u"cat", u"");

    project_->Search();

    EXPECT_FALSE(project_->IsReqCount);
    ASSERT_THAT(results_, SizeIs(1));
    EXPECT_EQ(results_[0]->Item(1)->Slides_Replaced(), 1);
}

TEST_F(FindRun, WithoutFilesOnlyStartsAndQuitsPowerPoint)
{
    project_->Search();

    EXPECT_THAT(Calls(), ElementsAre("CreateApplication", "Application.DisplayAlerts = 0",
                                     "Application.AutomationSecurity = 3", "Application.Quit", "AttachToRunning"));
    EXPECT_THAT(events_, IsEmpty());
}

TEST_F(FindRun, LeavesTheFileSetStanding)
{
    AddFiles(2);

    project_->Search();

    EXPECT_THAT(project_->FilesToProcess, SizeIs(2));
}

TEST_F(FindRun, PointsTheItemsOfAGivenListAtTheProject)
{
    AddFile(u"a.ppt", u"a cat and a dog");
    AddPair(u"cat", u"");
    const auto options = std::make_shared<OptionSetting>();
    options->InSlides = true;
    const auto list = std::make_shared<FindAndReplaceItems>();
    list->Add(u"dog", u"", options, {});
    list->Add(u"bird", u"", options, std::make_shared<Project>());

    project_->Search(list);

    ASSERT_THAT(results_, SizeIs(1));
    EXPECT_EQ(results_[0]->Count(), 2);
    EXPECT_EQ(results_[0]->Item(1)->FindWhat, u"dog");
    EXPECT_EQ(list->Item(1)->Project, project_.get());
    EXPECT_EQ(list->Item(2)->Project, project_.get());
}

TEST_F(ReplaceRun, SavesEveryFileAndFindsOnlyAfterwards)
{
    AddFile(u"a.ppt");
    AddFile(u"b.ppt", u"a bird");
    AddPair(u"cat", u"dog");

    project_->Replacement();

    EXPECT_EQ(TextOfFile(u"a.ppt"), u"a dog");
    EXPECT_THAT(events_, ElementsAre("before a.ppt", "after a.ppt 1", "before b.ppt", "after b.ppt 2"));
    EXPECT_EQ(CallsOf("Presentation.Save a.ppt"), 1u);
    EXPECT_EQ(CallsOf("Presentation.Save b.ppt"), 1u);
    EXPECT_TRUE(project_->options->IsFindOnly);
}

TEST_F(ReplaceRun, IgnoresTheLongestFirstOption)
{
    AddPair(u"cat", u"dog");
    AddPair(u"category", u"kind");
    AddFile(u"a.ppt", u"category");
    AddFile(u"b.ppt", u"category");

    project_->Replacement();
    const String without = TextOfFile(u"a.ppt");
    project_->FilesToProcess = {AddFile(u"c.ppt", u"category")};
    project_->options->ProcessLongestFindwhatFirst = true;
    project_->Replacement();

    EXPECT_EQ(without, u"dogegory");
    EXPECT_EQ(TextOfFile(u"c.ppt"), u"dogegory");
}

TEST_F(ReplaceRun, UpdatesTheRevisionOfEveryFile)
{
    const String path = AddFile(u"a.ppt");
    FakeContent content;
    content.customProperties = {{.name = u"Revision", .value = String(u"1.5")}};
    const FakeDeck deck(content);
    powerPoint_.Put(path, deck);
    project_->options->RevisionDocumentPropertyName = u"revision";
    project_->options->RevisionDocumentPropertyIncrimentedBy = u"0.1";

    project_->Replacement();

    EXPECT_EQ(powerpoint::TextOf(deck.content->customProperties[0].value), u"1.6");
}

TEST_F(CancelledRun, EndsBeforeTheNextFile)
{
    AddFiles(5);
    project_->BeforFileProcess += [this](const String& path) {
        if (path.ends_with(u"3.ppt"))
            powerPoint_.script.On("Presentation.Close", [this] { project_->IsProcessCancel = true; });
    };

    project_->Search();

    EXPECT_THAT(events_, ElementsAre("before 1.ppt", "after 1.ppt 2", "before 2.ppt", "after 2.ppt 2", "before 3.ppt",
                                     "after 3.ppt 2", "before 4.ppt", "cancel"));
    EXPECT_EQ(CallsOf("Presentation.Close 3.ppt"), 1u);
    EXPECT_FALSE(project_->IsProcessCancel);
    EXPECT_EQ(powerPoint_.Running(), 0);
    EXPECT_EQ(messages_.Pointers().back(), MousePointer::Default);
}

TEST_F(CancelledRun, LeavesTheFileAlreadyAnnouncedUntouched)
{
    AddFile(u"a.ppt");
    project_->options->BackupMode = true;
    project_->IsProcessCancel = true;

    project_->Search();

    EXPECT_THAT(events_, ElementsAre("before a.ppt", "cancel"));
    EXPECT_FALSE(FileExists(folder_.PathOf(u"a.bak")));
    EXPECT_FALSE(project_->IsProcessCancel);
}

TEST_F(CancelledRun, IsForgottenDuringTheLastFile)
{
    AddFiles(2);
    project_->BeforFileProcess += [this](const String& path) { project_->IsProcessCancel |= path.empty(); };
    project_->AfterFileProcess += [this](const auto&) { project_->IsProcessCancel = results_.size() == 2; };

    project_->Search();

    EXPECT_THAT(events_, ElementsAre("before 1.ppt", "after 1.ppt 2", "before 2.ppt", "after 2.ppt 2"));
    EXPECT_FALSE(project_->IsProcessCancel);
}

TEST_F(CancelledRun, MayBeAskedForByAPendingEvent)
{
    AddFiles(3);
    const PendingEventsPort before =
        SetDeliverPendingEvents([this] { project_->IsProcessCancel = results_.size() == 1; });

    project_->Search();

    SetDeliverPendingEvents(before);
    EXPECT_THAT(events_, ElementsAre("before 1.ppt", "after 1.ppt 2", "before 2.ppt", "cancel"));
}

TEST_F(CancelledRun, EndsBeforeTheNextFileWhereEventsWaitForTheirMoment)
{
    // A window system that has just delivered events leaves them alone, but for those between two files.
    for (const bool sparesTheProcessor : {false, true}) {
        project_->options->CPUUsage = sparesTheProcessor;
        project_->FilesToProcess.clear();
        results_.clear();
        events_.clear();
        AddFiles(3);
        const PendingEventsPort before = SetDeliverPendingEvents([] {});
        const PendingEventsPort beforeAtOnce =
            SetDeliverEventsAtOnce([this] { project_->IsProcessCancel = results_.size() == 1; });

        project_->Search();

        SetDeliverEventsAtOnce(beforeAtOnce);
        SetDeliverPendingEvents(before);
        EXPECT_THAT(events_, ElementsAre("before 1.ppt", "after 1.ppt 2", "before 2.ppt", "cancel"));
    }
}

using GivenUpFile = AnyRun;

TEST_F(GivenUpFile, IsClosedUnsavedAndReportedAndTheRunGoesOn)
{
    AddFiles(2);
    AddPair(u"cat", u"dog");
    project_->PairBegins = [this](std::int32_t, const FindAndReplaceItem&) {
        if (results_.empty())
            GiveUpFile();
    };

    project_->Replacement();

    EXPECT_THAT(events_,
                ElementsAre("before 1.ppt",
                            "after 1.ppt 0 The file was given up while it was being processed; it is as it was.",
                            "before 2.ppt", "after 2.ppt 1"));
    EXPECT_EQ(CallsOf("Presentation.Save 1.ppt"), 0u);
    EXPECT_EQ(CallsOf("Presentation.Close 1.ppt"), 1u);
    EXPECT_EQ(CallsOf("Presentation.Save 2.ppt"), 1u);
    EXPECT_THAT(passedOver_, ElementsAre("1.ppt -2147467260"));
    EXPECT_TRUE(project_->options->IsFindOnly) << "the run has come to its end";
    EXPECT_FALSE(project_->RunFailure);
}

TEST_F(GivenUpFile, ThatIsDoneByThenIsNotTakenBack)
{
    AddFiles(2);
    AddPair(u"cat", u"dog");
    project_->AfterFileProcess += [](const auto&) { GiveUpFile(); };

    project_->Replacement();

    EXPECT_THAT(events_, ElementsAre("before 1.ppt", "after 1.ppt 1", "before 2.ppt", "after 2.ppt 1"));
    EXPECT_FALSE(IsFileGivenUp());
    EXPECT_EQ(powerPoint_.Running(), 0);
}

TEST_F(FindRun, TellsOfEachPairAsItComesToIt)
{
    AddFiles(2);
    AddPair(u"cat", u"");
    AddPair(u"dog", u"");
    std::vector<std::string> pairs;
    project_->PairBegins = [&](std::int32_t number, const FindAndReplaceItem& pair) {
        pairs.push_back(std::to_string(number) + ' ' + ToUtf8(pair.FindWhat));
    };

    project_->Search();

    EXPECT_THAT(pairs, ElementsAre("1 cat", "2 dog", "1 cat", "2 dog"));
}

TEST_F(FindRun, SleepsAtEachStepToSpareTheProcessor)
{
    AddFile(u"a.ppt");
    AddPair(u"cat", u"");
    project_->options->RequiredFindAndReplaceCount = true;
    const auto sleeps = [this] {
        const Deliveries deliveries;
        project_->Search();
        return deliveries.AfterASleep();
    };

    const std::size_t without = sleeps();
    project_->options->CPUUsage = true;
    const std::size_t with = sleeps();

    EXPECT_EQ(without, 0u);
    EXPECT_EQ(with, 3u) << "after the hit, the shape and the file";
}

TEST_F(FindRun, OfAnEmptyListLooksForNothing)
{
    AddFile(u"a.ppt");
    AddPair(u"cat", u"");

    project_->Search(std::make_shared<FindAndReplaceItems>());

    ASSERT_THAT(results_, SizeIs(1));
    EXPECT_EQ(results_[0]->Count(), 0);
}

TEST_F(LongRun, DeliversPendingEventsOnceAfterEachFile)
{
    AddFiles(3);
    const Deliveries deliveries;
    std::vector<std::size_t> before;
    project_->BeforFileProcess += [&](const String&) { before.push_back(deliveries.Count()); };

    project_->Search();

    EXPECT_THAT(before, ElementsAre(0u, 1u, 2u));
    EXPECT_EQ(deliveries.Count(), 3u);
}

TEST_F(LongRun, SleepsAfterEachFileToSpareTheProcessor)
{
    AddFiles(3);
    SetMode(project_->FilesToProcess[1], 0444);
    project_->options->CPUUsage = true;
    const Deliveries deliveries;

    project_->Search();

    EXPECT_EQ(deliveries.AfterASleep(), 3u);
}

TEST_F(LongRun, OfMoreThan32767FilesFailsBeforeTheFirst)
{
    project_->FilesToProcess.assign(32768, AddFile(u"a.ppt"));

    project_->Search();

    EXPECT_THAT(
        log_.Lines(),
        ElementsAre("Error 6 (Overflow) in procedure Search at Line No. 0 of Class Module Project", "Overflow"));
    EXPECT_THAT(events_, ElementsAre("after nothing"));
    EXPECT_THAT(passedOver_, ElementsAre(" 6"));
    EXPECT_EQ(powerPoint_.Running(), 0);
}

TEST_F(LongRun, Of32767FilesRuns)
{
    project_->FilesToProcess.assign(32767, AddFile(u"a.ppt"));
    project_->AfterFileProcess += [this](const auto&) { project_->IsProcessCancel = true; };

    project_->Search();

    EXPECT_THAT(events_, ElementsAre("before a.ppt", "after a.ppt 2", "before a.ppt", "cancel"));
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

// Links, pipes, modes and other users are different things on Windows, and names are no bytes there.
#ifndef _WIN32

TEST_F(FindRun, TakesNamesInForeignBytes)
{
    AddFile(FromUtf8("caf\xE9.ppt"));

    project_->Search();

    EXPECT_THAT(events_, ElementsAre("before caf\xE9.ppt", "after caf\xE9.ppt 2"));
}

#endif

}  // namespace tessarine
