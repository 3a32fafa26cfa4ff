#include <QLabel>
#include <QTreeWidget>

#include "files/Files.h"
#include "support/Fixtures.h"
#include "ui/main/RunFromWindowTest.h"
#include "ui/run/ElapsedTime.h"
#include "ui/run/FileProgressBar.h"
#include "ui/run/ResultTree.h"

// How runs from the main window end, in words, and what a person can do with one that does not.

namespace tessarine
{
namespace
{

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class RunEnd : public RunFromWindowTest
{
protected:
    /// The lines of the list of failures: a file, a colon, and the reason.
    std::vector<std::string> Failures()
    {
        const QAbstractItemModel& list = *InProcessing<QTreeWidget>("lstFailures").model();
        std::vector<std::string> lines;
        for (int row = 0; row < list.rowCount(); ++row)
            lines.push_back(WithoutFolder(
                (list.index(row, 0).data().toString() + ": " + list.index(row, 1).data().toString()).toStdString()));
        return lines;
    }
};

TEST_F(RunEnd, IsDoneAfterTheLastFile)
{
    SetJobOver({u"a.pptx", u"b.pptx"});

    Replace();

    EXPECT_TRUE(InProcessing("lblOutcome").isVisible());
    EXPECT_EQ(Label("lblOutcome"), "Done. Files: 2.");
    EXPECT_FALSE(InProcessing("lblWarning").isVisible()) << "PowerPoint may be used again";
    EXPECT_FALSE(InProcessing("cmdClose").isVisible());
}

TEST_F(RunEnd, ByACancelSaysAfterHowManyFilesAndTheBarStandsThere)
{
    SetJobOver({u"1.pptx", u"2.pptx", u"3.pptx", u"4.pptx", u"5.pptx"});
    Before(u"4.pptx", [this] { ClickInProcessing("cmdOK"); });

    Replace();

    EXPECT_EQ(Label("lblOutcome"), "Cancelled after 3 of 5 file(s).");
    EXPECT_EQ(InProcessing<FileProgressBar>("pgbar1").text(), "60%");
    EXPECT_FALSE(InProcessing("lblStopping").isVisible());
    ClickInProcessing("cmdOK");
    EXPECT_EQ(frmProcessingDocuments::Loaded(), nullptr);
}

TEST_F(RunEnd, ByACancelDuringTheLastFileIsDone)
{
    SetJobOver({u"1.pptx", u"2.pptx"});
    atDelivery = [this] {
        if (frmProcessingDocuments::Loaded() != nullptr && Label("lblDocChanged") == "File 2 of 2: 2.pptx")
            ClickInProcessing("cmdOK");
    };

    Replace();

    EXPECT_EQ(Label("lblOutcome"), "Done. Files: 2.");
    EXPECT_EQ(InProcessing<FileProgressBar>("pgbar1").text(), "100%");
}

TEST_F(RunEnd, ByAFailureSaysSoListsItAndOffersToClose)
{
    Presentation(u"a.pptx", {u"Fabrikam"});
    const String vanishing = Presentation(u"b.pptx", {u"Fabrikam"});
    SetJob({{u"Fabrikam", u"Contoso"}});
    CurrentProject->BeforFileProcess += [&](const String& path) {
        if (path != vanishing)
            DeleteFile(vanishing);
    };

    Find();

    EXPECT_EQ(Label("lblOutcome"), "Ended by a failure after 1 of 2 file(s). Failures: 1");
    EXPECT_THAT(Failures(), ElementsAre(AllOf(HasSubstr("b.pptx: The run ended here: "))));
    EXPECT_FALSE(InProcessing("lblWarning").isVisible());
    EXPECT_EQ(Caption("cmdOK"), "Cancel");
    ClickInProcessing("cmdClose");
    EXPECT_EQ(frmProcessingDocuments::Loaded(), nullptr);
}

TEST_F(RunEnd, ListsAllFailuresWhereverElseTheyAreTold)
{
    Presentation(u"a.pptx", {u"Fabrikam"});
    File(u"b broken.pptx", "no presentation");
    File(u"c locked.pptx", test::fixtures::EncryptedStandard());
    Presentation(u"d.pptx", {u"Fabrikam"});
    SetJob({{u"Fabrikam", u"Contoso"}});

    Find();

    ASSERT_EQ(Failures().size(), 2U);
    EXPECT_THAT(Failures()[0], testing::StartsWith("b broken.pptx: "));
    EXPECT_EQ(Failures()[1], "c locked.pptx: Wrong Password has been supplied.");
    EXPECT_EQ(Label("lblOutcome"), "Done. Files: 4. Failures: 2");
}

TEST_F(RunEnd, IsFollowedByARunThatAddsToItAndStartsItsTimeAnew)
{
    QTime now(9, 30);
    const TimeOfDayPort before = SetTimeOfDay([&now] { return now; });
    SetJobOver({u"a.pptx"});
    Find();
    EXPECT_FALSE(InProcessing("lblAdded").isVisible());
    now = now.addSecs(1000);

    Find();

    SetTimeOfDay(before);
    EXPECT_TRUE(InProcessing("lblAdded").isVisible());
    EXPECT_EQ(Label("lblelapsedSecs"), "Total Elapsed Time : 00:00:00");
    EXPECT_EQ(Label("lblOutcome"), "Done. Files: 1.");
}

// A pair that never ends.

class EndlessRun : public RunEnd
{
protected:
    EndlessRun()
    {
        previousClock_ = SetTimeOfDay([this] { return now_; });
        Presentation(u"a.pptx", {u"a slide"});
        Presentation(u"b.pptx", {u"nothing to find"});
        Presentation(u"c.pptx", {u"a slide"});
        SetJob({{u"other", u"else"}, {u"slide", u"the slide"}});
        before_ = {ContentOf(PathOf(u"a.pptx")), ContentOf(PathOf(u"c.pptx"))};
    }
    ~EndlessRun() override { SetTimeOfDay(previousClock_); }

