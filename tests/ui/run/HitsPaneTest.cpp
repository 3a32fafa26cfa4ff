#include "ui/run/HitsPane.h"

#include <QAction>
#include <QClipboard>
#include <QSplitter>

#include "app/GlobalState.h"
#include "ui/run/HitsView.h"
#include "ui/run/ProcessingWindowTest.h"
#include "ui/run/SampleHits.h"

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

/// Two files with hits of two pairs.
class HitsPaneTest : public ProcessingWindowTest
{
protected:
    ResultTree& Changed() { return *Window().trvChangedFiles; }
    HitsView& List() { return The<HitsView>("lstHits"); }

    HitsPaneTest()
    {
        for (const char16_t* name : {u"a.pptx", u"b.pptx"})
            folder_.Write(name, "a presentation");
    }

    String PathOf(StringView name) const { return folder_.PathOf(name); }

    static Hit InNotes(const Hit& hit) { return At(hit, {.location = Location::Notes, .slide = 1}, 1); }

    void AddFiles()
    {
        AddWithHits(Counted(PathOf(u"a.pptx"), {{u"cat", {{Location::Slides, 1}, {Location::Notes, 1}}},
                                                {u"hen", {{Location::Slides, 1}, {Location::Notes, 0}}}}),
                    {HitOnSlide(1, u"a ", u"cat", u" here"), InNotes(HitOnSlide(1, {}, u"CAT", {})),
                     HitOnSlide(2, u"one ", u"hen", {})});
        AddWithHits(Counted(PathOf(u"b.pptx"), {{u"cat", {{Location::Slides, 1}}}, {u"hen", {{Location::Slides, 0}}}}),
                    {HitOnSlide(1, u"b ", u"cat", {})});
    }

    /// Clicks on a node of the tree of changed files: by file, pair and location, from 0.
    void ClickOn(std::initializer_list<int> rows) { ClickOn(Changed(), rows); }

    void ClickOn(ResultTree& tree, std::initializer_list<int> rows)
    {
        QModelIndex index;
        for (const int row : rows) {
            tree.expand(index);
            index = tree.model()->index(row, 0, index);
        }
        const QPoint point = PointOf(tree, index);
        QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, QPoint(tree.visualRect(index).left() + 5, point.y()));
    }

    std::vector<std::string> Rows()
    {
        std::vector<std::string> rows;
        for (int row = 0; row < List().model()->rowCount(); ++row)
            rows.push_back(List().model()->index(row, 0).data().toString().toStdString());
        return rows;
    }

    /// As a person does: the second click follows a first one.
    void DoubleClickAt(QPoint point)
    {
        QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, point);
        QTest::mouseDClick(List().viewport(), Qt::LeftButton, {}, point);
    }

    QPoint RowPoint(int row) { return List().visualRect(List().model()->index(row, 0)).center(); }
};

TEST_F(HitsPaneTest, ShowsTheHitsOfTheFileThatIsClicked)
{
    AddFiles();

    ClickOn({0});

    EXPECT_THAT(Rows(), ElementsAre("Slide 3 “Plan”, shape “Text 1”, paragraph 2: a [cat] here",
                                    "Notes of slide 1, paragraph 1: [CAT]",
                                    "Slide 3 “Plan”, shape “Text 1”, paragraph 2: one [hen]"));
    EXPECT_EQ(Text("lblHits"), "Hits in a.pptx: 3");
    EXPECT_FALSE(IsVisible("lblHitsNotice"));

    ClickOn({1});
    EXPECT_THAT(Rows(), ElementsAre("Slide 3 “Plan”, shape “Text 1”, paragraph 2: b [cat]"));
}

TEST_F(HitsPaneTest, ShowsTheHitsOfAPairAlone)
{
    AddFiles();

    ClickOn({0, 1});

    EXPECT_THAT(Rows(), ElementsAre("Slide 3 “Plan”, shape “Text 1”, paragraph 2: one [hen]"));
    EXPECT_EQ(Text("lblHits"), "Hits of “hen” in a.pptx: 1");
}

