#include "ui/main/MainWindowTest.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMimeData>

#include "model/ListColumns.h"
#include "ui/main/TabbedText.h"

// Editing the list in comfort: the clipboard, moving rows, undo and redo, the context menu.

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

class ListEditingTest : public MainWindowTest
{
protected:
    void Select(std::initializer_list<int> rows)
    {
        Qt::KeyboardModifiers modifiers;
        for (const int row : rows) {
            ClickCell(row, ItemColumn::Number, modifiers);
            modifiers = Qt::ControlModifier;
        }
        Grid().setFocus();
    }

    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(&Grid(), key, modifiers); }
    void Copy() { Key(Qt::Key_C, Qt::ControlModifier); }
    void Cut() { Key(Qt::Key_X, Qt::ControlModifier); }
    void Paste() { Key(Qt::Key_V, Qt::ControlModifier); }
    void Undo() { Key(Qt::Key_Z, Qt::ControlModifier); }
    void Redo() { Key(Qt::Key_Y, Qt::ControlModifier); }

    static void PutOnClipboard(const QString& text) { QGuiApplication::clipboard()->setText(text); }
    static std::string OnClipboard() { return QGuiApplication::clipboard()->text().toStdString(); }

    /// The texts of all pairs, as "find>with".
    std::vector<std::string> Pairs()
    {
        std::vector<std::string> texts;
        for (const auto& item : Items().NewEnum())
            texts.push_back(ToUtf8(item->FindWhat + u">" + item->ReplaceWith));
        return texts;
    }

    /// What the grid shows of them.
    std::vector<std::string> Shown()
    {
        std::vector<std::string> texts;
        for (int row = 1; row < Grid().Rows(); ++row)
            texts.push_back(Cell(row, ItemColumn::FindWhat) + ">" + Cell(row, ItemColumn::ReplaceWith));
        return texts;
    }

    /// The enabled commands of the context menu, without "mnuPair".
    std::vector<std::string> EnabledInMenu(QWidget& place, const QPoint& position)
    {
        QContextMenuEvent ask(QContextMenuEvent::Mouse, position, place.mapToGlobal(position));
        QApplication::sendEvent(&place, &ask);
        auto& menu = The<QMenu>("mnuPairs");
        EXPECT_TRUE(menu.isVisible());
        std::vector<std::string> names;
        for (const QAction* item : menu.actions())
            if (item->isEnabled() && !item->isSeparator())
                names.push_back(item->objectName().mid(7).toStdString());
        menu.close();
        return names;
    }
};

TEST_F(ListEditingTest, CopyPutsTheSelectedRowsOnTheClipboardAsATable)
{
    EditPairs({{u"a", u"1"}, {u"b", u"2"}, {u"say \"c\"", u"3\t\"x\"\nend"}});
    Select({1, 3});

    Copy();

    EXPECT_EQ(OnClipboard(), "a\t1\nsay \"c\"\t\"3\t\"\"x\"\"\nend\"\n");
    EXPECT_FALSE(Window().IsModifed());
}

TEST_F(ListEditingTest, PasteOfTwoColumnsAddsPairsBelowTheSelectedRow)
{
    EditPairs({{u"a", u"1", {&OptionSetting::InNotes}}, {u"b", u"2"}});
    Select({1});
    PutOnClipboard("x\t7\ny\t8\r\n");

    Paste();

    EXPECT_THAT(Pairs(), ElementsAre("a>1", "x>7", "y>8", "b>2"));
    EXPECT_EQ(Shown(), Pairs());
    EXPECT_THAT(Grid().SelectedRows(), ElementsAre(2, 3));
    EXPECT_EQ(Grid().Row(), 2);
    EXPECT_EQ(Cell(2, ItemColumn::Locations), "Notes");
    EXPECT_EQ(Cell(3, ItemColumn::Number), "3");
    EXPECT_TRUE(Window().IsModifed());
    EXPECT_EQ(Editor(), nullptr);
}