    /// A second goes by while the run is at a file that holds the text.
    void PassTime()
    {
        if (frmProcessingDocuments::Loaded() != nullptr && Label("lblDocChanged").find("b.pptx") == std::string::npos)
            now_ = now_.addSecs(1);
    }

    bool IsOffered()
    {
        return frmProcessingDocuments::Loaded() != nullptr && InProcessing("cmdGiveUp").isVisible() &&
               InProcessing("cmdGiveUp").isEnabled();
    }

    void ExpectFilesUntouched() const
    {
        EXPECT_TRUE(ContentOf(PathOf(u"a.pptx")) == before_[0]);
        EXPECT_TRUE(ContentOf(PathOf(u"c.pptx")) == before_[1]);
    }

    QTime now_{9, 30};

private:
    TimeOfDayPort previousClock_;
    std::vector<std::string> before_;
};

TEST_F(EndlessRun, GoesOnAfterItsFilesWereGivenUp)
{
    std::vector<std::string> seen;
    atDelivery = [&] {
        PassTime();
        if (!IsOffered())
            return;
        seen.push_back(Label("lblDocChanged") + " " + Label("lblStuck").substr(Label("lblStuck").find("Now")));
        ClickInProcessing("cmdGiveUp");
    };

    Replace();

    EXPECT_THAT(seen, ElementsAre("File 1 of 3: a.pptx Now at pair 2: “slide”.",
                                  "File 3 of 3: c.pptx Now at pair 2: “slide”."));
    ExpectFilesUntouched();
    const std::string reason = "The file was given up while it was being processed; it is as it was.";
    EXPECT_THAT(Lines(*Processing().trvErrors), ElementsAre("a.pptx", "\t" + reason, "c.pptx", "\t" + reason));
    EXPECT_THAT(Failures(), ElementsAre("a.pptx: " + reason, "c.pptx: " + reason));
    EXPECT_THAT(Lines(*Processing().trvNotChangedFiles), ElementsAre("b.pptx"));
    EXPECT_EQ(Label("lblOutcome"), "Done. Files: 3. Failures: 2");
    EXPECT_FALSE(InProcessing("lblNotOpened").isVisible());
    EXPECT_FALSE(InProcessing("lblStuck").isVisible());
    EXPECT_TRUE(CurrentProject->options->IsFindOnly) << "the run has come to its end";
}

TEST_F(EndlessRun, EndsAfterACancelWhenItsFileIsGivenUp)
{
    bool isStopping = false;
    atDelivery = [&] {
        PassTime();
        if (!IsOffered())
            return;
        ClickInProcessing("cmdOK");
        isStopping = InProcessing("lblStopping").isVisible();
        ClickInProcessing("cmdGiveUp");
    };

    Replace();

    EXPECT_TRUE(isStopping);
    ExpectFilesUntouched();
    EXPECT_EQ(Label("lblOutcome"), "Cancelled after 1 of 3 file(s). Failures: 1");
    EXPECT_EQ(Caption("cmdOK"), "OK");
}

TEST_F(EndlessRun, IsForeseenAboveTheStartButtons)
{
    EXPECT_TRUE(QTest::qWaitFor([this] { return The("lblEndless").isVisible(); }));
    EXPECT_EQ(The<QLabel>("lblEndless").text(),
              "Replacing would never end, because the new text contains the old one: “slide” (row 2)");

    ClickBox("optLoad(0)");
    EXPECT_FALSE(The("lblEndless").isVisible()) << "the pairs come from a file";
    ClickBox("optLoad(1)");
    EXPECT_TRUE(The("lblEndless").isVisible());

    SetPairs({{u"slide", u"slides"}});
    Window().LoadProjectOnForm();
    EXPECT_TRUE(QTest::qWaitFor([this] { return !The("lblEndless").isVisible(); }));
}

TEST_F(EndlessRun, NamesThreeOfManyPairs)
{
    SetPairs({{u"a", u"ba"}, {u"b%d", u"ab%d"}, {u"c", u"c"}, {u"d", u"dd"}, {u"e", u"fe"}});
    Window().LoadProjectOnForm();

    EXPECT_TRUE(QTest::qWaitFor(
        [this] { return The<QLabel>("lblEndless").text().endsWith("“a” (row 1), “b%d” (row 2), “d” (row 4), …"); }));
}

}  // namespace
}  // namespace tessarine
