#include "DeckOnDisk.h"
#include "support/Fixtures.h"
#include "support/WarningRecorder.h"

namespace tessarine::test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

const std::string core = "docProps/core.xml";
const std::string app = "docProps/app.xml";

std::shared_ptr<powerpoint::DocumentProperty> Property(powerpoint::Presentation& presentation, std::int32_t index)
{
    return presentation.BuiltInDocumentProperties()->Item(index);
}

std::string TextAt(powerpoint::Presentation& presentation, std::int32_t index)
{
    return ToUtf8(powerpoint::TextOf(Property(presentation, index)->Value()));
}

enum class Kind { Text, Number, Date };
constexpr const char* raises = nullptr;

/// A row of the object model's table: what it is called, where it lies, what it reads as when it is absent.
struct Row {
    std::int32_t index;
    const char* name;
    Kind kind;
    const char* element;  ///< "" when the file has no place for it.
    const char* unset;
    bool writable;
};

void PrintTo(const Row& row, std::ostream* out)
{
    *out << row.name;
}

bool IsInCore(const Row& row)
{
    return std::string_view(row.element).find(':') != std::string_view::npos;
}

/// A deck whose property has a value, and the text that it reads as.
Deck DeckWith(const Row& row, const String& value)
{
    Deck deck = Deck().Slide(Title(u"x"));
    if (IsInCore(row))
        deck.Core(row.element, value);
    else if (*row.element != '\0')
        deck.App(row.element, value);
    return deck;
}

class BuiltInProperty : public testing::TestWithParam<Row>
{
protected:
    String Value() const
    {
        return GetParam().kind == Kind::Number ? u"12"
               : GetParam().kind == Kind::Date ? u"2024-05-06T07:08:09Z"
                                               : u"Fabrikam & S\u00F6hne";
    }
};

TEST_P(BuiltInProperty, HasItsNameAtItsPlace)
{
    const DeckOnDisk deck(fixtures::NoProperties());

    EXPECT_EQ(ToUtf8(Property(*deck.Open(), GetParam().index)->Name()), GetParam().name);
}

TEST_P(BuiltInProperty, ReadsAsUnsetWhenItsElementIsAbsent)
{
    const DeckOnDisk deck(fixtures::NoProperties());
    const auto presentation = deck.Open();

    if (GetParam().unset == raises) {
        EXPECT_THAT(RaisedBy([&] { TextAt(*presentation, GetParam().index); }),
                    FailsWith(FailureNumber::Unspecified, "\" has no value"));
    } else {
        EXPECT_EQ(TextAt(*presentation, GetParam().index), GetParam().unset);
    }
}

TEST_P(BuiltInProperty, ReadsItsElement)
{
    if (*GetParam().element == '\0')
        return;  // no place in the file, nothing to read
    const DeckOnDisk deck(DeckWith(GetParam(), Value()));

    const powerpoint::Value value = Property(*deck.Open(), GetParam().index)->Value();

    if (GetParam().kind == Kind::Number) {
        EXPECT_EQ(std::get<std::int64_t>(value), 12);
    } else if (GetParam().kind == Kind::Date) {
        EXPECT_EQ(std::get<powerpoint::Date>(value).local.tm_year, 124);
    } else {
        EXPECT_EQ(std::get<String>(value), Value());
    }
}

TEST_P(BuiltInProperty, PutBackUnchangedChangesNoByte)
{
    const DeckOnDisk deck(DeckWith(GetParam(), Value()));
    const std::string before = deck.Bytes();

    deck.Change([&](auto& presentation) {
        if (*GetParam().element != '\0')
            Property(presentation, GetParam().index)->PutValue(FromUtf8(TextAt(presentation, GetParam().index)));
    });

    EXPECT_EQ(deck.Bytes(), before);
}

TEST_P(BuiltInProperty, TakesANewTextOrIsReadOnly)
{
    const DeckOnDisk deck(DeckWith(GetParam(), Value()));
    const PackageReader before = deck.Package();
    Raised raised;

    deck.Change([&](auto& presentation) {
        raised = RaisedBy([&] { Property(presentation, GetParam().index)->PutValue(String(u"Contoso <&>")); });
    });

    if (GetParam().writable) {
        EXPECT_EQ(raised.number, 0);
        EXPECT_EQ(TextAt(*deck.Open(), GetParam().index), "Contoso <&>");
        EXPECT_THAT(EntriesThatDiffer(before, deck.Package()), ElementsAre(IsInCore(GetParam()) ? core : app));
    } else {
        EXPECT_THAT(raised, FailsWith(FailureNumber::Unspecified, "The document property \""));
        EXPECT_EQ(deck.Bytes(), before.Bytes());
    }
}

