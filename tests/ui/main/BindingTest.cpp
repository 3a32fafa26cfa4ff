#include "ui/main/MainWindowTest.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QWindow>

#include <algorithm>

#include "model/ProjectKeys.h"

// What goes between the controls and the project, the title, and what is enabled when.

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class BindingTest : public MainWindowTest
{
protected:
    void Load()
    {
        Window().LoadProjectOnForm();
        Window().PutIsModifed(false);
    }

    std::vector<String> CustomPropertyValues()
    {
        std::vector<String> values;
        for (const auto& property : CurrentProject->CustomProperies->NewEnum())
            values.push_back(property->ProperyName + u'=' + property->PropertyValue);
        return values;
    }

    void TakeAllCustomProperties()
    {
        while (CurrentProject->CustomProperies->Count() > 0)
            CurrentProject->CustomProperies->Remove(1);
    }
};

// Check boxes.

struct BoxOfField {
    const char* name;
    int tab;
    bool ProjectOptions::*field;
};

class CheckBoxBindingTest : public BindingTest, public testing::WithParamInterface<BoxOfField>
{
};

TEST_P(CheckBoxBindingTest, AClickReachesTheFieldWhenTheProjectIsFilled)
{
    Window();
    ShowTab(GetParam().tab);
    ClickBox(GetParam().name);
    EXPECT_FALSE(Options().*GetParam().field) << "the form is no live editor";

    Window().FillProjectObject();
    EXPECT_TRUE(Options().*GetParam().field);

    ClickBox(GetParam().name);
    Window().FillProjectObject();
    EXPECT_FALSE(Options().*GetParam().field);
}

TEST_P(CheckBoxBindingTest, TheFieldIsShownWhenTheProjectIsLoaded)
{
    Window();
    Options().*GetParam().field = true;

    Load();
    EXPECT_TRUE(IsChecked(GetParam().name));

    Options().*GetParam().field = false;
    Load();
    EXPECT_FALSE(IsChecked(GetParam().name));
}

TEST_P(CheckBoxBindingTest, AGreyBoxCountsAsOff)
{
    Window();
    Options().*GetParam().field = true;
    The<QCheckBox>(GetParam().name).setCheckState(Qt::PartiallyChecked);

    Window().FillProjectObject();

    EXPECT_FALSE(Options().*GetParam().field);
}

INSTANTIATE_TEST_SUITE_P(Boxes, CheckBoxBindingTest,
                         testing::Values(BoxOfField{"chkIncludesubfolders", 1, &ProjectOptions::Include_Subfolders},
                                         BoxOfField{"chkAllowAlert", 2, &ProjectOptions::AllowAlerts},
                                         BoxOfField{"chkBackupMode", 2, &ProjectOptions::BackupMode},
                                         BoxOfField{"chkKeepOiginal", 2, &ProjectOptions::KeepOriginalFileDate},
                                         BoxOfField{"chkProccessLongestFileFirst", 2,
                                                    &ProjectOptions::ProcessLongestFindwhatFirst},
                                         BoxOfField{"chkReadOnlyFile", 2, &ProjectOptions::ProcessReadonlyFiles},
                                         BoxOfField{"chkRequireCount", 2, &ProjectOptions::RequiredFindAndReplaceCount},
                                         BoxOfField{"chkCPUUsage", 2, &ProjectOptions::CPUUsage}),
                         [](const auto& parameter) { return std::string(parameter.param.name); });

// Texts.

struct TextOfField {
    const char* name;
    int tab;
    String ProjectOptions::*field;
    const char16_t* text;
};

class TextBindingTest : public BindingTest, public testing::WithParamInterface<TextOfField>
{
};

