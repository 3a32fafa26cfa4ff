#include <algorithm>

#include <gmock/gmock.h>

#include "FindAndReplaceProgramTest.h"

namespace tessarine::test
{
namespace
{

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

/// A deck with "Fabrikam" once in each place that can hold it.
Deck DeckWithAllPlaces()
{
    return Deck()
        .Master(SlideMaster(u"Office", Title(u"Fabrikam master"), Layout("obj"),
                            Layout("title", CenteredTitle(u"Fabrikam title"))))
        .NotesMaster(TextBox(u"Fabrikam page"))
        .HandoutMaster(TextBox(u"Fabrikam handout"))
        .Slide(Title(u"The Fabrikam plan"))
        .Slide(Title(u"Contacts"), TextBox(u"one", u"ask FABRIKAM about it").Named(u"Text 1"),
               TextBox(TextRun(u"site").Click(LinkTo(u"https://example.org/"))),
               TextBox(TextRun(u"here").Click(LinkTo(u"https://www.fabrikam.com/a"))), Footer(u"(c) Fabrikam"),
               LinkedOle(u"file:///C:\\Fabrikam.xlsx!A1"), NotesPage(u"Mention Fabrikam"))
        .Core("dc:title", u"On Fabrikam")
        .Custom(u"Client", "lpwstr", u"Fabrikam");
}

struct PlacedHits {
    const char* location;  ///< As `--in` takes it.
    std::string lines;     ///< Of the text report; "<" and ">" stand around each hit.
    std::string json;      ///< Between the brackets of "hits"; "<>" stands where a replace tells what the hit becomes.
};

void PrintTo(const PlacedHits& row, std::ostream* out)
{
    *out << row.location;
}

std::string WithMarks(std::string text, const std::string& open, const std::string& close)
{
    for (std::size_t at = 0; (at = text.find_first_of("<>", at)) != std::string::npos;) {
        const std::string mark = text[at] == '<' ? open : close;
        text.replace(at, 1, mark);
        at += mark.size();
    }
    return text;
}

class HitsInPlaces : public testing::TestWithParam<PlacedHits>
{
protected:
    HitsInPlaces() { program.folder.Write(u"a.pptx", DeckWithAllPlaces().Bytes()); }

    Outcome Run(const std::vector<std::string>& command, const std::vector<std::string>& options = {})
    {
        std::vector<std::string> arguments = command;
        arguments.insert(arguments.end(), {"--in", GetParam().location, "--show", "a.pptx"});
        arguments.insert(arguments.end(), options.begin(), options.end());
        return program.Run(arguments);
    }

