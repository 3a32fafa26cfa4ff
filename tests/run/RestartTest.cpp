#include <gmock/gmock.h>

#include "RunTest.h"

namespace tessarine
{

using testing::ElementsAre;
using testing::IsEmpty;

class Restart : public RunTest
{
protected:
    /// How often PowerPoint is created in a run over some files.
    std::size_t CreationsIn(int files, std::int32_t restartAfterFiles)
    {
        for (int i = 1; i <= files; ++i)
            AddFile(FromUtf8(std::to_string(i) + ".ppt"));
        project_->options->RestartApplicationAfterFiles = restartAfterFiles;
        project_->Search();
        return CallsOf("CreateApplication");
    }
};

using PlannedRestart = Restart;
using UnplannedRestart = Restart;
using UnloadingPowerPoint = Restart;

TEST_F(PlannedRestart, FollowsEachFileButTheLastForACountOfOne)
{
    EXPECT_EQ(CreationsIn(3, 1), 3u);
    EXPECT_THAT(events_, ElementsAre("before 1.ppt", "after 1.ppt 2", "before 2.ppt", "after 2.ppt 2", "before 3.ppt",
                                     "after 3.ppt 2"));
}

TEST_F(PlannedRestart, DoesNotFollowTheLastFile)
{
    EXPECT_EQ(CreationsIn(3, 3), 1u);
}

TEST_F(PlannedRestart, FollowsEachMultipleOfTheCount)
{
    EXPECT_EQ(CreationsIn(5, 2), 3u);
}

TEST_F(PlannedRestart, NeverHappensForZeroOrMoreThanTheFiles)
{
    EXPECT_EQ(CreationsIn(3, 0), 1u);
    EXPECT_EQ(CreationsIn(0, 10), 2u) << "the second run's own";
}

TEST_F(PlannedRestart, TakesANegativeCountAsPositive)
{
    EXPECT_EQ(CreationsIn(5, -2), 3u);
}

TEST_F(PlannedRestart, FollowsTheLastFileWhenTheListHasGrown)
{
    project_->AfterFileProcess += [this](const auto&) {
        if (results_.size() == 2)
            project_->FilesToProcess.push_back(project_->FilesToProcess.front());
    };

    EXPECT_EQ(CreationsIn(2, 2), 2u);
    EXPECT_THAT(results_, testing::SizeIs(2));
}

TEST_F(PlannedRestart, FollowsTheLastFileWhenTheListHasShrunk)
{
    project_->AfterFileProcess += [this](const auto&) {
        if (results_.size() == 2)
            project_->FilesToProcess.clear();
    };

    EXPECT_EQ(CreationsIn(2, 2), 2u);
}

TEST_F(PlannedRestart, CountsAFileTwiceThatIsListedTwice)
{
    project_->FilesToProcess.assign(3, AddFile(u"a.ppt"));
    project_->options->RestartApplicationAfterFiles = 1;

    project_->Search();

    EXPECT_EQ(CallsOf("CreateApplication"), 3u);
}

TEST_F(PlannedRestart, CountsSkippedAndFailedFiles)
{
    SetMode(AddFile(u"skipped.ppt"), 0444);
    powerPoint_.FailOpen(AddFile(u"damaged.ppt"), 1234, u"damaged");

    EXPECT_EQ(CreationsIn(1, 2), 2u);
}

TEST_F(PlannedRestart, CountsAFirstFileThatLeftNoResult)
{
    powerPoint_.FailOpen(AddFile(u"damaged.ppt"), 1234, u"damaged");

    EXPECT_EQ(CreationsIn(2, 2), 2u) << "after the second of three files";
}

TEST_F(PlannedRestart, SetsAlertsAgainButNotSecurity)
{
    project_->options->AllowAlerts = true;
    powerPoint_.StartByUser();

    CreationsIn(2, 1);

    EXPECT_THAT(Calls(),
                ElementsAre("CreateApplication", "Application.DisplayAlerts = -1", "Application.AutomationSecurity = 3",
                            "Presentations.Open 1.ppt", "Presentation.Close 1.ppt", "Application.Quit",
                            "AttachToRunning", "Application.DisplayAlerts = 0", "Application.Quit", "CreateApplication",
                            "Application.DisplayAlerts = -1", "Presentations.Open 2.ppt", "Presentation.Close 2.ppt",
                            "Application.Quit", "AttachToRunning"));
}

TEST_F(PlannedRestart, EndsTheRunWhenPowerPointDoesNotStart)
{
    AddFile(u"a.ppt");
    AddFile(u"b.ppt");
    project_->options->RestartApplicationAfterFiles = 1;
    powerPoint_.script.FailOnce("CreateApplication", 429, u"none", 2);

    EXPECT_EQ(SearchFails(), 429);

    EXPECT_THAT(events_, ElementsAre("before a.ppt", "after a.ppt 2"));
}

TEST_F(PlannedRestart, EndsTheRunWhenQuitFails)
{
    AddFile(u"a.ppt");
    AddFile(u"b.ppt");
    project_->options->RestartApplicationAfterFiles = 1;
    powerPoint_.script.FailOnce("Application.Quit", 462, u"gone");

    EXPECT_EQ(SearchFails(), 462);
}

TEST_F(PlannedRestart, IsPassedOverWhenItFailsAfterAnOpenFailure)
{
    powerPoint_.FailOpen(AddFile(u"a.ppt"), 1234, u"damaged");
    AddFile(u"b.ppt");
    project_->options->RestartApplicationAfterFiles = 1;
    powerPoint_.script.FailOnce("CreateApplication", 429, u"none", 2);

    EXPECT_EQ(SearchFails(), 0);

    EXPECT_THAT(events_, ElementsAre("before a.ppt", "after nothing", "before b.ppt", "after nothing"));
    EXPECT_THAT(passedOver_, ElementsAre("a.ppt 1234", "b.ppt 91"));
    EXPECT_THAT(log_.Lines(), ElementsAre("damaged", "Object variable or With block variable not set"));
}

TEST_F(PlannedRestart, DoesNotDependOnSeconds)
{
    project_->options->RestartApplicationAfterSeconds = 1;
    project_->options->ExeLocationIncaseOfFailure = u"/usr/bin/powerpoint";

    EXPECT_EQ(CreationsIn(3, 0), 1u);
}

TEST_F(UnplannedRestart, SendsNoQuitAndSetsNoSecurity)
{
    const String path = AddFile(u"a.ppt");
    powerPoint_.FailOpen(path, 462, u"gone");
    powerPoint_.script.FailOnce("AttachToRunning", 429, u"it has gone");

    project_->Search();

    EXPECT_THAT(Calls(), ElementsAre("CreateApplication", "Application.DisplayAlerts = 0",
                                     "Application.AutomationSecurity = 3", "Presentations.Open a.ppt",
                                     "AttachToRunning", "CreateApplication", "Application.DisplayAlerts = 0",
                                     "Presentations.Open a.ppt", "Presentation.Close a.ppt", "Application.Quit",
                                     "AttachToRunning", "Application.DisplayAlerts = 0", "Application.Quit"));
}

TEST_F(UnplannedRestart, IsPassedOverWhenItFails)
{
    powerPoint_.FailOpen(AddFile(u"a.ppt"), 462, u"gone");
    powerPoint_.script.FailOnce("CreateApplication", 429, u"none", 2);

    EXPECT_EQ(SearchFails(), 0);

    EXPECT_THAT(events_, ElementsAre("before a.ppt", "after nothing"));
    EXPECT_THAT(passedOver_, ElementsAre("a.ppt 91"));
}

TEST_F(UnplannedRestart, DoesNotCountAsAFile)
{
    powerPoint_.FailOpen(AddFile(u"1.ppt"), 462, u"gone", 2);

    EXPECT_EQ(CreationsIn(2, 2), 4u) << "one at the start, two unplanned, one behind the second of three files";
}

TEST_F(UnloadingPowerPoint, ShutsTheUsersOwnAtTheEndOfARun)
{
    powerPoint_.StartByUser();

    project_->Search();

    EXPECT_EQ(powerPoint_.Running(), 0);
}

TEST_F(UnloadingPowerPoint, DoesNothingWhenNoneRuns)
{
    project_->UnloadPowerPoint();

    EXPECT_THAT(Calls(), ElementsAre("AttachToRunning"));
}

TEST_F(UnloadingPowerPoint, ClosesAlertsThenQuits)
{
    powerPoint_.StartByUser();

    project_->UnloadPowerPoint();

    EXPECT_THAT(Calls(), ElementsAre("AttachToRunning", "Application.DisplayAlerts = 0", "Application.Quit"));
}

TEST_F(UnloadingPowerPoint, PassesOverEveryFailure)
{
    powerPoint_.StartByUser();
    powerPoint_.script.Fail("Application.DisplayAlerts =", 1234);
    powerPoint_.script.Fail("Application.Quit", 462);

    EXPECT_NO_THROW(project_->UnloadPowerPoint());
    EXPECT_EQ(CallsOf("Application.Quit"), 1u);

    powerPoint_.script.Fail("AttachToRunning", 429);
    EXPECT_NO_THROW(project_->UnloadPowerPoint());
    EXPECT_NO_THROW(ProjectOwner()->UnloadPowerPoint());
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(Restart, NeverAsksForAManualIntervention)
{
    bool isRaised = false;
    project_->ManualInterventionRequired += [&] { isRaised = true; };
    project_->BeforSearch += [&] { isRaised = true; };
    project_->AfterSearch += [&] { isRaised = true; };
    powerPoint_.FailOpen(AddFile(u"a.ppt"), 462, u"gone", 3);

    CreationsIn(2, 1);

    EXPECT_FALSE(isRaised);
}

}  // namespace tessarine
