#include <mutex>

#include <gmock/gmock.h>

#include "engine/EngineTest.h"
#include "standin/route/ComRoute.h"

// The calls that arrive at PowerPoint for each location: their names, order, number and arguments.

namespace tessarine
{
namespace
{

using testing::ElementsAreArray;

using Calls = std::vector<std::string>;

class RecordingWatch final : public standin::CallWatch
{
public:
    void Before(const std::string& call) override
    {
        const std::scoped_lock lock(mutex_);
        calls_.push_back(call);
    }
    void After(const std::string&) override {}
    void LookedUp(const std::string&) override {}

    Calls Take()
    {
        const std::scoped_lock lock(mutex_);
        return std::exchange(calls_, {});
    }

private:
    std::mutex mutex_;
    Calls calls_;
};

/// Several sequences one after the other.
template <class... Parts>
Calls Joined(const Parts&... parts)
{
    Calls joined;
    (joined.insert(joined.end(), parts.begin(), parts.end()), ...);
    return joined;
}

const Calls walkToFirstSlide{"Presentation.Slides", "Slides._NewEnum", "Slides.Next"};
const Calls walkToFirstShape{"Shapes._NewEnum", "Shapes.Next"};
const Calls textOfShape{"Shape.Type", "Shape.HasTextFrame", "Shape.TextFrame", "TextFrame.TextRange"};

class LocationCalls : public EngineTest
{
protected:
    LocationCalls() { standin::WatchRoute(watch_); }
    ~LocationCalls() override { standin::WatchRoute(nullptr); }

    void Open(FakeContent content)
    {
        EngineTest::Open(std::move(content));
        watch_->Take();
    }

    /// The calls of a location that finds, and of the same that replaces.
    template <class Location>
    Calls CallsOf(Location location, bool findOnly)
    {
        Look({.find = u"cat", .with = u"dog", .findOnly = findOnly});
        (engine.*location)();
        return watch_->Take();
    }