TEST_P(BuiltInProperty, IsMadeWithItsPartWhenAbsentUnlessReadOnly)
{
    const DeckOnDisk deck(fixtures::NoProperties());
    const std::string before = deck.Bytes();

    deck.Change([&](auto& presentation) {
        RaisedBy([&] { Property(presentation, GetParam().index)->PutValue(String(u"Contoso")); });
    });

    if (GetParam().writable) {
        EXPECT_EQ(TextAt(*deck.Open(), GetParam().index), "Contoso");
        EXPECT_EQ(deck.Package().Has(core), IsInCore(GetParam()));
        EXPECT_THAT(ValidityFaults(deck.Package()), IsEmpty());
    } else {
        EXPECT_EQ(deck.Bytes(), before);
    }
}

INSTANTIATE_TEST_SUITE_P(Table, BuiltInProperty,
                         testing::Values(Row{1, "Title", Kind::Text, "dc:title", "", true},
                                         Row{2, "Subject", Kind::Text, "dc:subject", "", true},
                                         Row{3, "Author", Kind::Text, "dc:creator", "", true},
                                         Row{4, "Keywords", Kind::Text, "cp:keywords", "", true},
                                         Row{5, "Comments", Kind::Text, "dc:description", "", true},
                                         Row{6, "Template", Kind::Text, "Template", "", true},
                                         Row{7, "Last author", Kind::Text, "cp:lastModifiedBy", "", true},
                                         Row{8, "Revision number", Kind::Text, "cp:revision", "", true},
                                         Row{9, "Application name", Kind::Text, "Application", "", false},
                                         Row{10, "Last print date", Kind::Date, "cp:lastPrinted", raises, false},
                                         Row{11, "Creation date", Kind::Date, "dcterms:created", raises, false},
                                         Row{12, "Last save time", Kind::Date, "dcterms:modified", raises, false},
                                         Row{13, "Total editing time", Kind::Number, "TotalTime", "0", false},
                                         Row{14, "Number of pages", Kind::Number, "Pages", raises, false},
                                         Row{15, "Number of words", Kind::Number, "Words", "0", false},
                                         Row{16, "Number of characters", Kind::Number, "Characters", raises, false},
                                         Row{17, "Security", Kind::Number, "DocSecurity", "0", false},
                                         Row{18, "Category", Kind::Text, "cp:category", "", true},
                                         Row{19, "Format", Kind::Text, "PresentationFormat", "", true},
                                         Row{20, "Manager", Kind::Text, "Manager", "", true},
                                         Row{21, "Company", Kind::Text, "Company", "", true},
                                         Row{22, "Number of bytes", Kind::Number, "", raises, false},
                                         Row{23, "Number of lines", Kind::Number, "Lines", raises, false},
                                         Row{24, "Number of paragraphs", Kind::Number, "Paragraphs", "0", false},
                                         Row{25, "Number of slides", Kind::Number, "Slides", "1", false},
                                         Row{26, "Number of notes", Kind::Number, "Notes", "0", false},
                                         Row{27, "Number of hidden Slides", Kind::Number, "HiddenSlides", "0", false},
                                         Row{28, "Number of multimedia clips", Kind::Number, "MMClips", "0", false},
                                         Row{29, "Hyperlink base", Kind::Text, "HyperlinkBase", "", true},
                                         Row{30, "Number of characters (with spaces)", Kind::Number,
                                             "CharactersWithSpaces", raises, false},
                                         Row{31, "Content type", Kind::Text, "cp:contentType", "", true},
                                         Row{32, "Content status", Kind::Text, "cp:contentStatus", "", true},
                                         Row{33, "Language", Kind::Text, "dc:language", "", true},
                                         Row{34, "Document version", Kind::Text, "cp:version", "", true}),
                         [](const auto& tested) { return "Row" + std::to_string(tested.param.index); });

TEST(BuiltInProperties, AreThirtyFour)
{
    const DeckOnDisk deck(fixtures::NoProperties());
    const auto properties = deck.Open()->BuiltInDocumentProperties();

    EXPECT_EQ(properties->Count(), 34);
    EXPECT_THAT(RaisedBy([&] { properties->Item(0); }), FailsWith(FailureNumber::BadArgument, "index"));
    EXPECT_THAT(RaisedBy([&] { properties->Item(35); }), FailsWith(FailureNumber::BadArgument, "index"));
}

