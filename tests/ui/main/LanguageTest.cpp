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

#include <optional>
#include <set>
#include <vector>

#include "app/LanguageText.h"
#include "platform/ProgramFolder.h"
#include "support/LanguageKeys.h"

// The texts of the window in the active language, its reach by keys, and what it tells those who can't see it.

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

/// The texts that the window asks its language file for.
std::vector<test::LanguageKey> KeysOfTheWindow()
{
    auto keys = test::LanguageKeys();
    std::erase_if(keys, [](const test::LanguageKey& key) { return key.section != "frmMain"; });
    return keys;
}

/// The items that their text makes a line of the menu, by name.
std::vector<std::string> Separators()
{
    std::vector<std::string> names;
    for (const auto& key : KeysOfTheWindow())
        if (key.entry == test::LanguageEntry::Separator)
            names.push_back(key.key.substr(0, key.key.find('.')));
    return names;
}

/// The number that ends what a key names: 2 of "SSTab1.TabCaption(2)" and of "vsflex.TextMatrix(0,2)".
int NumberOf(const std::string& key)
{
    return std::stoi(key.substr(key.find_last_of("(,") + 1));
}

class LanguageTest : public MainWindowTest
{
protected:
    /// A text of the language file for the window.
    std::string Of(const std::string& key) { return English(u"frmMain", FromUtf8(key)); }

    std::string Caption(const std::string& name)
    {
        if (const auto* const label = Window().findChild<QLabel*>(QString::fromStdString(name)))
            return label->text().toStdString();
        if (const auto* const item = Window().findChild<QAction*>(QString::fromStdString(name)))
            return item->text().toStdString();
        return The<QAbstractButton>(name.c_str()).text().toStdString();
    }

    std::string Tip(const std::string& name) { return The(name.c_str()).toolTip().toStdString(); }
    QAction& Item(const std::string& name) { return The<QAction>(name.c_str()); }

    /// What the window shows for a key; nothing for one that is asked for when there is something to tell.
    std::optional<std::string> Shown(const std::string& key)
    {
        const std::string name = key.substr(0, key.find('.'));
        if (key.starts_with("SSTab1."))
            return The<QTabWidget>("SSTab1").tabText(NumberOf(key)).toStdString();
        if (key.starts_with("vsflex."))
            return Heads().at(static_cast<std::size_t>(NumberOf(key)));
        if (key.starts_with("Toolbar1.Buttons("))
            return The<QToolBar>("Toolbar1").actions().at(NumberOf(key) - 1)->toolTip().toStdString();
        if (key.ends_with(".ToolTipText"))
            return Tip(name);
        if (key.ends_with(".Caption"))
            return The<QGroupBox>(name.c_str()).title().toStdString();
        if (key.ends_with(".caption") && name != "frmMain")
            return Caption(name);
        return std::nullopt;
    }

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
        for (const auto& key : KeysOfTheWindow()) {
            const auto shown = Shown(key.key);
            if (shown && key.entry != test::LanguageEntry::Separator) {
                EXPECT_EQ(*shown, Of(key.key)) << key.key;
            }
        }
    }
};

TEST_F(LanguageTest, EveryTextOfTheWindowIsTheLanguageFiles)
{
    Window();
    ASSERT_EQ(Of("cmdSwap.caption"), "Swap Values") << "the language file is there";

    ExpectTextsOfTheFile();
    for (const std::string& separator : Separators())
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
    for (const auto& key : KeysOfTheWindow())
        content += key.key + "=text of " + key.key + "\n";

    Speak(content);

    EXPECT_EQ(Caption("chkMatchCase"), "text of chkMatchCase.caption");
    EXPECT_EQ(Tip("cmdStartReplacing(1)"), "text of cmdStartReplacing(1).ToolTipText");
    EXPECT_EQ(Heads().at(5), "text of vsflex.TextMatrix(0,5)");
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
    for (const std::string& separator : Separators()) {
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

// Keys and hearing.

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
