#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "batch/program/Program.h"
#include "support/Deck.h"
#include "support/StoredBag.h"

namespace tessarine::test
{
namespace
{

using testing::Contains;
using testing::HasSubstr;

const std::string headers =
    "Find What,Replace With,InBuiltinProperty,InCustomProperties,InFooter,InHandoutMaster,InHeader,"
    "InHyperlinkAddresses,InLinks,InNotes,InNotesMaster,InShapesAndTextboxes,InSlideMasterPerPresentation,"
    "InSlideMasterPerSlide,InSlides,InTitleMaster,MatchCase,MatchWholeWord\r\n";

/// A row with the given columns TRUE.
std::string Row(const std::string& find, const std::string& with, const std::vector<int>& on)
{
    std::string row = find + "," + with;
    for (int column = 3; column <= 18; ++column)
        row += std::find(on.begin(), on.end(), column) != on.end() ? ",TRUE" : ",FALSE";
    return row + "\r\n";
}

constexpr int inNotes = 10;
constexpr int inShapes = 12;
constexpr int inSlides = 15;

class ListProgramTest : public testing::Test
{
protected:
    ListProgramTest()
    {
        program.folder.Write(
            u"decks/a.pptx",
            Deck().Slide(Title(u"Fabrikam in 2023"), TextBox(u"About Fabrikam"), NotesPage(u"Ask Fabrikam")).Bytes());
        program.folder.Write(
            u"pairs.csv", headers + Row("Fabrikam", "Contoso", {inSlides, inNotes}) + Row("2023", "2024", {inSlides}));
    }

    String PathOf(StringView name) const { return program.folder.PathOf(name); }

    /// What the program says of a call that is not valid.
    std::string RefusalOf(const std::vector<std::string>& arguments)
    {
        const Outcome outcome = program.Run(arguments);
        EXPECT_EQ(outcome.status, 2);
        EXPECT_EQ(outcome.output, "");
        EXPECT_EQ(std::count(outcome.error.begin(), outcome.error.end(), '\n'), 1) << outcome.error;
        constexpr std::string_view name = "tessarine-batch: ";
        EXPECT_TRUE(outcome.error.starts_with(name)) << outcome.error;
        return outcome.error.substr(name.size());
    }

