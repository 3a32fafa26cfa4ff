#include "ui/main/MainWindowTest.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>
#include <QTabWidget>

// Looking for a text in the list of pairs.

namespace tessarine
{
namespace
{

class FindInListTest : public MainWindowTest
{
protected:
    void OpenBar()
    {
        ClickCell(1, ItemColumn::Number);
        QTest::keyClick(&Grid(), Qt::Key_F, Qt::ControlModifier);
    }

    void TypeText(const char* text)
    {
        auto& box = The<QLineEdit>("txtFindPair");
        box.selectAll();
        QTest::keyClicks(&box, text);
    }

    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(&The("txtFindPair"), key, modifiers);
    }

    std::string Result() { return The<QLabel>("lblFindResult").text().toStdString(); }
};

const std::vector<Pair> alphabet{{u"Alpha", u"one"}, {u"beta", u"two"}, {u"gamma", u"ALPHABET"}, {u"delta", u"four"}};

TEST_F(FindInListTest, TheBarOpensWithItsKeyAndFindsWhileOneTypes)
{
    EditPairs(alphabet);
    EXPECT_FALSE(The("findBar").isVisible());
    OpenBar();
    EXPECT_TRUE(The("txtFindPair").hasFocus());

    TypeText("alphab");

    EXPECT_EQ(Grid().Row(), 3);
    EXPECT_EQ(Result(), "1 of 1");
    EXPECT_TRUE(The("txtFindPair").hasFocus());
    EXPECT_EQ(Editor(), nullptr);
    EXPECT_FALSE(Window().IsModifed());
}

TEST_F(FindInListTest, TheBarScrollsIntoSightOnASmallPage)
{
    EditPairs(alphabet);
    Grid().setMinimumHeight(3000);  // so that the page scrolls
    const auto& page = *qobject_cast<QScrollArea*>(The<QTabWidget>("SSTab1").currentWidget());

    OpenBar();

    EXPECT_TRUE(QTest::qWaitFor([&] {
        const QWidget& box = The("txtFindPair");
        return page.viewport()->rect().contains(QRect(box.mapTo(page.viewport(), QPoint()), box.size()));
    }));
}

TEST_F(FindInListTest, EnterGoesOnAndBeginsAgainAtTheTop)
{
    EditPairs(alphabet);
    OpenBar();
    TypeText("alpha");
    EXPECT_EQ(Grid().Row(), 1);
    EXPECT_EQ(Result(), "1 of 2");

    Key(Qt::Key_Return);
    EXPECT_EQ(Grid().Row(), 3);
    EXPECT_EQ(Result(), "2 of 2");
    Key(Qt::Key_Return);
    EXPECT_EQ(Grid().Row(), 1);
    Key(Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(Grid().Row(), 3);
    Key(Qt::Key_F3);
    EXPECT_EQ(Grid().Row(), 1);
    Key(Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(Grid().Row(), 3);
    Click("cmdFindPrevious");
    EXPECT_EQ(Grid().Row(), 1);
    Click("cmdFindNext");
    EXPECT_EQ(Grid().Row(), 3);
}

TEST_F(FindInListTest, TheLocationsOfTheRowThatIsFoundAreShown)
{
    EditPairs({{u"a", u""}, {u"b", u"", {&OptionSetting::InNotes}}});
    OpenBar();

    TypeText("b");

    EXPECT_THAT(CheckedLocations(), testing::ElementsAre(7));
}

TEST_F(FindInListTest, ATextThatIsNowhereIsSaidToBe)
{
    EditPairs(alphabet);
    OpenBar();

    TypeText("omega");

    EXPECT_EQ(Result(), "Not found");
    EXPECT_EQ(Grid().Row(), 1);
}

TEST_F(FindInListTest, EscapeClosesTheBarAndTheKeyFindsOn)
{
    EditPairs(alphabet);
    OpenBar();
    TypeText("alpha");

    Key(Qt::Key_Escape);
    EXPECT_FALSE(The("findBar").isVisible());
    EXPECT_TRUE(Grid().hasFocus());

    QTest::keyClick(&Grid(), Qt::Key_F3);
    EXPECT_EQ(Grid().Row(), 3);
    EXPECT_FALSE(The("findBar").isVisible());
}

TEST_F(FindInListTest, FindingOnWithoutATextAsksForOne)
{
    EditPairs(alphabet);
    ClickCell(1, ItemColumn::Number);

    QTest::keyClick(&Grid(), Qt::Key_F3);

    EXPECT_TRUE(The("txtFindPair").hasFocus());
}

TEST_F(FindInListTest, FindingOnAfterTheLastHitHasGoneSaysSo)
{
    EditPairs(alphabet);
    OpenBar();
    TypeText("delta");
    Key(Qt::Key_Escape);
    TypeInCell(4, ItemColumn::FindWhat, "other");
    Grid().setFocus();

    QTest::keyClick(&Grid(), Qt::Key_F3);

    EXPECT_TRUE(The("findBar").isVisible());
    EXPECT_EQ(Result(), "Not found");
}

TEST_F(FindInListTest, TheKeyOpensTheBarFromAnEditorToo)
{
    EditPairs(alphabet);
    ClickCell(1, ItemColumn::FindWhat);
    QTest::keyClicks(Editor(), "typed");

    QTest::keyClick(Editor(), Qt::Key_F, Qt::ControlModifier);

    EXPECT_TRUE(The("txtFindPair").hasFocus());
    EXPECT_EQ(Items().Item(1)->FindWhat, u"typed");
}

TEST_F(FindInListTest, TheContextMenuHasItToo)
{
    EditPairs(alphabet);

    The<QAction>("mnuPairFind").trigger();

    EXPECT_TRUE(The("txtFindPair").hasFocus());
}

}  // namespace
}  // namespace tessarine
