#include <QAccessible>
#include <QProgressBar>
#include <QTabWidget>

#include "i18n/frmChangeLanguage.h"
#include "shell/frmAbout.h"
#include "support/qt/AccessibleTree.h"
#include "ui/main/MainWindowTest.h"
#include "ui/run/frmIntervention.h"
#include "ui/run/frmProcessingDocuments.h"

// What those get who hear the windows instead of seeing them.

namespace tessarine
{
namespace
{

using testing::IsEmpty;

class NamesTest : public MainWindowTest
{
protected:
    NamesTest() { EditPairs({{u"cat", u"dog"}, {u"plan", u"the plan"}}); }
};

TEST_F(NamesTest, EveryControlOfTheMainWindowHasAName)
{
    for (int tab = 0; tab < 3; ++tab) {
        ShowTab(tab);
        EXPECT_THAT(UnnamedControls(Window()), IsEmpty()) << "tab " << tab;
    }
}

TEST_F(NamesTest, EveryControlOfTheSearchInTheListHasAName)
{
    Window().OpenFind();
    ASSERT_TRUE(The("findBar").isVisible());

    EXPECT_THAT(UnnamedControls(Window()), IsEmpty());
}

TEST_F(NamesTest, EveryControlOfTheNoticesHasAName)
{
    shell.NextFile(folder.Write(u"broken.tsq", "not a project"));
    Choose("mnuOpen");
    ASSERT_TRUE(The("fraNotice").isVisible());

    EXPECT_THAT(UnnamedControls(Window()), IsEmpty());
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&The("cmdCloseNotice"))->text(QAccessible::Name).toStdString(),
              "Close this notice");
}

TEST_F(NamesTest, EveryControlOfTheWindowOfARunHasAName)
{
    frmProcessingDocuments& window = frmProcessingDocuments::Instance(&Window());
    window.show();
    for (int tab = 0; tab < 4; ++tab) {
        window.findChild<QTabWidget*>("SSTab1")->setCurrentIndex(tab);
        EXPECT_THAT(UnnamedControls(window), IsEmpty()) << "tab " << tab;
    }
    window.close();
}

TEST_F(NamesTest, EveryControlOfTheDialogsHasAName)
{
    frmChangeLanguage language(&Window());
    frmAbout about(&Window());
    frmIntervention intervention(&Window());
    for (QWidget* dialog : std::initializer_list<QWidget*>{&language, &about, &intervention}) {
        dialog->show();
        EXPECT_THAT(UnnamedControls(*dialog), IsEmpty()) << dialog->objectName().toStdString();
    }
}

TEST_F(NamesTest, TheProgressHasANameAndAText)
{
    frmProcessingDocuments& window = frmProcessingDocuments::Instance(&Window());
    window.show();
    window.SetProgressRange(4);
    window.AddProgressStep();
    QAccessibleInterface* const bar = QAccessible::queryAccessibleInterface(window.findChild<QWidget*>("pgbar1"));
    ASSERT_NE(bar, nullptr);

    EXPECT_EQ(bar->text(QAccessible::Name).toStdString(), "Progress");
    EXPECT_EQ(window.findChild<QProgressBar*>("pgbar1")->text().toStdString(), "25%");
    ASSERT_NE(bar->valueInterface(), nullptr);
    EXPECT_EQ(bar->valueInterface()->currentValue().toInt(), 1);
    EXPECT_EQ(bar->valueInterface()->maximumValue().toInt(), 4);
    window.close();
}

TEST_F(NamesTest, ThePairThatNeverEndsSaysSo)
{
    QAccessibleInterface* const grid = QAccessible::queryAccessibleInterface(&Grid());
    ASSERT_NE(grid, nullptr);
    ASSERT_NE(grid->tableInterface(), nullptr);
    const auto description = [&](int row) {
        return grid->tableInterface()
            ->cellAt(row, ItemColumn::ReplaceWith)
            ->text(QAccessible::Description)
            .toStdString();
    };

    EXPECT_EQ(description(0), "");
    EXPECT_EQ(description(1), English(u"frmMain", u"grdItems.EndlessTip"));
}

}  // namespace
}  // namespace tessarine