TEST_F(HitsPaneTest, ShowsTheHitsOfALocationAlone)
{
    AddFiles();

    ClickOn({0, 0, 1});

    EXPECT_THAT(Rows(), ElementsAre("Notes of slide 1, paragraph 1: [CAT]"));
}

TEST_F(HitsPaneTest, SaysThatAPairHasNoHits)
{
    AddFiles();

    ClickOn({1, 1});

    EXPECT_THAT(Rows(), IsEmpty());
    EXPECT_EQ(List().accessibleDescription(), "No hits here.");
    EXPECT_EQ(Text("lblHits"), "Hits of “hen” in b.pptx: 0");
}

TEST_F(HitsPaneTest, FollowsTheKeyboardInTheTree)
{
    AddFiles();
    ClickOn({0});

    QTest::keyClick(&Changed(), Qt::Key_Down);
    EXPECT_EQ(Text("lblHits"), "Hits in b.pptx: 1");

    QTest::keyClick(&Changed(), Qt::Key_Right);
    QTest::keyClick(&Changed(), Qt::Key_Down);
    EXPECT_EQ(Text("lblHits"), "Hits of “cat” in b.pptx: 1");
}

TEST_F(HitsPaneTest, FindsThePairAfterTheLinesOfAFile)
{
    const auto status = Counted(u"/a.pptx", {{u"cat", {{Location::Slides, 1}}}, {u"hen", {{Location::Slides, 1}}}});
    for (const Hit& hit : {HitOnSlide(1, {}, u"cat", {}), HitOnSlide(2, {}, u"hen", {})})
        Window().Hits().Take(hit);
    const StoredHits stored = Window().Hits().Add(ReportOf(u"/a.pptx", *status));
    AddResult(&Changed(), *status, true, {mFilesChanged, mTotalChanges}, {u"is marked as final"}, &stored);

    ClickOn({0, 2});
    EXPECT_THAT(Rows(), ElementsAre(testing::HasSubstr("[hen]")));

    ClickOn({0, 0});  // a line: what it says is said of the file
    EXPECT_EQ(Rows().size(), 2u);
}

TEST_F(HitsPaneTest, ShowsTheHitsOfBothReportsOfAFile)
{
    const auto report = [](const char16_t* find) { return Counted(u"/a.pptx", {{find, {{Location::Slides, 1}}}}); };
    AddWithHits(report(u"cat"), {HitOnSlide(1, {}, u"cat", {})});
    AddWithHits(report(u"hen"), {HitOnSlide(1, {}, u"hen", {})});

    ClickOn({0});
    EXPECT_EQ(Rows().size(), 2u);

    ClickOn({0, 1});
    EXPECT_THAT(Rows(), ElementsAre(testing::HasSubstr("[hen]")));
}

TEST_F(HitsPaneTest, ShowsOldAndNewTextOfAReplacement)
{
    Window().Hits().BeginRun({true, true});
    AddWithHits(
        Counted(u"/a.pptx", {{u"cat", {{Location::Slides, 1}, {Location::BuiltinProperies, 1}}}}),
        {Replaced(HitOnSlide(1, u"a ", u"cat", u" here"), u"dog"),
         At(HitOnSlide(1, {}, u"cat", {}), {.location = Location::BuiltinProperies, .property = u"Last Author"})});

    ClickOn({0});

    EXPECT_THAT(Rows(), ElementsAre("Slide 3 “Plan”, shape “Text 1”, paragraph 2: a [cat → dog] here",
                                    "Property “Last Author” (could not be changed): [cat]"));
}

TEST_F(HitsPaneTest, ShowsHitsThatAreNotCountedInAFileWithoutACount)
{
    Hit footer = At(HitOnSlide(1, {}, u"cat", {}), {.location = Location::Footer, .slide = 2});
    footer.isCounted = false;
    AddWithHits(NothingCounted(u"/a.pptx"), {footer});
    ShowTab(2);

    ClickOn(*Window().trvNotChangedFiles, {0});

    EXPECT_THAT(Rows(), ElementsAre("Slide 2 (not counted): [cat]"));
}