    const std::shared_ptr<RecordingWatch> watch_ = std::make_shared<RecordingWatch>();
};

TEST_F(LocationCalls, OfSlidesGoThroughEveryShapeAndHit)
{
    Open({.slides = {{.shapes = {Placeholder(u"a cat, a cat"), TextBox(u"cat")}}, {}}});
    const Calls rest{"Shapes.Next",  "Shape.Type",      "Shapes.Next", "Slides.Next",
                     "Slide.Shapes", "Shapes._NewEnum", "Shapes.Next", "Slides.Next"};

    EXPECT_THAT(CallsOf(&SearchFunctions::Slides, true),
                ElementsAreArray(Joined(
                    walkToFirstSlide, Calls{"Slide.Shapes"}, walkToFirstShape, textOfShape,
                    Calls{R"(TextRange.Find("cat", 0, 0, 0))", "TextRange.Start", R"(TextRange.Find("cat", 3, 0, 0))",
                          "TextRange.Start", R"(TextRange.Find("cat", 10, 0, 0))"},
                    rest)));
    EXPECT_THAT(CallsOf(&SearchFunctions::Slides, false),
                ElementsAreArray(
                    Joined(walkToFirstSlide, Calls{"Slide.Shapes"}, walkToFirstShape, textOfShape,
                           Calls{R"(TextRange.Replace("cat", "dog", 0, 0, 0))", "TextRange.Start", "TextRange.Start",
                                 R"(TextRange.Replace("cat", "dog", 3, 0, 0))", "TextRange.Start", "TextRange.Start",
                                 R"(TextRange.Replace("cat", "dog", 10, 0, 0))"},
                           rest)));
}

TEST_F(LocationCalls, PassTheSwitchesAsOne)
{
    Open({.slides = {{.shapes = {Placeholder(u"dog")}}}});
    Look({.find = u"cat", .matchCase = true, .wholeWord = true, .findOnly = true});

    engine.Slides();

    EXPECT_THAT(watch_->Take(), testing::Contains(R"(TextRange.Find("cat", 0, 1, 1))"));
}

TEST_F(LocationCalls, OfADeletionDoNotLookForWhatItLeft)
{
    Open({.slides = {{.shapes = {Placeholder(u"catcat")}}}});
    Look({.find = u"cat", .with = u""});

    engine.Slides();

    EXPECT_THAT(
        watch_->Take(),
        ElementsAreArray(Joined(walkToFirstSlide, Calls{"Slide.Shapes"}, walkToFirstShape, textOfShape,
                                Calls{R"(TextRange.Replace("cat", "", 0, 0, 0))", "TextRange.Start", "TextRange.Start",
                                      R"(TextRange.Replace("cat", "", 1, 0, 0))", "Shapes.Next", "Slides.Next"})));
}

TEST_F(LocationCalls, OfShapesAskOtherKindsForTheirTypeAlone)
{
    Open({.slides = {{.shapes = {Placeholder(u"cat"), ShapeOfType(powerpoint::msoGroup, u"cat"), TextBox(u"dog")}}}});

    EXPECT_THAT(CallsOf(&SearchFunctions::ShapeAndTextboxes, true),
                ElementsAreArray(Joined(walkToFirstSlide, Calls{"Slide.Shapes"}, walkToFirstShape,
                                        Calls{"Shape.Type", "Shapes.Next", "Shape.Type", "Shapes.Next"}, textOfShape,
                                        Calls{R"(TextRange.Find("cat", 0, 0, 0))", "Shapes.Next", "Slides.Next"})));
}

TEST_F(LocationCalls, OfNotesGoThroughTheNotesPage)
{
    Open({.slides = {{.notes = {Placeholder(u"dog")}}}});

    EXPECT_THAT(CallsOf(&SearchFunctions::Notes, true),
                ElementsAreArray(Joined(walkToFirstSlide, Calls{"Slide.NotesPage", "SlideRange.Shapes"},
                                        walkToFirstShape, textOfShape,
                                        Calls{R"(TextRange.Find("cat", 0, 0, 0))", "Shapes.Next", "Slides.Next"})));
}

TEST_F(LocationCalls, OfHyperlinksWriteEachAddressBack)
{
    Open({.slides = {{.hyperlinks = {u"http://cat", u"http://x"}}}});
    const Calls toFirst = Joined(walkToFirstSlide, Calls{"Slide.Hyperlinks", "Hyperlinks._NewEnum", "Hyperlinks.Next"});

    EXPECT_THAT(CallsOf(&SearchFunctions::Hyperlinks, true),
                ElementsAreArray(Joined(toFirst, Calls{"Hyperlink.Address", "Hyperlinks.Next", "Hyperlink.Address",
                                                       "Hyperlinks.Next", "Slides.Next"})));
    EXPECT_THAT(CallsOf(&SearchFunctions::Hyperlinks, false),
                ElementsAreArray(
                    Joined(toFirst, Calls{"Hyperlink.Address", R"(Hyperlink.Address = "http://dog")", "Hyperlinks.Next",
                                          "Hyperlink.Address", R"(Hyperlink.Address = "http://x")", "Hyperlinks.Next",
                                          "Slides.Next"})));
}

TEST_F(LocationCalls, OfFootersEndAtTheFirstThatIsShown)
{
    Open({.slides = {{}, {.footer = u"a cat"}, {.footer = u"cat"}}});
    const Calls toSecond = Joined(
        walkToFirstSlide, Calls{"Slide.HeadersFooters", "HeadersFooters.Footer", "HeaderFooter.Text", "Slides.Next",
                                "Slide.HeadersFooters", "HeadersFooters.Footer", "HeaderFooter.Text"});

    EXPECT_THAT(CallsOf(&SearchFunctions::Footer, true), ElementsAreArray(toSecond));
    EXPECT_THAT(CallsOf(&SearchFunctions::Footer, false),
                ElementsAreArray(Joined(toSecond, Calls{R"(HeaderFooter.Text = "a dog")"})));
}

TEST_F(LocationCalls, OfHeadersAreNone)
{
    Open({.slides = {{.shapes = {Placeholder(u"cat")}}}});

    EXPECT_THAT(CallsOf(&SearchFunctions::Header, false), testing::IsEmpty());
}

TEST_F(LocationCalls, OfBuiltInPropertiesFetchTheCollectionForEach)
{
    Open({.builtInProperties = {{u"Title", String(u"cat")}, {u"Pages", String(u"7"), FailureNumber::Unspecified}}});
    const Calls count{"Presentation.BuiltInDocumentProperties", "DocumentProperties.Count"};
    const Calls first{"Presentation.BuiltInDocumentProperties", "DocumentProperties.Item(1)", "DocumentProperty.Value"};
    const Calls second{"Presentation.BuiltInDocumentProperties", "DocumentProperties.Item(2)",
                       "DocumentProperty.Value"};

    EXPECT_THAT(CallsOf(&SearchFunctions::BuiltinProperties, true), ElementsAreArray(Joined(count, first, second)));
    EXPECT_THAT(CallsOf(&SearchFunctions::BuiltinProperties, false),
                ElementsAreArray(Joined(count, first, Calls{R"(DocumentProperty.Value = "dog")"}, second)));
}

TEST_F(LocationCalls, OfCustomPropertiesWriteOnlyWhatWasFound)
{
    Open({.customProperties = {{u"A", String(u"cat")}, {u"B", std::int64_t{7}}}});
    const Calls count{"Presentation.CustomDocumentProperties", "DocumentProperties.Count"};
    const Calls first{"Presentation.CustomDocumentProperties", "DocumentProperties.Item(1)", "DocumentProperty.Value"};
    const Calls second{"Presentation.CustomDocumentProperties", "DocumentProperties.Item(2)", "DocumentProperty.Value"};

    EXPECT_THAT(CallsOf(&SearchFunctions::CustomProperties, true), ElementsAreArray(Joined(count, first, second)));
    EXPECT_THAT(CallsOf(&SearchFunctions::CustomProperties, false),
                ElementsAreArray(Joined(count, first, Calls{R"(DocumentProperty.Value = "dog")"}, second)));
}

TEST_F(LocationCalls, OfLinksUpdateThemOnceAtTheEnd)
{
    Open({.slides = {{.shapes = {LinkedObject(u"C:\\cat.xlsx"), Placeholder(u"cat"), LinkedObject(u"C:\\x.xlsx")}}}});
    const Calls toFirst = Joined(walkToFirstSlide, Calls{"Slide.Shapes"}, walkToFirstShape,
                                 Calls{"Shape.Type", "Shape.LinkFormat", "LinkFormat.SourceFullName"});
    const Calls toSecond{"Shapes.Next", "Shape.Type",       "Shapes.Next",
                         "Shape.Type",  "Shape.LinkFormat", "LinkFormat.SourceFullName"};
    const Calls end{"Shapes.Next", "Slides.Next"};

    EXPECT_THAT(CallsOf(&SearchFunctions::olelinks, true), ElementsAreArray(Joined(toFirst, toSecond, end)));
    EXPECT_THAT(CallsOf(&SearchFunctions::olelinks, false),
                ElementsAreArray(Joined(toFirst, Calls{R"(LinkFormat.SourceFullName = "C:\dog.xlsx")"}, toSecond,
                                        Calls{R"(LinkFormat.SourceFullName = "C:\x.xlsx")"}, end,
                                        Calls{"Presentation.UpdateLinks"})));
}

TEST_F(LocationCalls, OfSlideMastersPerSlideReadEachDesignOnce)
{
    Open({.slides = {{.design = 0}, {.design = 0}},
          .designs = {{.name = u"A", .slideMaster = {.shapes = {Placeholder(u"dog")}}}, {.name = u"B"}}});

    EXPECT_THAT(CallsOf(&SearchFunctions::SlidesMasterPerSlide, true),
                ElementsAreArray(
                    Joined(walkToFirstSlide,
                           Calls{"Slide.Design", "Design.Name", "Slide.Design", "Design.SlideMaster", "Master.Shapes"},
                           walkToFirstShape, textOfShape,
                           Calls{R"(TextRange.Find("cat", 0, 0, 0))", "Shapes.Next", "Slides.Next", "Slide.Design",
                                 "Design.Name", "Slides.Next"})));
}

TEST_F(LocationCalls, OfSlideMastersPerPresentationWalkTheDesigns)
{
    Open({.designs = {{.name = u"A"}, {.name = u"B"}}});

    EXPECT_THAT(
        CallsOf(&SearchFunctions::SlidesMasterPerPresentation, true),
        ElementsAreArray({"Presentation.Designs", "Designs._NewEnum", "Designs.Next", "Design.SlideMaster",
                          "Master.Shapes", "Shapes._NewEnum", "Shapes.Next", "Designs.Next", "Design.SlideMaster",
                          "Master.Shapes", "Shapes._NewEnum", "Shapes.Next", "Designs.Next"}));
}

TEST_F(LocationCalls, OfTitleMastersAskOnlyDesignsThatHaveOne)
{
    Open({.designs = {{.name = u"A"}, {.name = u"B", .titleMaster = FakeMaster{}}}});

    EXPECT_THAT(CallsOf(&SearchFunctions::TitleMaster, true),
                ElementsAreArray({"Presentation.Designs", "Designs._NewEnum", "Designs.Next", "Design.HasTitleMaster",
                                  "Designs.Next", "Design.HasTitleMaster", "Design.TitleMaster", "Master.Shapes",
                                  "Shapes._NewEnum", "Shapes.Next", "Designs.Next"}));
}

TEST_F(LocationCalls, OfNotesAndHandoutMastersReadTheSameHeaderAndFooter)
{
    Open({.notesMaster = {.header = u"a cat", .footer = u"b"}});
    const Calls shapes{"Master.Shapes", "Shapes._NewEnum", "Shapes.Next"};
    const Calls found{"Presentation.NotesMaster", "Master.HeadersFooters", "HeadersFooters.Header",
                      "HeaderFooter.Text",        "HeadersFooters.Footer", "HeaderFooter.Text"};
    const Calls replaced{"Presentation.NotesMaster", "Master.HeadersFooters",          "HeadersFooters.Header",
                         "HeaderFooter.Text",        R"(HeaderFooter.Text = "a dog")", "HeadersFooters.Footer",
                         "HeaderFooter.Text",        R"(HeaderFooter.Text = "b")"};

    EXPECT_THAT(CallsOf(&SearchFunctions::NotesMaster, true),
                ElementsAreArray(Joined(Calls{"Presentation.NotesMaster"}, shapes, found)));
    EXPECT_THAT(CallsOf(&SearchFunctions::HandoutMaster, true),
                ElementsAreArray(Joined(Calls{"Presentation.HandoutMaster"}, shapes, found)));
    EXPECT_THAT(CallsOf(&SearchFunctions::NotesMaster, false),
                ElementsAreArray(Joined(Calls{"Presentation.NotesMaster"}, shapes, replaced)));
}

TEST_F(LocationCalls, OfARevisionFetchThePropertyForEachStep)
{
    Open({.customProperties = {{u"Other", std::int64_t{1}}, {u"Revision", std::int64_t{3}}}});

    engine.UpdateISO9001Version(u"revision", u"1");

    EXPECT_THAT(watch_->Take(), ElementsAreArray({"Presentation.CustomDocumentProperties", "DocumentProperties.Count",
                                                  "Presentation.CustomDocumentProperties", "DocumentProperties.Item(1)",
                                                  "DocumentProperty.Name", "Presentation.CustomDocumentProperties",
                                                  "DocumentProperties.Item(2)", "DocumentProperty.Name",
                                                  "Presentation.CustomDocumentProperties", "DocumentProperties.Item(2)",
                                                  "DocumentProperty.Value", "Presentation.CustomDocumentProperties",
                                                  "DocumentProperties.Item(2)", "DocumentProperty.Value = 4"}));
}

}  // namespace
}  // namespace tessarine