TEST_P(TextBindingTest, WhatIsTypedReachesTheFieldWhenTheProjectIsFilled)
{
    Options().FileToProcessSourceType = std::string(GetParam().name) == "txtGetFileName" ? 1 : 0;
    Window();
    ShowTab(GetParam().tab);

    Type(GetParam().name, QString::fromUtf16(GetParam().text));
    EXPECT_EQ(Options().*GetParam().field, u"");
    Window().FillProjectObject();

    EXPECT_EQ(Options().*GetParam().field, GetParam().text);
}

TEST_P(TextBindingTest, TheFieldIsShownWhenTheProjectIsLoaded)
{
    Window();
    Options().*GetParam().field = GetParam().text;

    Load();

    EXPECT_EQ(Text(GetParam().name), ToUtf8(GetParam().text));
}

INSTANTIATE_TEST_SUITE_P(
    Texts, TextBindingTest,
    testing::Values(TextOfField{"txtStartFolder", 1, &ProjectOptions::FileToProcessFolderPath, u"/decks/Präsentation"},
                    TextOfField{"txtGetFileName", 1, &ProjectOptions::FileToProcessFilepath, u"/decks/名前.txt"},
                    TextOfField{"cboversion", 2, &ProjectOptions::RevisionDocumentPropertyIncrimentedBy, u"2.5"},
                    TextOfField{"txtRevisonProperty", 2, &ProjectOptions::RevisionDocumentPropertyName, u"Rev no"}),
    [](const auto& parameter) { return std::string(parameter.param.name); });

TEST_F(BindingTest, ThePasswordIsShownButNeverTakenFromTheForm)
{
    Options().PasswordToOpen = u"stored";
    Window();
    EXPECT_EQ(Text("txtPasswordOpen"), "stored");
    ShowTab(2);
    Type("txtPasswordOpen", "typed");

    Window().FillProjectObject();

    EXPECT_EQ(Options().PasswordToOpen, u"stored");
}

// Counts.

struct CountOfField {
    const char* name;
    std::int32_t ProjectOptions::*field;
};

class CountBindingTest : public BindingTest, public testing::WithParamInterface<CountOfField>
{
protected:
    std::int32_t Filled(const QString& text)
    {
        The<QLineEdit>(GetParam().name).setText(text);
        Window().FillProjectObject();
        return Options().*GetParam().field;
    }
};

TEST_P(CountBindingTest, ANumberIsStored)
{
    EXPECT_EQ(Filled("25"), 25);
}

TEST_P(CountBindingTest, AnEmptyTextIsStoredAsZero)
{
    Options().*GetParam().field = 7;
    EXPECT_EQ(Filled(""), 0);
}

TEST_P(CountBindingTest, ATextThatIsNoNumberIsStoredAsZero)
{
    Options().*GetParam().field = 7;
    EXPECT_EQ(Filled("3 files"), 0);
}

TEST_P(CountBindingTest, ANumberBeyond32BitsIsLoggedAndEndsTheFilling)
{
    Window();
    Options().*GetParam().field = 7;
    Options().CPUUsage = true;
    The<QAbstractButton>("chkBackupMode").setChecked(true);

    EXPECT_EQ(Filled("2147483648"), 7);

    EXPECT_TRUE(Options().BackupMode) << "taken before the failure";
    EXPECT_TRUE(Options().CPUUsage) << "comes after the failure";
    EXPECT_THAT(Log(), HasSubstr("Error 6 (Overflow) in procedure FillProjectObject at Line No. 0 of Form frmMain"));
}

TEST_P(CountBindingTest, TheNumberIsShownInDecimalDigits)
{
    Options().*GetParam().field = -1200;
    Window();
    EXPECT_EQ(Text(GetParam().name), "-1200");
}

INSTANTIATE_TEST_SUITE_P(
    Counts, CountBindingTest,
    testing::Values(CountOfField{"lstRestartFileCount", &ProjectOptions::RestartApplicationAfterFiles},
                    CountOfField{"lstRestartAfterSecond", &ProjectOptions::RestartApplicationAfterSeconds}),
    [](const auto& parameter) { return std::string(parameter.param.name); });

