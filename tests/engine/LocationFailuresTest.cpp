#include "EngineTest.h"

namespace tessarine
{

namespace
{

using ::testing::IsEmpty;

/// A location, a member of the surface that it can't do without, and the name that its failure text shows.
struct FailureCase : Named {
    std::int32_t (SearchFunctions::*operation)();
    Location location;
    const char* member;
    const char16_t* source;
    const char16_t* procedureText;  ///< With the blank that some of the texts have after the name.
};

class LocationFailure : public EngineTest, public ::testing::WithParamInterface<FailureCase>
{
protected:
    LocationFailure()
    {
        const std::vector<FakeShape> shapes = {Placeholder(u"cat"), TextBox(u"cat"), LinkedObject(u"cat")};
        Open({.slides = {{.shapes = shapes, .hyperlinks = {u"cat"}, .footer = u"cat", .notes = shapes}},
              .designs = {{.name = u"A",
                           .slideMaster = {.shapes = shapes},
                           .titleMaster = FakeMaster{.shapes = shapes}}},
              .notesMaster = {.shapes = shapes, .header = u"cat", .footer = u"cat"},
              .handoutMaster = {.shapes = shapes},
              .builtInProperties = {{u"Title", String(u"cat")}},
              .customProperties = {{u"A", String(u"cat")}}});
        Look({.find = u"cat", .with = u"dog"});
    }