TEST_F(ListEditingTest, PasteOfOneColumnGivesTextsToFindAlone)
{
    EditPairs({{u"a", u"1"}});
    Select({1});
    PutOnClipboard("x\ny");

    Paste();

    EXPECT_THAT(Pairs(), ElementsAre("a>1", "x>", "y>"));
}

TEST_F(ListEditingTest, PasteIntoAnEmptyListMakesPairsWithSlidesAlone)
{
    EditPairs({});
    The("optLoad(1)").setFocus();
    PutOnClipboard("x\t7\n\n\t\ny\t8\tleft out\n");

    QTest::keyClick(&The("optLoad(1)"), Qt::Key_V, Qt::ControlModifier);

    EXPECT_THAT(Pairs(), ElementsAre("x>7", "y>8"));
    EXPECT_EQ(Cell(1, ItemColumn::Locations), "Slides");
    EXPECT_TRUE(IsEnabled("grdItems"));
    EXPECT_TRUE(IsEnabled("cmdDelete"));
    EXPECT_THAT(CheckedLocations(), ElementsAre(0));
}

TEST_F(ListEditingTest, PastedPairsHaveOptionsOfTheirOwn)
{
    EditPairs({{u"a", u"1"}});
    Select({1});
    PutOnClipboard("x\ny");
    Paste();
    Select({2});

    ClickBox("chkMatchCase");

    EXPECT_TRUE(Items().Item(2)->OptionSetting->MatchCase);
    EXPECT_FALSE(Items().Item(3)->OptionSetting->MatchCase);
    EXPECT_FALSE(Items().Item(1)->OptionSetting->MatchCase);
}

TEST_F(ListEditingTest, ATableWithTheHeadingsOfAListBringsItsSwitches)
{
    EditPairs({{u"a", u"1"}});
    Select({1});
    std::vector<QString> headings;
    for (const char16_t* heading : ListHeaders)
        headings.push_back(ToQt(heading).toUpper());
    std::vector<QString> row(ListHeaders.size(), "FALSE");
    row[0] = "x";
    row[1] = "7";
    for (std::size_t n = 0; n < ListSwitchCount; ++n)
        if (OptionKeys[n].field == &OptionSetting::InFooter)
            row[n + 2] = "true";
    PutOnClipboard(TextOf({headings, row}));

    Paste();

    EXPECT_THAT(Pairs(), ElementsAre("a>1", "x>7"));
    EXPECT_EQ(Cell(2, ItemColumn::Locations), "Footer");
}

TEST_F(ListEditingTest, TheTwoHeadingsOfTheTextsAreNoPair)
{
    EditPairs({});
    PutOnClipboard("Find what\tReplace with\nx\t7");

    Window().PastePairs();

    EXPECT_THAT(Pairs(), ElementsAre("x>7"));
}

TEST_F(ListEditingTest, CopiedRowsComeBackWithTheirOptions)
{
    const String odd = u"\ufeff\xd800\r\n";
    EditPairs({{odd, u"1", {&OptionSetting::InHeader, &OptionSetting::InLinks}}, {u"b", u"2"}});
    Items().Item(1)->OptionSetting->PromptOnReplace = true;
    Select({1});
    Copy();
    Select({2});

    Paste();

    ASSERT_EQ(Items().Count(), 3);
    EXPECT_EQ(Items().Item(3)->FindWhat, odd);
    EXPECT_EQ(*Items().Item(3)->OptionSetting, *Items().Item(1)->OptionSetting);
    EXPECT_NE(Items().Item(3)->OptionSetting, Items().Item(1)->OptionSetting);
}