// Where the files and the list come from.

TEST_F(BindingTest, AClickOnASourceOfFilesReachesTheProject)
{
    Window();
    ShowTab(1);

    ClickBox("optFileProcess(1)");
    Window().FillProjectObject();
    EXPECT_EQ(Options().FileToProcessSourceType, 1);

    ClickBox("optFileProcess(0)");
    Window().FillProjectObject();
    EXPECT_EQ(Options().FileToProcessSourceType, 0);
}

TEST_F(BindingTest, AnySourceOfFilesBut0IsStoredAs1)
{
    Options().FileToProcessSourceType = 7;
    Window();
    EXPECT_TRUE(IsChecked("optFileProcess(1)"));
    EXPECT_FALSE(IsChecked("optFileProcess(0)"));

    Window().FillProjectObject();

    EXPECT_EQ(Options().FileToProcessSourceType, 1);
}

TEST_F(BindingTest, AClickOnASourceOfTheListReachesTheProject)
{
    Window();

    ClickBox("optLoad(1)");
    Window().FillProjectObject();
    EXPECT_EQ(CurrentProject->CustomProperies->Item(2)->PropertyValue, u"INTERNAL");
    EXPECT_FALSE(IsChecked("optLoad(0)"));

    ClickBox("optLoad(0)");
    Window().FillProjectObject();
    EXPECT_EQ(CurrentProject->CustomProperies->Item(2)->PropertyValue, u"EXTERNAL");
    EXPECT_FALSE(IsChecked("optLoad(1)"));
}

TEST_F(BindingTest, TheThreeCustomPropertiesAreWrittenAnew)
{
    CurrentProject->CustomProperies->Add(u"Colour", u"blue");
    CurrentProject->CustomProperies->Item(3)->PropertyValue = u"old.lng";
    Window();
    CurrentLanguageFile = u"German.lng";
    Type("txtLoadsearch", "/lists/a.csv");

    Window().FillProjectObject();

    EXPECT_THAT(CustomPropertyValues(), ElementsAre(u"FindAndReplaceFilePath=/lists/a.csv",
                                                    u"FindAndReplaceListSource=EXTERNAL", u"LANG=German.lng"));
}

TEST_F(BindingTest, FillingTheProjectTwiceLeavesThreeCustomProperties)
{
    Window();

    Window().FillProjectObject();
    Window().FillProjectObject();

    EXPECT_EQ(CurrentProject->CustomProperies->Count(), 3);
}

TEST_F(BindingTest, FillingTheProjectPutsTheLanguageInForce)
{
    CurrentProject->CustomProperies->Item(3)->PropertyValue = u"gone.lng";
    Window();
    EXPECT_EQ(CurrentProject->CustomProperies->Item(3)->PropertyValue, u"gone.lng");

    Window().close();

    EXPECT_THAT(CustomPropertyValues(), testing::Contains(u"LANG=English.lng"));
}

TEST_F(BindingTest, ASearchMethodThatDoesNotExistHasNoName)
{
    EditPairs({{u"a", u"b"}, {u"c", u"d"}});
    CurrentProject->FindAndReplaceList->Item(2)->OptionSetting->SearchMethod = 5;
    const auto searchType = [this](int pair) {
        const auto& items = Grid().Items();
        return items.data(items.index(pair - 1, ItemColumn::SearchType), Qt::DisplayRole).toString().toStdString();
    };

    Window().LoadProjectOnForm();

    EXPECT_EQ(searchType(1), "Normal Search");
    EXPECT_EQ(searchType(2), "");
}

TEST_F(BindingTest, TheListFileIsShownWithoutBlanksAround)
{
    CurrentProject->CustomProperies->Item(1)->PropertyValue = u"  /lists/my list.csv ";

    EXPECT_EQ(Text("txtLoadsearch"), "/lists/my list.csv");
}

