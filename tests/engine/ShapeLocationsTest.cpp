#include <set>

#include "EngineTest.h"

namespace tessarine
{

namespace
{

using ::testing::IsEmpty;

using Operation = std::int32_t (SearchFunctions::*)();
using powerpoint::msoAutoShape;
using powerpoint::msoPlaceholder;
using powerpoint::msoTextBox;

/// A location that walks shapes: which ones it reads and what it does between them.
struct ShapeLocation : Named {
    Operation operation;
    std::vector<FakeShape>& (*shapes)(FakeContent&);
    std::set<std::int32_t> types;
    bool takesAnyTextFrame;  ///< Anything but 0; otherwise 1 or -1.
    bool yields;             ///< Otherwise it delivers events only.
};

std::vector<FakeShape>& ShapesOfTheSlide(FakeContent& content)
{
    return content.slides.at(0).shapes;
}

std::vector<FakeShape>& ShapesOfTheNotesPage(FakeContent& content)
{
    return content.slides.at(0).notes;
}

std::vector<FakeShape>& ShapesOfTheSlideMaster(FakeContent& content)
{
    return content.designs.at(0).slideMaster.shapes;
}

std::vector<FakeShape>& ShapesOfTheTitleMaster(FakeContent& content)
{
    return content.designs.at(0).titleMaster->shapes;
}

std::vector<FakeShape>& ShapesOfTheNotesMaster(FakeContent& content)
{
    return content.notesMaster.shapes;
}

std::vector<FakeShape>& ShapesOfTheHandoutMaster(FakeContent& content)
{
    return content.handoutMaster.shapes;
}

class ShapeWalk : public EngineTest, public ::testing::WithParamInterface<ShapeLocation>
{
protected:
    ShapeWalk()
    {
        Open({.slides = {FakeSlide{}},
              .designs = {{.name = u"Design", .titleMaster = FakeMaster{}}},
              .notesMaster = {.header = u"", .footer = u""}});
        Look({.find = u"cat", .with = u"dog"});
    }

