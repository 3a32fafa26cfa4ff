#include "ui/main/MainWindowTest.h"

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QRadioButton>
#include <QTabBar>
#include <QTabWidget>
#include <QToolBar>

#include <set>

#include "app/LanguageText.h"
#include "platform/ProgramFolder.h"

// The texts of the window in the active language, its reach by keys, and what it tells those who can't see it.

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr const char* captioned[] = {"cmdStartReplacing(0)",
                                     "cmdStartReplacing(1)",
                                     "cmdAdd",
                                     "cmdDelete",
                                     "cmdSwap",
                                     "cmdBrowse1",
                                     "cmdBrowse2",
                                     "cmdBrowse3",
                                     "optLoad(0)",
                                     "optLoad(1)",
                                     "optFileProcess(0)",
                                     "optFileProcess(1)",
                                     "chkIncludesubfolders",
                                     "chkSelectAll",
                                     "chkMatchCase",
                                     "chkMatchWholeWord",
                                     "chkHAlfFulll",
                                     "chkPromptOnReplace",
                                     "chkCPUUsage",
                                     "chkRequireCount",
                                     "chkReadOnlyFile",
                                     "chkAllowAlert",
                                     "chkProccessLongestFileFirst",
                                     "chkBackupMode",
                                     "chkKeepOiginal",
                                     "lblStartfolder",
                                     "lblSpreadsheettypes",
                                     "lblSearchLocation",
                                     "fradivide",
                                     "lblISOVersion",
                                     "lblRevison",
                                     "lblRevisionBy",
                                     "lblPasswordOpen",
                                     "lblRestartFileCount",
                                     "lblRestartAfterSecond"};
constexpr const char* tipped[] = {
    "cboSpreadsheetType",  "cboversion",         "txtGetFileName",  "txtStartFolder",
    "txtLoadsearch",       "txtRevisonProperty", "txtPasswordOpen", "lstRestartAfterSecond",
    "lstRestartFileCount", "lstLookIn",          "grdItems",        "Toolbar1"};
constexpr const char* frames[] = {"fraFileProcess", "fraReplacement", "frmOptions", "fremversioncontrol",
                                  "fraExcelControl"};
constexpr const char* menuItems[] = {"mnuFile",           "mnuOpen",           "menuSave",      "menuSaveAs",
                                     "mnuRecent",         "mnuExit",           "menuOption",    "mnuChangeLanguage",
                                     "mnuStartSearching", "mnuStartReplacing", "mnuImportList", "mnuExportList",
                                     "mnuHelp",           "mnuHelp1",          "mnuHomePage",   "mnuAbout"};
constexpr const char* separators[] = {"mnuSep1", "mnuSep2", "mnuSep3", "mnuSep5"};

class LanguageTest : public MainWindowTest
{
protected:
    /// A text of the language file for the window.
    std::string Of(const std::string& key) { return English(u"frmMain", FromUtf8(key)); }

    std::string Caption(const char* name)
    {
        if (const auto* const label = Window().findChild<QLabel*>(name))
            return label->text().toStdString();
        return The<QAbstractButton>(name).text().toStdString();
    }

    std::string Tip(const char* name) { return The(name).toolTip().toStdString(); }
    QAction& Item(const char* name) { return The<QAction>(name); }

    std::vector<std::string> Heads()
    {
        std::vector<std::string> heads;
        for (int column = 0; column < ItemColumn::Count; ++column)
            heads.push_back(
                Grid().Items().headerData(column, Qt::Horizontal, Qt::DisplayRole).toString().toStdString());
        return heads;
    }

    /// A language of the test's own becomes the active one.
    void Speak(const std::string& content)
    {
        folder.Write(u"program/Languages/Own.lng", content);
        SetProgramFolder(folder.PathOf(u"program"));
        CurrentLanguageFile = u"Own.lng";
        Window().LoadLng();
    }

    void ExpectTextsOfTheFile()
    {
        for (const char* control : captioned) {
            EXPECT_EQ(Caption(control), Of(std::string(control) + ".caption")) << control;
            EXPECT_EQ(Tip(control), Of(std::string(control) + ".ToolTipText")) << control;
        }
        for (const char* control : tipped)
            EXPECT_EQ(Tip(control), Of(std::string(control) + ".ToolTipText")) << control;
        for (const char* frame : frames)
            EXPECT_EQ(The<QGroupBox>(frame).title().toStdString(), Of(std::string(frame) + ".Caption")) << frame;
        for (const char* item : menuItems)
            EXPECT_EQ(Item(item).text().toStdString(), Of(std::string(item) + ".caption")) << item;
        for (int tab = 0; tab < 3; ++tab)
            EXPECT_EQ(The<QTabWidget>("SSTab1").tabText(tab).toStdString(),
                      Of("SSTab1.TabCaption(" + std::to_string(tab) + ")"));
        for (std::size_t column = 0; column < ItemColumn::Count; ++column)
            EXPECT_EQ(Heads()[column], Of("vsflex.TextMatrix(0," + std::to_string(column) + ")")) << column;
        const auto buttons = The<QToolBar>("Toolbar1").actions();
        ASSERT_THAT(buttons, SizeIs(4));
        for (int i = 0; i < 4; ++i)
            EXPECT_EQ(buttons[i]->toolTip().toStdString(),
                      Of("Toolbar1.Buttons(" + std::to_string(i + 1) + ").ToolTipText"));
    }
};

