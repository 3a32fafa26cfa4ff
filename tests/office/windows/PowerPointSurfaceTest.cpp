#include <gmock/gmock.h>

#include <chrono>
#include <thread>

#include "office/windows/PowerPointProvider.h"
#include "platform/Failure.h"
#include "StandIn.h"
#include "support/Deck.h"

// Each member of the surface through automation, to a process whose objects are the built-in engine's.

namespace tessarine::test
{
namespace
{

using standin::Action;
using standin::PowerPointProgram;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::Not;
using testing::StartsWith;

constexpr long busy = static_cast<long>(0x8001010A);
constexpr long rejected = static_cast<long>(0x80010001);
constexpr long invalidRequest = static_cast<long>(0x80048240);

Failure FailureOf(const std::function<void()>& body)
{
    try {
        body();
    } catch (const Failure& failure) {
        return failure;
    }
    return {0, u"no failure"};
}

class PowerPointSurface : public testing::Test
{
protected:
    PowerPointSurface()
    {
        path = folder.Write(u"a.pptx", Deck()
                                           .Slide(Title(u"a cat and a cat"), TextBox(u"z\U0001F600 cat"),
                                                  NotesPage(u"a cat in the notes"))
                                           .Slide(Title(u"dog"))
                                           .Custom(u"Rev", "i4", u"3")
                                           .Core("dc:title", u"the cat")
                                           .Bytes());
    }

    std::shared_ptr<powerpoint::Presentation> Open()
    {
        application = provider->CreateApplication();
        return application->Presentations()->Open(path, powerpoint::msoFalse, powerpoint::msoFalse,
                                                  powerpoint::msoFalse);
    }

    static std::shared_ptr<powerpoint::Shape> FirstShapeOf(powerpoint::Presentation& presentation)
    {
        return presentation.Slides()->NewEnum()->Next()->Shapes()->NewEnum()->Next();
    }

