#include <QAbstractItemModelTester>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>

#include "app/GlobalState.h"
#include "ui/run/GreyText.h"
#include "ui/run/ProcessingWindowTest.h"
#include "ui/run/SampleHits.h"

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

class ResultFilterTest : public ProcessingWindowTest
{
protected:
    ResultTree& Changed() { return *Window().trvChangedFiles; }

    void AddFiles()
    {
        const std::map<Location, std::int32_t> three{{Location::Slides, 3}, {Location::Notes, 0}};
        const std::map<Location, std::int32_t> none{{Location::Slides, 0}, {Location::Notes, 0}};
        AddWithHits(Counted(u"/decks/Plan.pptx", {{u"cat", three}, {u"hen", none}}));
        AddWithHits(Counted(u"/decks/Budget.pptx", {{u"cat", none}, {u"hen", three}}));
        AddWithHits(NothingCounted(u"/decks/old plan.pptx"));
        AddWithHits(NotProcessed(u"/decks/Broken.pptx", u"Read Only File."));
    }

    void Type(const char* box, const QString& text)
    {
        auto& edit = The<QLineEdit>(box);
        edit.setFocus();
        QTest::keyClick(&edit, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(&edit, Qt::Key_Delete);
        QTest::keyClicks(&edit, text);
    }

    std::vector<std::string> Files(const ResultTree& tree)
    {
        std::vector<std::string> files;
        for (int row = 0; row < tree.model()->rowCount(); ++row)
            files.push_back(tree.model()->index(row, 0).data().toString().toStdString());
        return files;
    }

    QColor ColourOf(std::initializer_list<int> rows)
    {
        QModelIndex index;
        for (const int row : rows)
            index = Changed().model()->index(row, 0, index);
        return index.data(Qt::ForegroundRole).value<QColor>();
    }

    /// What stands beside the caption of a tree's tab, and above the tree.
    std::string Count(int tree)
    {
        QTabBar* const bar = The<QTabWidget>("SSTab1").tabBar();
        return static_cast<QLabel*>(bar->tabButton(tree + 1, QTabBar::RightSide))->text().toStdString();
    }
    std::string Shown(int tree)
    {
        const std::string box = "txtFilter(" + std::to_string(tree) + ")";
        return The(box.c_str()).parentWidget()->findChild<QLabel*>()->text().toStdString();
    }

    void CheckOnlyWithHits() { QTest::mouseClick(&The("chkOnlyWithHits"), Qt::LeftButton, {}, {8, 8}); }
};

TEST_F(ResultFilterTest, ShowsFilesWhoseNameHoldsTheText)
{
    AddFiles();

    Type("txtFilter(0)", "PLAN");

    EXPECT_THAT(Files(Changed()), ElementsAre("/decks/Plan.pptx"));
    EXPECT_THAT(Files(*Window().trvNotChangedFiles), ElementsAre("/decks/old plan.pptx"));
    EXPECT_THAT(Files(*Window().trvErrors), IsEmpty());

    Type("txtFilter(0)", "");
    EXPECT_THAT(Files(Changed()), ElementsAre("/decks/Plan.pptx", "/decks/Budget.pptx"));
}

TEST_F(ResultFilterTest, LooksAtThePathOnlyForATextWithASlash)
{
    AddFiles();

    Type("txtFilter(0)", "decks");
    EXPECT_THAT(Files(Changed()), IsEmpty());

    Type("txtFilter(0)", "decks/B");
    EXPECT_THAT(Files(Changed()), ElementsAre("/decks/Budget.pptx"));
}

TEST_F(ResultFilterTest, IsTheSameAboveEachTree)
{
    AddFiles();
    ShowTab(2);

    Type("txtFilter(1)", "bud");

    EXPECT_THAT(Files(*Window().trvNotChangedFiles), IsEmpty());
    ShowTab(1);
    EXPECT_EQ(Text("txtFilter(0)"), "bud");
    EXPECT_THAT(Files(Changed()), ElementsAre("/decks/Budget.pptx"));
}

TEST_F(ResultFilterTest, HoldsForFilesThatComeLater)
{
    Window();
    Type("txtFilter(0)", "bud");

    AddFiles();

    EXPECT_THAT(RowsOf(Changed()), ElementsAre("/decks/Budget.pptx", "  cat", "    Slides (0)", "    Notes(0)", "  hen",
                                               "    Slides (3)", "    Notes(0)"));
}

TEST_F(ResultFilterTest, HidesPairsWithoutHitsOnDemand)
{
    AddFiles();

    CheckOnlyWithHits();
    EXPECT_THAT(RowsOf(Changed()), ElementsAre("/decks/Plan.pptx", "  cat", "    Slides (3)", "    Notes(0)",
                                               "/decks/Budget.pptx", "  hen", "    Slides (3)", "    Notes(0)"));
    EXPECT_THAT(RowsOf(*Window().trvErrors), ElementsAre("/decks/Broken.pptx", "  Read Only File."));

    CheckOnlyWithHits();
    EXPECT_EQ(RowsOf(Changed()).size(), 14u);
}

TEST_F(ResultFilterTest, CountsAFooterAsAHitOfItsPair)
{
    Hit footer = At(HitOnSlide(2, {}, u"hen", {}), {.location = Location::Footer, .slide = 2});
    footer.isCounted = false;
    AddWithHits(Counted(u"/a.pptx", {{u"cat", {{Location::Slides, 1}}}, {u"hen", {{Location::Footer, 0}}}}),
                {HitOnSlide(1, {}, u"cat", {}), footer});

    CheckOnlyWithHits();

    EXPECT_THAT(RowsOf(Changed()), ElementsAre("/a.pptx", "  cat", "    Slides (1)", "  hen", "    Footer (0)"));
}

TEST_F(ResultFilterTest, MakesPairsAndLocationsWithoutHitsGrey)
{
    AddFiles();
    const QColor grey = GreyText(QGuiApplication::palette());

    EXPECT_FALSE(ColourOf({0}).isValid());
    EXPECT_FALSE(ColourOf({0, 0}).isValid());
    EXPECT_FALSE(ColourOf({0, 0, 0}).isValid());
    EXPECT_EQ(ColourOf({0, 0, 1}), grey);
    EXPECT_EQ(ColourOf({0, 1}), grey);
    EXPECT_EQ(ColourOf({0, 1, 0}), grey);
    EXPECT_EQ(ColourOf({1, 0}), grey);
    EXPECT_FALSE(ColourOf({1, 1}).isValid());
}

TEST_F(ResultFilterTest, KeepsCurrentAndOpenNodesThatStay)
{
    AddFiles();
    const QModelIndex budget = Changed().model()->index(1, 0);
    Changed().expand(budget);
    Changed().setCurrentIndex(Changed().model()->index(1, 0, budget));

    CheckOnlyWithHits();
    Type("txtFilter(0)", "bud");

    ASSERT_TRUE(Changed().CurrentNode());
    EXPECT_EQ(Changed().CurrentNode()->Text, u"hen");
    EXPECT_EQ(Changed().currentIndex().row(), 0);
    EXPECT_TRUE(Changed().isExpanded(Changed().model()->index(0, 0)));
    EXPECT_EQ(Text("lblHits"), "Hits of “hen” in Budget.pptx: 0");
}

TEST_F(ResultFilterTest, ForgetsACurrentNodeThatGoesOutOfSight)
{
    AddFiles();
    Changed().setCurrentIndex(Changed().model()->index(1, 0));
    EXPECT_EQ(Text("lblHits"), "Hits in Budget.pptx: 0");

    Type("txtFilter(0)", "plan");

    EXPECT_FALSE(Changed().CurrentNode());
    EXPECT_EQ(Text("lblHits"), "Hits");
}

TEST_F(ResultFilterTest, IsAConsistentModelWhateverIsShown)
{
    Window();
    const QAbstractItemModelTester tester(Changed().model(), QAbstractItemModelTester::FailureReportingMode::Fatal);

    AddFiles();
    Changed().ExpandAll();
    CheckOnlyWithHits();
    Type("txtFilter(0)", "plan");
    // More pairs for a file in sight and for one out of sight.
    AddWithHits(Counted(u"/decks/Plan.pptx", {{u"dog", {{Location::Slides, 2}}}, {u"fox", {{Location::Slides, 0}}}}));
    AddWithHits(Counted(u"/decks/Budget.pptx", {{u"dog", {{Location::Slides, 2}}}}));
    EXPECT_THAT(RowsOf(Changed()),
                ElementsAre("/decks/Plan.pptx", "  cat", "    Slides (3)", "    Notes(0)", "  dog", "    Slides (2)"));
    CheckOnlyWithHits();
    Type("txtFilter(0)", "");

    EXPECT_EQ(RowsOf(Changed()).size(), 20u);
}

TEST_F(ResultFilterTest, IsReachedByTheKeyOfASearch)
{
    AddFiles();
    The("cmdOK").setFocus();

    QTest::keySequence(&Window(), QKeySequence::Find);
    EXPECT_TRUE(The("txtFilter(0)").hasFocus());

    QTest::keyClick(&The("txtFilter(0)"), Qt::Key_Tab);
    EXPECT_TRUE(The("chkOnlyWithHits").hasFocus());
    QTest::keyClick(&The("chkOnlyWithHits"), Qt::Key_Tab);
    EXPECT_TRUE(Changed().hasFocus());
}

TEST_F(ResultFilterTest, SpeaksTheLanguageInForce)
{
    CurrentLanguageFile = u"German.lng";

    EXPECT_EQ(The<QLineEdit>("txtFilter(1)").placeholderText(), "Dateien nach Namen filtern");
    EXPECT_EQ(Text("chkOnlyWithHits"), "Nur Paare mit Treffern");
}

class SmallestWindowTest : public ResultFilterTest, public testing::WithParamInterface<const char16_t*>
{
};

TEST_P(SmallestWindowTest, CutsOffNoCaption)
{
    CurrentLanguageFile = GetParam();
    AddFiles();

    Window().resize(Window().minimumSize());

    for (const char* name : {"chkOnlyWithHits", "cmdCommand(0)", "cmdCommand(1)", "cmdCopyLog", "cmdOK"})
        EXPECT_GE(The(name).width(), The(name).sizeHint().width()) << name;
    const QFontMetrics letters = Window().fontMetrics();
    EXPECT_GE(The("txtFilter(0)").width(), letters.horizontalAdvance("Quarterly"));
    for (const char* name : {"trvChangedFiles", "lstHits"})
        EXPECT_GE(The(name).height(), 3 * letters.height()) << name;
}

INSTANTIATE_TEST_SUITE_P(Languages, SmallestWindowTest,
                         testing::Values(u"English.lng", u"German.lng", u"French.lng", u"Spanish.lng", u"Polish.lng",
                                         u"Russian.lng", u"Chinese(Big5).lng"),
                         [](const auto& language) {
                             std::string name = ToUtf8(language.param);
                             return name.substr(0, name.find_first_of("(."));
                         });

// What the results add up to.

TEST_F(ResultFilterTest, TellsTotalsBesideTheTabsAboveTheTreesAndAtTheFoot)
{
    AddFiles();
    AddWithHits(Counted(u"/decks/c.pptx", {{u"cat", {{Location::Slides, 4}}}, {u"hen", {{Location::Slides, 0}}}}));

    EXPECT_TRUE(QTest::qWaitFor([this] { return Count(0) == "(3)"; }));
    EXPECT_EQ(Count(1), "(1)");
    EXPECT_EQ(Count(2), "(1)");
    EXPECT_EQ(Shown(0), "Files: 3 · Pairs with hits: 2 · Hits: 10");
    EXPECT_EQ(Shown(1), "Files: 1");
    EXPECT_EQ(Text("lblTotals"), "Files: 5 · Pairs with hits: 2 · Hits: 10");
}

TEST_F(ResultFilterTest, TellsTheTotalsOfTheFilesShown)
{
    AddFiles();

    Type("txtFilter(0)", "plan");

    EXPECT_EQ(Shown(0), "Files: 1 of 2 · Pairs with hits: 1 · Hits: 3");
    EXPECT_EQ(Shown(1), "Files: 1 of 1");
    EXPECT_EQ(Shown(2), "Files: 0 of 1");
    EXPECT_EQ(Count(0), "(2)");
    EXPECT_EQ(Text("lblTotals"), "Files: 4 · Pairs with hits: 2 · Hits: 6");
}

TEST_F(ResultFilterTest, CallsWhatARunWithoutACountFoundLocations)
{
    Window().Hits().BeginRun({false, false});

    AddWithHits(Counted(u"/a.pptx", {{u"cat", {{Location::Slides, 1}}}}), {}, false);

    EXPECT_EQ(Text("lblTotals"), "Files: 1 · Pairs with hits: 1 · Locations with hits: 1");
}

TEST_F(ResultFilterTest, TellsNoTotalsBeforeTheFirstFile)
{
    EXPECT_EQ(Text("lblTotals"), "");
    EXPECT_EQ(Count(0), "");
}

TEST_F(ResultFilterTest, LeavesTheCaptionsOfTheTabsAsTheyAre)
{
    AddFiles();

    EXPECT_EQ(The<QTabWidget>("SSTab1").tabText(1), "&2 Files changes");
    ShowTab(2);
    EXPECT_TRUE(IsVisible("trvNotChangedFiles"));
}

/// As many results as a large archive gives.
class LongResultFilterTest : public ResultFilterTest
{
protected:
    static constexpr int files = 20'000;
    static constexpr int pairs = 50;

