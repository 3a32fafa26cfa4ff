#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "batch/program/Program.h"
#include "support/Deck.h"
#include "support/StoredBag.h"
#include "support/XlsxBook.h"

namespace tessarine::test
{
namespace
{

using namespace std::string_literals;
using testing::Contains;
using testing::HasSubstr;

class PairFilesProgramTest : public testing::Test
{
protected:
    PairFilesProgramTest()
    {
        program.folder.Write(
            u"decks/a.pptx",
            Deck().Slide(Title(u"Fabrikam in 2023"), TextBox(u"fabrikam"), NotesPage(u"Ask Fabrikam")).Bytes());
    }

    String PathOf(StringView name) const { return program.folder.PathOf(name); }

    /// What the program says of a call that is not valid.
    std::string PairRefusalOf(const std::vector<std::string>& arguments, const std::string& input = {})
    {
        const Outcome outcome = program.Run(arguments, input);
        EXPECT_EQ(outcome.status, 2);
        EXPECT_EQ(outcome.output, "");
        constexpr std::string_view name = "tessarine-batch: ";
        EXPECT_TRUE(outcome.error.starts_with(name)) << outcome.error;
        return outcome.error.substr(std::min(name.size(), outcome.error.size()));
    }

    /// What a find over the deck reports for the pairs of a file.
    std::string Found(StringView name, const std::string& content)
    {
        program.folder.Write(name, content);
        const Outcome outcome = program.Run({"find", "--pairs", ToUtf8(name), "decks"});
        EXPECT_EQ(outcome.error, "");
        EXPECT_EQ(outcome.status, 0);
        return outcome.output;
    }

