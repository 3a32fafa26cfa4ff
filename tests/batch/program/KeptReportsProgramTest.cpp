#include "FindAndReplaceProgramTest.h"

#include <gmock/gmock.h>

namespace tessarine::test
{
namespace
{

using testing::HasSubstr;
using testing::Not;

class KeptReportsProgramTest : public FindAndReplaceProgramTest
{
protected:
    std::string Text(StringView name) const { return ContentOf(PathOf(name)); }

    /// A run that must be refused: nothing is written, and one line says why.
    void ExpectRefused(const std::vector<std::string>& arguments, const std::string& reason)
    {
        const Outcome outcome = program.Run(arguments);
        EXPECT_THAT(outcome.error, HasSubstr(reason));
        EXPECT_EQ(outcome.output, "");
        EXPECT_EQ(outcome.status, 2);
    }
};

TEST_F(KeptReportsProgramTest, AFindKeepsItsHitsInBothFormats)
{
    const Outcome outcome =
        program.Run({"find", "--find", "Fabrikam", "--report", "r.html", "--report", "r.csv", "decks"});

    EXPECT_THAT(Text(u"r.html"), HasSubstr("<h1>Search report</h1>"));
    EXPECT_THAT(Text(u"r.html"), HasSubstr("<mark>Fabrikam</mark> in 2023"));
    EXPECT_THAT(Text(u"r.csv"), HasSubstr(Native("\"decks/a.pptx\",\"Found\",1,\"Fabrikam\",,\"slides\",1,"
                                                 "\"Fabrikam in 2023\"")));
    EXPECT_THAT(Text(u"r.csv"), HasSubstr(Native("\"decks/b.pptx\",\"Nothing found\",,")));
    // Hits are printed with --show alone.
    EXPECT_THAT(outcome.output, Not(HasSubstr("in 2023")));
    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(outcome.status, 0);
}

TEST_F(KeptReportsProgramTest, AReplaceKeepsOldAndNewText)
{
    program.Run({"replace", "--find", "Fabrikam", "--with", "Contoso", "--report", "r.html", "decks"});

    EXPECT_THAT(Text(u"r.html"), HasSubstr("<h1>Replacement report</h1>"));
    EXPECT_THAT(Text(u"r.html"), HasSubstr("<del>Fabrikam</del><ins>Contoso</ins> in 2023"));
}

TEST_F(KeptReportsProgramTest, ADryRunSaysThatItSavedNothing)
{
    program.Run({"replace", "--dry-run", "--find", "Fabrikam", "--with", "Contoso", "--report", "r.html", "decks"});

    EXPECT_THAT(Text(u"r.html"), HasSubstr("Nothing was saved: this is what a replacement would do."));
    EXPECT_THAT(Text(u"r.html"), HasSubstr("<del>Fabrikam</del><ins>Contoso</ins> in 2023"));
}

TEST_F(KeptReportsProgramTest, ASavedJobKeepsAReportWithItsName)
{
    program.Run({"job", "make", "--find", "Fabrikam", "--with", "Contoso", "-o", "j.tsq", "decks"});
    const Outcome outcome = program.Run({"run", "j.tsq", "--report", "r.html"});

    EXPECT_THAT(Text(u"r.html"), HasSubstr("<dt>Project</dt><dd><bdi class=\"q\">j.tsq</bdi></dd>"));
    EXPECT_THAT(Text(u"r.html"), HasSubstr("<mark>Fabrikam</mark> in 2023"));
    EXPECT_EQ(outcome.status, 0);
}

TEST_F(KeptReportsProgramTest, ContextAndMaxHitsHoldForTheReportWithoutShow)
{
    program.Run({"find", "--find", "Fabrikam", "--context", "2", "--max-hits", "1", "--report", "r.html", "decks"});

    EXPECT_THAT(Text(u"r.html"), HasSubstr("<mark>Fabrikam</mark> i…"));
    EXPECT_THAT(Text(u"r.html"), HasSubstr("Further hits, not listed: 3"));
}

TEST_F(KeptReportsProgramTest, AnOlderReportIsReplaced)
{
    program.folder.Write(u"r.csv", "old");

    program.Run({"find", "--find", "Fabrikam", "--report", "r.csv", "decks"});

    EXPECT_THAT(Text(u"r.csv"), HasSubstr("\"Fabrikam\""));
}

TEST_F(KeptReportsProgramTest, ARunWithoutFilesKeepsAnEmptyReport)
{
    program.folder.MakeFolder(u"empty");

    program.Run({"find", "--find", "Fabrikam", "--report", "r.html", "empty"});

    EXPECT_THAT(Text(u"r.html"), HasSubstr("<dt>Files</dt><dd>0</dd>"));
}

TEST_F(KeptReportsProgramTest, APlaceThatCannotBeWrittenIsRefused)
{
    const std::string before = Text(u"decks/a.pptx");

    ExpectRefused({"replace", "--find", "Fabrikam", "--with", "x", "--report", "missing/r.html", "decks"},
                  Native("missing/r.html"));

    EXPECT_EQ(Text(u"decks/a.pptx"), before);
}

TEST_F(KeptReportsProgramTest, NothingThatTheCallReadsIsOverwritten)
{
    Write(u"decks/deck.html", Deck().Slide(Title(u"Fabrikam")));
    program.folder.Write(u"pairs.csv", "find,replace\n");
    program.folder.Write(u"files.csv", "decks/a.pptx\n");
    const std::string deck = Text(u"decks/deck.html");

    ExpectRefused({"find", "--find", "x", "--report", "decks/deck.html", "decks/deck.html"},
                  "is one of the files to process");
    ExpectRefused({"find", "--find", "x", "--report", "decks/../decks/deck.html", "--pattern", "*", "decks"},
                  "is one of the files to process");
    ExpectRefused({"find", "--find", "x", "--report", "files.csv", "--files-from", "files.csv"},
                  "\"files.csv\" is a file that the call reads");
    ExpectRefused({"find", "--find", "x", "--report", "r.csv", "--report", "decks/../r.csv", "decks"},
                  "is named twice");

    EXPECT_EQ(Text(u"decks/deck.html"), deck);
    EXPECT_EQ(Text(u"files.csv"), "decks/a.pptx\n");
}

TEST_F(KeptReportsProgramTest, TheListOfPairsIsNotOverwritten)
{
    const std::string list =
        "Find What,Replace With,InBuiltinProperty,InCustomProperties,InFooter,InHandoutMaster,InHeader,"
        "InHyperlinkAddresses,InLinks,InNotes,InNotesMaster,InShapesAndTextboxes,InSlideMasterPerPresentation,"
        "InSlideMasterPerSlide,InSlides,InTitleMaster,MatchCase,MatchWholeWord\nFabrikam,,,,,,,,,,,,,,TRUE,,,\n";
    program.folder.Write(u"pairs.csv", list);

    ExpectRefused({"find", "--list", "pairs.csv", "--report", "./pairs.csv", "decks"},
                  "\"./pairs.csv\" is a file that the call reads");

    EXPECT_EQ(Text(u"pairs.csv"), list);
}

#ifndef _WIN32
TEST_F(KeptReportsProgramTest, ADiskWithoutRoomLeavesTheOldReportAndTellsSo)
{
    program.folder.Write(u"r.html", "old");
    program.fileSizeLimit = 5000;  // less than the page's own style and script, more than the table

    const Outcome outcome =
        program.Run({"find", "--find", "Fabrikam", "--report", "r.html", "--report", "r.csv", "decks"});

    EXPECT_THAT(outcome.output, HasSubstr("4 occurrences found"));
    EXPECT_THAT(outcome.error, HasSubstr("r.html"));
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(Text(u"r.html"), "old");
    EXPECT_THAT(Text(u"r.csv"), HasSubstr("\"Fabrikam\""));
}
#endif

}  // namespace
}  // namespace tessarine::test
