#include "ui/main/MainWindowTest.h"

#include <algorithm>
#include <map>

#include <QComboBox>
#include <QHeaderView>
#include <QHelpEvent>
#include <QImage>
#include <QLineEdit>
#include <QToolTip>

#include "ui/main/CellText.h"

// How the grid of pairs feels: what a click selects and opens, widths and tips, long texts.

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::HasSubstr;

class GridComfortTest : public MainWindowTest
{
protected:
    QPoint Middle(int row, int column) { return Grid().visualRect(Grid().Items().index(row - 1, column)).center(); }

    int Width(int column) { return Grid().columnWidth(column); }

    /// Of all columns that are seen.
    int WidthOfAll()
    {
        int width = 0;
        for (int column = 0; column < ItemColumn::Count; ++column)
            width += Width(column);
        return width;
    }

    /// The window, by so many pixels.
    void Widen(int by)
    {
        Window().resize(Window().width() + by, Window().height());
        QCoreApplication::processEvents();
    }

    std::string SelectedInEditor() { return qobject_cast<QLineEdit*>(Editor())->selectedText().toStdString(); }

    std::string TipShownAt(int row, int column)
    {
        QToolTip::hideText();
        const QPoint place = Middle(row, column);
        QHelpEvent ask(QEvent::ToolTip, place, Grid().viewport()->mapToGlobal(place));
        QApplication::sendEvent(Grid().viewport(), &ask);
        return QToolTip::isVisible() ? QToolTip::text().toStdString() : std::string();
    }
};

/// The colours that are in a picture, with how many points each has.
std::map<QRgb, int> Colours(const QImage& picture)
{
    std::map<QRgb, int> colours;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            ++colours[picture.pixel(x, y)];
    return colours;
}

TEST_F(GridComfortTest, TheHintIsWholeInALowGridToo)
{
    EditPairs({});
    const auto ink = [this](int height) {
        Grid().setFixedHeight(height);
        QCoreApplication::processEvents();
        const auto colours = Colours(Grid().viewport()->grab().toImage());
        const auto ground = std::ranges::max_element(colours, {}, [](const auto& colour) { return colour.second; });
        int points = 0;
        for (const auto& [colour, count] : colours)
            points += colour == ground->first ? 0 : count;
        return points;
    };

    const int whole = ink(300);
    ASSERT_GT(whole, 0);
    EXPECT_EQ(ink(Grid().minimumSizeHint().height()), whole);
}

TEST_F(GridComfortTest, TheSignOfAPairKeepsItsColoursInASelectedRow)
{
    EditPairs({{u"a", u"aa"}, {u"b", u"c"}});
    const auto orange = [this] {
        const QRect cell = Grid().visualRect(Grid().Items().index(0, ItemColumn::ReplaceWith));
        int most = 0;
        for (const auto& [colour, count] : Colours(Grid().viewport()->grab(cell).toImage()))
            most = std::max(most, qRed(colour) - qBlue(colour));
        return most;
    };
    ClickCell(2, ItemColumn::Number);
    const int plain = orange();
    ASSERT_GT(plain, 100);

    ClickCell(1, ItemColumn::Number);

    EXPECT_EQ(orange(), plain);
}

TEST_F(GridComfortTest, APlainClickAfterAllWereSelectedSelectsItsRowAlone)
{
    EditPairs({{u"a", u""}, {u"b", u""}, {u"c", u""}});
    for (const int column : {ItemColumn::Number, ItemColumn::FindWhat, ItemColumn::Options}) {
        Grid().setFocus();
        QTest::keyClick(&Grid(), Qt::Key_A, Qt::ControlModifier);
        ASSERT_THAT(Grid().SelectedRows(), ElementsAre(1, 2, 3));

        ClickCell(2, column);

        EXPECT_THAT(Grid().SelectedRows(), ElementsAre(2)) << column;
        ClickCell(3, ItemColumn::Number);
    }
}