TEST_F(HitsPaneTest, ShowsThePairsTextForAHitThatDoesNotTellIt)
{
    AddWithHits(Counted(u"/a.pptx", {{u"cat", {{Location::Slides, 1}}}}), {HitOnSlide(1, u"a ", {}, {})});

    ClickOn({0});

    EXPECT_THAT(Rows(), ElementsAre(testing::EndsWith(": a [cat]")));
}

TEST_F(HitsPaneTest, CountsTheHitsThatAreNotKept)
{
    std::vector<Hit> hits(1005, HitOnSlide(1, {}, u"cat", {}));
    hits.push_back(HitOnSlide(2, {}, u"hen", {}));
    AddWithHits(Counted(u"/a.pptx", {{u"cat", {{Location::Slides, 1005}}}, {u"hen", {{Location::Slides, 1}}}}), hits);

    ClickOn({0});
    EXPECT_EQ(Rows().size(), 1001u);
    EXPECT_EQ(Rows().back(), "Further hits that are not kept: 6");
    EXPECT_EQ(Text("lblHits"), "Hits in a.pptx: 1006");

    ClickOn({0, 1});
    EXPECT_THAT(Rows(), ElementsAre("Further hits that are not kept: 1"));
}

TEST_F(HitsPaneTest, SaysThatARunWithoutACountShowsTheFirstHitOfEachText)
{
    Window().Hits().BeginRun({false, false});
    AddWithHits(Counted(u"/a.pptx", {{u"cat", {{Location::Slides, 1}}}}), {HitOnSlide(1, {}, u"cat", {})}, false);

    ClickOn({0});

    EXPECT_TRUE(IsVisible("lblHitsNotice"));
    EXPECT_EQ(Text("lblHitsNotice"), "This run did not count: of each text only the first hit is shown.");
}

TEST_F(HitsPaneTest, SaysThatHitsCouldNotBeKept)
{
    HitsPane pane;
    pane.PutTexts({});
    FileReport report;
    report.path = u"/a.pptx";
    report.hitsLeftOut = 7;
    pane.Show({{{report, {{1, Location::Slides, 7}}, {}}}, {}, {}}, {});

    EXPECT_EQ(pane.findChild<QLabel*>("lblHitsNotice")->text(),
              "The hits could not be kept: there is no room for them in the folder for temporary files.");
    EXPECT_EQ(pane.findChild<HitsView*>("lstHits")->model()->rowCount(), 1);
}

TEST_F(HitsPaneTest, OpensTheFileOfAHitByADoubleClick)
{
    AddFiles();
    ClickOn({1});

    DoubleClickAt(RowPoint(0));

    EXPECT_THAT(shell_.Opened(), ElementsAre(PathOf(u"b.pptx")));
}

TEST_F(HitsPaneTest, OpensTheFileOfAHitByEnter)
{
    AddFiles();
    ClickOn({0});
    QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, RowPoint(1));

    QTest::keyClick(&List(), Qt::Key_Return);

    EXPECT_THAT(shell_.Opened(), ElementsAre(PathOf(u"a.pptx")));
    EXPECT_THAT(messages_.Messages(), IsEmpty());
}

TEST_F(HitsPaneTest, OpensNothingOnEmptySpaceOrWithoutACurrentHit)
{
    AddFiles();
    ClickOn({1});

    DoubleClickAt({5, List().viewport()->height() - 5});
    QTest::keyClick(&List(), Qt::Key_Return);

    EXPECT_THAT(shell_.Opened(), IsEmpty());
}