TEST(BuiltInPropertyPut, ChangesTheElementsCharactersAlone)
{
    const DeckOnDisk deck(
        Deck().Slide(Title(u"x")).Core("dc:title", u"About Fabrikam & more").Core("cp:version", u"1"));
    const std::string before = deck.Package().Entry(core).bytes;

    deck.Change([](auto& presentation) { Property(presentation, 1)->PutValue(String(u"About Contoso & more")); });

    std::string expected = before;
    expected.replace(expected.find("Fabrikam"), 8, "Contoso");
    EXPECT_EQ(deck.Package().Entry(core).bytes, expected);
}

TEST(BuiltInPropertyPut, OfNothingOverAnAbsentElementChangesNothing)
{
    const DeckOnDisk deck(fixtures::NoProperties());

    deck.Change([](auto& presentation) { Property(presentation, 1)->PutValue(String()); });

    EXPECT_EQ(deck.Bytes(), fixtures::NoProperties().Bytes());
}

TEST(BuiltInPropertyPut, OfNothingOverAValueLeavesTheElementEmpty)
{
    const DeckOnDisk deck(Deck().Slide(Title(u"x")).Core("dc:title", u"Fabrikam"));

    deck.Change([](auto& presentation) { Property(presentation, 1)->PutValue(String()); });

    EXPECT_EQ(CoreProperty(deck.Package(), "dc:title"), u"");
}

TEST(BuiltInPropertyPut, FillsAnEmptyElement)
{
    for (const char* empty : {"<dc:title/>", "<dc:title />", "<dc:title></dc:title>"}) {
        const DeckOnDisk deck(
            Deck().Slide(Title(u"x")).Core("dc:title", u"Fabrikam").Edit(core, "<dc:title>Fabrikam</dc:title>", empty));

        deck.Change([](auto& presentation) { Property(presentation, 1)->PutValue(String(u"Contoso")); });

        EXPECT_EQ(CoreProperty(deck.Package(), "dc:title"), u"Contoso") << empty;
        EXPECT_THAT(ValidityFaults(deck.Package()), IsEmpty());
    }
}

TEST(BuiltInPropertyPut, TakesTextsOfUpTo255Units)
{
    const DeckOnDisk deck(fixtures::NoProperties());
    const auto presentation = deck.Open();

    Property(*presentation, 1)->PutValue(String(255, u'a'));
    EXPECT_THAT(RaisedBy([&] { Property(*presentation, 1)->PutValue(String(256, u'a')); }),
                FailsWith(FailureNumber::BadArgument, "too long"));

    EXPECT_EQ(TextAt(*presentation, 1), std::string(255, 'a'));
}

TEST(BuiltInPropertyPut, OfATooLongTextIsAWarningAsWell)
{
    const DeckOnDisk deck(fixtures::NoProperties());
    const auto presentation = deck.Open();
    const WarningRecorder warnings;

    RaisedBy([&] { Property(*presentation, 1)->PutValue(String(256, u'a')); });

    EXPECT_THAT(warnings.Warnings(), ElementsAre(testing::Pair(
                                         deck.Path(),
                                         "document property \"Title\": left as it is. The new text is too long: it has "
                                         "256 characters, and PowerPoint takes at most 255")));
}

TEST(BuiltInPropertyPut, KeepsALongerTextThatIsPutBackUnchanged)
{
    const Deck longTitle = Deck().Slide(Title(u"x")).Core("dc:title", String(400, u'a'));
    const DeckOnDisk deck(longTitle);

    deck.Change([](auto& presentation) { Property(presentation, 1)->PutValue(String(400, u'a')); });

    EXPECT_EQ(deck.Bytes(), longTitle.Bytes());
}

TEST(BuiltInPropertyPut, WritesLineEndsAsEscapesAndReadsThemBack)
{
    const DeckOnDisk deck(fixtures::NoProperties());

    deck.Change([](auto& presentation) { Property(presentation, 5)->PutValue(String(u"one\r\ntwo")); });

    EXPECT_NE(deck.Package().Entry(core).bytes.find(">one_x000d__x000a_two<"), std::string::npos);
    EXPECT_EQ(TextAt(*deck.Open(), 5), "one\r\ntwo");
}