    void AddManyFiles()
    {
        std::vector<PairResult> results;
        for (int pair = 0; pair < pairs; ++pair)
            results.push_back({u"pair " + FromUtf8(std::to_string(pair)), {{Location::Slides, pair % 10 == 0}}});
        const auto status = Counted(u"", results);
        for (int file = 0; file < files; ++file) {
            status->FileName = u"/decks/" + FromUtf8(std::to_string(file)) + u".pptx";
            AddWithHits(status);
        }
    }
};

TEST_F(LongResultFilterTest, LooksAtItsRowsOnceHoweverFastOneTypes)
{
    AddManyFiles();
    Changed().ShowAdditions();
    ASSERT_TRUE(QTest::qWaitFor([this] { return Changed().model()->rowCount() == files; }));
    QSignalSpy layouts(Changed().model(), &QAbstractItemModel::layoutChanged);
    QSignalSpy insertions(Changed().model(), &QAbstractItemModel::rowsInserted);
    QSignalSpy removals(Changed().model(), &QAbstractItemModel::rowsRemoved);

    Type("txtFilter(0)", "1999");
    EXPECT_EQ(layouts.count(), 0);
    EXPECT_TRUE(QTest::qWaitFor([this] { return Changed().model()->rowCount() == 12; }));

    EXPECT_EQ(layouts.count(), 1);
    EXPECT_EQ(insertions.count() + removals.count(), 0);
    CheckOnlyWithHits();
    EXPECT_EQ(layouts.count(), 2);
    EXPECT_EQ(Changed().model()->rowCount(Changed().model()->index(11, 0)), pairs / 10);
    EXPECT_EQ(Shown(0), "Files: 12 of 20000 · Pairs with hits: 5 · Hits: 60");
}

}  // namespace
}  // namespace tessarine
