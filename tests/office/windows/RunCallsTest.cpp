#include <gmock/gmock.h>

#include "engine/CounterStatuses.h"
#include "log/Treatments.h"
#include "model/Project.h"
#include "office/windows/PowerPointProvider.h"
#include "platform/Failure.h"
#include "StandIn.h"
#include "support/Deck.h"
#include "support/ErrorLogRecorder.h"

// Whole runs with PowerPoint's stand-in: what arrives there, and what a run makes of a PowerPoint that fails or dies.

namespace tessarine::test
{
namespace
{

using standin::Action;
using standin::Order;
using standin::PowerPointProgram;
using testing::Contains;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

constexpr long failed = static_cast<long>(0x80004005);
constexpr long damaged = static_cast<long>(0x80070570);

class RunCalls : public testing::Test
{
protected:
    RunCalls()
    {
        project->BeforFileProcess += [this](const String& path) { events.push_back("before " + NameOf(path)); };
        project->AfterFileProcess += [this](const std::shared_ptr<CounterStatuses>& result) {
            events.push_back(result ? "after " + NameOf(result->FileName) + " " +
                                          std::to_string(result->FileStausAfterProcess) + ToUtf8(result->mError)
                                    : "after nothing");
        };
        project->FailurePassedOver = [this](const String& path, const Failure& failure) {
            passedOver.push_back(NameOf(path) + " " + std::to_string(failure.number));
        };
        const auto options = std::make_shared<OptionSetting>();
        options->InSlides = true;
        project->FindAndReplaceList->Add(u"cat", u"dog", options, project.get());
    }

    String AddFile(StringView name)
    {
        const String path = folder.Write(name, Deck().Slide(Title(u"a cat"), TextBox(u"cat")).Bytes());
        project->FilesToProcess.push_back(path);
        return path;
    }

    static std::string NameOf(const String& path) { return ToUtf8(path.substr(path.find_last_of(u"/\\") + 1)); }

    /// The calls with the names of files in place of their paths.
    std::vector<std::string> Calls() const
    {
        std::vector<std::string> calls;
        for (std::string call : standIn.Calls()) {
            constexpr std::string_view open = "Presentations.Open(\"";
            if (call.starts_with(open))
                call.erase(open.size(), call.find_last_of("/\\") + 1 - open.size());
            calls.push_back(call);
        }
        return calls;
    }

    std::size_t CallsOf(const std::string& call) const
    {
        const auto calls = Calls();
        return static_cast<std::size_t>(std::ranges::count(calls, call));
    }