TEST_F(ListEditingTest, CutTakesTheRowsAwayWithoutAQuestion)
{
    EditPairs({{u"a", u"1"}, {u"b", u"2"}, {u"c", u"3"}});
    Select({1, 2});

    Cut();

    EXPECT_THAT(Pairs(), ElementsAre("c>3"));
    EXPECT_EQ(Shown(), Pairs());
    EXPECT_EQ(OnClipboard(), "a\t1\nb\t2\n");
    EXPECT_THAT(Grid().SelectedRows(), ElementsAre(1));
    EXPECT_THAT(messages.Messages(), IsEmpty());
    EXPECT_TRUE(Window().IsModifed());
    Cut();
    EXPECT_THAT(Pairs(), IsEmpty());
    EXPECT_FALSE(IsEnabled("cmdDelete"));
}

TEST_F(ListEditingTest, NothingIsPastedWhileTheListComesFromAFile)
{
    EditPairs({{u"a", u"1"}});
    Click("optLoad(0)");
    PutOnClipboard("x\t7");

    QTest::keyClick(&The("optLoad(0)"), Qt::Key_V, Qt::ControlModifier);

    EXPECT_THAT(Pairs(), ElementsAre("a>1"));
}

TEST_F(ListEditingTest, TheKeysOfTheClipboardActOnTheTextInAnEditor)
{
    EditPairs({{u"alpha", u"1"}, {u"b", u"2"}});
    ClickCell(1, ItemColumn::FindWhat);

    QTest::keyClick(Editor(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(OnClipboard(), "alpha");
    QTest::keyClick(Editor(), Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(qobject_cast<QLineEdit*>(Editor())->text(), "");
    QTest::keyClick(Editor(), Qt::Key_V, Qt::ControlModifier);
    QTest::keyClick(Editor(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(qobject_cast<QLineEdit*>(Editor())->text(), "alphaalpha");
    QTest::keyClick(Editor(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(qobject_cast<QLineEdit*>(Editor())->text(), "alpha");
    EndEdit();

    EXPECT_THAT(Pairs(), ElementsAre("alpha>1", "b>2"));
}

TEST_F(ListEditingTest, AltAndAnArrowMoveTheSelectedRows)
{
    EditPairs({{u"a", u""}, {u"b", u""}, {u"c", u""}, {u"d", u""}});
    Select({2, 4});

    Key(Qt::Key_Up, Qt::AltModifier);
    EXPECT_THAT(Finds(), ElementsAre("b", "a", "d", "c"));
    EXPECT_THAT(Grid().SelectedRows(), ElementsAre(1, 3));
    EXPECT_TRUE(Window().IsModifed());

    Key(Qt::Key_Up, Qt::AltModifier);
    EXPECT_THAT(Finds(), ElementsAre("b", "d", "a", "c"));
    EXPECT_THAT(Grid().SelectedRows(), ElementsAre(1, 2));

    Key(Qt::Key_Down, Qt::AltModifier);
    EXPECT_THAT(Finds(), ElementsAre("a", "b", "d", "c"));
    EXPECT_THAT(Grid().SelectedRows(), ElementsAre(2, 3));
    EXPECT_EQ(Cell(2, ItemColumn::FindWhat), "b");
}

TEST_F(ListEditingTest, RowsAtTheEndDoNotMoveOnAndMarkNothing)
{
    EditPairs({{u"a", u""}, {u"b", u""}});
    Select({1});
    Key(Qt::Key_Up, Qt::AltModifier);
    Select({2});
    Key(Qt::Key_Down, Qt::AltModifier);

    EXPECT_THAT(Finds(), ElementsAre("a", "b"));
    EXPECT_FALSE(Window().IsModifed());
}

TEST_F(ListEditingTest, EveryChangeCanBeUndoneAndDoneAgain)
{
    EditPairs({{u"a", u"1"}, {u"b", u"2"}, {u"c", u"3"}});
    std::vector<std::vector<std::string>> states{Pairs()};
    const auto done = [&] {
        EXPECT_NE(Pairs(), states.back());
        states.push_back(Pairs());
    };

    TypeInCell(2, ItemColumn::ReplaceWith, "typed");
    done();
    Select({1, 2});
    Click("cmdSwap");
    done();
    Select({1, 3});
    messages.Next(MessageAnswer::Yes);
    Key(Qt::Key_Delete);
    done();
    PutOnClipboard("x\t7\ny\t8");
    Paste();
    done();
    Select({3});
    Key(Qt::Key_Up, Qt::AltModifier);
    done();
    Click("cmdAdd");
    Grid().EndEdit();
    Grid().setFocus();
    done();
    Cut();
    done();
    Select({1});
    Cut();
    done();

    for (std::size_t n = states.size() - 1; n-- > 0;) {
        Undo();
        EXPECT_EQ(Pairs(), states[n]) << n;
        EXPECT_EQ(Shown(), states[n]) << n;
    }
    EXPECT_FALSE(Window().IsModifed()) << "the list is as it was";
    Undo();
    EXPECT_EQ(Pairs(), states.front()) << "there is nothing more to undo";

    for (std::size_t n = 1; n < states.size(); ++n) {
        Redo();
        EXPECT_EQ(Pairs(), states[n]) << n;
        EXPECT_EQ(Shown(), states[n]) << n;
        EXPECT_TRUE(Window().IsModifed());
    }
    Redo();
    EXPECT_EQ(Pairs(), states.back());
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(ListEditingTest, AnUndoShowsWhatItHasChanged)
{
    EditPairs({{u"a", u"1"}, {u"b", u"2", {&OptionSetting::InNotes}}, {u"c", u"3"}});
    Select({2});
    messages.Next(MessageAnswer::Yes);
    Key(Qt::Key_Delete);
    ASSERT_EQ(Grid().Row(), 1);

    Undo();

    EXPECT_THAT(Grid().SelectedRows(), ElementsAre(2));
    EXPECT_EQ(Grid().Row(), 2);
    EXPECT_THAT(CheckedLocations(), ElementsAre(7));
    EXPECT_EQ(Editor(), nullptr);
}

TEST_F(ListEditingTest, UndoBringsBackTheLastRowOfAListToo)
{
    EditPairs({{u"a", u"1"}});
    Select({1});
    Cut();
    ASSERT_FALSE(IsEnabled("grdItems"));

    QTest::keyClick(&The("cmdAdd"), Qt::Key_Z, Qt::ControlModifier);

    EXPECT_THAT(Shown(), ElementsAre("a>1"));
    EXPECT_TRUE(IsEnabled("grdItems"));
}

TEST_F(ListEditingTest, LocationsAndOptionsOfManyRowsAreUndoneAtOnce)
{
    EditPairs({{u"a", u""}, {u"b", u"", {&OptionSetting::InNotes}}});
    Select({1, 2});
    ClickBox("chkMatchCase");
    ClickLocation(3);
    ASSERT_EQ(Cell(1, ItemColumn::Locations), Cell(2, ItemColumn::Locations));
    Grid().setFocus();

    Undo();
    EXPECT_EQ(Cell(1, ItemColumn::Locations), "Slides");
    EXPECT_EQ(Cell(2, ItemColumn::Locations), "Notes");
    EXPECT_EQ(Cell(2, ItemColumn::Options), "Match Case");
    Undo();
    EXPECT_EQ(Cell(2, ItemColumn::Options), "");
    EXPECT_FALSE(Window().IsModifed());
}

TEST_F(ListEditingTest, AllLocationsAtOnceAreOneStep)
{
    EditPairs({{u"a", u"", {&OptionSetting::InNotes}}});
    Select({1});
    ClickBox("chkSelectAll");
    ASSERT_EQ(CheckedLocations().size(), 14U);
    Grid().setFocus();

    Undo();

    EXPECT_EQ(Cell(1, ItemColumn::Locations), "Notes");
    EXPECT_THAT(CheckedLocations(), ElementsAre(7));
}

TEST_F(ListEditingTest, AnUndoneChangeLeavesTheMarkOfOthers)
{
    EditPairs({{u"a", u"1"}});
    TypeInCell(1, ItemColumn::FindWhat, "b");
    ShowTab(2);
    ClickBox("chkBackupMode");
    ShowTab(0);
    Grid().setFocus();

    Undo();

    EXPECT_THAT(Finds(), ElementsAre("a"));
    EXPECT_TRUE(Window().IsModifed());
}

TEST_F(ListEditingTest, AnUndoBehindTheSavedListMarksTheJob)
{
    EditPairs({{u"a", u"1"}});
    TypeInCell(1, ItemColumn::FindWhat, "b");
    Window().PutProjectFile(folder.PathOf(u"job.tsq"));
    Choose("menuSave");
    ASSERT_FALSE(Window().IsModifed());
    Grid().setFocus();

    Undo();
    EXPECT_TRUE(Window().IsModifed());
    Redo();
    EXPECT_FALSE(Window().IsModifed());
    Undo();
    TypeInCell(1, ItemColumn::FindWhat, "c");
    Grid().setFocus();
    Undo();
    EXPECT_TRUE(Window().IsModifed()) << "no way leads back to the saved list";
}

TEST_F(ListEditingTest, AnotherJobHasNothingToUndo)
{
    EditPairs({{u"a", u"1"}});
    TypeInCell(1, ItemColumn::FindWhat, "b");
    EditPairs({{u"other", u"1"}});
    Grid().setFocus();

    Undo();

    EXPECT_THAT(Finds(), ElementsAre("other"));
    EXPECT_FALSE(Window().IsModifed());
}

TEST_F(ListEditingTest, AnImportCanBeUndone)
{
    EditPairs({{u"one", u"1", {&OptionSetting::InNotes}}, {u"two", u"2"}});
    const String path = folder.PathOf(u"list.csv");
    Items().ExportsList(path);
    EditPairs({{u"old", u"0"}});
    shell.NextFile(path);
    Choose("mnuImportList");
    ASSERT_THAT(Finds(), ElementsAre("one", "two"));
    Grid().setFocus();

    Undo();
    EXPECT_THAT(Shown(), ElementsAre("old>0"));
    EXPECT_FALSE(Window().IsModifed());
    Redo();
    EXPECT_THAT(Shown(), ElementsAre("one>1", "two>2"));
    EXPECT_EQ(Cell(1, ItemColumn::Locations), "Notes");
}

TEST_F(ListEditingTest, AListOfThousandsIsEditedAsAShortOne)
{
    EditPairs(std::vector<Pair>(5000, {u"a", u"b"}));
    Grid().setFocus();
    Key(Qt::Key_A, Qt::ControlModifier);
    Copy();
    Paste();
    ASSERT_EQ(Items().Count(), 10000);
    Key(Qt::Key_A, Qt::ControlModifier);
    Click("cmdSwap");
    Key(Qt::Key_A, Qt::ControlModifier);
    ClickBox("chkMatchCase");
    Grid().setFocus();

    for (int step = 0; step < 3; ++step)
        Undo();

    EXPECT_EQ(Items().Count(), 5000);
    EXPECT_EQ(Items().Item(5000)->FindWhat, u"a");
    EXPECT_FALSE(Items().Item(1)->OptionSetting->MatchCase);
    EXPECT_FALSE(Window().IsModifed());
}

TEST_F(ListEditingTest, TheContextMenuOffersWhatCanBeDone)
{
    EditPairs({{u"a", u"1"}});
    PutOnClipboard("");
    const QPoint place = Grid().visualRect(Grid().Items().index(0, 0)).center();

    EXPECT_THAT(EnabledInMenu(*Grid().viewport(), place),
                ElementsAre("Cut", "Copy", "Add", "Delete", "Swap", "Up", "Down", "SelectAll", "Find"));

    TypeInCell(1, ItemColumn::FindWhat, "b");
    PutOnClipboard("x");
    EXPECT_THAT(EnabledInMenu(*Grid().viewport(), place), ElementsAre("Undo", "Cut", "Copy", "Paste", "Add", "Delete",
                                                                      "Swap", "Up", "Down", "SelectAll", "Find"));

    The<QAction>("mnuPairUndo").trigger();
    Click("optLoad(0)");
    EXPECT_THAT(EnabledInMenu(*Grid().viewport(), place), ElementsAre("Redo", "Find"));
}

TEST_F(ListEditingTest, AnEmptyGridHasItsContextMenuToo)
{
    EditPairs({});
    PutOnClipboard("x\t7");

    EXPECT_THAT(EnabledInMenu(*Grid().viewport(), Grid().viewport()->rect().center()), ElementsAre("Paste", "Add"));
    The<QAction>("mnuPairPaste").trigger();

    EXPECT_THAT(Pairs(), ElementsAre("x>7"));
}

TEST_F(ListEditingTest, ARightClickOpensNoEditor)
{
    EditPairs({{u"a", u"1"}, {u"b", u"2"}});

    QTest::mouseClick(Grid().viewport(), Qt::RightButton, {},
                      Grid().visualRect(Grid().Items().index(1, ItemColumn::FindWhat)).center());

    EXPECT_EQ(Editor(), nullptr);
    EXPECT_THAT(Grid().SelectedRows(), ElementsAre(2));
}

TEST_F(ListEditingTest, TheKeysOfTheListDoNothingOnAnotherTab)
{
    EditPairs({{u"a", u"1"}});
    TypeInCell(1, ItemColumn::FindWhat, "b");
    ShowTab(2);

    QTest::keyClick(&The("chkBackupMode"), Qt::Key_Z, Qt::ControlModifier);

    EXPECT_THAT(Finds(), ElementsAre("b"));
}

using Rows = TextTable;

TEST(TabbedTextTest, ReadsCellsAsSpreadsheetsWriteThem)
{
    EXPECT_EQ(CellsOf(""), Rows{});
    EXPECT_EQ(CellsOf("a"), (Rows{{"a"}}));
    EXPECT_EQ(CellsOf("a\tb\r\nc\td\r\n"), (Rows{{"a", "b"}, {"c", "d"}}));
    EXPECT_EQ(CellsOf("a\rb"), (Rows{{"a"}, {"b"}}));
    EXPECT_EQ(CellsOf("a\t\n\n\tb"), (Rows{{"a", ""}, {""}, {"", "b"}}));
    EXPECT_EQ(CellsOf("\"one\ntwo\"\t\"a \"\"b\"\"\"\n"), (Rows{{"one\ntwo", "a \"b\""}}));
    EXPECT_EQ(CellsOf("\"tab\tin it\""), (Rows{{"tab\tin it"}}));
}

TEST(TabbedTextTest, TakesAQuoteThatIsNoneOfASpreadsheetAsItStands)
{
    EXPECT_EQ(CellsOf("\"open\tb\nc"), (Rows{{"\"open", "b"}, {"c"}}));
    EXPECT_EQ(CellsOf("\"a\" b\tc"), (Rows{{"\"a\" b", "c"}}));
    EXPECT_EQ(CellsOf("5\" pipe\tc"), (Rows{{"5\" pipe", "c"}}));
    EXPECT_EQ(CellsOf("\""), (Rows{{"\""}}));
}

TEST(TabbedTextTest, GivesBackWhatItWrote)
{
    const Rows rows{{"a", "b"}, {"\"quoted\"", "in \"it\""}, {"tab\t", "line\r\nbreak\n"}, {"", ""}, {"\"", "\"\""}};

    EXPECT_EQ(CellsOf(TextOf(rows)), rows);
}

}  // namespace
}  // namespace tessarine
