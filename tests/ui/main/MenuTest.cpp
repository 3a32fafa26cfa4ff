#include "ui/main/MainWindowTest.h"

#include <QAction>
#include <QComboBox>
#include <QHeaderView>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QStatusBar>
#include <QTabWidget>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>

#include "platform/ProgramInfo.h"
#include "shell/HelpViewer.h"

// The menu tree, the tool bar, the tabs, and how the window stands at the start.

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

class MenuTest : public MainWindowTest
{
protected:
    /// The items of a menu as "name caption", each followed by those of a menu within it, indented.
    std::vector<std::string> Tree(const QList<QAction*>& items, const std::string& indent = {})
    {
        std::vector<std::string> lines;
        for (const QAction* item : items) {
            const std::string caption = item->isSeparator() ? "-" : item->text().toStdString();
            lines.push_back(indent + item->objectName().toStdString() + ' ' + caption);
            if (item->menu() != nullptr)
                for (std::string& line : Tree(item->menu()->actions(), indent + "  "))
                    lines.push_back(std::move(line));
        }
        return lines;
    }

    void ClickTool(int index)
    {
        auto& bar = The<QToolBar>("Toolbar1");
        QWidget* const button = bar.widgetForAction(bar.actions().at(index - 1));
        ASSERT_TRUE(button != nullptr && button->isVisible());
        QTest::mouseClick(button, Qt::LeftButton);
    }
};

TEST_F(MenuTest, TheTreeStandsInItsOrder)
{
    EXPECT_THAT(Tree(Window().menuBar()->actions()),
                ElementsAre("mnuFile &File",                                //
                            "  mnuOpen &Open",                              //
                            "  menuSave &Save",                             //
                            "  menuSaveAs Save&As",                         //
                            "  mnuSep1 -",                                  //
                            "  mnuRecent &Recent Files",                    //
                            "    mnuDefRF(0) (Empty)",                      //
                            "  mnuSep2 -",                                  //
                            "  mnuExit &Exit",                              //
                            "menuOption &Option",                           //
                            "  mnuChangeLanguage &Change Language...",      //
                            "  mnuSep5 -",                                  //
                            "  mnuStartSearching Start &Searching",         //
                            "  mnuStartReplacing Start &Replacing",         //
                            "  mnuSep3 -",                                  //
                            "  mnuImportList &Import search/replace list",  //
                            "  mnuExportList &Export search/replace list",  //
                            "mnuHelp &Help",                                //
                            "  mnuHelp1 &Help",                             //
                            "  mnuHomePage &Visit Our Website",             //
                            "  mnuAbout &About"));
}

TEST_F(MenuTest, NoItemHasAShortcut)
{
    for (const QAction* item : Window().menuBar()->findChildren<QAction*>())
        EXPECT_TRUE(item->shortcut().isEmpty()) << item->objectName().toStdString();
}

TEST_F(MenuTest, TheToolBarHasThreeButtonsWithPicturesAndASeparator)
{
    const QList<QAction*> buttons = The<QToolBar>("Toolbar1").actions();

    ASSERT_EQ(buttons.size(), 4);
    for (const int index : {0, 1, 3}) {
        EXPECT_FALSE(buttons.at(index)->isSeparator());
        EXPECT_FALSE(buttons.at(index)->icon().isNull());
    }
    EXPECT_TRUE(buttons.at(2)->isSeparator());
    EXPECT_EQ(buttons.at(0)->toolTip(), "Open");
    EXPECT_EQ(buttons.at(1)->toolTip(), "Save");
    EXPECT_EQ(buttons.at(3)->toolTip(), "Help");
}

TEST_F(MenuTest, TheToolsOpenSaveAndHelp)
{
    shell.NextFile(std::nullopt);
    ClickTool(1);
    ASSERT_EQ(shell.FileDialogs().size(), 1U);
    EXPECT_FALSE(shell.FileDialogs().back().isSave);

    shell.NextFile(std::nullopt);
    ClickTool(2);
    ASSERT_EQ(shell.FileDialogs().size(), 2U);
    EXPECT_TRUE(shell.FileDialogs().back().isSave);

    ClickTool(4);
    EXPECT_THAT(shell.Opened(), ElementsAre(HelpPath()));
}