    TemporaryFolder folder;
    String path;
    StandIn standIn{PowerPointProgram};
    std::shared_ptr<powerpoint::Provider> provider = windows::CreatePowerPointProvider();
    std::shared_ptr<powerpoint::Application> application;
};

TEST_F(PowerPointSurface, WalksSlidesShapesAndTheirTexts)
{
    const auto presentation = Open();

    std::vector<std::int32_t> starts;
    const auto slides = presentation->Slides()->NewEnum();
    int count = 0;
    while (const auto slide = slides->Next()) {
        ++count;
        const auto shapes = slide->Shapes()->NewEnum();
        while (const auto shape = shapes->Next()) {
            EXPECT_NE(shape->HasTextFrame(), powerpoint::msoFalse);
            const auto hit = shape->TextFrame()->TextRange()->Find(u"cat", 0, 0, 0);
            starts.push_back(hit ? hit->Start() : 0);
        }
    }

    EXPECT_EQ(count, 2);
    EXPECT_THAT(starts, ElementsAre(3, 5, 0)) << "a pair of surrogates counts as two";
}

TEST_F(PowerPointSurface, ReplacesAndSaves)
{
    const auto presentation = Open();

    const auto hit =
        FirstShapeOf(*presentation)->TextFrame()->TextRange()->Replace(u"CAT", u"b\u00EDrd \u4E2D", 3, 0, 0);
    ASSERT_TRUE(hit);
    EXPECT_EQ(hit->Start(), 13);
    presentation->Save();
    presentation->Close();

    const auto again =
        application->Presentations()->Open(path, powerpoint::msoFalse, powerpoint::msoFalse, powerpoint::msoFalse);
    EXPECT_TRUE(FirstShapeOf(*again)->TextFrame()->TextRange()->Find(u"a cat and a b\u00EDrd \u4E2D", 0, 1, 0));
    EXPECT_THAT(standIn.Calls(), Contains("TextRange.Replace(\"CAT\", \"b\u00EDrd \u4E2D\", 3, 0, 0)"));
}

TEST_F(PowerPointSurface, ReachesNotesMastersAndDesigns)
{
    const auto presentation = Open();
    const auto slide = presentation->Slides()->NewEnum()->Next();

    EXPECT_TRUE(slide->NotesPage()->Shapes()->NewEnum()->Next());
    const auto design = presentation->Designs()->NewEnum()->Next();
    ASSERT_TRUE(design);
    EXPECT_EQ(design->Name(), slide->Design()->Name());
    EXPECT_EQ(design->HasTitleMaster(), powerpoint::msoFalse);
    EXPECT_EQ(FailureOf([&] { design->TitleMaster(); }).number, FailureNumber::InvalidRequest);
    EXPECT_TRUE(design->SlideMaster()->Shapes()->NewEnum());
    EXPECT_EQ(presentation->HandoutMaster()->Shapes()->NewEnum()->Next(), nullptr);
    EXPECT_EQ(presentation->NotesMaster()->HeadersFooters()->Header()->Text(), u"");
    EXPECT_EQ(FailureOf([&] { slide->HeadersFooters()->Footer()->Text(); }).number, FailureNumber::InvalidRequest);
    EXPECT_EQ(slide->Hyperlinks()->NewEnum()->Next(), nullptr);
}

TEST_F(PowerPointSurface, ReadsAndPutsPropertiesByNameAndIndex)
{
    const auto presentation = Open();
    const auto custom = presentation->CustomDocumentProperties();

    ASSERT_EQ(custom->Count(), 1);
    const auto revision = custom->Item(1);
    EXPECT_EQ(revision->Name(), u"Rev");
    EXPECT_EQ(std::get<std::int64_t>(revision->Value()), 3);
    revision->PutValue(4.5);
    EXPECT_EQ(std::get<double>(revision->Value()), 4.5);
    EXPECT_EQ(std::get<String>(presentation->BuiltInDocumentProperties()->Item(1)->Value()), u"the cat");
    EXPECT_EQ(FailureOf([&] { custom->Item(2); }).number, FailureNumber::BadArgument);
}

TEST_F(PowerPointSurface, AsksForANumberOnceForEachKindOfObject)
{
    const auto presentation = Open();
    for (int round = 0; round < 2; ++round) {
        const auto slides = presentation->Slides()->NewEnum();
        while (const auto slide = slides->Next())
            slide->Shapes()->NewEnum()->Next()->Type();
    }

    EXPECT_THAT(standIn.Lookups(), ElementsAre("Application.Presentations", "Presentations.Open", "Presentation.Slides",
                                               "Slide.Shapes", "Shape.Type"));
}

TEST_F(PowerPointSurface, AsksNoHintsAndNoNames)
{
    const auto presentation = Open();

    EXPECT_TRUE(presentation->NotesMayHoldText(u"nothing"));
    EXPECT_TRUE(presentation->Slides()->MayHoldText(u"nothing"));
    EXPECT_EQ(FirstShapeOf(*presentation)->Name(), u"");
    EXPECT_EQ(presentation->HasSavedChanges(), std::nullopt);

    EXPECT_THAT(standIn.Lookups(), Each(Not(HasSubstr("Hold"))));
    EXPECT_THAT(standIn.Lookups(), Not(Contains("Shape.Name")));
}

TEST_F(PowerPointSurface, TellsWhatHitsAreShownWith)
{
    const auto presentation = Open();
    presentation->ExpectHits();
    const auto slide = presentation->Slides()->NewEnum()->Next();
    const auto shape = FirstShapeOf(*presentation);

    EXPECT_NE(shape->Name(), u"");
    EXPECT_EQ(slide->Title(), u"a cat and a cat");
    EXPECT_EQ(shape->TextFrame()->TextRange()->TextAt(2, 3), u" ca");
    EXPECT_THAT(standIn.Lookups(), IsSupersetOf({"Shape.Name", "Shapes.HasTitle", "TextRange.Characters"}));
}

TEST_F(PowerPointSurface, AFailureHasTheServersNumberAndText)
{
    const auto presentation = Open();
    standIn.Give({{.action = Action::Raise,
                   .call = "Presentation.Save",
                   .number = invalidRequest,
                   .text = "Presentation (unknown member) : Invalid request."}});

    const Failure failure = FailureOf([&] { presentation->Save(); });

    EXPECT_EQ(failure.number, FailureNumber::InvalidRequest);
    EXPECT_EQ(failure.description, u"Presentation (unknown member) : Invalid request.");
}

TEST_F(PowerPointSurface, AFailureWithoutATextNamesTheCall)
{
    const auto presentation = Open();
    standIn.Give({{.action = Action::Result, .call = "Presentation.Save", .number = static_cast<long>(0x80070005)}});

    const Failure failure = FailureOf([&] { presentation->Save(); });

    EXPECT_EQ(failure.number, FailureNumber::AccessDenied);
    EXPECT_THAT(ToUtf8(failure.description), HasSubstr("(Presentation.Save, 0x80070005)"));
}

TEST_F(PowerPointSurface, WaitsForABusyServer)
{
    const auto presentation = Open();
    standIn.Give({{.action = Action::Result, .call = "Presentation.Slides", .times = 3, .number = busy},
                  {.action = Action::Result, .call = "Slides._NewEnum", .times = 2, .number = rejected},
                  {.action = Action::Result, .call = "Slides.Next", .times = 2, .number = busy}});

    EXPECT_TRUE(presentation->Slides()->NewEnum()->Next());

    EXPECT_EQ(std::ranges::count(standIn.Calls(), "Presentation.Slides"), 4);
    EXPECT_EQ(std::ranges::count(standIn.Calls(), "Slides._NewEnum"), 3);
    EXPECT_EQ(std::ranges::count(standIn.Calls(), "Slides.Next"), 3);
}

TEST_F(PowerPointSurface, ABusyNumberInTheServersOwnWordsIsAFailure)
{
    const auto presentation = Open();
    standIn.Give({{.action = Action::Raise, .call = "Presentation.Slides", .number = busy, .text = "later"}});

    EXPECT_EQ(FailureOf([&] { presentation->Slides(); }).number, -2147417846);
}

TEST_F(PowerPointSurface, WaitsForASlowServer)
{
    const auto presentation = Open();
    standIn.Give({{.action = Action::Wait, .call = "Presentation.Slides", .number = 1500}});

    EXPECT_TRUE(presentation->Slides());
}

TEST_F(PowerPointSurface, DeathInACallIsTheCallsAndLaterOnesFindTheServerGone)
{
    const auto presentation = Open();
    standIn.Give({{.action = Action::Die, .call = "Presentation.Slides"}});

    EXPECT_EQ(FailureOf([&] { presentation->Slides(); }).number, FailureNumber::RemoteCallFailed);
    EXPECT_EQ(FailureOf([&] { presentation->Slides(); }).number, FailureNumber::ServerGone);
    EXPECT_EQ(FailureOf([&] { application->PutDisplayAlerts(0); }).number, FailureNumber::ServerGone);
    EXPECT_EQ(provider->AttachToRunning(), nullptr);
    EXPECT_EQ(standIn.Running(), 0u);
}

TEST_F(PowerPointSurface, DeathBetweenCallsIsSeenByTheNext)
{
    const auto presentation = Open();
    standIn.Give({{.action = Action::DieBetween, .call = "Presentation.Slides"}});
    EXPECT_TRUE(presentation->Slides());
    while (standIn.Running() > 0) {
    }

    EXPECT_EQ(FailureOf([&] { presentation->Slides(); }).number, FailureNumber::ServerGone);
}

TEST_F(PowerPointSurface, DeathInAWalkIsAFailureOfTheWalk)
{
    const auto presentation = Open();
    const auto slides = presentation->Slides()->NewEnum();
    EXPECT_TRUE(slides->Next());
    standIn.Give({{.action = Action::Die, .call = "Slides.Next"}});

    EXPECT_EQ(FailureOf([&] { slides->Next(); }).number, FailureNumber::RemoteCallFailed);
}

TEST_F(PowerPointSurface, ANewOneStartsAfterADeath)
{
    Open();
    standIn.Give({{.action = Action::Die, .call = "Application.DisplayAlerts"}});
    EXPECT_EQ(FailureOf([&] { application->PutDisplayAlerts(0); }).number, FailureNumber::RemoteCallFailed);

    const auto presentation = Open();

    EXPECT_TRUE(presentation->Slides());
    EXPECT_EQ(standIn.Running(), 1u);
}

TEST_F(PowerPointSurface, CallsAfterQuitFindTheServerGone)
{
    const auto presentation = Open();
    application->Quit();
    while (standIn.Running() > 0) {
    }

    EXPECT_EQ(FailureOf([&] { presentation->Slides(); }).number, FailureNumber::ServerGone);
    EXPECT_EQ(provider->AttachToRunning(), nullptr);
}

TEST_F(PowerPointSurface, AttachingGivesTheUsersOwnInstance)
{
    EXPECT_EQ(provider->AttachToRunning(), nullptr);
    standIn.StartByUser();

    const auto running = provider->AttachToRunning();
    ASSERT_TRUE(running);
    running->PutDisplayAlerts(0);
    running->Quit();

    EXPECT_THAT(standIn.Calls(), ElementsAre("Application.DisplayAlerts = False", "Application.Quit"));
    EXPECT_EQ(standIn.Started(), 1u);
}

TEST_F(PowerPointSurface, ASecondApplicationIsTheOneThatRuns)
{
    const auto presentation = Open();
    const auto second = provider->CreateApplication();

    second->Quit();
    while (provider->AttachToRunning()) {
    }

    EXPECT_NE(FailureOf([&] {
                  while (true)
                      presentation->Slides();
              }).number,
              0);
}

TEST_F(PowerPointSurface, CreationThatFailsIs429)
{
    standIn.Give(
        {{.action = Action::Result, .call = "CreateInstance", .times = -1, .number = static_cast<long>(0x80070005)}});
    EXPECT_EQ(FailureOf([&] { provider->CreateApplication(); }).number, FailureNumber::CannotCreateObject);

    standIn.RegisterMissingProgram();
    EXPECT_EQ(FailureOf([&] { provider->CreateApplication(); }).number, FailureNumber::CannotCreateObject);
    // The one that refused can be found until it has ended.
    while (standIn.Running() > 0)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    EXPECT_EQ(provider->AttachToRunning(), nullptr);
}

TEST(PowerPointWithoutOne, IsCreatedWith429AndNotAttachedTo)
{
    const auto provider = windows::CreatePowerPointProvider();

    EXPECT_EQ(FailureOf([&] { provider->CreateApplication(); }).number, FailureNumber::CannotCreateObject);
    EXPECT_EQ(provider->AttachToRunning(), nullptr);
}

}  // namespace
}  // namespace tessarine::test
