#include <gmock/gmock.h>

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTest>

#include "app/GlobalState.h"
#include "i18n/frmChangeLanguage.h"
#include "i18n/QtText.h"
#include "platform/ProgramFolder.h"
#include "settings/SettingsStore.h"
#include "support/ErrorLogRecorder.h"
#include "support/FakePowerPoint.h"
#include "support/qt/UserFolders.h"

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

/// A program folder with language files, a project with its three properties, and the dialog once it is shown.
class ChangeLanguageTest : public testing::Test
{
protected:
    ChangeLanguageTest()
    {
        previousFolder_ = SetProgramFolder(program_.Path());
        program_.Write(u"Languages/English.lng",
                       "[frmChangeLanguage]\nfrmProcessingDocuments.caption=Change Language\n"
                       "lblLanguage.caption=&Language\ncmdOK.caption=OK\ncmdCancel.caption=Cancel\n");
        program_.Write(u"Languages/German.lng",
                       "[frmChangeLanguage]\nfrmProcessingDocuments.caption=Sprache ändern\n"
                       "lblLanguage.caption=&Sprache\ncmdOK.caption=OK\ncmdCancel.caption=Abbrechen\n");
        CurrentLanguageFile = u"English.lng";
        CurrentProject = std::make_shared<Project>(powerPoint_.Provider());
        for (const char16_t* name : {u"FindAndReplaceFilePath", u"FindAndReplaceListSource", u"LANG"})
            CurrentProject->CustomProperies->Add(name, {});
    }

    ~ChangeLanguageTest() override
    {
        CurrentProject->FindAndReplaceList.reset();
        CurrentProject.reset();
        CurrentLanguageFile.clear();
        SetProgramFolder(previousFolder_);
    }

    frmChangeLanguage& Dialog()
    {
        if (!dialog_) {
            dialog_ = std::make_unique<frmChangeLanguage>();
            dialog_->LanguageChanged += [this] { changes_.push_back({CurrentLanguageFile, dialog_->isVisible()}); };
            dialog_->open();
        }
        return *dialog_;
    }

    template <class Control>
    Control& Find(const char* name)
    {
        auto* const control = Dialog().findChild<Control*>(name);
        if (!control)
            throw std::runtime_error(std::string("no control ") + name);
        return *control;
    }

    QComboBox& Languages() { return Find<QComboBox>("cboLanguage"); }

    void Click(const char* button) { QTest::mouseClick(&Find<QPushButton>(button), Qt::LeftButton); }

    std::vector<String> Names()
    {
        std::vector<String> names;
        for (int i = 0; i < Languages().count(); ++i)
            names.push_back(FromQt(Languages().itemText(i)));
        return names;
    }

    struct Change {
        String languageFile;
        bool isVisible;

        bool operator==(const Change&) const = default;
    };

    UserFolders user_;
    ErrorLogRecorder log_;
    TemporaryFolder program_;
    FakePowerPoint powerPoint_;
    String previousFolder_;
    std::unique_ptr<frmChangeLanguage> dialog_;
    std::vector<Change> changes_;
};