TEST_F(BindingTest, ExternalInSmallLettersWithBlanksAroundSelectsTheListFile)
{
    EditPairs({{u"a", u"b"}});
    CurrentProject->CustomProperies->Item(2)->PropertyValue = u"  external ";

    Load();

    EXPECT_TRUE(IsChecked("optLoad(0)"));
    EXPECT_FALSE(IsChecked("optLoad(1)"));
    EXPECT_TRUE(IsEnabled("txtLoadsearch"));
    EXPECT_FALSE(IsEnabled("grdItems"));
}

TEST_F(BindingTest, AnyOtherSourceSelectsTheValuesInTheWindow)
{
    CurrentProject->CustomProperies->Item(2)->PropertyValue = u"ELSEWHERE";

    EXPECT_TRUE(IsChecked("optLoad(1)"));
    EXPECT_FALSE(IsChecked("optLoad(0)"));
}

// File types.

TEST_F(BindingTest, AnUnknownFileTypeIsReplacedByTheFirstOne)
{
    Options().ComaSepAllowedExtensions = u"*.pps";
    EXPECT_EQ(Text("cboSpreadsheetType"), "*.Ppt*");

    Window().FillProjectObject();

    EXPECT_EQ(Options().ComaSepAllowedExtensions, u"*.Ppt*");
}

TEST_F(BindingTest, AFileTypeIsSelectedWhateverItsCase)
{
    auto& types = The<QComboBox>("cboSpreadsheetType");
    types.addItems({"*.pot", "*.POT"});
    Options().ComaSepAllowedExtensions = u"*.PoT";

    Load();

    EXPECT_EQ(types.currentIndex(), 1) << "the first equal one";
}

// The list of pairs.

TEST_F(BindingTest, FillingTheProjectLeavesTheListOfPairsAlone)
{
    EditPairs({{u"a", u"b"}, {u"c", u"d"}});
    const auto list = CurrentProject->FindAndReplaceList;

    Window().FillProjectObject();

    EXPECT_EQ(CurrentProject->FindAndReplaceList, list);
    EXPECT_THAT(Finds(), ElementsAre("a", "c"));
}

/// A value that no fresh project has, and that every control takes.
struct PutUnusualValue {
    void operator()(bool& field) const { field = true; }
    void operator()(std::int32_t& field) const { field = 1; }
    void operator()(String& field) const { field = u"2"; }
};

TEST_F(BindingTest, TheFormShowsAndTakesEveryStoredOption)
{
    const std::vector<String> notOnTheForm{u"ExeLocationIncaseOfFailure", u"PowerpointVersion"};
    // The list of patterns has one entry, and a pattern that is not in it is not shown.
    const std::vector<String> notChosen{u"ComaSepAllowedExtensions"};
    Window();
    RunOptions shown;
    for (const StoredOption& option : StoredOptions)
        std::visit([&](auto field) { PutUnusualValue()(shown.*field); }, option.field);
    static_cast<RunOptions&>(Options()) = shown;
    Load();
    static_cast<RunOptions&>(Options()) = {};

    Window().FillProjectObject();

    for (const StoredOption& option : StoredOptions) {
        if (std::ranges::count(notChosen, option.key))
            continue;
        const bool isOnTheForm = std::ranges::count(notOnTheForm, option.key) == 0;
        std::visit([&](auto field) { EXPECT_EQ(Options().*field == shown.*field, isOnTheForm) << ToUtf8(option.key); },
                   option.field);
    }
}

// Failures.

TEST_F(BindingTest, AProjectWithoutCustomPropertiesIsLoadedHalfway)
{
    Window();
    ClickBox("optLoad(1)");
    TakeAllCustomProperties();
    Options().BackupMode = true;

    Load();

    EXPECT_TRUE(IsChecked("chkBackupMode"));
    EXPECT_TRUE(IsChecked("optLoad(1)")) << "keeps its state";
    EXPECT_THAT(Log(), HasSubstr("in procedure LoadProjectOnForm at Line No. 0 of Form frmMain"));
}

