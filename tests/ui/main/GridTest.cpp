#include "ui/main/MainWindowTest.h"

#include <QCheckBox>
#include <QGuiApplication>
#include <QLineEdit>

// The grid of pairs: adding, deleting, swapping, editing, keys, the row under the pointer.

namespace tessarine
{
namespace
{

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class GridTest : public MainWindowTest
{
protected:
    bool IsUnderlined(int row)
    {
        return Grid().Items().index(row - 1, 0).data(Qt::FontRole).value<QFont>().underline();
    }

    void MovePointerTo(int row, int column = ItemColumn::Number)
    {
        QTest::mouseMove(Grid().viewport(), Grid().visualRect(Grid().Items().index(row - 1, column)).center());
    }
};

/// The colours of a dark desktop while it lives.
class DarkDesktop
{
public:
    DarkDesktop()
    {
        QPalette dark = before_;
        dark.setColor(QPalette::Base, QColor(30, 30, 30));
        dark.setColor(QPalette::AlternateBase, QColor(45, 45, 48));
        QGuiApplication::setPalette(dark);
    }
    ~DarkDesktop() { QGuiApplication::setPalette(before_); }
    DarkDesktop(const DarkDesktop&) = delete;
    DarkDesktop& operator=(const DarkDesktop&) = delete;

private:
    QPalette before_ = QGuiApplication::palette();
};

TEST_F(GridTest, AddToAnEmptyListMakesARowWithSlidesAlone)
{
    EditPairs({});
    The<QCheckBox>("chkMatchCase").setChecked(true);

    Click("cmdAdd");

    ASSERT_EQ(Items().Count(), 1);
    EXPECT_EQ(Cell(1, ItemColumn::Locations), "Slides");
    EXPECT_EQ(Cell(1, ItemColumn::Options), "");
    EXPECT_THAT(CheckedLocations(), ElementsAre(0));
    EXPECT_TRUE(Window().IsModifed());
}

TEST_F(GridTest, AddGivesTheNewRowWhatTheScreenShows)
{
    EditPairs({{u"Fabrikam", u"Contoso", {&OptionSetting::InSlides, &OptionSetting::InNotes}}});
    ClickBox("chkMatchCase");

    Click("cmdAdd");

    ASSERT_EQ(Items().Count(), 2);
    EXPECT_TRUE(Items().Item(2)->OptionSetting->InNotes);
    EXPECT_EQ(Cell(2, ItemColumn::Locations), "Slides,Notes");
    EXPECT_EQ(Cell(2, ItemColumn::Options), "Match Case");
    EXPECT_EQ(Cell(2, ItemColumn::Number), "2");
}

TEST_F(GridTest, AddToARowWithoutLocationsGivesTheNewRowSlides)
{
    EditPairs({{u"a", u"b", {}}});

    Click("cmdAdd");

    EXPECT_EQ(Cell(1, ItemColumn::Locations), "");
    EXPECT_EQ(Cell(2, ItemColumn::Locations), "Slides");
    EXPECT_TRUE(Items().Item(2)->OptionSetting->InSlides);
}

TEST_F(GridTest, AddOpensTheEditorOfTheNewRowsFindText)
{
    EditPairs({{u"a", u"b"}});

    Click("cmdAdd");

    EXPECT_EQ(Grid().Row(), 2);
    EXPECT_EQ(Grid().Col(), ItemColumn::FindWhat);
    ASSERT_NE(Editor(), nullptr);
    QTest::keyClicks(Editor(), "new");
    EndEdit();
    EXPECT_THAT(Finds(), ElementsAre("a", "new"));
}

TEST_F(GridTest, AnOptionOfOneAddedRowLeavesTheOtherAlone)
{
    EditPairs({{u"a", u"b"}});
    Click("cmdAdd");

    ClickBox("chkMatchWholeWord");

    EXPECT_TRUE(Items().Item(2)->OptionSetting->MatchWholeWord);
    EXPECT_FALSE(Items().Item(1)->OptionSetting->MatchWholeWord);
}

TEST_F(GridTest, HeaderStandsTwiceInTheLocationsOfARow)
{
    EditPairs(
        {{u"a", u"b", {&OptionSetting::InHeader}},
         {u"c",
          u"d",
          {&OptionSetting::InSlides, &OptionSetting::InHeader, &OptionSetting::InFooter, &OptionSetting::InNotes}}});

    EXPECT_EQ(Cell(1, ItemColumn::Locations), "Header,Header");
    EXPECT_EQ(Cell(2, ItemColumn::Locations), "Slides,Header,Footer,Header,Notes");
}

TEST_F(GridTest, DeleteAsksFirstAndOnNoDoesNothing)
{
    EditPairs({{u"a", u"b"}});
    messages.Next(MessageAnswer::No);

    Click("cmdDelete");

    EXPECT_THAT(messages.Messages(),
                ElementsAre(Message{u"Are you sure you want to delete selected find and replace item?",
                                    MessageIcon::Question, MessageButtons::YesNo}));
    EXPECT_EQ(Items().Count(), 1);
    EXPECT_FALSE(Window().IsModifed());
}

TEST_F(GridTest, DeleteTakesAllSelectedRowsAndShowsTheFirstOneLeft)
{
    EditPairs({{u"a", u""}, {u"b", u""}, {u"c", u"", {&OptionSetting::InNotes}}, {u"d", u""}});
    ClickCell(1, ItemColumn::Number);
    ClickCell(2, ItemColumn::Number, Qt::ShiftModifier);
    ClickCell(4, ItemColumn::Number, Qt::ControlModifier);
    messages.Next(MessageAnswer::Yes);

    Click("cmdDelete");

    EXPECT_THAT(Finds(), ElementsAre("c"));
    EXPECT_EQ(Grid().Rows(), 2);
    EXPECT_EQ(Cell(1, ItemColumn::FindWhat), "c");
    EXPECT_EQ(Cell(1, ItemColumn::Number), "1");
    EXPECT_EQ(Grid().Row(), 1);
    EXPECT_THAT(CheckedLocations(), ElementsAre(7));
    EXPECT_TRUE(Window().IsModifed());
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(GridTest, DeletingAllRowsLeavesNothingToDelete)
{
    EditPairs({{u"a", u""}, {u"b", u""}});
    messages.Next(MessageAnswer::Yes);
    QTest::keyClick(&Grid(), Qt::Key_A, Qt::ControlModifier);

    Click("cmdDelete");

    EXPECT_EQ(Items().Count(), 0);
    EXPECT_FALSE(IsEnabled("cmdDelete"));
    EXPECT_TRUE(IsEnabled("cmdAdd"));
    QTest::keyClick(&Grid(), Qt::Key_Delete);  // nothing is asked any more
    EXPECT_EQ(messages.Messages().size(), 1U);
}

TEST_F(GridTest, TheDeleteKeyDeletesOutsideAnEditor)
{
    EditPairs({{u"a", u""}, {u"b", u""}});
    messages.Next(MessageAnswer::Yes);
    ClickCell(1, ItemColumn::Number);

    QTest::keyClick(&Grid(), Qt::Key_Delete);

    EXPECT_THAT(Finds(), ElementsAre("b"));
}

TEST_F(GridTest, ManyScatteredRowsAreDeletedToo)
{
    std::vector<Pair> pairs;
    for (char16_t number = 0; number < 400; ++number)
        pairs.push_back({String(1, static_cast<char16_t>(u'\u4e00' + number)), u""});
    EditPairs(pairs);
    QItemSelection even;
    for (int row = 1; row < 400; row += 2)
        even.select(Grid().Items().index(row, 0), Grid().Items().index(row, ItemColumn::Options));
    Grid().selectionModel()->select(even, QItemSelectionModel::ClearAndSelect);
    messages.Next(MessageAnswer::Yes);

    Click("cmdDelete");

    ASSERT_EQ(Items().Count(), 200);
    ASSERT_EQ(Grid().Rows(), 201);
    EXPECT_EQ(Items().Item(200)->FindWhat, String(1, static_cast<char16_t>(u'\u4e00' + 398)));
    EXPECT_EQ(Cell(200, ItemColumn::FindWhat), ToUtf8(Items().Item(200)->FindWhat));
}

TEST_F(GridTest, SwapExchangesTextsAndMovesToTheFirstRow)
{
    EditPairs({{u"a", u"1"}, {u"b", u""}, {u"c", u"3"}});
    ClickCell(2, ItemColumn::Number);
    ClickCell(3, ItemColumn::Number, Qt::ControlModifier);

    Click("cmdSwap");

    EXPECT_THAT(Finds(), ElementsAre("a", "", "3"));
    EXPECT_EQ(Items().Item(2)->ReplaceWith, u"b");
    EXPECT_EQ(Cell(3, ItemColumn::ReplaceWith), "c");
    EXPECT_EQ(Grid().Row(), 1);
    EXPECT_THAT(Grid().SelectedRows(), ElementsAre(1));
    EXPECT_TRUE(Window().IsModifed());
}

TEST_F(GridTest, TypedTextsReachThePairAndMarkTheJob)
{
    EditPairs({{u"a", u"b"}});

    TypeInCell(1, ItemColumn::FindWhat, QString::fromUtf8("naïve 😀 שלום"));
    TypeInCell(1, ItemColumn::ReplaceWith, "x");

    EXPECT_EQ(Items().Item(1)->FindWhat, FromUtf8("naïve 😀 שלום"));
    EXPECT_EQ(Items().Item(1)->ReplaceWith, u"x");
    EXPECT_TRUE(Window().IsModifed());
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(GridTest, AnEditThatChangesNothingDoesNotMarkTheJob)
{
    EditPairs({{u"a", u"b"}, {u"c", u"d"}});

    ClickCell(1, ItemColumn::FindWhat);
    ClickCell(2, ItemColumn::ReplaceWith);
    ClickCell(1, ItemColumn::Number);

    EXPECT_FALSE(Window().IsModifed());
}

TEST_F(GridTest, AnOpenEditGivesItsTextWhenItsRowIsLeft)
{
    EditPairs({{u"a", u"b"}, {u"c", u"d"}});
    ClickCell(1, ItemColumn::FindWhat);
    QTest::keyClick(Editor(), Qt::Key_End);
    QTest::keyClicks(Editor(), "z");

    ClickCell(2, ItemColumn::Number);

    EXPECT_THAT(Finds(), ElementsAre("az", "c"));
    EXPECT_EQ(Editor(), nullptr);
}

TEST_F(GridTest, ARowThatIsLeftKeepsEveryUnitOfItsTexts)
{
    const String withMark = u"\ufeffmark";
    const String swapped = u"\ufffeswapped";
    EditPairs({{withMark, swapped}, {u"b", u""}});

    ClickCell(1, ItemColumn::FindWhat);
    ClickCell(1, ItemColumn::ReplaceWith);
    ClickCell(2, ItemColumn::Number);

    EXPECT_EQ(Items().Item(1)->FindWhat, withMark);
    EXPECT_EQ(Items().Item(1)->ReplaceWith, swapped);
    EXPECT_FALSE(Window().IsModifed());
}

TEST_F(GridTest, ATextTypedAfterAMarkKeepsTheMark)
{
    EditPairs({{u"\ufeffmark", u""}});
    ClickCell(1, ItemColumn::FindWhat);

    QTest::keyClick(Editor(), Qt::Key_End);
    QTest::keyClicks(Editor(), "s");
    EndEdit();

    EXPECT_EQ(Items().Item(1)->FindWhat, u"\ufeffmarks");
}

TEST_F(GridTest, ATextTypedIntoARowTooManyReachesTheList)
{
    EditPairs(std::vector<Pair>(32767));
    Click("cmdAdd");  // fails half-way

    TypeInCell(32768, ItemColumn::FindWhat, "late");

    EXPECT_EQ(Items().Item(32768)->FindWhat, u"late");
}

TEST_F(GridTest, AnEditorOpensInTheTypedColumnsAlone)
{
    EditPairs({{u"a", u"b"}});

    for (const int column : {ItemColumn::FindWhat, ItemColumn::ReplaceWith}) {
        ClickCell(1, column);
        EXPECT_NE(Editor(), nullptr) << column;
    }
    for (const int column : {ItemColumn::Number, ItemColumn::Locations, ItemColumn::Options}) {
        ClickCell(1, column);
        EXPECT_EQ(Editor(), nullptr) << column;
    }
}

TEST_F(GridTest, TabInTheLastReplaceTextAddsARow)
{
    EditPairs({{u"a", u"b"}});
    ClickCell(1, ItemColumn::ReplaceWith);
    QTest::keyClick(Editor(), Qt::Key_End);
    QTest::keyClicks(Editor(), "q");

    QTest::keyClick(Editor(), Qt::Key_Tab);

    ASSERT_EQ(Items().Count(), 2);
    EXPECT_EQ(Items().Item(1)->ReplaceWith, u"bq");
    EXPECT_EQ(Grid().Row(), 2);
    EXPECT_EQ(Grid().Col(), ItemColumn::FindWhat);
    EXPECT_NE(Editor(), nullptr);
}

TEST_F(GridTest, TabGoesFromFindToReplaceToTheNextRow)
{
    EditPairs({{u"a", u"b"}, {u"c", u"d"}});
    ClickCell(1, ItemColumn::FindWhat);

    QTest::keyClick(Editor(), Qt::Key_Tab);
    EXPECT_EQ(Grid().Row(), 1);
    EXPECT_EQ(Grid().Col(), ItemColumn::ReplaceWith);

    QTest::keyClick(Editor(), Qt::Key_Tab);
    EXPECT_EQ(Grid().Row(), 2);
    EXPECT_EQ(Grid().Col(), ItemColumn::FindWhat);
    EXPECT_EQ(Items().Count(), 2);
}

TEST_F(GridTest, AltInTheEditorActsAsTab)
{
    EditPairs({{u"a", u"b"}});
    ClickCell(1, ItemColumn::ReplaceWith);

    QTest::keyClick(Editor(), Qt::Key_Alt);

    EXPECT_EQ(Items().Count(), 2);
}

TEST_F(GridTest, ShiftTabGoesToTheReplaceTextOfTheRowAbove)
{
    EditPairs({{u"a", u"b"}, {u"c", u"d"}});
    ClickCell(2, ItemColumn::FindWhat);

    QTest::keyClick(Editor(), Qt::Key_Backtab, Qt::ShiftModifier);

    EXPECT_EQ(Grid().Row(), 1);
    EXPECT_EQ(Grid().Col(), ItemColumn::ReplaceWith);
}

TEST_F(GridTest, ShiftTabInTheFirstFindTextDoesNothing)
{
    EditPairs({{u"a", u"b"}});
    ClickCell(1, ItemColumn::FindWhat);

    QTest::keyClick(Editor(), Qt::Key_Backtab, Qt::ShiftModifier);

    EXPECT_EQ(Grid().Row(), 1);
    EXPECT_EQ(Grid().Col(), ItemColumn::FindWhat);
    EXPECT_NE(Editor(), nullptr);
}

TEST_F(GridTest, ShiftAndControlWithTabGoOnAsTabDoes)
{
    EditPairs({{u"a", u"b"}, {u"c", u"d"}});
    ClickCell(1, ItemColumn::ReplaceWith);

    QTest::keyClick(Editor(), Qt::Key_Backtab, Qt::ShiftModifier | Qt::ControlModifier);

    EXPECT_EQ(Grid().Row(), 2);
    EXPECT_EQ(Grid().Col(), ItemColumn::FindWhat);
}

TEST_F(GridTest, ShiftAndControlWithTabDoNotGoToTheRowAbove)
{
    EditPairs({{u"a", u"b"}, {u"c", u"d"}});
    ClickCell(2, ItemColumn::FindWhat);

    QTest::keyClick(Editor(), Qt::Key_Backtab, Qt::ShiftModifier | Qt::ControlModifier);

    EXPECT_EQ(Grid().Row(), 2);
}

TEST_F(GridTest, TabOutsideAnEditorGoesToTheAddButton)
{
    EditPairs({{u"a", u"b"}});
    ClickCell(1, ItemColumn::Number);

    QTest::keyClick(&Grid(), Qt::Key_Tab);

    EXPECT_TRUE(The("cmdAdd").hasFocus());
}

TEST_F(GridTest, ControlASelectsEveryRow)
{
    EditPairs({{u"a", u""}, {u"b", u""}, {u"c", u""}});
    ClickCell(2, ItemColumn::Number);

    QTest::keyClick(&Grid(), Qt::Key_A, Qt::ControlModifier);

    EXPECT_THAT(Grid().SelectedRows(), ElementsAre(1, 2, 3));
}

TEST_F(GridTest, ShiftControlASelectsNothingMore)
{
    EditPairs({{u"a", u""}, {u"b", u""}, {u"c", u""}});
    ClickCell(2, ItemColumn::Number);

    QTest::keyClick(&Grid(), Qt::Key_A, Qt::ControlModifier | Qt::ShiftModifier);

    EXPECT_THAT(Grid().SelectedRows(), ElementsAre(2));
}

TEST_F(GridTest, TheRowUnderThePointerIsUnderlinedUntilThePointerLeaves)
{
    EditPairs({{u"a", u""}, {u"b", u""}});

    MovePointerTo(1);
    EXPECT_TRUE(IsUnderlined(1));
    MovePointerTo(2);
    EXPECT_FALSE(IsUnderlined(1));
    EXPECT_TRUE(IsUnderlined(2));
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(Grid().viewport(), &leave);
    EXPECT_FALSE(IsUnderlined(2));
}

TEST_F(GridTest, NoRowStaysUnderlinedAfterADeletion)
{
    EditPairs({{u"a", u""}, {u"b", u""}, {u"c", u""}});
    MovePointerTo(1);
    MovePointerTo(2);
    messages.Next(MessageAnswer::Yes);

    QTest::keyClick(&Grid(), Qt::Key_Delete);

    EXPECT_FALSE(IsUnderlined(1));
    EXPECT_FALSE(IsUnderlined(2));
}

TEST_F(GridTest, TheRowThatMovesUnderThePointerIsUnderlinedAtItsNextMove)
{
    EditPairs({{u"a", u""}, {u"b", u""}, {u"c", u""}});
    MovePointerTo(1);
    MovePointerTo(2);
    messages.Next(MessageAnswer::Yes);
    QTest::keyClick(&Grid(), Qt::Key_Delete);

    MovePointerTo(2, ItemColumn::FindWhat);  // seen on small screens too

    EXPECT_TRUE(IsUnderlined(2));
}

TEST_F(GridTest, DeleteGivesTheGridTheFocusWhileTwoRowsAreLeft)
{
    EditPairs({{u"a", u""}, {u"b", u""}, {u"c", u""}});
    messages.Next(MessageAnswer::Yes);
    Click("cmdDelete");
    EXPECT_TRUE(Grid().hasFocus());

    messages.Next(MessageAnswer::Yes);
    Click("cmdDelete");
    EXPECT_FALSE(Grid().hasFocus());
    EXPECT_EQ(Grid().Row(), 1);
}

TEST_F(GridTest, RowsAlternateInColour)
{
    EditPairs({{u"a", u""}, {u"b", u""}});

    EXPECT_FALSE(Grid().Items().index(0, 0).data(Qt::BackgroundRole).isValid());
    EXPECT_EQ(Grid().Items().index(1, 0).data(Qt::BackgroundRole).value<QColor>(), QColor(236, 239, 249));
}

TEST_F(GridTest, RowsAlternateInDarkColoursOnADarkDesktop)
{
    EditPairs({{u"a", u""}, {u"b", u""}});

    const DarkDesktop dark;

    EXPECT_FALSE(Grid().Items().index(0, 0).data(Qt::BackgroundRole).isValid());
    EXPECT_EQ(Grid().Items().index(1, 0).data(Qt::BackgroundRole).value<QColor>(), QColor(45, 45, 48));
}

TEST_F(GridTest, APairWhoseReplacingWouldNotEndIsMarked)
{
    EditPairs({{u"cat", u"cats"}, {u"cat", u"a cat"}, {u"Cat", u"a cat"}});
    const auto isMarked = [this](int row) {
        return !Grid().Items().index(row - 1, ItemColumn::ReplaceWith).data(Qt::DecorationRole).isNull();
    };

    EXPECT_FALSE(isMarked(1));
    EXPECT_TRUE(isMarked(2));
    EXPECT_TRUE(isMarked(3));
    EXPECT_EQ(Grid().Items().index(1, ItemColumn::ReplaceWith).data(Qt::ToolTipRole).toString().toStdString(),
              English(u"frmMain", u"grdItems.EndlessTip"));

    ClickCell(3, ItemColumn::Number);
    ClickBox("chkMatchCase");
    EXPECT_FALSE(isMarked(3)) << "the cases differ";
}

TEST_F(GridTest, AListOf32768RowsCantBeDeletedFromOrSwapped)
{
    EditPairs(std::vector<Pair>(32768, {u"a", u"b"}));
    ClickCell(1, ItemColumn::Number);
    messages.Next(MessageAnswer::Yes);

    Window().cmdDelete_Click();
    Window().cmdSwap_Click();

    EXPECT_EQ(Items().Count(), 32768);
    EXPECT_EQ(Items().Item(1)->FindWhat, u"a");
    EXPECT_THAT(Log(), AllOf(HasSubstr("Error 6 (Overflow) in procedure cmdDelete_Click"),
                             HasSubstr("Error 6 (Overflow) in procedure cmdSwap_Click")));
}

TEST_F(GridTest, AddingA32768thRowIsLogged)
{
    std::vector<Pair> pairs(32767);
    EditPairs(pairs);

    Click("cmdAdd");

    EXPECT_EQ(Items().Count(), 32768);
    EXPECT_THAT(Log(), StartsWith("Error 6 (Overflow) in procedure cmdAdd_Click at Line No. 0 of Form frmMain"));
}

}  // namespace
}  // namespace tessarine
