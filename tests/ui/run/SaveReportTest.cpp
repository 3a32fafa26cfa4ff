#include <gmock/gmock.h>

#include <QDate>

#include "i18n/QtText.h"
#include "ui/run/ProcessingWindowTest.h"
#include "ui/run/ReportTexts.h"
#include "ui/run/SampleHits.h"

// The button that saves the results of a run in a file.

namespace tessarine
{
namespace
{

using testing::HasSubstr;
using testing::IsEmpty;

class SaveReportTest : public ProcessingWindowTest
{
protected:
    /// A run over a file with a hit, one without and one that failed.
    void Run(bool replaces = false, const RunEnd& end = {})
    {
        frmProcessingDocuments& window = BeginRun();
        window.Hits().BeginRun({replaces, true});
        window.BeginReport({.replaces = replaces});
        Hit hit = HitOnSlide(1, u"a ", u"cat", u" here");
        window.Hits().Take(replaces ? Replaced(hit, u"dog") : hit);
        window.Hits().Add({u"a.pptx", FileStatus::Counted, {}, {PairOf(1)}});
        window.Hits().Add({u"b.pptx", FileStatus::NothingCounted, {}, {PairOf(0)}});
        window.Hits().Add(FailedFile(u"c.pptx", u"damaged"));
        EndRun();
        window.EndReport(end);
    }

    static PairReport PairOf(std::int32_t count)
    {
        PairReport pair{u"cat", u"dog", {}};
        pair.counts.fill(-1);
        pair.counts[static_cast<std::size_t>(Location::Slides)] = count;
        return pair;
    }

