#include "TextBoxOnDisk.h"

namespace tessarine::test
{
namespace
{

const std::string slidePart = "ppt/slides/slide1.xml";

std::shared_ptr<powerpoint::HeaderFooter> FooterOf(powerpoint::Presentation& presentation, std::size_t slide = 1)
{
    return SlideOf(presentation, slide)->HeadersFooters()->Footer();
}

std::string FooterXml(const std::string& paragraphs)
{
    return R"(<p:sp><p:nvSpPr><p:cNvPr id="2" name="Footer"/><p:cNvSpPr/><p:nvPr><p:ph type="ftr" sz="quarter" )"
           R"(idx="11"/></p:nvPr></p:nvSpPr><p:spPr/><p:txBody><a:bodyPr wrap="none"/><a:lstStyle/>)" +
           paragraphs + "</p:txBody></p:sp>";
}

/// The footer's paragraphs after its text was put.
std::string FooterAfterPutting(const std::string& paragraphs, const String& text)
{
    const Deck before = Deck().Slide(RawShape(FooterXml(paragraphs)));
    const DeckOnDisk deck(before);
    deck.Change([&](powerpoint::Presentation& presentation) { FooterOf(presentation)->PutText(text); });

    const std::string slide = deck.Package().Entry(slidePart).bytes;
    const std::string start = FooterXml("").substr(0, FooterXml("").find("</p:txBody>"));
    const std::size_t begin = slide.find(start) + start.size();
    const std::string after = slide.substr(begin, slide.find("</p:txBody>") - begin);
    if (slide != Deck().Slide(RawShape(FooterXml(after))).EntryBytes(slidePart))
        return "<bytes beside the paragraphs changed>";
    return after;
}

constexpr auto noSuchItem = "The page shows no such header or footer";

TEST(FooterOfASlide, IsTheTextOfItsFooterPlaceholder)
{
    const DeckOnDisk deck(Deck()
                              .Slide(Title(u"a"), Footer(Paragraph(TextRun(u"Fab").Bold(), u"rikam"), Paragraph(u"b")))
                              .Slide(Placeholder("ftr", 77, u"other index")));
    const auto presentation = deck.Open();

    EXPECT_EQ(FooterOf(*presentation, 1)->Text(), u"Fabrikam\rb");
    EXPECT_EQ(FooterOf(*presentation, 2)->Text(), u"other index");
}

TEST(FooterOfASlide, IsThatOfTheFirstOfSeveral)
{
    const DeckOnDisk deck(Deck().Slide(Footer(u"first"), Footer(u"second")));

    EXPECT_EQ(FooterOf(*deck.Open())->Text(), u"first");
}

TEST(FooterOfASlide, IsEmptyWhenThePlaceholderIs)
{
    const DeckOnDisk deck(
        Deck().Slide(Footer(Paragraph())).Slide(TextShape(u"x", {.textBody = false}, {}).InPlaceholder("ftr", 11)));
    const auto presentation = deck.Open();

    EXPECT_EQ(FooterOf(*presentation, 1)->Text(), u"");
    EXPECT_EQ(FooterOf(*presentation, 2)->Text(), u"");
}

TEST(FooterOfASlide, WithoutAPlaceholderIsThereButHasNoText)
{
    const DeckOnDisk deck(Deck()
                              .Master(SlideMaster(u"Theme", Footer(u"of the master")))
                              .Slide(Title(u"a"), TextBox(u"ftr"), Group(Footer(u"in a group"))));
    const auto presentation = deck.Open();
    const auto footer = FooterOf(*presentation);

    EXPECT_THAT(RaisedBy([&] { footer->Text(); }), FailsWith(FailureNumber::InvalidRequest, noSuchItem));
    EXPECT_THAT(RaisedBy([&] { footer->PutText(u"x"); }), FailsWith(FailureNumber::InvalidRequest, noSuchItem));
    EXPECT_THAT(RaisedBy([&] { footer->PutText(u""); }), FailsWith(FailureNumber::InvalidRequest, noSuchItem));
}

TEST(HeaderOfASlide, FailsAlways)
{
    const DeckOnDisk deck(Deck().Slide(Header(u"a"), Footer(u"b")));
    const auto presentation = deck.Open();
    const auto header = SlideOf(*presentation, 1)->HeadersFooters()->Header();

    EXPECT_THAT(RaisedBy([&] { header->Text(); }), FailsWith(FailureNumber::InvalidRequest, noSuchItem));
    EXPECT_THAT(RaisedBy([&] { header->PutText(u"x"); }), FailsWith(FailureNumber::InvalidRequest, noSuchItem));
}

TEST(PutFooter, OfTheSameTextChangesNothing)
{
    const DeckOnDisk deck(Deck().Slide(RawShape(FooterXml(P(R("Fab", "b=\"1\"") + R("&#114;ikam")) + P(R("b"))))));
    const std::string before = deck.Bytes();

    deck.Change([](powerpoint::Presentation& presentation) { FooterOf(presentation)->PutText(u"Fabrikam\rb"); });

    EXPECT_EQ(deck.Bytes(), before);
}

TEST(PutFooter, KeepsPropertiesOfTheFirstParagraphAndRun)
{
    EXPECT_EQ(FooterAfterPutting(P("<a:pPr algn=\"ctr\"/>" + R("one", "b=\"1\"")) + P("<a:pPr lvl=\"1\"/>" + R("two")),
                                 u"xyz"),
              P("<a:pPr algn=\"ctr\"/>" + R("xyz", "b=\"1\"")));
}

TEST(PutFooter, MakesParagraphsAndLineBreaks)
{
    EXPECT_EQ(FooterAfterPutting(P("<a:pPr algn=\"ctr\"/>" + R("one", "b=\"1\"")), u"x\r\ny\vz"),
              P("<a:pPr algn=\"ctr\"/>" + R("x", "b=\"1\"")) +
                  P("<a:pPr algn=\"ctr\"/>" + R("y", "b=\"1\"") + "<a:br><a:rPr b=\"1\"/></a:br>" + R("z", "b=\"1\"")));
}

TEST(PutFooter, KeepsTheFormatOfTheFirstRunAlone)
{
    EXPECT_EQ(FooterAfterPutting(P(R("Fab", "b=\"1\"") + R("rikam 2024")), u"Fabrikam 2025"),
              P(R("Fabrikam 2025", "b=\"1\"")));
    EXPECT_EQ(FooterAfterPutting(P("<a:pPr algn=\"ctr\"/>" + R("one", "b=\"1\"")) + P(R("two", "i=\"1\"")), u"one\rx"),
              P("<a:pPr algn=\"ctr\"/>" + R("one", "b=\"1\"")) + P("<a:pPr algn=\"ctr\"/>" + R("x", "b=\"1\"")));
}

TEST(PutFooter, NeverSplitsASurrogatePair)
{
    EXPECT_EQ(FooterAfterPutting(P(R("a\U0001F600b")), u"a\U0001F601b"), P(R("a\U0001F601b")));
    EXPECT_EQ(FooterAfterPutting(P(R("a\U0001F600b")), u"a\U0001FA00b"), P(R("a\U0001FA00b")));
}

TEST(PutFooter, OfNothingKeepsThePlaceholderAndItsHeight)
{
    EXPECT_EQ(FooterAfterPutting(P(R("one", "sz=\"900\"")), u""), P("<a:endParaRPr sz=\"900\"/>"));
}

TEST(PutFooter, FillsAnEmptyPlaceholder)
{
    EXPECT_EQ(FooterAfterPutting("<a:p/>", u"x"), P(R("x")));
    EXPECT_EQ(FooterAfterPutting(P("<a:endParaRPr sz=\"900\"/>"), u"x"),
              P(R("x", "sz=\"900\"") + "<a:endParaRPr sz=\"900\"/>"));
    EXPECT_EQ(FooterAfterPutting(P("<a:r><a:rPr sz=\"900\"/><a:t></a:t></a:r>"), u"x"),
              P("<a:r><a:rPr sz=\"900\"/><a:t></a:t></a:r>" + R("x", "sz=\"900\"")));
}

TEST(PutFooter, IntoAPlaceholderWithoutTextBodyFails)
{
    const DeckOnDisk deck(Deck().Slide(TextShape(u"x", {.textBody = false}, {}).InPlaceholder("ftr", 11)));
    const auto presentation = deck.Open();
    const auto footer = FooterOf(*presentation);

    EXPECT_THAT(RaisedBy([&] { footer->PutText(u"x"); }), FailsWith(FailureNumber::InvalidRequest, noSuchItem));
    EXPECT_EQ(RaisedBy([&] { footer->PutText(u""); }).number, 0);
}

TEST(PutFooter, TurnsAFieldIntoTextOnlyWhenItChanges)
{
    const std::string field = "<a:fld id=\"{1}\" type=\"slidenum\"><a:rPr b=\"1\"/><a:t>7</a:t></a:fld>";

    EXPECT_EQ(FooterAfterPutting(P(R("Page ") + field), u"Page 7"), P(R("Page ") + field));
    EXPECT_EQ(FooterAfterPutting(P(R("Page ") + field), u"Seite 7"), P(R("Seite 7")));
    EXPECT_EQ(FooterAfterPutting(P(field), u"8"), P(R("8", "b=\"1\"")));
}

TEST(PutFooter, IsWhatTheSearchOfTheSlideFindsThen)
{
    const DeckOnDisk deck(Deck().Slide(Footer(u"one")));
    const auto presentation = deck.Open();

    FooterOf(*presentation)->PutText(u"two");

    const auto text = ShapeOf(*presentation, 1, 1)->TextFrame()->TextRange();
    EXPECT_NE(text->Find(u"two", 0, 1, 0), nullptr);
    EXPECT_EQ(text->Find(u"one", 0, 1, 0), nullptr);
}

TEST(SlideMasterTexts, HaveAFooterAndNoHeader)
{
    const DeckOnDisk deck(Deck().Master(SlideMaster(u"Theme", Header(u"head"), Footer(u"foot"))));
    const auto presentation = deck.Open();
    const auto texts = All(presentation->Designs()).at(0)->SlideMaster()->HeadersFooters();

    EXPECT_EQ(texts->Footer()->Text(), u"foot");
    EXPECT_THAT(RaisedBy([&] { texts->Header()->Text(); }), FailsWith(FailureNumber::InvalidRequest, noSuchItem));
}

struct PageMasterCase {
    const char* name;
    std::shared_ptr<powerpoint::Master> (powerpoint::Presentation::*master)();
    const char* part;
    Deck (*make)(std::vector<Shape>);
};

void PrintTo(const PageMasterCase& tested, std::ostream* out)
{
    *out << tested.name;
}

class PageMasterTexts : public testing::TestWithParam<PageMasterCase>
{
protected:
    std::shared_ptr<powerpoint::HeadersFooters> TextsIn(powerpoint::Presentation& presentation) const
    {
        return (presentation.*GetParam().master)()->HeadersFooters();
    }
};

TEST_P(PageMasterTexts, AreThoseOfItsPlaceholders)
{
    const DeckOnDisk deck(GetParam().make({Header(u"head"), Footer(u"foot")}));
    const auto presentation = deck.Open();

    EXPECT_EQ(TextsIn(*presentation)->Header()->Text(), u"head");
    EXPECT_EQ(TextsIn(*presentation)->Footer()->Text(), u"foot");
}

TEST(NotesMasterTexts, AreEmptyAndTakeNothingWherePlaceholdersWereDeleted)
{
    const DeckOnDisk deck(Deck().NotesMaster(TextBox(u"x")));
    const std::string before = deck.Bytes();

    deck.Change([&](powerpoint::Presentation& presentation) {
        const auto texts = presentation.NotesMaster()->HeadersFooters();
        for (const auto& item : {texts->Header(), texts->Footer()}) {
            EXPECT_EQ(item->Text(), u"");
            EXPECT_EQ(RaisedBy([&] { item->PutText(u""); }).number, 0);
            EXPECT_THAT(RaisedBy([&] { item->PutText(u"x"); }), FailsWith(FailureNumber::InvalidRequest, noSuchItem));
        }
    });

    EXPECT_EQ(deck.Bytes(), before);
}

TEST(HandoutMasterTexts, FailWherePlaceholdersWereDeleted)
{
    const DeckOnDisk deck(Deck().HandoutMaster(TextBox(u"x")));
    const auto presentation = deck.Open();
    const auto texts = presentation->HandoutMaster()->HeadersFooters();

    for (const auto& item : {texts->Header(), texts->Footer()}) {
        EXPECT_THAT(RaisedBy([&] { item->Text(); }), FailsWith(FailureNumber::InvalidRequest, noSuchItem));
        EXPECT_THAT(RaisedBy([&] { item->PutText(u"x"); }), FailsWith(FailureNumber::InvalidRequest, noSuchItem));
    }
}

TEST_P(PageMasterTexts, ArePutIntoTheMasterAlone)
{
    const Deck before = GetParam()
                            .make({Header(u"head"), Footer(u"foot")})
                            .Slide(Title(u"a"), NotesPage(Header(u"head"), Footer(u"foot")));
    const DeckOnDisk deck(before);

    deck.Change([&](powerpoint::Presentation& presentation) {
        TextsIn(presentation)->Header()->PutText(u"x");
        TextsIn(presentation)->Footer()->PutText(u"y");
    });

    const PackageReader after = deck.Package();
    EXPECT_THAT(EntriesThatDiffer(before, after), testing::ElementsAre(GetParam().part));
    EXPECT_THAT(TextsOfPart(after, GetParam().part), testing::ElementsAre(u"x", u"y"));
}

TEST_P(PageMasterTexts, WithoutTheMasterAreEmptyAndTakeNothing)
{
    const DeckOnDisk deck(Deck().Slide(Title(u"a")));
    const std::string before = deck.Bytes();

    deck.Change([&](powerpoint::Presentation& presentation) {
        const auto master = (presentation.*GetParam().master)();
        ASSERT_NE(master, nullptr);
        EXPECT_TRUE(All(master->Shapes()).empty());
        for (const auto& item : {master->HeadersFooters()->Header(), master->HeadersFooters()->Footer()}) {
            EXPECT_EQ(item->Text(), u"");
            EXPECT_EQ(RaisedBy([&] { item->PutText(u""); }).number, 0);
            EXPECT_THAT(RaisedBy([&] { item->PutText(u"x"); }), FailsWith(FailureNumber::InvalidRequest, noSuchItem));
        }
    });

    EXPECT_EQ(deck.Bytes(), before) << "nothing is added to the file";
}

INSTANTIATE_TEST_SUITE_P(Masters, PageMasterTexts,
                         testing::Values(PageMasterCase{"Notes", &powerpoint::Presentation::NotesMaster,
                                                        "ppt/notesMasters/notesMaster1.xml",
                                                        [](std::vector<Shape> shapes) {
                                                            return shapes.size() == 1
                                                                       ? Deck().NotesMaster(shapes[0])
                                                                       : Deck().NotesMaster(shapes[0], shapes[1]);
                                                        }},
                                         PageMasterCase{"Handout", &powerpoint::Presentation::HandoutMaster,
                                                        "ppt/handoutMasters/handoutMaster1.xml",
                                                        [](std::vector<Shape> shapes) {
                                                            return shapes.size() == 1
                                                                       ? Deck().HandoutMaster(shapes[0])
                                                                       : Deck().HandoutMaster(shapes[0], shapes[1]);
                                                        }}),
                         [](const auto& tested) { return std::string(tested.param.name); });

TEST(HeaderFooterFlags, DoNotMatterForTheText)
{
    const std::string part = "ppt/slideMasters/slideMaster1.xml";
    const DeckOnDisk deck(Deck()
                              .Master(SlideMaster(u"Theme", Footer(u"foot")))
                              .Edit(part, "<p:sldLayoutIdLst>", "<p:hf ftr=\"0\"/><p:sldLayoutIdLst>"));

    EXPECT_EQ(All(deck.Open()->Designs()).at(0)->SlideMaster()->HeadersFooters()->Footer()->Text(), u"foot");
}

}  // namespace
}  // namespace tessarine::test
