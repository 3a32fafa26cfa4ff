#include "ui/main/RunFromWindowTest.h"

// The report that is saved after a run from the main window.

namespace tessarine
{
namespace
{

using testing::HasSubstr;

class SavedReportTest : public RunFromWindowTest
{
protected:
    /// The page that a click saves.
    std::string Page()
    {
        shell.NextFile(decks.PathOf(u"r.html"));
        ClickInProcessing("cmdSaveReport");
        return ContentOf(decks.PathOf(u"r.html"));
    }
};

TEST_F(SavedReportTest, HoldsTheHitsOfASearch)
{
    Presentation(u"a.pptx", {u"a Fabrikam plan"});
    File(u"b.pptx", "no presentation");
    SetJob({{u"Fabrikam", u"Contoso"}});

    Find();

    const std::string page = Page();
    EXPECT_THAT(page, HasSubstr("<h1>Search report</h1>"));
    EXPECT_THAT(page, HasSubstr("a <mark>Fabrikam</mark> plan"));
    EXPECT_THAT(page, HasSubstr("<h2>Failed files: 1</h2>"));
    EXPECT_THAT(page, HasSubstr("<dt>Engine</dt><dd>"));
}

TEST_F(SavedReportTest, HoldsOldAndNewTextOfAReplacement)
{
    SetJobOver({u"a.pptx"});

    Replace();

    EXPECT_THAT(Page(), HasSubstr("<h1>Replacement report</h1>"));
    EXPECT_THAT(Page(), HasSubstr("<del>Fabrikam</del><ins>Contoso</ins>"));
}

TEST_F(SavedReportTest, IsOfTheLastRunAlone)
{
    SetJobOver({u"a.pptx"});
    Replace();
    Find();

    EXPECT_THAT(Page(), testing::Not(HasSubstr("<ins>")));
}

TEST_F(SavedReportTest, CanBeSavedOnlyWhenTheRunIsOver)
{
    SetJobOver({u"a.pptx", u"b.pptx"});
    bool couldBeSaved = true;
    Before(u"b.pptx", [&] { couldBeSaved = InProcessing("cmdSaveReport").isEnabled(); });

    Find();

    EXPECT_FALSE(couldBeSaved);
    EXPECT_TRUE(InProcessing("cmdSaveReport").isEnabled());
}

TEST_F(SavedReportTest, SaysHowManyFilesACancelledRunLeftOut)
{
    SetJobOver({u"a.pptx", u"b.pptx", u"c.pptx"});
    Before(u"a.pptx", [this] { ClickInProcessing("cmdOK"); });

    Find();

    EXPECT_THAT(Page(), HasSubstr("The run was cancelled. Files that were not processed: "));
    EXPECT_THAT(Page(), HasSubstr("<dt>Not processed</dt>"));
}

}  // namespace
}  // namespace tessarine