    /// The file that a click saves when the dialog ends with this name.
    std::string SavedAs(StringView name)
    {
        shell_.NextFile(folder_.PathOf(name));
        Click("cmdSaveReport");
        return ContentOf(folder_.PathOf(name));
    }
};

TEST_F(SaveReportTest, WaitsForTheEndOfTheRun)
{
    BeginRun();
    Window().BeginReport({});
    EXPECT_FALSE(The("cmdSaveReport").isEnabled());

    Window().EndReport({});
    EXPECT_TRUE(The("cmdSaveReport").isEnabled());

    Window().BeginReport({});
    EXPECT_FALSE(The("cmdSaveReport").isEnabled());
}

TEST_F(SaveReportTest, AsksForAFileWithBothKindsOnOffer)
{
    Run();
    shell_.NextFile(std::nullopt);

    Click("cmdSaveReport");

    ASSERT_EQ(shell_.FileDialogs().size(), 1u);
    const CommonDialog& dialog = shell_.FileDialogs().front().properties;
    EXPECT_TRUE(shell_.FileDialogs().front().isSave);
    EXPECT_EQ(ToUtf8(dialog.DialogTitle), "Save report");
    EXPECT_EQ(ToUtf8(dialog.Filter), "Web page (.html)|*.html|Table for spreadsheets (.csv)|*.csv");
    EXPECT_EQ(ToUtf8(dialog.DefaultExt), "html");
    EXPECT_EQ(dialog.Flags, FileDialogFlag::AskBeforeOverwriting);
    EXPECT_THAT(
        ToUtf8(dialog.FileName),
        testing::EndsWith("Search report " + QDate::currentDate().toString(Qt::ISODate).toStdString() + ".html"));
    EXPECT_THAT(messages_.Messages(), IsEmpty());
}

TEST_F(SaveReportTest, SavesAPageWithFailuresHitsAndAllFiles)
{
    Run();

    const std::string page = SavedAs(u"r.html");

    EXPECT_THAT(page, HasSubstr("<h1>Search report</h1>"));
    EXPECT_THAT(page, HasSubstr("a <mark>cat</mark> here"));
    EXPECT_THAT(page, HasSubstr("<td class=\"bad\">damaged</td>"));
    EXPECT_THAT(page, HasSubstr("b.pptx"));
    EXPECT_THAT(page, HasSubstr("<span class=\"c\">Slides 1</span>"));
    EXPECT_THAT(messages_.Messages(), IsEmpty());
}

TEST_F(SaveReportTest, SavesATable)
{
    Run();

    EXPECT_THAT(SavedAs(u"r.csv"), HasSubstr("\"a.pptx\",\"Found\",1,\"cat\",\"dog\",\"Slides\",3,\"Plan\","));
}

TEST_F(SaveReportTest, TellsOldAndNewTextOfAReplacement)
{
    Run(true);

    EXPECT_THAT(SavedAs(u"r.html"), HasSubstr("a <del>cat</del><ins>dog</ins> here"));
}

TEST_F(SaveReportTest, SaysThatARunWasCancelled)
{
    Run(false, {.way = RunEnd::Way::Cancelled, .notReached = 4});

    EXPECT_THAT(SavedAs(u"r.html"), HasSubstr("The run was cancelled. Files that were not processed: 4"));
}

TEST_F(SaveReportTest, SpeaksTheLanguageOfTheWindows)
{
    const ChosenLanguage german(FromUtf8(TESSARINE_PROGRAM_FOLDER), u"German.lng");
    Run();

    const std::string page = SavedAs(u"r.html");

    EXPECT_THAT(page, HasSubstr("<html lang=\"de\">"));
    EXPECT_THAT(page, HasSubstr("<h1>Suchbericht</h1>"));
    EXPECT_THAT(page, HasSubstr(">Folie 3 "));
    EXPECT_THAT(page, HasSubstr("<h2>Fehlgeschlagene Dateien: 1</h2>"));
}

TEST_F(SaveReportTest, RefusesANameOfAnotherKind)
{
    Run();

    EXPECT_EQ(SavedAs(u"r.txt"), "<missing>");
    EXPECT_THAT(messages_.Messages(),
                testing::ElementsAre(MessageRecorder::Message{u"The name of a report must end in .html or .csv.",
                                                              MessageIcon::Exclamation, MessageButtons::Ok}));
}

TEST_F(SaveReportTest, TellsWhyAReportCouldNotBeSaved)
{
    Run();

    EXPECT_EQ(SavedAs(u"missing/r.html"), "<missing>");
    ASSERT_EQ(messages_.Messages().size(), 1u);
    EXPECT_THAT(ToUtf8(messages_.Messages().front().text), testing::StartsWith("The report could not be saved: "));
}

TEST_F(SaveReportTest, ProposesTheFolderOfTheLastReport)
{
    Run();
    folder_.MakeFolder(u"reports");
    SavedAs(u"reports/r.csv");
    shell_.NextFile(std::nullopt);

    Click("cmdSaveReport");

    EXPECT_EQ(ToUtf8(shell_.FileDialogs().back().properties.FileName).rfind(ToUtf8(folder_.PathOf(u"reports")), 0), 0u);
}

TEST_F(SaveReportTest, HasTheEnglishWordsOfReportsInTheEnglishFile)
{
    const RunEnd end{RunEnd::Way::BrokenOff, 1, 0, Engine::BuiltIn};
    ReportWords words = WordsOfReport();
    words.nameOf = ReportWords::NameOnCommandLine;

    for (const auto create : {CreatePageReport, CreateTableReport})
        for (const bool replaces : {false, true}) {
            const auto fromFile = create({.replaces = replaces}, words);
            const auto builtIn = create({.replaces = replaces}, {});
            EXPECT_EQ(fromFile->Head(end), builtIn->Head(end));
            EXPECT_EQ(fromFile->Foot(end), builtIn->Foot(end));
            for (const bool isDryRun : {false, true})
                for (const std::int32_t status : {FileStatus::Counted, FileStatus::NothingCounted})
                    EXPECT_EQ(StateWord({u"a", status, {}, {}}, {.replaces = replaces, .isDryRun = isDryRun}, words),
                              StateWord({u"a", status, {}, {}}, {.replaces = replaces, .isDryRun = isDryRun}, {}));
        }
}

}  // namespace
}  // namespace tessarine