    Program program;
};

const std::string foundBoth = Native(
    "decks/a.pptx: 4 found\n"
    "    \"Fabrikam\"  slides 1, shapes 1, notes 1\n"
    "    \"2023\"      slides 1\n"
    "\n"
    "1 file: 1 with hits, 0 without, 0 failed; 4 occurrences found\n");

}  // namespace

TEST_F(PairFilesProgramTest, AFindTakesEveryKindOfFile)
{
    const XlsxBook workbook =
        XlsxBook().Rows("<row><c t=\"inlineStr\"><is><t>Fabrikam</t></is></c></row><row><c><v>2023</v></c></row>");

    EXPECT_EQ(Found(u"a.csv", "Fabrikam,Contoso\n2023\n"), EngineLine + foundBoth);
    EXPECT_EQ(Found(u"a.TSV", "Fabrikam\n2023\t2024\n"), EngineLine + foundBoth);
    EXPECT_EQ(Found(u"a.json", R"([["Fabrikam"], {"find": "2023"}])"), EngineLine + foundBoth);
    EXPECT_EQ(Found(u"a.xlsx", workbook.File()), EngineLine + foundBoth);
    EXPECT_EQ(Found(u"utf16.csv", "\xFF\xFE"s + "F\0a\0b\0r\0i\0k\0a\0m\0\n\0"
                                                "2\0"
                                                "0\0"
                                                "2\0"
                                                "3\0"s),
              EngineLine + foundBoth);
}

TEST_F(PairFilesProgramTest, StandardInputShowsItsKind)
{
    for (const std::string input : {"Fabrikam,x\n2023,y\n", "Fabrikam\tx\n2023\ty\n", "  [[\"Fabrikam\"],[\"2023\"]]",
                                    "find\nFabrikam\n2023\n"}) {
        const Outcome outcome = program.Run({"find", "--pairs", "-", "decks"}, input);
        EXPECT_EQ(outcome.output, EngineLine + foundBoth) << input;
        EXPECT_EQ(outcome.error, "");
    }
}

TEST_F(PairFilesProgramTest, AReplaceGoesByTheOptionsOfEachPair)
{
    program.folder.Write(
        u"pairs.csv", "find,with,case,word,in\nFabrikam,Contoso,TRUE,,\"slides,shapes\"\n202,199,,TRUE,\n2023,2024\n");

    const Outcome outcome = program.Run({"replace", "--pairs", "pairs.csv", "decks"});

    EXPECT_EQ(outcome.output,
              EngineLine + Native("decks/a.pptx: changed, 2 replaced\n"
                                  "    \"Fabrikam\" -> \"Contoso\"  slides 1\n"
                                  "    \"2023\" -> \"2024\"         slides 1\n"
                                  "\n"
                                  "1 file: 1 changed, 0 unchanged, 0 failed; 2 occurrences replaced\n"));
    EXPECT_EQ(outcome.status, 0);
}

TEST_F(PairFilesProgramTest, OptionsOfTheCallHoldForAllPairs)
{
    program.folder.Write(u"pairs.json", R"([{"find": "fabrikam", "in": "slides"}])");

    EXPECT_THAT(program.Run({"find", "--pairs", "pairs.json", "--in", "notes", "decks"}).output,
                HasSubstr("    \"fabrikam\"  notes 1\n"));
    EXPECT_THAT(program.Run({"find", "--pairs", "pairs.json", "--match-case", "decks"}).output,
                HasSubstr("0 occurrences found"));
}

TEST_F(PairFilesProgramTest, RowsWithoutATextAreLeftOutWithANote)
{
    const Outcome outcome = program.Run({"replace", "--pairs", "-", "decks"}, "2023,2024\n,x\n");

    EXPECT_EQ(outcome.error, "tessarine-batch: 1 row of the list is left out: no text to look for\n");
    EXPECT_THAT(outcome.output, HasSubstr("1 occurrence replaced"));
}

TEST_F(PairFilesProgramTest, RefusesBadFilesBeforeAnyFileIsTouched)
{
    const std::string before = ContentOf(PathOf(u"decks/a.pptx"));
    const auto refusal = [&](StringView name, const std::string& content) {
        program.folder.Write(name, content);
        return PairRefusalOf({"replace", "--pairs", ToUtf8(name), "--backup", "decks"});
    };

    EXPECT_EQ(PairRefusalOf({"replace", "--pairs", "gone.csv", "decks"}),
              "there is no file of pairs \"gone.csv\" (- reads standard input)\n");
    EXPECT_EQ(refusal(u"a.txt", "a,b\n"),
              "--pairs: \"a.txt\" is not a file of pairs: its name must end in .csv, .tsv, .json or .xlsx\n");
    EXPECT_EQ(refusal(u"a.csv", "a,b\nold\n"),
              "can't take the pairs of \"a.csv\": line 2: \"old\" has no text to put in its place\n");
    EXPECT_EQ(refusal(u"b.csv", "a,b,c\n"),
              "can't take the pairs of \"b.csv\": line 1: there are 3 fields for 2 columns (a text with a separator in "
              "it wants quotes around it)\n");
    EXPECT_EQ(refusal(u"c.json", "[[\"a\"\n,,]]"),
              "can't take the pairs of \"c.json\": line 2: this is not valid JSON\n");
    EXPECT_EQ(refusal(u"none.csv", "find,with\n"), "the list \"none.csv\" has no pair to look for\n");
    EXPECT_EQ(
        refusal(u"text.xlsx", "a,b\n"),
        "can't take the pairs of \"text.xlsx\": The file is text, not a workbook; name it .csv or .tab if it is a "
        "table\n");
    EXPECT_THAT(refusal(u"error.xlsx", XlsxBook().Cells("<c><v>1</v></c><c t=\"e\"><v>#N/A</v></c>").File()),
                HasSubstr("row 1 holds an error"));
    EXPECT_EQ(
        refusal(u"wide.xlsx", XlsxBook().Cells("<c r=\"F1\"><v>1</v></c><c r=\"W1\"><v>1</v></c>").File()),
        "can't take the pairs of \"wide.xlsx\": it has 18 columns, and a table of pairs has up to 5 (--list takes "
        "18)\n");
    EXPECT_THAT(refusal(u"half.xlsx", XlsxBook().Cells("<c t=\"str\"><v>_xD800_</v></c>").File()),
                HasSubstr("row 1: the text holds half a character"));
    EXPECT_THAT(refusal(u"endless.csv", "cat,a cat\n"), HasSubstr("never ends"));
    EXPECT_EQ(PairRefusalOf({"replace", "--pairs", "-", "decks"}, "a,b\n\"c"),
              "can't take the pairs of standard input: line 2: a quote begins a field here that no other quote ends\n");
    EXPECT_EQ(PairRefusalOf({"find", "--pairs", "-", "decks"}), "standard input has no pair to look for\n");
    EXPECT_EQ(ContentOf(PathOf(u"decks/a.pptx")), before);
    EXPECT_EQ(ContentOf(PathOf(u"decks/a..bak")), "<missing>");
}

TEST_F(PairFilesProgramTest, AJobTakesThePairsIntoItself)
{
    const Outcome outcome = program.Run({"job", "make", "--pairs", "-", "-o", "job.tsq", "decks"},
                                        "find,with,in\nFabrikam,Contoso,notes\n");

    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(outcome.status, 0);
    const auto records = ReadStoredBag(ContentOf(PathOf(u"job.tsq")));
    for (const StoredRecord& expected : std::vector<StoredRecord>{{"FindReplaceItemsCount", 1},
                                                                  {"Item0FindWhat", "Fabrikam"s},
                                                                  {"Item0ReplaceWith", "Contoso"s},
                                                                  {"Item0InNotes", true},
                                                                  {"Item0InSlides", false}})
        EXPECT_THAT(records, Contains(expected)) << expected.name;
}

TEST_F(PairFilesProgramTest, PairsAreConvertedToListsAndBack)
{
    program.folder.Write(u"pairs.csv", "find,with,case,in\n\"a\tb\",007,TRUE,links\n\"x\ny\",\"\"\n");

    const std::vector<std::pair<const char*, const char*>> steps{{"pairs.csv", "a.json"}, {"a.json", "b.xlsx"},
                                                                 {"b.xlsx", "c.tsv"},     {"c.tsv", "d.xls"},
                                                                 {"d.xls", "e.csv"},      {"e.csv", "f.json"}};
    for (const auto& [from, to] : steps) {
        const Outcome outcome = program.Run({"list", "convert", from, to});
        EXPECT_EQ(outcome.output, "saved " + std::string(to) + ": 2 pairs\n") << outcome.error;
        EXPECT_EQ(outcome.error, "");
        EXPECT_EQ(outcome.status, 0);
    }

    EXPECT_EQ(ContentOf(PathOf(u"f.json")),
              "[\n{\"find\": \"a\\tb\", \"with\": \"007\", \"case\": true, \"word\": false, \"in\": [\"links\"]},\n"
              "{\"find\": \"x\\ny\", \"with\": \"\", \"case\": false, \"word\": false, \"in\": "
              "[\"slides\",\"shapes\",\"notes\"]}\n]\n");
    EXPECT_EQ(ContentOf(PathOf(u"a.json")), ContentOf(PathOf(u"f.json")));
}

TEST_F(PairFilesProgramTest, AConversionThatLosesAPlaceSaysSo)
{
    program.folder.Write(u"nowhere.json", R"([{"find": "a", "with": "b", "in": []}])");

    EXPECT_EQ(program.Run({"list", "convert", "nowhere.json", "a.json"}).status, 0);
    const Outcome outcome = program.Run({"list", "convert", "a.json", "a.tsv"});

    EXPECT_EQ(outcome.error, "tessarine-batch: a.tsv differs from the list: pair 1 (\"a\") reads back otherwise\n");
    EXPECT_EQ(outcome.status, 1);
}

}  // namespace tessarine::test
