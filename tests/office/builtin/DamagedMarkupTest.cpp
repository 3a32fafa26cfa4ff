#include "DeckOnDisk.h"
#include "engine/SearchFunctions.h"
#include "log/Warnings.h"
#include "model/Project.h"
#include "office/builtin/xml/XmlDocument.h"

/// Parts that are no XML: whatever a job looks for, the file fails or its report tells.
namespace tessarine::test
{
namespace
{

struct Damage {
    const char* name;
    std::string from;  ///< What of an ordinary slide gives way
    std::string to;    ///< to this.
};

void PrintTo(const Damage& damage, std::ostream* out)
{
    *out << damage.name;
}

/// A job's walk over all slides and notes pages, for a text that occurs nowhere.
Raised FailureOfFind(const DeckOnDisk& deck, bool OptionSetting::*location)
{
    const ProjectOwner project;
    const auto item = project->FindAndReplaceList->Add(u"occurs nowhere", u"", nullptr, project.get());
    item->OptionSetting = std::make_shared<OptionSetting>();
    (*item->OptionSetting).*location = true;
    SearchFunctions engine;
    engine.mItems = project->FindAndReplaceList;
    engine.mIsFindOnly = true;
    engine.xPresentation = deck.Open();
    return RaisedBy([&] { engine.ProcessFile(deck.Path(), u"", item->OptionSetting); });
}

Deck TwoSlides()
{
    return Deck().Slide(Title(u"one")).Slide(TextBox(u"two, three"), NotesPage(Body(u"note")));
}

const std::string slide2 = "ppt/slides/slide2.xml";
const std::string notes1 = "ppt/notesSlides/notesSlide1.xml";

class DamageThatHidesText : public testing::TestWithParam<Damage>
{
};

TEST_P(DamageThatHidesText, FailsTheFileAlsoWhenTheTextIsNotThere)
{
    const DeckOnDisk deck(TwoSlides().Edit(slide2, GetParam().from, GetParam().to));

    EXPECT_THAT(FailureOfFind(deck, &OptionSetting::InSlides), FailsWith(FailureNumber::FileCorrupt, slide2));
    EXPECT_THAT(FailureOfFind(deck, &OptionSetting::InShapesAndTextboxes),
                FailsWith(FailureNumber::FileCorrupt, slide2));
    EXPECT_THAT(FailureOfFind(deck, &OptionSetting::InHyperlinkAddresses),
                FailsWith(FailureNumber::FileCorrupt, slide2));
}

TEST_P(DamageThatHidesText, OfANotesPageDoesSoToo)
{
    const std::string from = GetParam().from == "two, three" ? "note<" : GetParam().from;
    const std::string to = GetParam().from == "two, three" ? GetParam().to + "<" : GetParam().to;
    const DeckOnDisk deck(TwoSlides().Edit(notes1, from, to));

    EXPECT_THAT(FailureOfFind(deck, &OptionSetting::InNotes), FailsWith(FailureNumber::FileCorrupt, notes1));
    EXPECT_EQ(FailureOfFind(deck, &OptionSetting::InSlides).number, 0);
}

INSTANTIATE_TEST_SUITE_P(
    Every, DamageThatHidesText,
    testing::Values(Damage{"Nul", "two, three", std::string("two\0three", 9)},
                    Damage{"VerticalTab", "two, three", "two\v"}, Damage{"Ampersand", "two, three", "two & three"},
                    Damage{"Entity", "two, three", "two &foo; three"}, Damage{"Html", "two, three", "two&nbsp;three"},
                    Damage{"NulByNumber", "two, three", "&#0;"}, Damage{"Latin1", "two, three", "zw\xF6lf"},
                    Damage{"CutCharacter", "two, three", "\xE7\x8C"},
                    Damage{"Surrogate", "two, three", "\xED\xA0\xBD\xED\xB8\x80"},
                    Damage{"NoCharacter", "two, three", "\xEF\xBF\xBF"}, Damage{"EarlyEnd", "</p:spTree>", ""},
                    Damage{"LateEnd", "</p:cSld>", "</p:cSld></p:cSld>"}),
    [](const auto& tested) { return tested.param.name; });

TEST(DamagedFooter, OfWhichTheSearchPassesOverTheFailureIsAWarning)
{
    const DeckOnDisk deck(TwoSlides().Edit(slide2, "two, three", "a & b"));
    std::vector<std::string> warnings;
    const auto before = SetWarningReceiver([&](const String& path, const String& text) {
        EXPECT_EQ(path, deck.Path());
        warnings.push_back(ToUtf8(text));
    });

    EXPECT_EQ(FailureOfFind(deck, &OptionSetting::InFooter).number, 0);

    SetWarningReceiver(before);
    EXPECT_THAT(warnings,
                testing::ElementsAre(testing::HasSubstr("could not be read: The file is damaged: " + slide2)));
}

class NotWellFormed : public testing::TestWithParam<std::pair<const char*, const char*>>
{
};

TEST_P(NotWellFormed, IsRefused)
{
    EXPECT_THAT(RaisedBy([] { builtin::XmlDocument(GetParam().second, "a part", builtin::Limits::Small()); }),
                FailsWith(FailureNumber::FileCorrupt, "a part"))
        << GetParam().second;
}

INSTANTIATE_TEST_SUITE_P(
    Xml, NotWellFormed,
    testing::Values(std::pair("WithoutQuotes", "<a b=c/>"), std::pair("WithoutAValue", "<a b/>"),
                    std::pair("WithoutAValueAfterOthers", "<a b='' c></a>"), std::pair("WithoutAName", "<a ='b'/>"),
                    std::pair("WithoutEqualsSign", "<a b'c'/>"), std::pair("TwoNames", "<a b c='d'/>"),
                    std::pair("NoBlankBetween", "<a b='c'd='e'/>"), std::pair("NoBlankInFront", "<a'b'/>"),
                    std::pair("SlashInside", "<a / b='c'/>"), std::pair("TwoSlashes", "<a //>"),
                    std::pair("NameOfADigit", "<a 1='b'/>"), std::pair("TagInAValue", "<a b='<c/>'/>"),
                    std::pair("Twice", "<a b='1' c='2' b='1'/>"),
                    std::pair("TwiceOfMany",
                              "<a a='' b='' c='' d='' e='' f='' g='' h='' i='' j='' k='' l='' m='' n='' o='' p='' q='' "
                              "r='' s='' t='' u='' v='' c=''/>"),
                    std::pair("EndOfCharacterData", "<a>b]]>c</a>"), std::pair("AmpersandInAValue", "<a b='c&d'/>"),
                    std::pair("ControlInAValue", "<a b='\x01'/>"), std::pair("ControlInAComment", "<a><!--\x01--></a>"),
                    std::pair("AmpersandAfterAComment", "<a><!-- & -->&</a>"),
                    std::pair("AmpersandBeforeAComment", "<a>&<!-- & --></a>")),
    [](const auto& tested) { return tested.param.first; });

TEST(WellFormed, MarkupOfAnyFormIsTaken)
{
    for (const char* const xml :
         {"<a/>", "<a />", "<a b='c' />", "<a\tb = \"'>\"\n c\r\n=\r\n'\"'></a >", "<a><!-- & < -- ]]> --></a>",
          "<a><![CDATA[ & < ]] ]]>&amp;</a>", "<?xml version='1.0'?><?p & ?><a>]] > &#x9;&#169;</a>",
          "<\xC3\xA4 \xC3\xA4.-_:1='&lt;'/>",
          "<a a='' b='' c='' d='' e='' f='' g='' h='' i='' j='' k='' l='' m='' n='' o='' p='' q='' r='' s='' t='' "
          "u=''/>"})
        EXPECT_EQ(RaisedBy([&] { builtin::XmlDocument(xml, "a part", builtin::Limits::Small()); }).text, "") << xml;
}

/// Notes pages are those that slides name, whatever their content type says.
class NotesPageType : public testing::TestWithParam<Damage>
{
};

TEST_P(NotesPageType, DoesNotMatter)
{
    const DeckOnDisk deck(TwoSlides().Edit("[Content_Types].xml", GetParam().from, GetParam().to));
    const auto presentation = deck.Open();

    EXPECT_TRUE(presentation->NotesMayHoldText(u"note"));
    EXPECT_EQ(All(SlideOf(*presentation, 2)->NotesPage()->Shapes()).size(), 1u);
}

const std::string notesType = "application/vnd.openxmlformats-officedocument.presentationml.notesSlide+xml";
const std::string notesOverride = "<Override PartName=\"/" + notes1 + "\" ContentType=\"" + notesType + "\"/>";

INSTANTIATE_TEST_SUITE_P(Every, NotesPageType,
                         testing::Values(Damage{"AsItIs", notesType, notesType}, Damage{"Missing", notesOverride, ""},
                                         Damage{
                                             "Wrong", notesType,
                                             "application/vnd.openxmlformats-officedocument.presentationml.slide+xml"},
                                         Damage{"Empty", "\"" + notesType + "\"", "\"\""}),
                         [](const auto& tested) { return tested.param.name; });

struct MovedNotes {
    std::string name;
    std::string part;          ///< Its name now, below "ppt/".
    std::string contentTypes;  ///< What [Content_Types].xml says of it.
};

void PrintTo(const MovedNotes& moved, std::ostream* out)
{
    *out << moved.name;
}

class NotesPageElsewhere : public testing::TestWithParam<MovedNotes>
{
};

TEST_P(NotesPageElsewhere, IsFoundByTheSlide)
{
    const MovedNotes& moved = GetParam();
    const DeckOnDisk deck(
        TwoSlides()
            .Edit("[Content_Types].xml", notesOverride, moved.contentTypes)
            .Edit("ppt/slides/_rels/slide2.xml.rels", "../notesSlides/notesSlide1.xml", "../" + moved.part)
            .Rename(notes1, "ppt/" + moved.part));
    const auto presentation = deck.Open();

    EXPECT_TRUE(presentation->NotesMayHoldText(u"note"));
    EXPECT_EQ(All(SlideOf(*presentation, 2)->NotesPage()->Shapes()).size(), 1u);
}

std::vector<MovedNotes> PlacesOfNotes()
{
    const std::string presentationType = "application/vnd.openxmlformats-officedocument.presentationml.";
    std::vector<MovedNotes> moved;
    for (const auto& [place, part] : {std::pair("Pages", "pages/n1.xml"), std::pair("Slides", "slides/notes1.xml"),
                                      std::pair("Root", "n1.xml"), std::pair("Layouts", "slideLayouts/n1.xml"),
                                      std::pair("Data", "pages/n1.dat"), std::pair("Folder", "notesSlides/n1.png")}) {
        const auto add = [&, place = place, part = part](const std::string& name, const std::string& type) {
            moved.push_back({name + "In" + place, part,
                             type.empty() ? ""
                                          : "<Override PartName=\"/ppt/" + std::string(part) + "\" ContentType=\"" +
                                                type + "\"/>"});
        };
        add("NoType", "");
        add("AnyXml", "application/xml");
        add("Slide", presentationType + "slide+xml");
        add("Master", presentationType + "slideMaster+xml");
        add("Theme", "application/vnd.openxmlformats-officedocument.theme+xml");
        add("PlainText", "text/plain");
        add("Bytes", "application/octet-stream");
        add("Nonsense", "notes");
    }
    return moved;
}

INSTANTIATE_TEST_SUITE_P(Every, NotesPageElsewhere, testing::ValuesIn(PlacesOfNotes()),
                         [](const auto& tested) { return tested.param.name; });

}  // namespace
}  // namespace tessarine::test