TEST_F(LanguageTest, EveryTextOfTheWindowIsTheLanguageFiles)
{
    Window();
    ASSERT_EQ(Of("cmdSwap.caption"), "Swap Values") << "the language file is there";

    ExpectTextsOfTheFile();
    for (const char* separator : separators)
        EXPECT_TRUE(Item(separator).isSeparator()) << separator;
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(LanguageTest, EveryTextOfTheWindowFollowsAChangeOfLanguage)
{
    const std::string before = Caption("cmdDelete");

    CurrentLanguageFile = u"German.lng";
    Window().LoadLng();

    EXPECT_NE(Caption("cmdDelete"), before);
    ExpectTextsOfTheFile();
}

TEST_F(LanguageTest, EachTextHasAKeyOfItsOwn)
{
    std::string content = "[FRMMAIN]\n";
    for (const char* control : captioned)
        content += std::string(control) + ".caption=C " + control + "\n" + control + ".ToolTipText=T " + control + "\n";
    for (const char* control : tipped)
        content += std::string(control) + ".ToolTipText=T " + control + "\n";
    for (const char* frame : frames)
        content += std::string(frame) + ".Caption=C " + frame + "\n";
    for (const char* item : menuItems)
        content += std::string(item) + ".caption=C " + item + "\n";
    for (int i = 0; i < 6; ++i) {
        const std::string number = std::to_string(i);
        content += "SSTab1.TabCaption(" + number + ")=tab " + number + "\n";
        content += "vsflex.TextMatrix(0," + number + ")=head " + number + "\n";
        content += "Toolbar1.Buttons(" + number + ").ToolTipText=button " + number + "\n";
    }

    Speak(content);

    EXPECT_EQ(Caption("chkMatchCase"), "C chkMatchCase");
    EXPECT_EQ(Tip("cmdStartReplacing(1)"), "T cmdStartReplacing(1)");
    EXPECT_THAT(Heads(), ElementsAre("head 0", "head 1", "head 2", "head 3", "head 4", "head 5"));
    ExpectTextsOfTheFile();
}

TEST_F(LanguageTest, WithoutASectionForTheWindowAllItsTextsAreEmpty)
{
    Window();

    Speak("[Global Msg]\n1048=Save?\n");

    EXPECT_EQ(Caption("cmdAdd"), "");
    EXPECT_EQ(Tip("cmdAdd"), "");
    EXPECT_THAT(Heads(), ElementsAre("", "", "", "", "", ""));
    ExpectTextsOfTheFile();
    for (const char* separator : separators) {
        EXPECT_FALSE(Item(separator).isSeparator()) << separator;
        EXPECT_EQ(Item(separator).text(), "") << separator;
        EXPECT_TRUE(Item(separator).isVisible()) << separator;
    }
    EXPECT_EQ(Title(), "untitled - Tessarine") << "the title is no text of the file";
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(LanguageTest, WithoutAnyLanguageFileAllTextsAreEmpty)
{
    Window();
    CurrentLanguageFile = u".lng";

    Window().LoadLng();

    EXPECT_EQ(Caption("cmdAdd"), "");
    EXPECT_EQ(GlobalMsg(u"1048"), u"");
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(LanguageTest, TheSeparatorsComeBackWithALanguageThatHasThem)
{
    Window();
    Speak("[Global Msg]\n");

    Speak("[frmMain]\nmnuSep1.caption=-\nmnuSep2.caption=-\nmnuSep3.caption=-\nmnuSep5.caption=other\n");

    EXPECT_TRUE(Item("mnuSep1").isSeparator());
    EXPECT_FALSE(Item("mnuSep5").isSeparator());
    EXPECT_EQ(Item("mnuSep5").text(), "other");
}

TEST_F(LanguageTest, TheRecentFilesKeepTheirCaptions)
{
    Window();
    const QList<QAction*> items = Item("mnuRecent").menu()->actions();
    ASSERT_THAT(items, testing::Not(IsEmpty()));
    const QString before = items.front()->text();
    ASSERT_EQ(before, "(Empty)");

    Speak("[frmMain]\nmnuDefRF.caption=no\nmnuDefRF(0).caption=no\n");

    EXPECT_EQ(items.front()->text(), before);
}

TEST_F(LanguageTest, TheLocationsAreNotTranslated)
{
    Window();
    const QString before = The<QListWidget>("lstLookIn").item(7)->text();

    CurrentLanguageFile = u"French.lng";
    Window().LoadLng();

    EXPECT_EQ(The<QListWidget>("lstLookIn").item(7)->text(), before);
    EXPECT_EQ(before, "Notes");
}

// --- Keys and hearing ------------------------------------------------------------------------------------------------

class TabTest : public LanguageTest, public testing::WithParamInterface<int>
{
protected:
    void SetUp() override
    {
        SetPairs({{u"a", u"b"}});
        Window();
        ShowTab(GetParam());
        QApplication::setActiveWindow(&Window());
    }

    /// A group of option buttons is one stop of the Tab key; in it the arrow keys go on.
    static std::string StopOf(const QWidget& control)
    {
        const std::string name = control.objectName().toStdString();
        return qobject_cast<const QRadioButton*>(&control) != nullptr ? name.substr(0, name.find('(')) : name;
    }

    /// The named controls that keys can work, as far as they can be seen and used.
    std::set<std::string> Stops()
    {
        std::set<std::string> names;
        for (const QWidget* control : Window().centralWidget()->findChildren<QWidget*>())
            if ((control->focusPolicy() & Qt::TabFocus) != 0 && control->focusProxy() == nullptr &&
                control->isVisible() && control->isEnabled() && !control->objectName().isEmpty())
                names.insert(StopOf(*control));
        return names;
    }
};

TEST_P(TabTest, TheTabKeyReachesEveryControlInFront)
{
    const std::set<std::string> expected = Stops();
    ASSERT_THAT(expected, testing::IsSupersetOf({"qt_tabwidget_tabbar", "cmdStartReplacing(0)"}));
    std::set<std::string> reached;
    The<QTabWidget>("SSTab1").tabBar()->setFocus();

    for (std::size_t key = 0; key < expected.size(); ++key) {
        QWidget* const focus = QApplication::focusWidget();
        ASSERT_NE(focus, nullptr);
        reached.insert(StopOf(*focus));
        QTest::keyClick(focus, Qt::Key_Tab);
    }

    EXPECT_EQ(reached, expected);
}

TEST_P(TabTest, EveryControlIsNamedForAScreenReader)
{
    int seen = 0;
    for (QWidget* control : Window().centralWidget()->findChildren<QWidget*>()) {
        const bool canBeWorked = control->focusPolicy() != Qt::NoFocus || qobject_cast<QAbstractButton*>(control);
        const bool isPart = control->objectName().startsWith("qt_") || control->focusProxy() != nullptr ||
                            qobject_cast<QComboBox*>(control->parentWidget()) != nullptr;
        if (!control->isVisible() || !canBeWorked || isPart ||
            control->parentWidget()->objectName() == "qt_tabwidget_tabbar")
            continue;
        const auto* const button = qobject_cast<QAbstractButton*>(control);
        const QString name =
            button != nullptr && !button->text().isEmpty() ? button->text() : control->accessibleName();
        EXPECT_NE(name.trimmed(), "") << control->metaObject()->className() << ' '
                                      << control->objectName().toStdString();
        ++seen;
    }
    EXPECT_GT(seen, 5);
}

INSTANTIATE_TEST_SUITE_P(Tabs, TabTest, testing::Values(0, 1, 2));

TEST_F(LanguageTest, ABoxIsCalledAsTheLabelBesideIt)
{
    const auto name = [this](const char* control) { return The(control).accessibleName().toStdString(); };

    EXPECT_EQ(name("txtStartFolder"), Caption("lblStartfolder"));
    EXPECT_EQ(name("cboSpreadsheetType"), Caption("lblSpreadsheettypes"));
    EXPECT_EQ(name("lstLookIn"), Caption("lblSearchLocation"));
    EXPECT_EQ(name("txtRevisonProperty"), Caption("lblRevison"));
    EXPECT_EQ(name("cboversion"), Caption("lblRevisionBy"));
    EXPECT_EQ(name("txtPasswordOpen"), Caption("lblPasswordOpen"));
    EXPECT_EQ(name("lstRestartFileCount"), Caption("lblRestartFileCount"));
    EXPECT_EQ(name("lstRestartAfterSecond"), Caption("lblRestartAfterSecond"));
}

}  // namespace
}  // namespace tessarine