TEST_F(HitsPaneTest, SaysWhyAFileDoesNotOpen)
{
    AddFiles();
    ClickOn({1});
    shell_.OpenerAnswers(ShellResult::NoAssociation);

    DoubleClickAt(RowPoint(0));

    EXPECT_THAT(messages_.Messages(),
                ElementsAre(Message{u"No association for file extension", MessageIcon::Exclamation}));
}

TEST_F(HitsPaneTest, CopiesAHitAsALine)
{
    AddFiles();
    ClickOn({0});
    QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, RowPoint(1));

    QTest::keyClick(&List(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text().toStdString(), "Notes of slide 1, paragraph 1: [CAT]");

    QTest::keyClick(&List(), Qt::Key_Up);
    List().findChild<QAction*>("mnuCopyHit")->trigger();
    EXPECT_THAT(QGuiApplication::clipboard()->text().toStdString(), testing::EndsWith(": a [cat] here"));

    List().findChild<QAction*>("mnuOpenHit")->trigger();
    EXPECT_THAT(shell_.Opened(), ElementsAre(PathOf(u"a.pptx")));
}

TEST_F(HitsPaneTest, TellsWholeLinesToThoseWhoHearThem)
{
    AddFiles();
    ClickOn({1});

    EXPECT_EQ(List().accessibleName(), "Hits");
    EXPECT_EQ(List().model()->index(0, 0).data(Qt::AccessibleTextRole).toString().toStdString(),
              "Slide 3 “Plan”, shape “Text 1”, paragraph 2: b [cat]");
}

TEST_F(HitsPaneTest, IsOnTheWayOfTheTabKey)
{
    AddFiles();
    EndRun();
    The("cmdCommand(1)").setFocus();

    QTest::keyClick(&The("cmdCommand(1)"), Qt::Key_Tab);
    EXPECT_TRUE(List().hasFocus());

    QTest::keyClick(&List(), Qt::Key_Tab);
    EXPECT_TRUE(The("cmdCopyLog").hasFocus());
}

TEST_F(HitsPaneTest, IsAsideWhileTheProgressIsInFront)
{
    BeginRun();
    AddFiles();
    EXPECT_FALSE(IsVisible("panelHits"));

    ShowTab(1);
    EXPECT_TRUE(IsVisible("panelHits"));
    EXPECT_EQ(List().accessibleDescription(), "Select a file, a pair or a location to read its hits here.");
}

TEST_F(HitsPaneTest, ShowsWhatIsCurrentInTheTreeInFront)
{
    AddFiles();
    AddWithHits(NothingCounted(u"/decks/c.pptx"), {});
    ClickOn({0});

    ShowTab(2);
    EXPECT_EQ(Text("lblHits"), "Hits");

    ShowTab(1);
    EXPECT_EQ(Text("lblHits"), "Hits in a.pptx: 3");
}

TEST_F(HitsPaneTest, SpeaksTheLanguageInForce)
{
    CurrentLanguageFile = u"German.lng";
    AddFiles();

    ClickOn({0, 1});

    EXPECT_THAT(Rows(), ElementsAre("Folie 3 „Plan“, Form „Text 1“, Absatz 2: one [hen]"));
    EXPECT_EQ(Text("lblHits"), "Treffer von „hen“ in a.pptx: 1");
    EXPECT_EQ(List().findChild<QAction*>("mnuOpenHit")->text(), "Datei öffnen");
}

TEST_F(HitsPaneTest, KeepsItsShareOfTheWindow)
{
    Window().resize(900, 800);
    AddFiles();
    auto* splitter = &The<QSplitter>("splHits");
    splitter->setSizes({200, 400});
    const double share = static_cast<double>(splitter->sizes()[1]) / (splitter->sizes()[0] + splitter->sizes()[1]);
    EndRun();
    Click("cmdOK");

    splitter = &The<QSplitter>("splHits");

    EXPECT_NEAR(static_cast<double>(splitter->sizes()[1]) / (splitter->sizes()[0] + splitter->sizes()[1]), share, 0.03);
}

}  // namespace
}  // namespace tessarine