    TemporaryFolder folder;
    const ErrorLogRecorder log;
    StandIn standIn{PowerPointProgram};
    const ProjectOwner project{windows::CreatePowerPointProvider()};
    std::vector<std::string> events;
    std::vector<std::string> passedOver;
};

TEST_F(RunCalls, OfAReplacementOfTwoFilesAreThese)
{
    AddFile(u"a.pptx");
    AddFile(u"b.pptx");

    project->Replacement();

    std::vector<std::string> expected{"CreateInstance", "Application.DisplayAlerts = 0",
                                      "Application.AutomationSecurity = 3"};
    for (const std::string name : {"a.pptx", "b.pptx"}) {
        const std::vector<std::string> ofFile{
            "Application.Presentations",
            "Presentations.Open(\"" + name + "\", 0, 0, 0)",
            "Presentation.CustomDocumentProperties",
            "DocumentProperties.Count",
            "Presentation.Slides",
            "Slides._NewEnum",
            "Slides.Next",
            "Slide.Shapes",
            "Shapes._NewEnum",
            "Shapes.Next",
            "Shape.Type",
            "Shape.HasTextFrame",
            "Shape.TextFrame",
            "TextFrame.TextRange",
            R"(TextRange.Replace("cat", "dog", 0, 0, 0))",
            "TextRange.Start",
            "TextRange.Start",
            R"(TextRange.Replace("cat", "dog", 3, 0, 0))",
            "Shapes.Next",
            "Shape.Type",
            "Shapes.Next",
            "Slides.Next",
            "Presentation.Save",
            "Presentation.Close",
        };
        expected.insert(expected.end(), ofFile.begin(), ofFile.end());
    }
    expected.emplace_back("Application.Quit");
    EXPECT_THAT(Calls(), ElementsAreArray(expected));
    EXPECT_THAT(events, ElementsAre("before a.pptx", "after a.pptx 1", "before b.pptx", "after b.pptx 1"));
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(RunCalls, OfAFindDoNotSave)
{
    AddFile(u"a.pptx");
    project->options->AllowAlerts = true;

    project->Search();

    EXPECT_THAT(Calls(), Contains("Application.DisplayAlerts = -1"));
    EXPECT_THAT(Calls(), Contains(R"(TextRange.Find("cat", 0, 0, 0))"));
    EXPECT_EQ(CallsOf("Presentation.Save"), 0u);
    EXPECT_EQ(CallsOf("Presentation.Close"), 1u);
}

TEST_F(RunCalls, OfAPlannedRestartQuitAndSetAlertsButNoSecurity)
{
    AddFile(u"a.pptx");
    AddFile(u"b.pptx");
    AddFile(u"c.pptx");
    project->options->RestartApplicationAfterFiles = 2;

    project->Search();

    EXPECT_EQ(CallsOf("CreateInstance"), 2u);
    EXPECT_EQ(CallsOf("Application.Quit"), 2u);
    EXPECT_EQ(CallsOf("Application.DisplayAlerts = 0"), 2u);
    EXPECT_EQ(CallsOf("Application.AutomationSecurity = 3"), 1u);
    EXPECT_EQ(standIn.Started(), 2u);
    EXPECT_EQ(events.back(), "after c.pptx 1");
}

TEST_F(RunCalls, ShutTheUsersOwnInstanceAtTheEnd)
{
    standIn.StartByUser();

    project->UnloadPowerPoint();

    EXPECT_THAT(Calls(), ElementsAre("Application.DisplayAlerts = False", "Application.Quit"));
}

struct Death {
    const char* name;
    Action action;
};

std::string DeathName(const testing::TestParamInfo<Death>& info)
{
    return info.param.name;
}

class DeathAtOpen : public RunCalls, public testing::WithParamInterface<Death>
{
};

TEST_P(DeathAtOpen, StartsANewOneAndOpensTheFileAgain)
{
    AddFile(u"a.pptx");
    AddFile(u"b.pptx");
    standIn.Give({{.action = GetParam().action, .call = "Presentations.Open", .skipped = 1, .times = 2}});

    project->Replacement();

    EXPECT_THAT(events, ElementsAre("before a.pptx", "after a.pptx 1", "before b.pptx", "after b.pptx 1"));
    EXPECT_EQ(CallsOf("Presentations.Open(\"b.pptx\", 0, 0, 0)"), 3u);
    EXPECT_EQ(CallsOf("Application.AutomationSecurity = 3"), 1u);
    EXPECT_EQ(CallsOf("Application.Quit"), 1u) << "none goes to what has gone";
    EXPECT_EQ(standIn.Started(), 3u);
    EXPECT_THAT(passedOver, IsEmpty());
    EXPECT_THAT(log.Lines(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Of, DeathAtOpen,
                         testing::Values(Death{"TheCall", Action::Die}, Death{"TheAnswer", Action::DieAfter}),
                         DeathName);

TEST_F(RunCalls, DeathBetweenFilesIsMetByTheNextOpen)
{
    AddFile(u"a.pptx");
    AddFile(u"b.pptx");
    standIn.Give({{.action = Action::DieBetween, .call = "Presentation.Close"}});
    project->AfterFileProcess += [this](const auto&) {
        while (events.size() == 2 && standIn.Running() > 0) {
        }
    };

    project->Search();

    EXPECT_THAT(events, ElementsAre("before a.pptx", "after a.pptx 1", "before b.pptx", "after b.pptx 1"));
    EXPECT_EQ(standIn.Started(), 2u);
}

TEST_F(RunCalls, DeathWhileAFileIsProcessedFailsItAndGoesOn)
{
    AddFile(u"a.pptx");
    AddFile(u"b.pptx");
    AddFile(u"c.pptx");
    standIn.Give({{.action = Action::Die, .call = "Presentation.Save", .skipped = 1}});

    project->Replacement();

    EXPECT_THAT(passedOver, ElementsAre("b.pptx -2147023170"));
    EXPECT_EQ(events.back(), "after c.pptx 1");
    EXPECT_EQ(standIn.Started(), 2u);
}

TEST_F(RunCalls, OpenFailuresAreSortedByTheirNumbers)
{
    AddFile(u"a.pptx");
    AddFile(u"b.pptx");
    AddFile(u"c.pptx");
    AddFile(u"d.pptx");
    standIn.Give({{.action = Action::Raise, .call = "Presentations.Open", .skipped = 1, .number = failed, .text = "E"},
                  {.action = Action::Raise, .call = "Presentations.Open", .skipped = 1, .number = 1004, .text = "A"},
                  {.action = Action::Raise,
                   .call = "Presentations.Open",
                   .skipped = 1,
                   .number = damaged,
                   .text = "the file is damaged"}});

    project->Search();

    EXPECT_THAT(events, ElementsAre("before a.pptx", "after a.pptx 1", "before b.pptx",
                                    "after b.pptx 0  Wrong Password has been supplied.", "before c.pptx",
                                    "after c.pptx 0  Wrong Password has been supplied.", "before d.pptx",
                                    "after c.pptx 0  Wrong Password has been supplied."));
    EXPECT_THAT(passedOver, ElementsAre("b.pptx -2147467259", "c.pptx 1004", "d.pptx -2147023504"));
    EXPECT_THAT(log.Lines(), ElementsAre("the file is damaged"));
}

TEST_F(RunCalls, ABusyPowerPointHoldsTheRunUp)
{
    AddFile(u"a.pptx");
    standIn.Give({{.action = Action::Result,
                   .call = "Presentations.Open",
                   .times = 5,
                   .number = static_cast<long>(0x8001010A)}});

    project->Search();

    EXPECT_THAT(events, ElementsAre("before a.pptx", "after a.pptx 1"));
    EXPECT_EQ(CallsOf("Presentations.Open(\"a.pptx\", 0, 0, 0)"), 6u);
}

TEST_F(RunCalls, WithoutPowerPointEndWith429)
{
    AddFile(u"a.pptx");
    standIn.RegisterMissingProgram();

    EXPECT_EQ(Skip([&] { project->Search(); }), FailureNumber::ObjectNotSet) << "there is nothing to quit";

    EXPECT_THAT(passedOver, ElementsAre(" 429"));
}

}  // namespace
}  // namespace tessarine::test