TEST_F(MenuTest, TheSeparatorOfTheToolBarDoesNothing)
{
    Window().Toolbar1_ButtonClick(3);

    EXPECT_THAT(shell.FileDialogs(), IsEmpty());
    EXPECT_THAT(shell.Opened(), IsEmpty());
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(MenuTest, TheWebsiteLeadsToTheHelpAsLongAsThereIsNone)
{
    Choose("mnuHelp1");
    Choose("mnuHomePage");

    EXPECT_THAT(shell.Opened(), ElementsAre(HelpPath(), HelpPath()));
}

TEST_F(MenuTest, AboutIsShownModally)
{
    Window();
    std::string shown;
    QTimer::singleShot(0, [&] {
        if (QWidget* const dialog = QApplication::activeModalWidget()) {
            shown = dialog->windowTitle().toStdString();
            dialog->close();
        }
    });

    Choose("mnuAbout");

    EXPECT_EQ(shown, "About - Tessarine");
}

TEST_F(MenuTest, EachTabShowsItsOwnFrame)
{
    const std::vector<std::string> frames{"fraReplacement", "fraFileProcess", "frmOptions"};
    const std::vector<std::string> captions{"Replacement", "File to process", "Options"};
    ASSERT_EQ(The<QTabWidget>("SSTab1").count(), 3);

    for (int tab = 0; tab < 3; ++tab) {
        ShowTab(tab);
        EXPECT_EQ(The<QTabWidget>("SSTab1").tabText(tab).toStdString(), captions.at(static_cast<std::size_t>(tab)));
        for (int frame = 0; frame < 3; ++frame)
            EXPECT_EQ(The(frames.at(static_cast<std::size_t>(frame)).c_str()).isVisible(), frame == tab);
        for (const char* start : {"cmdStartReplacing(0)", "cmdStartReplacing(1)"})
            EXPECT_TRUE(The(start).isVisible());
    }
}

TEST_F(MenuTest, TheWindowStartsOnItsFirstTabWithANewJob)
{
    Window();

    EXPECT_EQ(Tab(), 0);
    EXPECT_EQ(Title(), "untitled - Tessarine");
    EXPECT_EQ(The<QComboBox>("cboSpreadsheetType").currentIndex(), 0);
    EXPECT_EQ(Text("cboSpreadsheetType"), "*.Ppt*");
    EXPECT_EQ(Text("lstRestartFileCount"), "0");
    EXPECT_EQ(Text("lstRestartAfterSecond"), "0");
    EXPECT_TRUE(The<QStatusBar>("StatusBar1").isVisible());
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(MenuTest, TheStatusBarTellsTheEngine)
{
    // Each start of the program chooses one.
    const bool chosen = IsBuiltInEngine;
    for (const auto& [isBuiltIn, text] :
         {std::pair(false, "Engine: PowerPoint"), std::pair(true, "Engine: built-in")}) {
        IsBuiltInEngine = isBuiltIn;
        Window().LoadLng();
        EXPECT_EQ(The<QLabel>("lblEngine").text(), text);
    }
    IsBuiltInEngine = chosen;
}

TEST_F(MenuTest, TheGridStartsWithItsWidthsAndTheSearchTypeHidden)
{
    SetPairs({{u"a", u"b"}});
    frmMain window;  // not shown: what is shown shares the width that there is
    auto& grid = *window.findChild<ItemsGrid*>("grdItems");

    for (const auto& [column, twips] : {std::pair(ItemColumn::FindWhat, 1500), std::pair(ItemColumn::ReplaceWith, 1500),
                                        std::pair(ItemColumn::Locations, 2500)})
        EXPECT_EQ(grid.columnWidth(column), StartWidth(grid, column, twips)) << column;
    EXPECT_TRUE(grid.isColumnHidden(3));
    EXPECT_EQ(grid.horizontalHeader()->hiddenSectionCount(), 1);
    grid.showColumn(ItemColumn::SearchType);
    EXPECT_EQ(grid.columnWidth(ItemColumn::SearchType), 2500 * grid.logicalDpiX() / 1440);
}

TEST_F(MenuTest, TheColumnOfNumbersIsNarrowUnlessItsTextsNeedMore)
{
    const int narrow = 400 * Grid().logicalDpiX() / 1440;
    EditPairs({{u"a", u"b"}});
    const QHeaderView& heads = *Grid().horizontalHeader();
    EXPECT_EQ(heads.sectionSize(ItemColumn::Number), std::max(narrow, heads.sectionSizeHint(ItemColumn::Number)));

    Grid().Items().SetHead(ItemColumn::Number, {});
    Grid().SetStartWidths();

    ASSERT_LE(heads.sectionSizeHint(ItemColumn::Number), narrow);
    EXPECT_EQ(heads.sectionSize(ItemColumn::Number), narrow);
}

TEST_F(MenuTest, EveryControlOfATabStaysReachableInASmallWindow)
{
    Window().resize(Window().minimumSizeHint());
    for (int tab = 0; tab < 3; ++tab) {
        ShowTab(tab);
        QCoreApplication::processEvents();
        for (QPushButton* button : Window().findChildren<QPushButton*>()) {
            if (!button->isVisible())
                continue;
            BringIntoView(*button);
            const QRect inWindow(button->mapTo(&Window(), QPoint()), button->size());
            EXPECT_TRUE(Window().rect().contains(inWindow)) << button->objectName().toStdString();
        }
    }
}

}  // namespace
}  // namespace tessarine