    String OwnText() const
    {
        return u"Error 4711 (gone) in procedure " + String(GetParam().procedureText) +
               u" at Line No. 0 of Class Module SearchFunctions";
    }
};

TEST_P(LocationFailure, IsRaisedAgainWithTheLocationsName)
{
    script.Fail(GetParam().member, 4711, u"gone");

    const Failure failure = FailureOf([&] { (engine.*GetParam().operation)(); });

    EXPECT_EQ(failure.number, 4711);
    EXPECT_EQ(failure.source, GetParam().source);
    EXPECT_EQ(failure.description, OwnText());
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_P(LocationFailure, EndsTheFileWithTheTextsNested)
{
    AddItem(u"cat", u"dog", {GetParam().location});
    script.Fail(GetParam().member, 4711, u"gone");

    const Failure failure = FailureOf([&] { ProcessFile(); });

    EXPECT_EQ(failure.number, 4711);
    EXPECT_EQ(failure.source, u"ProcessFile");
    EXPECT_EQ(failure.description, u"Error 4711 (" + OwnText() +
                                       u") in procedure ProcessFile at Line No. 0 of Class Module SearchFunctions");
    EXPECT_EQ(script.Count("Presentation.Save"), 0);
    EXPECT_EQ(script.Count("Presentation.Close"), 0);
}

TEST_P(LocationFailure, OfAMissingPresentationIsNumber91)
{
    engine.xPresentation.reset();

    const Failure failure = FailureOf([&] { (engine.*GetParam().operation)(); });

    EXPECT_EQ(failure.number, 91);
    EXPECT_EQ(failure.source, GetParam().source);
}

constexpr auto Slides = &SearchFunctions::Slides;
constexpr auto Hyperlinks = &SearchFunctions::Hyperlinks;
constexpr auto ShapeAndTextboxes = &SearchFunctions::ShapeAndTextboxes;
constexpr auto Footer = &SearchFunctions::Footer;
constexpr auto Notes = &SearchFunctions::Notes;
constexpr auto NotesMaster = &SearchFunctions::NotesMaster;
constexpr auto TitleMaster = &SearchFunctions::TitleMaster;
constexpr auto PerSlide = &SearchFunctions::SlidesMasterPerSlide;
constexpr auto PerPresentation = &SearchFunctions::SlidesMasterPerPresentation;
constexpr auto HandoutMaster = &SearchFunctions::HandoutMaster;
constexpr auto BuiltinProperties = &SearchFunctions::BuiltinProperties;
constexpr auto CustomProperties = &SearchFunctions::CustomProperties;
constexpr auto olelinks = &SearchFunctions::olelinks;

INSTANTIATE_TEST_SUITE_P(
    AllLocations, LocationFailure,
    ::testing::Values(
        FailureCase{{"Slides"}, Slides, Location::Slides, "Presentation.Slides", u"Slides", u"Slides"},
        FailureCase{{"SlidesShapes"}, Slides, Location::Slides, "Slide.Shapes", u"Slides", u"Slides"},
        FailureCase{{"SlidesType"}, Slides, Location::Slides, "Shape.Type", u"Slides", u"Slides"},
        FailureCase{{"SlidesHasTextFrame"}, Slides, Location::Slides, "Shape.HasTextFrame", u"Slides", u"Slides"},
        FailureCase{{"SlidesTextFrame"}, Slides, Location::Slides, "Shape.TextFrame", u"Slides", u"Slides"},
        FailureCase{{"SlidesTextRange"}, Slides, Location::Slides, "TextFrame.TextRange", u"Slides", u"Slides"},
        FailureCase{{"SlidesNextShape"}, Slides, Location::Slides, "Shapes.Next", u"Slides", u"Slides"},
        FailureCase{
            {"Hyperlinks"}, Hyperlinks, Location::HyperlinkAddresses, "Slide.Hyperlinks", u"Hyperlinks", u"Hyperlinks"},
        FailureCase{{"HyperlinksRead"},
                    Hyperlinks,
                    Location::HyperlinkAddresses,
                    "Hyperlink.Address",
                    u"Hyperlinks",
                    u"Hyperlinks"},
        FailureCase{{"HyperlinksWrite"},
                    Hyperlinks,
                    Location::HyperlinkAddresses,
                    "Hyperlink.Address =",
                    u"Hyperlinks",
                    u"Hyperlinks"},
        FailureCase{{"ShapeAndTextboxes"},
                    ShapeAndTextboxes,
                    Location::ShapesAndTextboxes,
                    "Slide.Shapes",
                    u"ShapeAndTextboxes",
                    u"ShapeAndTextboxes "},
        FailureCase{{"FooterSlides"}, Footer, Location::Footer, "Presentation.Slides", u"Footer", u"Footer "},
        FailureCase{{"FooterFirstObject"}, Footer, Location::Footer, "HeadersFooters.Footer", u"Footer", u"Footer "},
        FailureCase{{"Notes"}, Notes, Location::Notes, "Slide.NotesPage", u"Notes", u"Notes "},
        FailureCase{{"NotesShapes"}, Notes, Location::Notes, "SlideRange.Shapes", u"Notes", u"Notes "},
        FailureCase{{"NotesMaster"},
                    NotesMaster,
                    Location::NotesMaster,
                    "Presentation.NotesMaster",
                    u"NotesMaster",
                    u"NotesMaster "},
        FailureCase{{"NotesMasterHeader"},
                    NotesMaster,
                    Location::NotesMaster,
                    "HeadersFooters.Header",
                    u"NotesMaster",
                    u"NotesMaster "},
        FailureCase{{"NotesMasterText"},
                    NotesMaster,
                    Location::NotesMaster,
                    "HeaderFooter.Text",
                    u"NotesMaster",
                    u"NotesMaster "},
        FailureCase{{"NotesMasterWrite"},
                    NotesMaster,
                    Location::NotesMaster,
                    "HeaderFooter.Text =",
                    u"NotesMaster",
                    u"NotesMaster "},
        FailureCase{
            {"TitleMaster"}, TitleMaster, Location::TitleMaster, "Design.TitleMaster", u"TitleMaster", u"TitleMaster "},
        FailureCase{{"TitleMasterAsked"},
                    TitleMaster,
                    Location::TitleMaster,
                    "Design.HasTitleMaster",
                    u"TitleMaster",
                    u"TitleMaster "},
        FailureCase{{"SlidesMasterPerSlide"},
                    PerSlide,
                    Location::SlideMasterPerSlide,
                    "Design.Name",
                    u"SlidesMasterPerSlide",
                    u"SlidesMasterPerSlide "},
        FailureCase{{"SlidesMasterPerSlideMaster"},
                    PerSlide,
                    Location::SlideMasterPerSlide,
                    "Design.SlideMaster",
                    u"SlidesMasterPerSlide",
                    u"SlidesMasterPerSlide "},
        FailureCase{{"SlidesMasterPerPresentation"},
                    PerPresentation,
                    Location::SlideMasterPerPresentation,
                    "Presentation.Designs",
                    u"SlidesMasterPerPresentation",
                    u"SlidesMasterPerPresentation "},
        FailureCase{{"HandoutMaster"},
                    HandoutMaster,
                    Location::HandoutMaster,
                    "Presentation.HandoutMaster",
                    u"HandoutMaster",
                    u"HandoutMaster"},
        FailureCase{{"HandoutMasterFooter"},
                    HandoutMaster,
                    Location::HandoutMaster,
                    "HeadersFooters.Footer",
                    u"HandoutMaster",
                    u"HandoutMaster"},
        FailureCase{{"BuiltinPropertiesCollection"},
                    BuiltinProperties,
                    Location::BuiltinProperies,
                    "Presentation.BuiltInDocumentProperties",
                    u"BuiltinProperties",
                    u"BuiltinProperties "},
        FailureCase{{"BuiltinPropertiesCount"},
                    BuiltinProperties,
                    Location::BuiltinProperies,
                    "BuiltInDocumentProperties.Count",
                    u"BuiltinProperties",
                    u"BuiltinProperties "},
        FailureCase{{"BuiltinPropertiesFirst"},
                    BuiltinProperties,
                    Location::BuiltinProperies,
                    "BuiltInDocumentProperties.Item",
                    u"BuiltinProperties",
                    u"BuiltinProperties "},
        FailureCase{{"CustomPropertiesRead"},
                    CustomProperties,
                    Location::CustomProperties,
                    "DocumentProperty.Value",
                    u"CustomProperties",
                    u"CustomProperties "},
        FailureCase{{"CustomPropertiesWrite"},
                    CustomProperties,
                    Location::CustomProperties,
                    "DocumentProperty.Value =",
                    u"CustomProperties",
                    u"CustomProperties "},
        FailureCase{{"Links"}, olelinks, Location::Links, "Shape.LinkFormat", u"olelinks", u"olelinks"},
        FailureCase{{"LinksRead"}, olelinks, Location::Links, "LinkFormat.SourceFullName", u"olelinks", u"olelinks"},
        FailureCase{{"LinksWrite"}, olelinks, Location::Links, "LinkFormat.SourceFullName =", u"olelinks", u"olelinks"},
        FailureCase{{"LinksUpdate"}, olelinks, Location::Links, "Presentation.UpdateLinks", u"olelinks", u"olelinks"}),
    NameOf<FailureCase>);

}  // namespace

}  // namespace tessarine