    Program program;
};

TEST_P(HitsInPlaces, AreShownByAFind)
{
    const Outcome text = Run({"find", "--find", "fabrikam"});
    const Outcome json = Run({"find", "--find", "fabrikam"}, {"--format", "json"});

    EXPECT_THAT(text.output, HasSubstr(WithMarks(GetParam().lines, "[", "]")));
    EXPECT_THAT(json.output, HasSubstr("\"hits\":[" + WithMarks(GetParam().json, "", "") + "],\"warnings\":[]}"));
}

TEST_P(HitsInPlaces, AreShownByAReplace)
{
    const Outcome json = Run({"replace", "--find", "fabrikam", "--with", "Contoso"}, {"--format", "json"});
    program.folder.Write(u"a.pptx", DeckWithAllPlaces().Bytes());
    const Outcome text = Run({"replace", "--find", "fabrikam", "--with", "Contoso"});

    EXPECT_THAT(text.output, HasSubstr(WithMarks(GetParam().lines, "[", " -> Contoso]")));
    EXPECT_THAT(json.output, HasSubstr("\"hits\":[" + WithMarks(GetParam().json, ",\"becomes\":\"Contoso", "\"") +
                                       "],\"warnings\":[]}"));
}

INSTANTIATE_TEST_SUITE_P(
    AllLocations, HitsInPlaces,
    testing::Values(
        PlacedHits{"slides",
                   "    slide 1 \"The Fabrikam plan\", shape 1 \"Title 1\", paragraph 1: The <Fabrikam> plan\n"
                   "    slide 2 \"Contacts\", shape 5 \"Footer Placeholder 5\", paragraph 1: (c) <Fabrikam>\n",
                   R"({"pair":1,"location":"slides","slide":1,"slideTitle":"The Fabrikam plan","shape":1,)"
                   R"("shapeName":"Title 1","paragraph":1,"position":5,"length":8,"before":"The ",)"
                   R"("text":"Fabrikam","after":" plan"<>},)"
                   R"({"pair":1,"location":"slides","slide":2,"slideTitle":"Contacts","shape":5,)"
                   R"("shapeName":"Footer Placeholder 5","paragraph":1,"position":5,"length":8,"before":"(c) ",)"
                   R"("text":"Fabrikam","after":""<>})"},
        PlacedHits{"hyperlinks", "    slide 2 \"Contacts\", hyperlink 2: https://www.<fabrikam>.com/a\n",
                   R"({"pair":1,"location":"hyperlinks","slide":2,"slideTitle":"Contacts","hyperlink":2,)"
                   R"("position":13,"length":8,"before":"https://www.","text":"fabrikam","after":".com/a"<>})"},
        PlacedHits{"shapes", "    slide 2 \"Contacts\", shape 2 \"Text 1 2\", paragraph 2: ask <FABRIKAM> about it\n",
                   R"({"pair":1,"location":"shapes","slide":2,"slideTitle":"Contacts","shape":2,)"
                   R"("shapeName":"Text 1 2","paragraph":2,"position":5,"length":8,"before":"ask ",)"
                   R"("text":"FABRIKAM","after":" about it"<>})"},
        PlacedHits{"header", "", ""},
        PlacedHits{"footer", "    slide 2 \"Contacts\", footer (not counted): (c) <Fabrikam>\n",
                   R"({"pair":1,"location":"footer","slide":2,"slideTitle":"Contacts","headerFooter":"footer",)"
                   R"("position":5,"length":8,"before":"(c) ","text":"Fabrikam","after":""<>,"counted":false})"},
        PlacedHits{"builtin-properties", "    property \"Title\": On <Fabrikam>\n",
                   R"({"pair":1,"location":"builtin-properties","property":"Title",)"
                   R"("position":4,"length":8,"before":"On ","text":"Fabrikam","after":""<>})"},
        PlacedHits{"custom-properties", "    custom property \"Client\": <Fabrikam>\n",
                   R"({"pair":1,"location":"custom-properties","property":"Client",)"
                   R"("position":1,"length":8,"before":"","text":"Fabrikam","after":""<>})"},
        PlacedHits{
            "notes",
            "    notes of slide 2 \"Contacts\", shape 2 \"Text Placeholder 2\", paragraph 1: Mention <Fabrikam>\n",
            R"({"pair":1,"location":"notes","slide":2,"slideTitle":"Contacts","shape":2,)"
            R"("shapeName":"Text Placeholder 2","paragraph":1,"position":9,"length":8,)"
            R"("before":"Mention ","text":"Fabrikam","after":""<>})"},
        PlacedHits{"links", "    slide 2 \"Contacts\", shape 6 \"Object 7\", source: C:\\<Fabrikam>.xlsx!A1\n",
                   R"({"pair":1,"location":"links","slide":2,"slideTitle":"Contacts","shape":6,)"
                   R"("shapeName":"Object 7","position":4,"length":8,"before":"C:\\","text":"Fabrikam",)"
                   R"("after":".xlsx!A1"<>})"},
        PlacedHits{"master-per-slide",
                   "    slide master \"Office\", shape 1 \"Title 1\", paragraph 1: <Fabrikam> master\n",
                   R"({"pair":1,"location":"master-per-slide","design":"Office","shape":1,"shapeName":"Title 1",)"
                   R"("paragraph":1,"position":1,"length":8,"before":"","text":"Fabrikam","after":" master"<>})"},
        PlacedHits{
            "master-per-presentation",
            "    slide master \"Office\", shape 1 \"Title 1\", paragraph 1: <Fabrikam> master\n",
            R"({"pair":1,"location":"master-per-presentation","design":"Office","shape":1,"shapeName":"Title 1",)"
            R"("paragraph":1,"position":1,"length":8,"before":"","text":"Fabrikam","after":" master"<>})"},
        PlacedHits{"title-master", "    title master \"Office\", shape 1 \"Title 1\", paragraph 1: <Fabrikam> title\n",
                   R"({"pair":1,"location":"title-master","design":"Office","shape":1,"shapeName":"Title 1",)"
                   R"("paragraph":1,"position":1,"length":8,"before":"","text":"Fabrikam","after":" title"<>})"},
        PlacedHits{"handout-master", "    handout master, shape 1 \"TextBox 1\", paragraph 1: <Fabrikam> handout\n",
                   R"({"pair":1,"location":"handout-master","shape":1,"shapeName":"TextBox 1","paragraph":1,)"
                   R"("position":1,"length":8,"before":"","text":"Fabrikam","after":" handout"<>})"},
        PlacedHits{"notes-master", "    notes master, shape 1 \"TextBox 1\", paragraph 1: <Fabrikam> page\n",
                   R"({"pair":1,"location":"notes-master","shape":1,"shapeName":"TextBox 1","paragraph":1,)"
                   R"("position":1,"length":8,"before":"","text":"Fabrikam","after":" page"<>})"}),
    [](const auto& row) {
        std::string name = row.param.location;
        std::erase(name, '-');
        return name;
    });

class HitsProgramTest : public testing::Test
{
protected:
    void Write(StringView name, const Deck& deck) { program.folder.Write(name, deck.Bytes()); }

    /// What a find shows of a.pptx, without the line about the engine and the summary of a report for people.
    std::string Shown(const std::string& find, const std::vector<std::string>& options = {})
    {
        std::vector<std::string> arguments{"find", "--find", find, "--show", "a.pptx"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const std::string output = program.Run(arguments).output;
        const std::size_t end = std::min(output.find("\n\n"), output.size() - 1) + 1;
        return output.substr(EngineLine.size(), end - EngineLine.size());
    }

    Program program;
};

TEST_F(HitsProgramTest, TellHeaderAndFooterOfTheNotesMaster)
{
    Write(u"a.pptx", Deck()
                         .NotesMaster(Header(u"Fabrikam head"), Footer(u"Fabrikam foot"))
                         .HandoutMaster(TextBox(u"x"))
                         .Slide(Title(u"x")));

    EXPECT_EQ(Shown("Fabrikam", {"--in", "handout-master"}),
              "a.pptx: 2 found\n"
              "    \"Fabrikam\"  handout-master 2\n"
              "    notes master, header: [Fabrikam] head\n"
              "    notes master, footer: [Fabrikam] foot\n");
}

TEST_F(HitsProgramTest, AreNotAskedForWithoutShow)
{
    Write(u"a.pptx", DeckWithAllPlaces());

    const Outcome text = program.Run({"find", "--find", "Fabrikam", "--in", "all", "a.pptx"});
    const Outcome json = program.Run({"find", "--find", "Fabrikam", "--in", "all", "--format", "json", "a.pptx"});

    EXPECT_THAT(text.output, Not(HasSubstr("paragraph")));
    EXPECT_THAT(json.output, Not(HasSubstr("\"hits")));
}

TEST_F(HitsProgramTest, ComeInTheOrderOfThePairs)
{
    Write(u"a.pptx", Deck().Slide(TextBox(u"one two one")));

    const Outcome outcome = program.Run({"replace", "--find", "two", "--with", "one", "--find", "one", "--with", "3",
                                         "--in", "shapes", "--show", "a.pptx"});

    EXPECT_EQ(outcome.output, EngineLine +
                                  "a.pptx: changed, 4 replaced\n"
                                  "    \"two\" -> \"one\"  shapes 1\n"
                                  "    \"one\" -> \"3\"    shapes 3\n"
                                  "    slide 1, shape 1 \"TextBox 1\", paragraph 1: one [two -> one] one\n"
                                  "    slide 1, shape 1 \"TextBox 1\", paragraph 1: [one -> 3] one one\n"
                                  "    slide 1, shape 1 \"TextBox 1\", paragraph 1: 3 [one -> 3] one\n"
                                  "    slide 1, shape 1 \"TextBox 1\", paragraph 1: 3 3 [one -> 3]\n"
                                  "\n"
                                  "1 file: 1 changed, 0 unchanged, 0 failed; 4 occurrences replaced\n");
}

TEST_F(HitsProgramTest, HaveAsMuchContextAsIsAskedFor)
{
    const String blanks(59, u' ');
    Write(u"a.pptx", Deck().Slide(TextBox(u"ab" + blanks + u"cat" + blanks + u"yz")));

    EXPECT_THAT(Shown("cat"), EndsWith(": ...b" + std::string(59, ' ') + "[cat]" + std::string(59, ' ') + "y...\n"));
    EXPECT_THAT(Shown("cat", {"--context", "61"}),
                EndsWith(": ab" + std::string(59, ' ') + "[cat]" + std::string(59, ' ') + "yz\n"));
    EXPECT_THAT(Shown("cat", {"--context", "2"}), EndsWith(": ...  [cat]  ...\n"));
    EXPECT_THAT(Shown("cat", {"--context", "0"}), EndsWith(": ...[cat]...\n"));
}

TEST_F(HitsProgramTest, NeverHoldHalfACharacter)
{
    Write(u"a.pptx", Deck().Slide(TextBox(u"😀😀cat😀😀")));

    EXPECT_THAT(Shown("cat", {"--context", "1"}), EndsWith(": ...[cat]...\n"));
    EXPECT_THAT(Shown("cat", {"--context", "2"}), EndsWith(": ...😀[cat]😀...\n"));
    EXPECT_THAT(Shown("cat", {"--context", "3"}), EndsWith(": ...😀[cat]😀...\n"));
    EXPECT_THAT(Shown("cat", {"--context", "4"}), EndsWith(": 😀😀[cat]😀😀\n"));
    EXPECT_THAT(Shown("cat", {"--context", "3", "--format", "json"}),
                HasSubstr(R"("position":5,"length":3,"before":"😀","text":"cat","after":"😀","cutBefore":true,)"
                          R"("cutAfter":true})"));
}

TEST_F(HitsProgramTest, AreHarmlessOnATerminalAndWholeInJson)
{
    Write(u"a.pptx", Deck().Slide(Title(u"עברית\v\u202Ecat\tx"), TextBox(u"cat\vdog")));

    EXPECT_EQ(Shown("cat"),
              "a.pptx: 2 found\n"
              "    \"cat\"  slides 1, shapes 1\n"
              "    slide 1 \"עברית \\u202Ecat x\", shape 1 \"Title 1\", paragraph 1: עברית \\u202E[cat] x\n"
              "    slide 1 \"עברית \\u202Ecat x\", shape 2 \"TextBox 2\", paragraph 1: [cat] dog\n");
    EXPECT_THAT(Shown("cat", {"--format", "json"}),
                HasSubstr("\"before\":\"עברית\\u000b\u202E\",\"text\":\"cat\",\"after\":\"\\tx\"}"));
}

TEST_F(HitsProgramTest, AreBoundedForEachFile)
{
    Write(u"a.pptx", Deck().Slide(TextBox(u"cat cat cat")));
    Write(u"b.pptx", Deck().Slide(TextBox(u"cat cat")));
    const std::string line = "    slide 1, shape 1 \"TextBox 1\", paragraph 1: ";

    const Outcome text = program.Run(
        {"find", "--find", "cat", "--in", "shapes", "--show", "--context", "0", "--max-hits", "2", "a.pptx", "b.pptx"});
    const Outcome json = program.Run(
        {"find", "--find", "cat", "--in", "shapes", "--show", "--max-hits=2", "--format", "json", "a.pptx", "b.pptx"});

    EXPECT_EQ(text.output, EngineLine + "a.pptx: 3 found\n    \"cat\"  shapes 3\n" + line + "[cat]...\n" + line +
                               "...[cat]...\n    and 1 more\n" + "b.pptx: 2 found\n    \"cat\"  shapes 2\n" + line +
                               "[cat]...\n" + line +
                               "...[cat]\n\n2 files: 2 with hits, 0 without, 0 failed; 5 occurrences found\n");
    EXPECT_THAT(json.output, HasSubstr("\"after\":\" cat\"}],\"hitsLeftOut\":1,\"warnings\":[]}\n"));
    EXPECT_THAT(json.output, HasSubstr("\"after\":\"\"}],\"warnings\":[]}\n"));
}

TEST_F(HitsProgramTest, AreAThousandForAFileUnlessAllAreAskedFor)
{
    String text;
    for (int count = 0; count < 1100; ++count)
        text += u"cat ";
    Write(u"a.pptx", Deck().Slide(TextBox(text)));
    const auto lines = [](const std::string& shown) { return std::count(shown.begin(), shown.end(), '\n'); };

    const std::string bounded = Shown("cat");
    const std::string all = Shown("cat", {"--max-hits", "0"});

    EXPECT_EQ(lines(bounded), 2 + 1000 + 1);
    EXPECT_THAT(bounded, EndsWith("\n    and 100 more\n"));
    EXPECT_EQ(lines(all), 2 + 1100);
    EXPECT_THAT(all, Not(HasSubstr("more")));
}

TEST_F(HitsProgramTest, AreOneForEachTextWithoutACount)
{
    Write(u"a.pptx", Deck().Slide(TextBox(u"cat cat", u"cat"), TextBox(u"a cat")));

    EXPECT_EQ(Shown("cat", {"--no-count"}),
              "a.pptx: 2 found\n"
              "    \"cat\"  shapes 2\n"
              "    slide 1, shape 1 \"TextBox 1\", paragraph 1: [cat] cat\n"
              "    slide 1, shape 2 \"TextBox 2\", paragraph 1: a [cat]\n");
}

TEST_F(HitsProgramTest, AreThoseOfFilesThatDidNotFail)
{
    // The second slide fails after the hit in the first one was found.
    Write(u"a.pptx", Deck().Slide(TextBox(u"cat")).Slide(TextBox(u"cat")).Entry("ppt/slides/slide2.xml", "<p:sld>cat"));
    Write(u"b.pptx", Deck().Slide(TextBox(u"the cat")));

    const Outcome json = program.Run({"find", "--find", "cat", "--show", "--format", "json", "a.pptx", "b.pptx"});
    const Outcome text = program.Run({"find", "--find", "cat", "--show", "a.pptx"});

    EXPECT_THAT(json.output, HasSubstr("\"items\":[],\"hits\":[],\"warnings\":[]}\n{\"file\":\"b.pptx\""));
    EXPECT_THAT(json.output, HasSubstr("\"hits\":[{\"pair\":1,\"location\":\"shapes\",\"slide\":1,\"shape\":1,"
                                       "\"shapeName\":\"TextBox 1\",\"paragraph\":1,\"position\":5,"));
    EXPECT_EQ(json.status, 1);
    EXPECT_THAT(text.output, HasSubstr("a.pptx: failed: "));
    EXPECT_THAT(text.output, Not(HasSubstr("[cat]")));
}

TEST_F(HitsProgramTest, SayWhatStaysAsItIs)
{
    Write(u"a.pptx", Deck().Slide(TextBox(u"x")));

    const Outcome outcome = program.Run({"replace", "--find", "1", "--with", "7", "--in", "builtin-properties",
                                         "--show", "--format", "json", "a.pptx"});

    // The number of slides can only be read.
    EXPECT_THAT(outcome.output, HasSubstr(R"("property":"Number of slides","position":1,"length":1,"before":"",)"
                                          R"("text":"1","after":"","becomes":null})"));
    EXPECT_THAT(
        program.Run({"replace", "--find", "1", "--with", "7", "--in", "builtin-properties", "--show", "a.pptx"}).output,
        HasSubstr("    property \"Number of slides\" (stays as it is): [1]\n"));
}

TEST_F(HitsProgramTest, AreShownForASavedJob)
{
    Write(u"decks/a.pptx", Deck().Slide(TextBox(u"the cat")));
    program.Run({"job", "make", "--find", "cat", "--with", "dog", "-o", "j.tsq", "decks"});

    EXPECT_THAT(program.Run({"run", "j.tsq", "--show", "decks"}).output,
                HasSubstr("    slide 1, shape 1 \"TextBox 1\", paragraph 1: the [cat]\n"));
    EXPECT_THAT(program.Run({"run", "j.tsq", "--replace", "--show", "--format", "json", "decks"}).output,
                HasSubstr(R"("before":"the ","text":"cat","after":"","becomes":"dog"})"));
}

}  // namespace
}  // namespace tessarine::test