TEST(BuiltInPropertyPut, KeepsEscapesOfLineEndsAsTheyStand)
{
    const DeckOnDisk deck(
        Deck().Slide(Title(u"x")).Core("dc:description", u"Fabrikam").Edit(core, ">Fabrikam<", ">a_x000D_Fabrikam<"));

    deck.Change([](auto& presentation) { Property(presentation, 5)->PutValue(String(u"a\rContoso")); });

    EXPECT_NE(deck.Package().Entry(core).bytes.find(">a_x000D_Contoso<"), std::string::npos);
}

TEST(BuiltInPropertyPut, MakesAMissingElementUnderThePrefixesOfThePart)
{
    const DeckOnDisk deck(Deck()
                              .Slide(Title(u"x"))
                              .Core("cp:version", u"1")
                              .App("Company", u"Fabrikam")
                              .Entry(core,
                                     "<c:coreProperties xmlns:c=\"http://schemas.openxmlformats.org/package/2006/"
                                     "metadata/core-properties\"/>")
                              .Entry(app,
                                     "<ap:Properties xmlns:ap=\"http://schemas.openxmlformats.org/officeDocument/2006/"
                                     "extended-properties\"></ap:Properties>"));

    deck.Change([](auto& presentation) {
        Property(presentation, 1)->PutValue(String(u"T"));
        Property(presentation, 4)->PutValue(String(u"K"));
        Property(presentation, 21)->PutValue(String(u"C"));
    });

    EXPECT_NE(deck.Package().Entry(core).bytes.find(
                  "<dc:title xmlns:dc=\"http://purl.org/dc/elements/1.1/\">T</dc:title><c:keywords>K</c:keywords>"),
              std::string::npos);
    EXPECT_NE(deck.Package().Entry(app).bytes.find("<ap:Company>C</ap:Company></ap:Properties>"), std::string::npos);
    EXPECT_THAT(ValidityFaults(deck.Package()), IsEmpty());
}

TEST(BuiltInPropertyPut, NeverMakesASecondCoreRelationship)
{
    const DeckOnDisk deck(Deck().Slide(Title(u"x")).Core("dc:title", u"Fabrikam").Without(core));

    deck.Change([](auto& presentation) { Property(presentation, 1)->PutValue(String(u"Contoso")); });

    const auto relationships = deck.Package().Relationships("");
    EXPECT_EQ(std::ranges::count_if(relationships,
                                    [](const auto& r) { return r.type.ends_with("/metadata/core-properties"); }),
              1);
    EXPECT_EQ(CoreProperty(deck.Package(), "dc:title"), u"Contoso");
    EXPECT_THAT(ValidityFaults(deck.Package()), IsEmpty());
}

TEST(BuiltInPropertyPut, FailsWhereTwoRelationshipsHaveOneId)
{
    // To give the relationship of the missing part a target, by its id, would lead the other one away.
    const DeckOnDisk deck(Deck()
                              .Slide(Title(u"x"))
                              .Core("dc:title", u"Fabrikam")
                              .Without(core)
                              .Edit("_rels/.rels", "Id=\"rId2\"", "Id=\"rId1\""));
    const std::string before = deck.Bytes();

    const auto change = [&] {
        deck.Change([](auto& presentation) { Property(presentation, 1)->PutValue(String(u"Contoso")); });
    };

    EXPECT_THAT(RaisedBy(change), FailsWith(FailureNumber::FileCorrupt, "several relationships have the id \"rId1\""));
    EXPECT_EQ(deck.Bytes(), before);
}

TEST(BuiltInPropertyPut, OfAStrictPackageMakesAStrictPart)
{
    const DeckOnDisk deck(fixtures::NoProperties().Strict());

    deck.Change([](auto& presentation) { Property(presentation, 21)->PutValue(String(u"Contoso")); });

    EXPECT_EQ(TextAt(*deck.Open(), 21), "Contoso");
    EXPECT_EQ(deck.Package().Entry(app).bytes.find("schemas.openxmlformats.org"), std::string::npos);
    EXPECT_EQ(deck.Package().TargetOfType("", "extendedProperties"), app);
}

TEST(BuiltInProperties, OfAStrictPackageAreRead)
{
    const DeckOnDisk deck(fixtures::StrictNames());

    EXPECT_EQ(TextAt(*deck.Open(), 1), "Fabrikam");
    EXPECT_EQ(TextAt(*deck.Open(u"" + deck.Folder().Write(u"b.pptx", deck.Bytes())), 21), "Fabrikam");
}

}  // namespace
}  // namespace tessarine::test
