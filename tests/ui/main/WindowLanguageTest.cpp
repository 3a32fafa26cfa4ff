#include "ui/main/MainWindowTest.h"

#include <algorithm>

#include <QAction>
#include <QComboBox>
#include <QDialog>
#include <QPushButton>
#include <QTabWidget>
#include <QTimer>
#include <QToolBar>

#include "app/GlobalState.h"
#include "app/Main.h"
#include "platform/ProgramFolder.h"

// The change of language from the menu.

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

class WindowLanguageTest : public MainWindowTest
{
protected:
    /// Chooses an entry of the list, none when empty, and ends the dialog with a button.
    void ChangeLanguage(const QString& language, const char* button = "cmdOK")
    {
        Window();
        bool wasShown = false;
        QTimer::singleShot(0, [&] {
            QWidget* const dialog = QApplication::activeModalWidget();
            ASSERT_NE(dialog, nullptr);
            wasShown = true;
            auto* const list = dialog->findChild<QComboBox*>("cboLanguage");
            if (!language.isEmpty()) {
                const int entry = list->findText(language);
                EXPECT_GE(entry, 0) << language.toStdString();
                list->setCurrentIndex(entry);
            }
            QTest::mouseClick(dialog->findChild<QPushButton*>(button), Qt::LeftButton);
            if (dialog->isVisible())
                static_cast<QDialog*>(dialog)->reject();
        });
        Choose("mnuChangeLanguage");
        EXPECT_TRUE(wasShown);
    }

    std::string Caption(const char* menuItem) { return The<QAction>(menuItem).text().toStdString(); }

    int LanguageProperties()
    {
        return static_cast<int>(std::ranges::count_if(CurrentProject->CustomProperies->NewEnum(),
                                                      [](const auto& p) { return p->ProperyName == u"LANG"; }));
    }

    /// Starts the program anew and gives the caption of the menu item Open.
    std::string OpenCaptionOfANewStart()
    {
        std::string caption;
        CurrentProject->FindAndReplaceList.reset();
        CurrentLanguageFile.clear();
        Main({powerPoint.Provider()}, {[] { return false; }, [](auto&&...) {},
                                       [&] {
                                           const frmMain window;
                                           caption = window.findChild<QAction*>("mnuOpen")->text().toStdString();
                                       }});
        return caption;
    }
};

TEST_F(WindowLanguageTest, OKChangesTheTextsOfTheWindowAtOnce)
{
    EditPairs({{u"a", u"b"}});
    ASSERT_EQ(Caption("mnuOpen"), "&Open");

    ChangeLanguage("German");

    EXPECT_EQ(CurrentLanguageFile, u"German.lng");
    EXPECT_EQ(Caption("mnuOpen"), "Ö&ffnen");
    EXPECT_EQ(Caption("menuOption"), "&Optionen");
    EXPECT_EQ(The<QToolBar>("Toolbar1").actions().at(0)->toolTip().toStdString(), "Öffnen");
    EXPECT_EQ(The<QTabWidget>("SSTab1").tabText(0).toStdString(), English(u"frmMain", u"SSTab1.TabCaption(0)"));
    EXPECT_NE(The<QTabWidget>("SSTab1").tabText(0), "Replacement");
    EXPECT_EQ(The<QPushButton>("cmdAdd").text().toStdString(), English(u"frmMain", u"cmdAdd.caption"));
    EXPECT_EQ(Grid().Items().headerData(ItemColumn::FindWhat, Qt::Horizontal, Qt::DisplayRole).toString().toStdString(),
              English(u"frmMain", u"vsflex.TextMatrix(0,1)"));
    EXPECT_THAT(Finds(), ElementsAre("a"));
    EXPECT_FALSE(Window().IsModifed());
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(WindowLanguageTest, TheTitlesOfTheFileDialogsChangeToo)
{
    ChangeLanguage("German");
    shell.NextFile(std::nullopt);

    Choose("mnuOpen");

    EXPECT_EQ(shell.FileDialogs().front().properties.DialogTitle, FromUtf8("Projekt öffnen"));
}

TEST_F(WindowLanguageTest, CancelChangesNeitherLanguageNorProject)
{
    ChangeLanguage("German", "cmdCancel");

    EXPECT_EQ(CurrentLanguageFile, u"English.lng");
    EXPECT_EQ(Caption("mnuOpen"), "&Open");
    EXPECT_EQ(CurrentProject->CustomProperies->Count(), 3);
}

TEST_F(WindowLanguageTest, TheLanguageInForceChosenAgainAddsOneMoreProperty)
{
    ChangeLanguage("English");
    ChangeLanguage("English");

    EXPECT_EQ(CurrentLanguageFile, u"English.lng");
    EXPECT_EQ(CurrentProject->CustomProperies->Count(), 5);
    EXPECT_EQ(LanguageProperties(), 3);
    EXPECT_EQ(Caption("mnuOpen"), "&Open");
}

TEST_F(WindowLanguageTest, ASaveBringsThePropertiesBackToThree)
{
    ChangeLanguage("German");
    shell.NextFile(folder.PathOf(u"job.tsq"));

    Choose("menuSave");

    ASSERT_EQ(CurrentProject->CustomProperies->Count(), 3);
    EXPECT_EQ(CurrentProject->CustomProperies->Item(3)->ProperyName, u"LANG");
    EXPECT_EQ(CurrentProject->CustomProperies->Item(3)->PropertyValue, u"German.lng");
}

TEST_F(WindowLanguageTest, WithoutLanguageFilesTheWindowLosesItsCaptions)
{
    Window();
    SetProgramFolder(folder.MakeFolder(u"program"));
    folder.MakeFolder(u"program/Languages");

    ChangeLanguage({});

    EXPECT_EQ(CurrentLanguageFile, u".lng");
    EXPECT_EQ(Caption("mnuOpen"), "");
    EXPECT_EQ(The<QPushButton>("cmdAdd").text(), "");
    EXPECT_EQ(The<QTabWidget>("SSTab1").tabText(0), "");
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(WindowLanguageTest, ALanguageFileInCapitalsIsNotFound)
{
    Window();
    folder.Write(u"program/Languages/Latin.LNG", "[frmMain]\nmnuOpen.caption=Aperi\n");
    SetProgramFolder(folder.PathOf(u"program"));

    ChangeLanguage("Latin.LNG");

    EXPECT_EQ(CurrentLanguageFile, u"Latin.LNG.lng");
    EXPECT_EQ(Caption("mnuOpen"), "");
}

TEST_F(WindowLanguageTest, TheChoiceSurvivesACloseAndANewStart)
{
    ASSERT_TRUE(GetFileStorageFolder());  // where the new start looks
    ChangeLanguage("German");
    Window().close();
    ASSERT_FALSE(Window().isVisible());

    EXPECT_EQ(OpenCaptionOfANewStart(), "Ö&ffnen");
    EXPECT_EQ(CurrentLanguageFile, u"German.lng");
}

TEST_F(WindowLanguageTest, TheChoiceIsLostWithoutAClose)
{
    ASSERT_TRUE(GetFileStorageFolder());
    Window().close();
    Window().show();
    ChangeLanguage("German");

    EXPECT_EQ(OpenCaptionOfANewStart(), "&Open");
    EXPECT_EQ(CurrentLanguageFile, u"English.lng");
}

}  // namespace
}  // namespace tessarine