    std::vector<FakeShape>& Shapes() { return GetParam().shapes(content()); }
    std::int32_t Search() { return (engine.*GetParam().operation)(); }
};

TEST_P(ShapeWalk, ReadsItsShapeTypesAndNoOthers)
{
    for (const std::int32_t type : {1, 2, 3, 5, 6, 7, 9, 10, 11, 12, 13, 14, 15, 16, 17, 19, 22, 24, 27, 28, 30, -2}) {
        SCOPED_TRACE(type);
        const bool read = GetParam().types.contains(type);
        Shapes() = {ShapeOfType(type, u"a cat")};

        EXPECT_EQ(Search(), read ? 1 : 0);
        EXPECT_EQ(Shapes()[0].text, read ? u"a dog" : u"a cat");
    }
}

TEST_P(ShapeWalk, DoesNotEnterGroupsAndTables)
{
    Shapes() = {ShapeOfType(powerpoint::msoGroup, u"cat"), ShapeOfType(powerpoint::msoTable, u"cat")};

    EXPECT_EQ(Search(), 0);
    EXPECT_EQ(script.Count("Shape.TextFrame"), 0);
}

TEST_P(ShapeWalk, JudgesHasTextFrameByItsOwnRule)
{
    for (const powerpoint::TriState answer : {1, -1, 0, 2, -2}) {
        SCOPED_TRACE(answer);
        const bool read = answer == 1 || answer == -1 || (answer != 0 && GetParam().takesAnyTextFrame);
        Shapes() = {ShapeOfType(*GetParam().types.begin(), u"a cat")};
        Shapes()[0].hasTextFrame = answer;

        EXPECT_EQ(Search(), read ? 1 : 0);
    }
}

TEST_P(ShapeWalk, AddsUpTheShapesInTheirOrder)
{
    const std::int32_t type = *GetParam().types.begin();
    Shapes() = {ShapeOfType(type, u"cat cat"), ShapeOfType(type, u"none"), ShapeOfType(type, u"cat")};

    EXPECT_EQ(Search(), 3);
    EXPECT_EQ(Shapes()[0].text, u"dog dog");
    EXPECT_EQ(Shapes()[2].text, u"dog");
}

TEST_P(ShapeWalk, LeavesTheShapesAloneInAFindRun)
{
    Look({.find = u"cat", .with = u"dog", .findOnly = true});
    Shapes() = {ShapeOfType(*GetParam().types.begin(), u"cat cat")};

    EXPECT_EQ(Search(), 2);
    EXPECT_EQ(Shapes()[0].text, u"cat cat");
    EXPECT_THAT(script.Calls(), IsEmpty());
}

TEST_P(ShapeWalk, DeliversEventsAfterEveryShape)
{
    engine.mCPUUsage = true;
    const std::int32_t type = *GetParam().types.begin();
    for (int shape = 0; shape < 10; ++shape) {
        Shapes().push_back(ShapeOfType(type, u"none"));
        Shapes().push_back(ShapeOfType(type, u"none"));
        Shapes().back().hasTextFrame = 0;
        Shapes().push_back(ShapeOfType(powerpoint::msoGroup, u"none"));
    }
    Deliveries deliveries;

    Search();

    EXPECT_EQ(deliveries.Count(), 30u);
    EXPECT_EQ(deliveries.AfterASleep(), GetParam().yields ? 30u : 0u);
}

TEST_P(ShapeWalk, MakesWayForOneDeliveryWhereNothingCanBeFound)
{
    Shapes() = {ShapeOfType(*GetParam().types.begin(), u"cat"), ShapeOfType(*GetParam().types.begin(), u"cat")};
    script.DenyText();
    Deliveries deliveries;

    EXPECT_EQ(Search(), 0);

    EXPECT_EQ(script.Count("Shapes.NewEnum"), 0);
    EXPECT_EQ(deliveries.Count(), 1u);
}

TEST_P(ShapeWalk, IsNeverLeftOutWhenTheProcessorIsSpared)
{
    Shapes() = {ShapeOfType(*GetParam().types.begin(), u"cat"), ShapeOfType(*GetParam().types.begin(), u"cat")};
    script.DenyText();
    engine.mCPUUsage = true;

    EXPECT_EQ(Search(), 2);
}

TEST_P(ShapeWalk, CountsAFailingTextRangeAsZeroAndGoesOn)
{
    const std::int32_t type = *GetParam().types.begin();
    Shapes() = {ShapeOfType(type, u"cat"), ShapeOfType(type, u"cat")};
    script.FailOnce("TextRange.Replace", 4711, u"gone");

    EXPECT_EQ(Search(), 1);
    EXPECT_EQ(Shapes()[1].text, u"dog");
}

TEST_P(ShapeWalk, EndsWithoutAnOpenLoopVariable)
{
    Shapes() = {ShapeOfType(*GetParam().types.begin(), u"cat")};

    Search();

    EXPECT_EQ(engine.CurrentSlide, nullptr);
    EXPECT_EQ(engine.CurrentShape, nullptr);
}

INSTANTIATE_TEST_SUITE_P(AllLocations, ShapeWalk,
                         ::testing::Values(
                             ShapeLocation{
                                 {"Slides"}, &SearchFunctions::Slides, ShapesOfTheSlide, {msoPlaceholder}, false, true},
                             ShapeLocation{{"ShapeAndTextboxes"},
                                           &SearchFunctions::ShapeAndTextboxes,
                                           ShapesOfTheSlide,
                                           {msoAutoShape, msoTextBox},
                                           false,
                                           true},
                             ShapeLocation{{"Notes"},
                                           &SearchFunctions::Notes,
                                           ShapesOfTheNotesPage,
                                           {msoAutoShape, msoTextBox, msoPlaceholder},
                                           false,
                                           true},
                             ShapeLocation{{"NotesMaster"},
                                           &SearchFunctions::NotesMaster,
                                           ShapesOfTheNotesMaster,
                                           {msoAutoShape, msoTextBox, msoPlaceholder},
                                           false,
                                           false},
                             ShapeLocation{{"HandoutMaster"},
                                           &SearchFunctions::HandoutMaster,
                                           ShapesOfTheHandoutMaster,
                                           {msoAutoShape, msoTextBox, msoPlaceholder},
                                           true,
                                           false},
                             ShapeLocation{{"TitleMaster"},
                                           &SearchFunctions::TitleMaster,
                                           ShapesOfTheTitleMaster,
                                           {msoAutoShape, msoTextBox, msoPlaceholder},
                                           true,
                                           true},
                             ShapeLocation{{"SlidesMasterPerSlide"},
                                           &SearchFunctions::SlidesMasterPerSlide,
                                           ShapesOfTheSlideMaster,
                                           {msoAutoShape, msoTextBox, msoPlaceholder},
                                           true,
                                           true},
                             ShapeLocation{{"SlidesMasterPerPresentation"},
                                           &SearchFunctions::SlidesMasterPerPresentation,
                                           ShapesOfTheSlideMaster,
                                           {msoAutoShape, msoTextBox, msoPlaceholder},
                                           false,
                                           true}),
                         NameOf<ShapeLocation>);

}  // namespace

}  // namespace tessarine