    Program program;
};

TEST_F(ListProgramTest, AReplaceTakesItsPairsFromAList)
{
    const Outcome outcome = program.Run({"replace", "--list", "pairs.csv", "decks"});

    EXPECT_EQ(outcome.output,
              EngineLine + Native("decks/a.pptx: changed, 3 replaced\n"
                                  "    \"Fabrikam\" -> \"Contoso\"  slides 1, notes 1\n"
                                  "    \"2023\" -> \"2024\"         slides 1\n"
                                  "\n"
                                  "1 file: 1 changed, 0 unchanged, 0 failed; 3 occurrences replaced\n"));
    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(outcome.status, 0);
}

TEST_F(ListProgramTest, AReportForProgramsHoldsThePlacesOfEachPair)
{
    const Outcome outcome = program.Run({"find", "--list", "pairs.csv", "--format", "json", "decks"});

    EXPECT_THAT(outcome.output,
                HasSubstr(R"("items":[{"find":"Fabrikam","replace":"","counts":{"slides":1,"notes":1}},)"
                          R"({"find":"2023","replace":"","counts":{"slides":1}}])"));
}

TEST_F(ListProgramTest, PlacesOfTheCallReplaceThoseOfTheList)
{
    const Outcome outcome = program.Run({"find", "--list", "pairs.csv", "--in", "shapes", "decks"});

    EXPECT_THAT(outcome.output, HasSubstr("    \"Fabrikam\"  shapes 1\n"));
    EXPECT_THAT(outcome.output, HasSubstr("1 occurrence found\n"));
}

TEST_F(ListProgramTest, NotesWhatIsStrangeInAListAndGoesOn)
{
    program.folder.Write(u"odd.csv", headers + Row("Fabrikam", "Contoso", {}) + Row("", "x", {inSlides}));

    const Outcome outcome = program.Run({"replace", "--list", "odd.csv", "decks"});

    EXPECT_EQ(outcome.error,
              "tessarine-batch: 1 row of the list is left out: no text to look for\n"
              "tessarine-batch: 1 pair of the list is looked for nowhere: columns 3 to 16 hold no TRUE (--in names "
              "places)\n");
    EXPECT_THAT(outcome.output, HasSubstr("1 unchanged"));
    EXPECT_EQ(outcome.status, 0);
}

TEST_F(ListProgramTest, RefusesAUselessListBeforeAnyFileIsTouched)
{
    const std::string before = ContentOf(PathOf(u"decks/a.pptx"));
    const auto refusal = [&](StringView name, const std::string& content) {
        program.folder.Write(name, content);
        return RefusalOf({"replace", "--list", ToUtf8(name), "--backup", "decks"});
    };

    EXPECT_EQ(RefusalOf({"replace", "--list", "gone.xls", "decks"}), "there is no list \"gone.xls\"\n");
    EXPECT_EQ(refusal(u"a.ods", ""),
              "--list: \"a.ods\" is not a list: its name must end in .xlsx, .xls, .csv or .tab\n");
    EXPECT_EQ(refusal(u"few.csv", "Find What,Replace With\r\n"),
              "can't take the list \"few.csv\": it has 2 columns, and a list of pairs has 18\n");
    EXPECT_EQ(refusal(u"head.csv", " " + headers),
              "can't take the list \"head.csv\": its column 1 is headed \" Find What\", not \"Find What\"\n");
    EXPECT_EQ(refusal(u"none.csv", headers), "the list \"none.csv\" has no pair to look for\n");
    EXPECT_EQ(refusal(u"endless.csv", headers + Row("cat", "a cat", {inSlides})),
              "replacing \"cat\" by \"a cat\" never ends: the new text holds the old one behind its start, so every "
              "replacement makes a further one\n");
    EXPECT_EQ(refusal(u"page.xls", "<html><table><tr><td>Find What</td></tr></table></html>"),
              "can't take the list \"page.xls\": The file is a web page; save it as an Excel workbook (.xlsx or .xls) "
              "first\n");
    EXPECT_EQ(refusal(u"new.xlsx", Deck().Bytes()),
              "can't take the list \"new.xlsx\": The file is some other Office document, not a workbook\n");
    EXPECT_THAT(refusal(u"empty.xls", ""), HasSubstr("can't take the list \"empty.xls\": The file is empty"));
    std::string rows = headers;
    for (int row = 0; row < 32767; ++row)
        rows += "a,b,,,,,,,,,,,,,TRUE,,,\n";
    EXPECT_EQ(refusal(u"long.csv", rows), "can't take the list \"long.csv\": it has more than 32767 rows\n");
    EXPECT_EQ(ContentOf(PathOf(u"decks/a.pptx")), before);
    EXPECT_EQ(ContentOf(PathOf(u"decks/a..bak")), "<missing>");
}

TEST_F(ListProgramTest, AJobTakesAListIntoItself)
{
    using namespace std::string_literals;
    const Outcome outcome = program.Run({"job", "make", "--list", "pairs.csv", "-o", "job.tsq", "decks"});

    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(outcome.status, 0);
    const auto records = ReadStoredBag(ContentOf(PathOf(u"job.tsq")));
    for (const StoredRecord& expected : std::vector<StoredRecord>{{"FindReplaceItemsCount", 2},
                                                                  {"Item0FindWhat", "Fabrikam"s},
                                                                  {"Item0ReplaceWith", "Contoso"s},
                                                                  {"Item0InNotes", true},
                                                                  {"Item0InShapesAndTextboxes", false},
                                                                  {"Item1FindWhat", "2023"s},
                                                                  {"Propery2", "FindAndReplaceListSource|INTERNAL"s}})
        EXPECT_THAT(records, Contains(expected)) << expected.name;
}

TEST_F(ListProgramTest, AListIsConvertedBetweenAllFormats)
{
    const std::vector<std::pair<const char*, const char*>> steps{
        {"pairs.csv", "a.xls"}, {"a.xls", "b.tab"},  {"b.tab", "c.CSV"},   {"c.CSV", "d.tab"},
        {"d.tab", "e.XLS"},     {"e.XLS", "g.xlsx"}, {"g.xlsx", "h.XLSX"}, {"h.XLSX", "f.csv"}};
    for (const auto& [from, to] : steps) {
        const Outcome outcome = program.Run({"list", "convert", from, to});
        EXPECT_EQ(outcome.output, "saved " + std::string(to) + ": 2 pairs\n");
        EXPECT_EQ(outcome.error, "");
        EXPECT_EQ(outcome.status, 0);
    }

    EXPECT_EQ(ContentOf(PathOf(u"f.csv")), ContentOf(PathOf(u"c.CSV")));
    EXPECT_THAT(ContentOf(PathOf(u"b.tab")), HasSubstr("\nFabrikam\tContoso\tFalse\t"));
    EXPECT_TRUE(ContentOf(PathOf(u"h.XLSX")).starts_with("PK"));
    EXPECT_THAT(program.Run({"find", "--list", "e.XLS", "decks"}).output, HasSubstr("3 found"));
    EXPECT_THAT(program.Run({"find", "--list", "h.XLSX", "decks"}).output, HasSubstr("3 found"));
}

TEST_F(ListProgramTest, AConversionToTabLogsALineThoughItIsDone)
{
    EXPECT_EQ(program.Run({"list", "convert", "pairs.csv", "a.tab"}).status, 0);

    EXPECT_THAT(program.Log(),
                HasSubstr("Error 91 (Object variable or With block variable not set) in procedure ExportsList"));
}

TEST_F(ListProgramTest, AConversionThatLosesTextsSaysSo)
{
    program.folder.Write(u"tabs.csv", headers + Row("a\tb", "c", {inSlides}));
    program.folder.Write(u"number.csv", headers + Row("cat", "=\"007\"", {inShapes}));

    const Outcome tabs = program.Run({"list", "convert", "tabs.csv", "tabs.tab"});
    EXPECT_EQ(tabs.output, "saved tabs.tab: 1 pair\n");
    EXPECT_EQ(tabs.error,
              "tessarine-batch: tabs.tab differs from the list: it can't be read back: it has 19 columns, and a list "
              "of pairs has 18\n");
    EXPECT_EQ(tabs.status, 1);

    const Outcome number = program.Run({"list", "convert", "number.csv", "number.tab"});
    EXPECT_EQ(number.error,
              "tessarine-batch: number.tab differs from the list: pair 1 (\"cat\") reads back otherwise\n");
    EXPECT_EQ(number.status, 1);
}

TEST_F(ListProgramTest, AnImpossibleConversionLeavesTheOldFile)
{
    program.folder.Write(u"old.xls", "old");
    program.folder.Write(u"bad.csv", "a,b,c,d,e,f\r\n");
    program.folder.Write(u"long.csv", headers + Row("a", std::string(32768, 'x'), {inSlides}));
    program.folder.MakeFolder(u"folder.xls");

    EXPECT_EQ(RefusalOf({"list", "convert", "gone.csv", "old.xls"}), "there is no list \"gone.csv\"\n");
    EXPECT_EQ(RefusalOf({"list", "convert", "bad.csv", "old.xls"}),
              "can't take the list \"bad.csv\": it has 6 columns, and a list of pairs has 18\n");
    EXPECT_EQ(RefusalOf({"list", "convert", "pairs.csv", "none/a.xls"}),
              "there is no folder \"" + ToUtf8(PathOf(u"none")) + "\"\n");
    EXPECT_EQ(RefusalOf({"list", "convert", "pairs.csv", "folder.xls"}), "\"folder.xls\" is a folder\n");
    EXPECT_EQ(RefusalOf({"list", "convert", "long.csv", "old.xls"}),
              "can't write the list \"old.xls\": A cell holds no more than 32767 characters\n");
    EXPECT_EQ(ContentOf(PathOf(u"old.xls")), "old");
}

}  // namespace
}  // namespace tessarine::test
