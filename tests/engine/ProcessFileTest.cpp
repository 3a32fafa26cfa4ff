#include "EngineTest.h"
#include "support/WarningRecorder.h"

namespace tessarine
{

namespace
{

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::Pair;

class ProcessFileTest : public EngineTest
{
protected:
    ProcessFileTest()
    {
        engine.mItems = std::make_shared<FindAndReplaceItems>();
        engine.IsRequiredCount = true;
        project->options->IsFindOnly = false;
    }
};

/// A presentation in which every location that can count holds one more hit than the one before.
FakeContent EveryLocation()
{
    return {.slides = {{.shapes = {Placeholder(u"cat"), TextBox(u"cat cat cat"), LinkedObject(u"cat cat")},
                        .hyperlinks = {u"cat cat"},
                        .footer = u"cat",
                        .notes = {Placeholder(u"cat cat cat cat")}}},
            .designs = {{.name = u"A",
                         .slideMaster = {.shapes = {Placeholder(u"cat cat cat cat cat")}},
                         .titleMaster = FakeMaster{.shapes = {Placeholder(u"cat cat")}}}},
            .notesMaster = {.header = u"cat", .footer = u"cat cat"},
            .handoutMaster = {.shapes = {Placeholder(u"cat")}},
            .builtInProperties = {{u"Title", String(u"cat")}},
            .customProperties = {{u"A", String(u"cat cat")}}};
}

const std::vector<Location> allLocations = {
    Location::Slides,        Location::HyperlinkAddresses,  Location::ShapesAndTextboxes,         Location::Header,
    Location::Footer,        Location::BuiltinProperies,    Location::CustomProperties,           Location::Notes,
    Location::Links,         Location::SlideMasterPerSlide, Location::SlideMasterPerPresentation, Location::TitleMaster,
    Location::HandoutMaster, Location::NotesMaster};

TEST_F(ProcessFileTest, AFindRunCountsEveryLocationUnderItsOwnName)
{
    Open(EveryLocation());
    engine.mIsFindOnly = true;
    project->options->IsFindOnly = true;
    AddItem(u"cat", u"dog", allLocations);

    const auto result = ProcessFile();

    EXPECT_THAT(result->Item(1)->Counts(), ElementsAre(1, 2, 3, 0, 0, 1, 2, 4, 2, 5, 5, 2, 1, 3));
    EXPECT_THAT(script.Calls(), ElementsAre("Presentation.Close"));
}

TEST_F(ProcessFileTest, AReplaceRunTakesTheLocationsInTheirOrder)
{
    Open(EveryLocation());
    AddItem(u"cat", u"dog", allLocations);

    const auto result = ProcessFile();

    // The second walk over the same slide master finds what the first left: nothing.
    EXPECT_THAT(result->Item(1)->Counts(), ElementsAre(1, 2, 3, 0, 0, 1, 2, 4, 2, 5, 0, 2, 1, 3));
    std::vector<std::string> writes = script.Calls();
    std::erase_if(writes, [](const std::string& call) { return call.starts_with("TextRange."); });
    EXPECT_THAT(writes,
                ElementsAre("Hyperlink.Address = dog dog", "HeaderFooter.Text = dog", "DocumentProperty.Value = Title",
                            "DocumentProperty.Value = A", "HeaderFooter.Text = dog", "HeaderFooter.Text = dog dog",
                            "LinkFormat.SourceFullName = dog dog", "Presentation.UpdateLinks", "Presentation.Save",
                            "Presentation.Close"));
}

struct GateCase : Named {
    Location location;
    const char* firstMember;  ///< Nothing else touches it in this presentation.
};

class Gate : public ProcessFileTest, public ::testing::WithParamInterface<GateCase>
{
};

TEST_P(Gate, LeadsToItsOwnLocationOnly)
{
    Open(EveryLocation());
    engine.mIsFindOnly = true;
    project->options->IsFindOnly = true;
    AddItem(u"cat", u"dog", {GetParam().location});

    const auto counts = ProcessFile()->Item(1)->Counts();

    for (std::size_t row = 0; row < counts.size(); ++row) {
        SCOPED_TRACE(SearchLocations[row].name);
        if (row == static_cast<std::size_t>(GetParam().location))
            EXPECT_GE(counts[row], 0);
        else
            EXPECT_EQ(counts[row], -1);
    }
    if (GetParam().firstMember)
        EXPECT_GT(script.Count(GetParam().firstMember), 0);
    else
        EXPECT_EQ(script.Count("Presentation.Slides"), 0);
}

INSTANTIATE_TEST_SUITE_P(
    AllLocations, Gate,
    ::testing::Values(
        GateCase{{"InSlides"}, Location::Slides, "Slide.Shapes"},
        GateCase{{"InHyperlinkAddresses"}, Location::HyperlinkAddresses, "Slide.Hyperlinks"},
        GateCase{{"InShapesAndTextboxes"}, Location::ShapesAndTextboxes, "Slide.Shapes"},
        GateCase{{"InHeader"}, Location::Header, nullptr},
        GateCase{{"InFooter"}, Location::Footer, "Slide.HeadersFooters"},
        GateCase{{"InBuiltinProperty"}, Location::BuiltinProperies, "BuiltInDocumentProperties.Item"},
        GateCase{{"InCustomProperties"}, Location::CustomProperties, "CustomDocumentProperties.Item"},
        GateCase{{"InNotes"}, Location::Notes, "Slide.NotesPage"},
        GateCase{{"InLinks"}, Location::Links, "Shape.LinkFormat"},
        GateCase{{"InSlideMasterPerSlide"}, Location::SlideMasterPerSlide, "Slide.Design"},
        GateCase{{"InSlideMasterPerPresentation"}, Location::SlideMasterPerPresentation, "Presentation.Designs"},
        GateCase{{"InTitleMaster"}, Location::TitleMaster, "Design.TitleMaster"},
        GateCase{{"InHandoutMaster"}, Location::HandoutMaster, "Presentation.HandoutMaster"},
        GateCase{{"InNotesMaster"}, Location::NotesMaster, "Presentation.NotesMaster"}),
    NameOf<GateCase>);

TEST_F(ProcessFileTest, AReplaceRunSavesAFileWithoutOccurrences)
{
    Open({.slides = {{.shapes = {Placeholder(u"none")}}}});
    AddItem(u"cat", u"dog", {Location::Slides, Location::Notes});

    const auto result = ProcessFile();

    EXPECT_EQ(result->FileStausAfterProcess, 2);
    EXPECT_EQ(result->Item(1)->FileStausAfterProcess, 2);
    EXPECT_THAT(result->Item(1)->Counts(), ElementsAre(0, -1, -1, -1, -1, -1, -1, 0, -1, -1, -1, -1, -1, -1));
    EXPECT_EQ(script.Count("Presentation.Save"), 1);
    EXPECT_EQ(script.Count("Presentation.Close"), 1);
}

TEST_F(ProcessFileTest, AFindRunClosesWithoutSaving)
{
    engine.mIsFindOnly = true;

    ProcessFile();

    EXPECT_THAT(script.Calls(), ElementsAre("Presentation.Close"));
}

TEST_F(ProcessFileTest, GivesOneResultPerPairInTheirOrder)
{
    Open({.slides = {{.shapes = {Placeholder(u"cat cat")}}}});
    AddItem(u"cat", u"dog", {Location::Slides});
    AddItem(u"bird", u"fish", {Location::Slides});

    const auto result = ProcessFile();

    EXPECT_EQ(result->Count(), 2);
    EXPECT_EQ(result->Item(1)->FindWhat, u"cat");
    EXPECT_EQ(result->Item(1)->ReplaceWith, u"dog");
    EXPECT_EQ(result->Item(1)->Slides_Replaced(), 2);
    EXPECT_EQ(result->Item(1)->FileStausAfterProcess, 1);
    EXPECT_EQ(result->Item(2)->FindWhat, u"bird");
    EXPECT_EQ(result->Item(2)->FileStausAfterProcess, 2);
    EXPECT_EQ(result->FileStausAfterProcess, 1);
    EXPECT_TRUE(result->mError.empty());
}

TEST_F(ProcessFileTest, CarriesAPairThroughAllLocationsBeforeTheNext)
{
    Open({.slides = {{.shapes = {Placeholder(u"cat"), TextBox(u"cat")}}}});
    AddItem(u"cat", u"dog", {Location::Slides, Location::ShapesAndTextboxes});
    AddItem(u"dog", u"fish", {Location::Slides});

    const auto result = ProcessFile();

    EXPECT_EQ(result->Item(2)->Slides_Replaced(), 1);
    EXPECT_EQ(content().slides[0].shapes[0].text, u"fish");
    EXPECT_EQ(content().slides[0].shapes[1].text, u"dog");
}

TEST_F(ProcessFileTest, AnEmptyFindTextRepeatsTheLastCount)
{
    Open({.slides = {{.shapes = {Placeholder(u"cat cat")}}}});
    AddItem(u"cat", u"dog", {Location::Slides});
    AddItem(u"", u"x", {Location::Notes, Location::Links});
    const int readsOfOnePair = 1;

    const auto result = ProcessFile();

    EXPECT_THAT(result->Item(2)->Counts(), ElementsAre(-1, -1, -1, -1, -1, -1, -1, 2, 2, -1, -1, -1, -1, -1));
    EXPECT_EQ(result->Item(2)->FileStausAfterProcess, 1);
    EXPECT_EQ(script.Count("Presentation.Slides"), readsOfOnePair);
}

TEST_F(ProcessFileTest, AnEmptyFindTextRepeatsTheLastLocationOnly)
{
    Open({.slides = {{.shapes = {Placeholder(u"cat")}}}});
    AddItem(u"cat", u"dog", {Location::Slides, Location::Notes});
    AddItem(u"", u"x", {Location::Slides});

    const auto result = ProcessFile();

    EXPECT_EQ(result->Item(2)->Slides_Replaced(), 0);
    EXPECT_EQ(result->Item(2)->FileStausAfterProcess, 2);
}

TEST_F(ProcessFileTest, AnEmptyFindTextOfTheFirstPairCountsZero)
{
    AddItem(u"", u"x", {Location::Slides});

    const auto result = ProcessFile();

    EXPECT_EQ(result->Item(1)->Slides_Replaced(), 0);
    EXPECT_EQ(result->FileStausAfterProcess, 2);
}

TEST_F(ProcessFileTest, HeadersAreNeverCounted)
{
    Open(EveryLocation());
    AddItem(u"cat", u"dog", {Location::Header});

    EXPECT_EQ(ProcessFile()->Item(1)->Header_Replaced(), 0);
}

TEST_F(ProcessFileTest, AFileChangedOnlyInAFooterCountsAsUnchanged)
{
    Open({.slides = {{.footer = u"cat"}}});
    AddItem(u"cat", u"dog", {Location::Footer});

    const auto result = ProcessFile();

    EXPECT_EQ(content().slides[0].footer, u"dog");
    EXPECT_EQ(result->Item(1)->Footer_Replaced(), 0);
    EXPECT_EQ(result->FileStausAfterProcess, 2);
    EXPECT_EQ(script.Count("Presentation.Save"), 1);
}

TEST_F(ProcessFileTest, APairWithoutLocationsSearchesNothing)
{
    Open(EveryLocation());
    AddItem(u"cat", u"dog", {});

    const auto result = ProcessFile();

    EXPECT_THAT(result->Item(1)->Counts(), Each(-1));
    EXPECT_EQ(result->Item(1)->FileStausAfterProcess, 2);
    EXPECT_THAT(script.Calls(), ElementsAre("Presentation.Save", "Presentation.Close"));
}

TEST_F(ProcessFileTest, SearchesEachPairUnderItsOwnOptions)
{
    Open({.slides = {{.shapes = {Placeholder(u"CAT concat")}}}});
    engine.mIsFindOnly = true;
    const auto exact = AddItem(u"cat", u"", {Location::Slides});
    exact->OptionSetting->MatchCase = true;
    const auto word = AddItem(u"cat", u"", {Location::Slides});
    word->OptionSetting->MatchWholeWord = true;
    AddItem(u"cat", u"", {Location::Slides});

    const auto result = engine.ProcessFile(u"a.pptx", u"secret", exact->OptionSetting);

    EXPECT_EQ(result->Item(1)->Slides_Replaced(), 1);
    EXPECT_EQ(result->Item(2)->Slides_Replaced(), 1);
    EXPECT_EQ(result->Item(3)->Slides_Replaced(), 2);
    EXPECT_EQ(engine.MatchCaseFlag, 0);
    EXPECT_EQ(engine.WholeWordsFlag, 0);
}

TEST_F(ProcessFileTest, SetsTheFlagsToOne)
{
    const auto item = AddItem(u"cat", u"dog", {});
    item->OptionSetting->MatchCase = true;
    item->OptionSetting->MatchWholeWord = true;

    ProcessFile();

    EXPECT_EQ(engine.MatchCaseFlag, 1);
    EXPECT_EQ(engine.WholeWordsFlag, 1);
    EXPECT_EQ(engine.mItem, item);
}

TEST_F(ProcessFileTest, APairWithoutOptionsEndsTheFile)
{
    AddItem(u"cat", u"dog", {})->OptionSetting.reset();

    const Failure failure = FailureOf([&] { ProcessFile(); });

    EXPECT_EQ(failure.number, 13);
    EXPECT_EQ(failure.source, u"ProcessFile");
    EXPECT_EQ(failure.description,
              u"Error 13 (Type mismatch: the find/replace item has no search options) in procedure ProcessFile at Line "
              u"No. 0 of Class Module SearchFunctions");
    EXPECT_EQ(script.Count("Presentation.Close"), 0);
}

TEST_F(ProcessFileTest, AFailureLeavesLaterLocationsAndPairsUnsearched)
{
    Open({.slides = {{.shapes = {Placeholder(u"cat"), TextBox(u"cat")}, .hyperlinks = {u"cat"}}}});
    AddItem(u"cat", u"dog", {Location::Slides, Location::HyperlinkAddresses, Location::ShapesAndTextboxes});
    AddItem(u"dog", u"fish", {Location::Slides});
    script.Fail("Slide.Hyperlinks", 4711, u"gone");

    EXPECT_EQ(FailureOf([&] { ProcessFile(); }).number, 4711);

    EXPECT_EQ(content().slides[0].shapes[0].text, u"dog");
    EXPECT_EQ(content().slides[0].shapes[1].text, u"cat");
    EXPECT_EQ(script.Count("Presentation.Save"), 0);
    EXPECT_EQ(script.Count("Presentation.Close"), 0);
}

TEST_F(ProcessFileTest, AFailingSaveIsRaisedAndLeavesThePresentationOpen)
{
    script.Fail("Presentation.Save", 61, u"Disk full");

    const Failure failure = FailureOf([&] { ProcessFile(); });

    EXPECT_EQ(failure.number, 61);
    EXPECT_EQ(failure.source, u"ProcessFile");
    EXPECT_EQ(failure.description,
              u"Error 61 (Disk full) in procedure ProcessFile at Line No. 0 of Class Module SearchFunctions");
    EXPECT_EQ(script.Count("Presentation.Close"), 0);
}

TEST_F(ProcessFileTest, AFailingCloseIsRaised)
{
    script.Fail("Presentation.Close", 4711, u"busy");

    EXPECT_EQ(FailureOf([&] { ProcessFile(); }).number, 4711);
}

TEST_F(ProcessFileTest, WithoutAListIsNumber91)
{
    engine.mItems.reset();

    EXPECT_EQ(FailureOf([&] { ProcessFile(); }).number, 91);
}

TEST_F(ProcessFileTest, DeliversEventsWithoutASleepAfterEachPair)
{
    for (int item = 0; item < 30; ++item)
        AddItem(u"cat", u"dog", {});
    engine.mCPUUsage = true;
    Deliveries deliveries;

    ProcessFile();

    EXPECT_EQ(deliveries.Count(), 30u);
    EXPECT_EQ(deliveries.AfterASleep(), 0u);
}

TEST_F(ProcessFileTest, CarriesNoResultFromOneFileToTheNext)
{
    Open({.slides = {{.shapes = {Placeholder(u"cat")}}}});
    AddItem(u"cat", u"dog", {Location::Slides});
    const auto first = ProcessFile();
    Open({});

    const auto second = ProcessFile();

    EXPECT_NE(first, second);
    EXPECT_EQ(first->Item(1)->Slides_Replaced(), 1);
    EXPECT_EQ(second->Item(1)->Slides_Replaced(), 0);
    EXPECT_EQ(second->FileStausAfterProcess, 2);
}

TEST_F(ProcessFileTest, WarnsOfAShapeWhoseTextFails)
{
    Open({.slides = {{.shapes = {Placeholder(u"cat")}},
                     {.shapes = {TextBox(u"dog"), Placeholder(u"cat cat")}, .notes = {TextBox(u"cat")}}}});
    AddItem(u"cat", u"dog", {Location::Slides, Location::Notes});
    script.Fail("TextRange.Replace", 4711, u"gone");
    const WarningRecorder warnings;

    const auto results = engine.ProcessFile(u"/a.pptx", {}, {});

    EXPECT_EQ(results->Item(1)->Slides_Replaced(), 0);
    EXPECT_THAT(
        warnings.Warnings(),
        ElementsAre(Pair(u"/a.pptx", "slide 1, shape 1: its text could not be changed completely: gone"),
                    Pair(u"/a.pptx", "slide 2, shape 2: its text could not be changed completely: gone"),
                    Pair(u"/a.pptx", "notes of slide 2, shape 1: its text could not be changed completely: gone")));
}

TEST_F(ProcessFileTest, NamesTheShapeThatItWarnsOf)
{
    FakeShape title = Placeholder(u"cat");
    title.name = u"Title 1";
    Open({.slides = {{.shapes = {title}}}});
    AddItem(u"cat", u"dog", {Location::Slides});
    script.Fail("TextRange.Replace", 4711, u"gone");
    const WarningRecorder warnings;

    engine.ProcessFile(u"/a.pptx", {}, {});

    EXPECT_THAT(
        warnings.Warnings(),
        ElementsAre(Pair(u"/a.pptx", "slide 1, shape 1 \"Title 1\": its text could not be changed completely: gone")));
}

TEST_F(ProcessFileTest, WarnsOfOccurrencesThatADeletionLeaves)
{
    Open({.slides = {{.shapes = {Placeholder(u"catcat, cat"), Placeholder(u"cat cat"), Placeholder(u"dog")}}}});
    AddItem(u"cat", u"", {Location::Slides});
    const WarningRecorder warnings;

    const auto results = engine.ProcessFile(u"/a.pptx", {}, {});

    EXPECT_EQ(results->Item(1)->Slides_Replaced(), 4);
    EXPECT_EQ(content().slides[0].shapes[0].text, u"cat, ");
    EXPECT_THAT(
        warnings.Warnings(),
        ElementsAre(Pair(u"/a.pptx",
                         "slide 1, shape 1: still holds the text, which stood there twice in a row; run it again")));
}

TEST_F(ProcessFileTest, WarnsOfNothingWhereTheNewTextHoldsTheOldOne)
{
    Open({.slides = {{.shapes = {Placeholder(u"cat")}}}});
    AddItem(u"cat", u"cats", {Location::Slides});
    const WarningRecorder warnings;

    engine.ProcessFile(u"/a.pptx", {}, {});

    EXPECT_TRUE(warnings.Warnings().empty());
}

TEST_F(ProcessFileTest, WarnsOfAShapeThatDoesNotTellItsName)
{
    Open({.slides = {{.shapes = {Placeholder(u"cat")}}}});
    AddItem(u"cat", u"dog", {Location::Slides});
    script.Fail("TextRange.Replace", 4711, u"gone");
    script.Fail("Shape.Name", 4712, u"unnamed");
    const WarningRecorder warnings;

    engine.ProcessFile(u"/a.pptx", {}, {});

    EXPECT_THAT(warnings.Warnings(),
                ElementsAre(Pair(u"/a.pptx", "slide 1, shape 1: its text could not be changed completely: gone")));
}

}  // namespace

}  // namespace tessarine
