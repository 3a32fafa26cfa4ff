#include "RunTest.h"

namespace tessarine
{

using testing::ElementsAre;

/// Notes the position at each event: "before 1", "after 1".
class PositionInRun : public RunTest
{
protected:
    PositionInRun()
    {
        AddPair(u"cat", u"dog");
        project_->BeforFileProcess += [this](const String&) { Note("before "); };
        project_->AfterFileProcess += [this](const std::shared_ptr<CounterStatuses>&) { Note("after "); };
        project_->FailurePassedOver = [this](const String&, const Failure&) { Note("passed over "); };
    }

    void Note(const std::string& event) { noted_.push_back(event + std::to_string(project_->PositionInRun)); }

    std::vector<std::string> noted_;
};

TEST_F(PositionInRun, TellsEntriesOfTheSamePathApart)
{
    AddFile(u"a.ppt");
    project_->FilesToProcess.push_back(project_->FilesToProcess.front());

    project_->Search();

    EXPECT_THAT(noted_, ElementsAre("before 1", "after 1", "before 2", "after 2"));
    EXPECT_EQ(project_->PositionInRun, 0);
}

TEST_F(PositionInRun, StaysAtAFileThatFailsToOpen)
{
    AddFile(u"a.ppt");
    powerPoint_.FailOpen(AddFile(u"b.ppt"), 5, u"damaged");

    project_->Search();

    EXPECT_THAT(noted_, ElementsAre("before 1", "after 1", "before 2", "passed over 2", "after 2"));
}

TEST_F(PositionInRun, IsOutsideOfTheFilesWhenTheSetUpFails)
{
    AddFile(u"a.ppt");
    powerPoint_.script.Fail("CreateApplication", 429, u"none to start");

    EXPECT_EQ(SearchFails(), FailureNumber::ObjectNotSet);  // there is nothing to quit

    EXPECT_THAT(noted_, ElementsAre("passed over 0", "after 0"));
}

TEST_F(PositionInRun, IsOutsideOfTheFilesWhenTheEndFails)
{
    powerPoint_.script.FailOnce("Application.Quit", 5, u"no");

    project_->Search();

    EXPECT_THAT(noted_, ElementsAre("after 0"));
}

TEST_F(PositionInRun, BeginsAnewAfterARunThatRaised)
{
    AddFile(u"a.ppt");
    project_->AfterFileProcess += [once = true](const std::shared_ptr<CounterStatuses>&) mutable {
        if (std::exchange(once, false))
            throw Failure(5, u"a receiver failed");
    };
    EXPECT_EQ(SearchFails(), 5);
    EXPECT_EQ(project_->PositionInRun, 1);
    noted_.clear();
    powerPoint_.script.Fail("CreateApplication", 429, u"none to start");

    project_->Search();

    EXPECT_THAT(noted_, ElementsAre("passed over 0", "after 0"));
}

}  // namespace tessarine