TEST_F(BindingTest, AFailedLoadWithAnEmptyListKeepsChangesFromMarking)
{
    Window();
    TakeAllCustomProperties();
    Load();
    ShowTab(2);

    ClickBox("chkBackupMode");
    EXPECT_FALSE(Window().IsModifed());

    for (const StringView value : {u"", u"EXTERNAL", u""})
        CurrentProject->CustomProperies->Add(u"", String(value));
    Load();
    ClickBox("chkBackupMode");
    EXPECT_TRUE(Window().IsModifed());
}

TEST_F(BindingTest, AfterALoadThatFailedWithPairsChangesMark)
{
    SetPairs({{u"a", u"b"}});
    TakeAllCustomProperties();
    Window().PutIsModifed(false);
    ShowTab(2);

    ClickBox("chkBackupMode");

    EXPECT_TRUE(Window().IsModifed());
}

// The title.

TEST_F(BindingTest, AFileNameIsShownWholeWhateverItHolds)
{
    Window().PutProjectFile(u"/jobs/a[*] & b[*][*].tsq");

    // As the window manager gets it.
    EXPECT_EQ(Window().windowHandle()->title().toStdString(), "a[*] & b[*][*] - Tessarine");
}

TEST_F(BindingTest, TheDefaultProjectIsUntitledAndNotModified)
{
    EXPECT_EQ(Title(), "untitled - Tessarine");
    EXPECT_FALSE(Window().IsModifed());
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(BindingTest, TheTitleHasTheFilesNameWithoutItsEnding)
{
    Window().PutProjectFile(u"/jobs/2024/Autumn decks.tsq");
    EXPECT_EQ(Title(), "Autumn decks - Tessarine");

    Window().PutIsModifed(true);
    EXPECT_EQ(Title(), "Autumn decks (Modified) - Tessarine");
}

TEST_F(BindingTest, TheEndingInCapitalsStaysInTheTitle)
{
    Window().PutProjectFile(u"/jobs/decks.TSQ");
    EXPECT_EQ(Title(), "decks.TSQ - Tessarine");
}

TEST_F(BindingTest, EveryEndingInTheNameLeavesTheTitle)
{
    Window().PutProjectFile(u"  /jobs/a.tsq.b.tsq ");
    EXPECT_EQ(Title(), "a.b - Tessarine");
}

TEST_F(BindingTest, ABlankFileNameIsUntitled)
{
    Window().PutProjectFile(u"   ");
    EXPECT_EQ(Title(), "untitled - Tessarine");
}

// What is enabled.

constexpr const char* ofItems[] = {"grdItems",          "lstLookIn",          "chkSelectAll", "chkMatchCase",
                                   "chkMatchWholeWord", "chkPromptOnReplace", "chkHAlfFulll", "cmdDelete"};

TEST_F(BindingTest, WithPairsInTheWindowAllOfThemCanBeEdited)
{
    EditPairs({{u"a", u"b"}});

    for (const char* control : ofItems)
        EXPECT_TRUE(IsEnabled(control)) << control;
    EXPECT_TRUE(IsEnabled("cmdAdd"));
}

TEST_F(BindingTest, WithAnEmptyListARowCanOnlyBeAdded)
{
    EditPairs({});

    for (const char* control : ofItems)
        EXPECT_FALSE(IsEnabled(control)) << control;
    EXPECT_TRUE(IsEnabled("cmdAdd"));
}

TEST_F(BindingTest, WithTheListInAFileNothingCanBeEdited)
{
    EditPairs({{u"a", u"b"}});

    ClickBox("optLoad(0)");

    for (const char* control : ofItems)
        EXPECT_FALSE(IsEnabled(control)) << control;
    EXPECT_FALSE(IsEnabled("cmdAdd"));
    EXPECT_EQ(Grid().Rows(), 2);
}

}  // namespace
}  // namespace tessarine