TEST_F(GridComfortTest, ARightClickKeepsTheSelectionThatItIsIn)
{
    EditPairs({{u"a", u""}, {u"b", u""}, {u"c", u""}});
    ClickCell(1, ItemColumn::Number);
    ClickCell(2, ItemColumn::Number, Qt::ShiftModifier);

    QTest::mouseClick(Grid().viewport(), Qt::RightButton, {}, Middle(2, ItemColumn::Number));

    EXPECT_THAT(Grid().SelectedRows(), ElementsAre(1, 2));
}

TEST_F(GridComfortTest, AnEditorOpensWithItsWholeTextSelected)
{
    EditPairs({{u"alpha", u"beta"}, {u"gamma", u"delta"}});

    ClickCell(1, ItemColumn::FindWhat);
    EXPECT_EQ(SelectedInEditor(), "alpha");
    QTest::keyClick(Editor(), Qt::Key_Tab);
    EXPECT_EQ(SelectedInEditor(), "beta");
    QTest::keyClick(Editor(), Qt::Key_Tab);
    EXPECT_EQ(SelectedInEditor(), "gamma");
    QTest::keyClick(Editor(), Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(SelectedInEditor(), "beta");
    QTest::keyClick(Editor(), Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(SelectedInEditor(), "alpha");
}

TEST_F(GridComfortTest, APointerThatMovesOverTheRowLeavesTheEditorAlone)
{
    EditPairs({{u"alpha", u"beta"}, {u"gamma", u""}});
    ClickCell(1, ItemColumn::FindWhat);
    QTest::keyClick(Editor(), Qt::Key_Home);
    QTest::keyClick(Editor(), Qt::Key_Right, Qt::ShiftModifier);

    QTest::mouseMove(Grid().viewport(), Middle(2, ItemColumn::Number));
    QTest::mouseMove(Grid().viewport(), Middle(1, ItemColumn::Number));
    QTest::mouseMove(Grid().viewport(), Middle(1, ItemColumn::Options));

    EXPECT_EQ(SelectedInEditor(), "a");
    EXPECT_FALSE(Window().IsModifed());
}

TEST_F(GridComfortTest, DrawingThePointerOverRowsSelectsThemAndOpensNoEditor)
{
    EditPairs({{u"a", u"", {&OptionSetting::InNotes}}, {u"b", u""}, {u"c", u""}});
    QWidget& cells = *Grid().viewport();

    QTest::mousePress(&cells, Qt::LeftButton, {}, Middle(1, ItemColumn::Number));
    for (const int row : {2, 3}) {
        QMouseEvent move(QEvent::MouseMove, Middle(row, ItemColumn::FindWhat),
                         cells.mapToGlobal(Middle(row, ItemColumn::FindWhat)), Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(&cells, &move);
    }
    QTest::mouseRelease(&cells, Qt::LeftButton, {}, Middle(3, ItemColumn::FindWhat));

    EXPECT_THAT(Grid().SelectedRows(), ElementsAre(1, 2, 3));
    EXPECT_EQ(Editor(), nullptr);
    EXPECT_FALSE(Window().IsModifed());
    EXPECT_TRUE(Items().Item(1)->OptionSetting->InNotes);
    EXPECT_FALSE(Items().Item(2)->OptionSetting->InNotes);
}

TEST_F(GridComfortTest, ShiftTabOutsideAnEditorGoesWhereTabGoes)
{
    EditPairs({{u"a", u"b"}});
    ClickCell(1, ItemColumn::Number);

    QTest::keyClick(&Grid(), Qt::Key_Backtab, Qt::ShiftModifier);

    EXPECT_TRUE(The("cmdAdd").hasFocus());
}

TEST_F(GridComfortTest, TheTwoTextsShareTheWidthThatTheOtherColumnsLeave)
{
    EditPairs({{u"a", u"b"}});
    Widen(1000);  // room for all columns in any font
    const int find = Width(ItemColumn::FindWhat);
    const int with = Width(ItemColumn::ReplaceWith);
    const int others = WidthOfAll() - find - with;
    EXPECT_EQ(WidthOfAll(), Grid().viewport()->width());

    Widen(300);

    EXPECT_EQ(WidthOfAll(), Grid().viewport()->width());
    // Each grows by its part: both equally, unless a wide font made one of the headings need more at the start.
    EXPECT_NEAR(Width(ItemColumn::FindWhat), find + 300.0 * find / (find + with), 1);
    EXPECT_NEAR(Width(ItemColumn::ReplaceWith), with + 300.0 * with / (find + with), 1);
    EXPECT_EQ(WidthOfAll() - Width(ItemColumn::FindWhat) - Width(ItemColumn::ReplaceWith), others);
}

TEST_F(GridComfortTest, AColumnThatTheUserWidensTakesItFromTheTexts)
{
    EditPairs({{u"a", u"b"}});
    QHeaderView& heads = *Grid().horizontalHeader();

    heads.resizeSection(ItemColumn::Options, Width(ItemColumn::Options) + 60);
    EXPECT_EQ(WidthOfAll(), Grid().viewport()->width());
    heads.resizeSection(ItemColumn::FindWhat, Width(ItemColumn::FindWhat) + 40);
    EXPECT_EQ(WidthOfAll(), Grid().viewport()->width());

    const double part = double(Width(ItemColumn::FindWhat)) / Width(ItemColumn::ReplaceWith);
    Window().resize(Window().width() + 500, Window().height());
    QCoreApplication::processEvents();
    EXPECT_NEAR(double(Width(ItemColumn::FindWhat)) / Width(ItemColumn::ReplaceWith), part, 0.05);
}

TEST_F(GridComfortTest, TheTextsNeverGetNarrowerThanAtTheStart)
{
    EditPairs({{u"a", u"b"}});

    Grid().horizontalHeader()->resizeSection(ItemColumn::Locations, 2000);

    EXPECT_EQ(Width(ItemColumn::FindWhat), StartWidth(Grid(), ItemColumn::FindWhat, 1500));
    EXPECT_EQ(Width(ItemColumn::ReplaceWith), StartWidth(Grid(), ItemColumn::ReplaceWith, 1500));
}

TEST_F(GridComfortTest, NumbersOfFiveDigitsFitTheirColumn)
{
    EditPairs(std::vector<Pair>(12345));

    const QModelIndex last = Grid().Items().index(12344, ItemColumn::Number);
    EXPECT_GE(Width(ItemColumn::Number), Grid().sizeHintForIndex(last).width());
    EXPECT_GT(Grid().sizeHintForIndex(last).width(), Grid().fontMetrics().horizontalAdvance("12345"));
}

class GridHeadTest : public GridComfortTest, public testing::WithParamInterface<const char16_t*>
{
};

TEST_P(GridHeadTest, NoHeadIsCut)
{
    EditPairs({{u"a", u"b"}});
    CurrentLanguageFile = GetParam();

    Window().LoadLng();

    for (int column = 0; column < ItemColumn::Count; ++column) {
        if (Grid().isColumnHidden(column))
            continue;
        EXPECT_GE(Width(column), Grid().horizontalHeader()->sectionSizeHint(column)) << column;
    }
}

INSTANTIATE_TEST_SUITE_P(AllLanguages, GridHeadTest,
                         testing::Values(u"English.lng", u"German.lng", u"French.lng", u"Spanish.lng", u"Polish.lng",
                                         u"Russian.lng", u"Chinese(Big5).lng"));

TEST_F(GridComfortTest, ATextThatIsSeenWholeHasNoTip)
{
    EditPairs({{u"short", String(200, u'x')}});

    EXPECT_EQ(TipShownAt(1, ItemColumn::FindWhat), "");
    EXPECT_THAT(TipShownAt(1, ItemColumn::ReplaceWith), HasSubstr("xxx"));
}

TEST_F(GridComfortTest, ATextWithLineBreaksHasATip)
{
    EditPairs({{u"a\rb", u""}});

    EXPECT_THAT(TipShownAt(1, ItemColumn::FindWhat), HasSubstr("a\nb"));
}

TEST_F(GridComfortTest, ACellShowsItsTextOnOneLine)
{
    EXPECT_EQ(OnOneLine("a\r\nb\vc\n").toStdString(), "a↵b↵c↵");
    EXPECT_EQ(OnOneLine(QString(500, 'x')), QString(500, 'x'));
    EXPECT_EQ(OnOneLine(QString(100000, 'x')), QString(500, 'x') + QChar(0x2026));
    EXPECT_EQ(OnOneLine(QString(499, 'x') + QString::fromUtf8("😀")), QString(499, 'x') + QChar(0x2026));
}

TEST_F(GridComfortTest, ATipShowsItsTextAsItStandsAndNoMoreThanAScreenHolds)
{
    EXPECT_EQ(TipOfText({}), QString());
    EXPECT_THAT(TipOfText("<b>1 & 2</b>").toStdString(), HasSubstr("&lt;b&gt;1 &amp; 2&lt;/b&gt;"));
    EXPECT_LT(TipOfText(QString(100000, 'x')).size(), 1200);
    EXPECT_THAT(TipOfText(QString(100000, 'x')).toStdString(), HasSubstr("…"));
    EXPECT_EQ(TipOfText(QString("line\n").repeated(100)).count('\n'), 14);
    EXPECT_THAT(TipOfText(QString("line\n").repeated(100)).toStdString(), HasSubstr("…"));
    EXPECT_TRUE(TipOfText(QString(100, 'x')).contains(QChar(0x200b))) << "a word without an end would not be wrapped";
    EXPECT_FALSE(TipOfText("a b").contains(QChar(0x200b)));
}

TEST_F(GridComfortTest, ALongTextWithLineBreaksSurvivesAClickThroughItsCell)
{
    const String text = String(40000, u'x') + u"\r\n\vend\t";
    EditPairs({{text, text}, {u"b", u""}});

    ClickCell(1, ItemColumn::FindWhat);
    ASSERT_NE(Editor(), nullptr);
    ClickCell(1, ItemColumn::ReplaceWith);
    EndEdit();
    ClickCell(2, ItemColumn::Number);

    EXPECT_EQ(Items().Item(1)->FindWhat, text);
    EXPECT_EQ(Items().Item(1)->ReplaceWith, text);
    EXPECT_FALSE(Window().IsModifed());
}

TEST_F(GridComfortTest, ALetterTypedIntoALongTextKeepsTheRest)
{
    const String text = String(40000, u'x') + u"\rend";
    EditPairs({{text, u""}});
    ClickCell(1, ItemColumn::FindWhat);

    QTest::keyClick(Editor(), Qt::Key_End);
    QTest::keyClicks(Editor(), "s");
    EndEdit();

    EXPECT_EQ(Items().Item(1)->FindWhat, text + u"s");
}

TEST_F(GridComfortTest, TabbingThroughTheStepOfTheRevisionIsNoEdit)
{
    Options().RevisionDocumentPropertyName = u"Revision";
    Options().RevisionDocumentPropertyIncrimentedBy = u"0.1";
    EditPairs({{u"a", u"b"}});
    ShowTab(2);
    The("txtRevisonProperty").setFocus();

    for (int step = 0; step < 3; ++step)
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);

    EXPECT_FALSE(The("cboversion").hasFocus());
    EXPECT_FALSE(Window().IsModifed());
    EXPECT_EQ(Text("cboversion"), "0.1");
}

}  // namespace
}  // namespace tessarine