TEST_F(ChangeLanguageTest, ListsTheLanguageFilesAndSelectsTheOneInForce)
{
    CurrentLanguageFile = u"German.lng";
    program_.Write(u"Languages/.Hidden.lng");
    program_.Write(u"Languages/Readme.txt");
    program_.MakeFolder(u"Languages/Folder.lng");

    EXPECT_THAT(Names(), ElementsAre(u".Hidden", u"English", u"German"));
    EXPECT_EQ(Languages().currentText(), "German");
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(ChangeLanguageTest, SelectsNothingWhenTheLanguageInForceHasNoFile)
{
    CurrentLanguageFile = u"english.lng";

    EXPECT_EQ(Languages().currentIndex(), -1);
    EXPECT_EQ(Languages().currentText(), "");
}

TEST_F(ChangeLanguageTest, SpeaksTheLanguageInForceButForItsTitle)
{
    CurrentLanguageFile = u"German.lng";

    EXPECT_EQ(Dialog().windowTitle(), "Options");
    EXPECT_EQ(Find<QLabel>("lblLanguage").text(), "&Sprache");
    EXPECT_EQ(Find<QPushButton>("cmdOK").text(), "OK");
    EXPECT_EQ(Find<QPushButton>("cmdCancel").text(), "Abbrechen");
}

TEST_F(ChangeLanguageTest, HasEmptyCaptionsWithoutTheLanguagesFile)
{
    CurrentLanguageFile = u".lng";

    EXPECT_EQ(Dialog().windowTitle(), "Options");
    EXPECT_EQ(Find<QLabel>("lblLanguage").text(), "");
    EXPECT_EQ(Find<QPushButton>("cmdOK").text(), "");
    EXPECT_EQ(Find<QPushButton>("cmdCancel").text(), "");
}

TEST_F(ChangeLanguageTest, KeepsTheChoiceBeforeItTellsOfIt)
{
    Languages().setCurrentText("German");

    Click("cmdOK");

    EXPECT_THAT(changes_, ElementsAre(Change{u"German.lng", false}));
    EXPECT_EQ(CurrentLanguageFile, u"German.lng");
    EXPECT_EQ(GetSetting(u"tessarine", u"INIFILE", u"PATH"), u"German.lng");
    ASSERT_EQ(CurrentProject->CustomProperies->Count(), 4);
    EXPECT_EQ(CurrentProject->CustomProperies->Item(4)->ProperyName, u"LANG");
    EXPECT_EQ(CurrentProject->CustomProperies->Item(4)->PropertyValue, u"German");
    EXPECT_EQ(CurrentProject->CustomProperies->Item(3)->PropertyValue, u"");
    EXPECT_FALSE(Dialog().isVisible());
}

TEST_F(ChangeLanguageTest, TakesTheLanguageInForceOnceMore)
{
    Click("cmdOK");
    Click("cmdOK");

    EXPECT_EQ(changes_.size(), 2u);
    EXPECT_EQ(CurrentProject->CustomProperies->Count(), 5);
    EXPECT_EQ(CurrentLanguageFile, u"English.lng");
}

TEST_F(ChangeLanguageTest, ChangesNothingWhenCancelled)
{
    Languages().setCurrentText("German");

    Click("cmdCancel");

    EXPECT_THAT(changes_, IsEmpty());
    EXPECT_EQ(CurrentLanguageFile, u"English.lng");
    EXPECT_EQ(CurrentProject->CustomProperies->Count(), 3);
    EXPECT_EQ(GetSetting(u"tessarine", u"INIFILE", u"PATH"), u"");
    EXPECT_FALSE(Dialog().isVisible());
}

TEST_F(ChangeLanguageTest, IsWorkedByTheKeyboard)
{
    QTest::keyClick(&Languages(), Qt::Key_Down);
    QTest::keyClick(&Languages(), Qt::Key_Return);
    EXPECT_EQ(CurrentLanguageFile, u"German.lng");

    Dialog().open();
    QTest::keyClick(&Dialog(), Qt::Key_Escape);
    EXPECT_FALSE(Dialog().isVisible());
    EXPECT_EQ(changes_.size(), 1u);
}

class ChangeLanguageWithoutFilesTest : public ChangeLanguageTest
{
protected:
    ChangeLanguageWithoutFilesTest()
    {
        SetProgramFolder(otherProgram_.Path());
        otherProgram_.MakeFolder(u"Languages");
    }

    TemporaryFolder otherProgram_;
};

TEST_F(ChangeLanguageWithoutFilesTest, EndsWithAnExtensionAlone)
{
    EXPECT_THAT(Names(), IsEmpty());

    Click("cmdOK");

    EXPECT_EQ(CurrentLanguageFile, u".lng");
    EXPECT_EQ(CurrentProject->CustomProperies->Item(4)->PropertyValue, u"");
}

TEST_F(ChangeLanguageWithoutFilesTest, TakesAMissingFolderForAnEmptyOne)
{
    SetProgramFolder(otherProgram_.PathOf(u"gone"));

    EXPECT_THAT(Names(), IsEmpty());
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(ChangeLanguageWithoutFilesTest, KeepsAnExtensionInCapitals)
{
    otherProgram_.Write(u"Languages/Polish.LNG");
    otherProgram_.Write(u"Languages/a.lng.lng");
    EXPECT_THAT(Names(), ElementsAre(u"Polish.LNG", u"a"));

    Languages().setCurrentIndex(0);
    Click("cmdOK");

    EXPECT_EQ(CurrentLanguageFile, u"Polish.LNG.lng");
}

TEST_F(ChangeLanguageTest, LogsSettingsThatCannotBeWrittenAndStays)
{
    user_.BlockSettings();

    Click("cmdOK");

    ASSERT_EQ(log_.Lines().size(), 1u);
    EXPECT_THAT(log_.Lines().front(),
                testing::HasSubstr("in procedure cmdOK_Click at Line No. 0 of Form frmChangeLanguage"));
    EXPECT_TRUE(Dialog().isVisible());
    EXPECT_THAT(changes_, IsEmpty());
}

}  // namespace
}  // namespace tessarine
