#include "ui/main/MainWindowTest.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLineEdit>

// What a change of an option control does at once: the mark, the enabling, the options of the selected rows.

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

class OptionHandlersTest : public MainWindowTest
{
protected:
    /// The window with a tab in front, not modified.
    void Show(int tab)
    {
        Window();
        ShowTab(tab);
        Window().PutIsModifed(false);
    }

    void Paste(const char* name, const QString& text)
    {
        QGuiApplication::clipboard()->setText(text);
        auto& box = The<QLineEdit>(name);
        box.selectAll();
        box.paste();
    }

    QColor Background(const char* name) { return The(name).palette().color(QPalette::Base); }
};

constexpr int files = 1;  // tabs
constexpr int options = 2;

// The mark.

struct OnTab {
    const char* name;
    int tab;
};

std::string NameOf(const testing::TestParamInfo<OnTab>& parameter)
{
    return parameter.param.name;
}

class MarkingBoxTest : public OptionHandlersTest, public testing::WithParamInterface<OnTab>
{
};

TEST_P(MarkingBoxTest, AClickMarksTheJob)
{
    Show(GetParam().tab);

    ClickBox(GetParam().name);

    EXPECT_TRUE(Window().IsModifed());
    EXPECT_EQ(Title(), "untitled (Modified) - Tessarine");
}

TEST_P(MarkingBoxTest, TheSpaceKeyMarksTheJobToo)
{
    Show(GetParam().tab);
    const bool before = IsChecked(GetParam().name);

    QTest::keyClick(&The(GetParam().name), Qt::Key_Space);

    EXPECT_NE(IsChecked(GetParam().name), before);
    EXPECT_TRUE(Window().IsModifed());
}

INSTANTIATE_TEST_SUITE_P(Boxes, MarkingBoxTest,
                         testing::Values(OnTab{"chkIncludesubfolders", files}, OnTab{"chkAllowAlert", options},
                                         OnTab{"chkBackupMode", options}, OnTab{"chkKeepOiginal", options},
                                         OnTab{"chkReadOnlyFile", options}, OnTab{"chkRequireCount", options},
                                         OnTab{"chkProccessLongestFileFirst", options}),
                         NameOf);

TEST_F(OptionHandlersTest, EveryBoxOfTheJobMarksItButTheCpus)
{
    // Those of the pairs change nothing as long as no row is selected.
    const QStringList ofPairs{"chkSelectAll", "chkMatchCase", "chkMatchWholeWord", "chkHAlfFulll",
                              "chkPromptOnReplace"};
    Window();

    for (QCheckBox* box : Window().findChildren<QCheckBox*>()) {
        if (ofPairs.contains(box->objectName()))
            continue;
        Window().PutIsModifed(false);
        box->toggle();
        EXPECT_EQ(Window().IsModifed(), box->objectName() != "chkCPUUsage") << box->objectName().toStdString();
    }
}

class MarkingTextTest : public OptionHandlersTest, public testing::WithParamInterface<OnTab>
{
};

TEST_P(MarkingTextTest, TypingMarksTheJob)
{
    if (std::string(GetParam().name) == "txtGetFileName")
        Options().FileToProcessSourceType = 1;
    Show(GetParam().tab);

    QTest::keyClicks(&The(GetParam().name), "7");

    EXPECT_EQ(Text(GetParam().name), "7");
    EXPECT_TRUE(Window().IsModifed());
}

INSTANTIATE_TEST_SUITE_P(Texts, MarkingTextTest,
                         testing::Values(OnTab{"txtStartFolder", files}, OnTab{"txtGetFileName", files},
                                         OnTab{"txtRevisonProperty", options}, OnTab{"txtPasswordOpen", options},
                                         OnTab{"cboversion", options}),
                         NameOf);

TEST_F(OptionHandlersTest, TheBoxOfTheCpuDoesNotMarkTheJob)
{
    Show(options);

    ClickBox("chkCPUUsage");

    EXPECT_TRUE(IsChecked("chkCPUUsage"));
    EXPECT_FALSE(Window().IsModifed());
}

TEST_F(OptionHandlersTest, TheNameOfTheListFileDoesNotMarkTheJob)
{
    Show(0);

    Type("txtLoadsearch", "/lists/a.csv");

    EXPECT_EQ(Text("txtLoadsearch"), "/lists/a.csv");
    EXPECT_FALSE(Window().IsModifed());
}

TEST_F(OptionHandlersTest, ChoosingTheSameFileTypeMarksTheJob)
{
    Show(files);

    QTest::keyClick(&The("cboSpreadsheetType"), Qt::Key_Down, Qt::AltModifier);
    auto& types = The<QComboBox>("cboSpreadsheetType");
    types.showPopup();
    QTest::keyClick(types.view(), Qt::Key_Return);

    EXPECT_EQ(Text("cboSpreadsheetType"), "*.Ppt*");
    EXPECT_TRUE(Window().IsModifed());
}

TEST_F(OptionHandlersTest, ChoosingAStepOfTheRevisionMarksTheJob)
{
    Show(options);

    QTest::keyClick(&The("cboversion"), Qt::Key_Down);

    EXPECT_EQ(Text("cboversion"), "1.0");
    EXPECT_TRUE(Window().IsModifed());
}

TEST_F(OptionHandlersTest, LoadingAProjectMarksThroughTheLongestFirstBoxAlone)
{
    Window();
    Options().BackupMode = true;
    Options().FileToProcessFolderPath = u"/decks";
    const auto marks = [this] {
        int count = 0;
        const auto counting = QObject::connect(&Window(), &QWidget::windowTitleChanged, [&count](const QString& title) {
            count += title.contains("(Modified)") ? 1 : 0;
        });
        Window().LoadProjectOnForm();
        QObject::disconnect(counting);
        Window().PutIsModifed(false);
        return count;
    };
    EXPECT_EQ(marks(), 1) << "of the source of the list";

    Options().ProcessLongestFindwhatFirst = true;
    Window().optFileProcess_Click(0);
    Window().PutIsModifed(false);
    EXPECT_EQ(marks(), 1) << "marked once, by the first of the two";
}

// The step of the revision, and the counts.

TEST_F(OptionHandlersTest, AStepOfTheRevisionThatIsNoNumberIsCleared)
{
    Show(options);

    QTest::keyClicks(&The("cboversion"), "1x");

    EXPECT_EQ(Text("cboversion"), "");
    EXPECT_TRUE(Window().IsModifed());
}

TEST_F(OptionHandlersTest, AStepOfTheRevisionThatIsANumberStays)
{
    Show(options);

    QTest::keyClicks(&The("cboversion"), "0.25");

    EXPECT_EQ(Text("cboversion"), "0.25");
}

class CountBoxTest : public OptionHandlersTest, public testing::WithParamInterface<const char*>
{
protected:
    void SetUp() override
    {
        Options().RestartApplicationAfterFiles = 12;
        Options().RestartApplicationAfterSeconds = 12;
        Show(options);
    }
};

TEST_P(CountBoxTest, DigitsAndBackspacePass)
{
    QTest::keyClick(&The(GetParam()), Qt::Key_End);
    QTest::keyClicks(&The(GetParam()), "34");
    EXPECT_EQ(Text(GetParam()), "1234");

    QTest::keyClick(&The(GetParam()), Qt::Key_Backspace);
    EXPECT_EQ(Text(GetParam()), "123");
}

TEST_P(CountBoxTest, EveryOtherCharacterIsSwallowed)
{
    QTest::keyClicks(&The(GetParam()), "a-+., E");

    EXPECT_EQ(Text(GetParam()), "12");
}

TEST_P(CountBoxTest, CharactersBeyondTheKeyboardAreSwallowed)
{
    QWidget& box = The(GetParam());

    for (const char16_t* typed : {u"\U0001F600", u"\u200D", u"\u0663"}) {
        QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString::fromUtf16(typed));
        QApplication::sendEvent(&box, &press);
    }
    QInputMethodEvent composed;
    composed.setCommitString("\u00E9");
    QApplication::sendEvent(&box, &composed);

    EXPECT_EQ(Text(GetParam()), "12");
}

TEST_P(CountBoxTest, DigitsOfAnInputMethodPass)
{
    QInputMethodEvent composed;
    composed.setCommitString("3");

    QApplication::sendEvent(&The(GetParam()), &composed);

    EXPECT_THAT(Text(GetParam()), testing::HasSubstr("3"));
}

TEST_P(CountBoxTest, APastedLetterReachesTheTextAndIsStoredAsZero)
{
    Paste(GetParam(), "q");
    EXPECT_EQ(Text(GetParam()), "q");

    Window().FillProjectObject();

    const bool isOfFiles = std::string(GetParam()) == "lstRestartFileCount";
    EXPECT_EQ(isOfFiles ? Options().RestartApplicationAfterFiles : Options().RestartApplicationAfterSeconds, 0);
}

TEST_P(CountBoxTest, AClickMarksTheJobWhereTypingDoesNot)
{
    QTest::keyClicks(&The(GetParam()), "5");
    EXPECT_FALSE(Window().IsModifed());

    Click(GetParam());
    EXPECT_TRUE(Window().IsModifed());
}

INSTANTIATE_TEST_SUITE_P(Counts, CountBoxTest, testing::Values("lstRestartFileCount", "lstRestartAfterSecond"),
                         [](const auto& parameter) { return std::string(parameter.param); });

// Where the files come from.

TEST_F(OptionHandlersTest, TheSourceOfFilesDecidesWhichBoxIsEnabled)
{
    Show(files);
    constexpr const char* ofFolder[] = {"picBrowse2", "txtStartFolder", "cmdBrowse2"};
    constexpr const char* ofFile[] = {"picBrowse3", "txtGetFileName", "cmdBrowse3"};
    const auto expect = [this, &ofFolder, &ofFile](bool isFolder) {
        for (const char* control : ofFolder)
            EXPECT_EQ(IsEnabled(control), isFolder) << control;
        for (const char* control : ofFile)
            EXPECT_EQ(IsEnabled(control), !isFolder) << control;
    };
    expect(true);

    ClickBox("optFileProcess(1)");
    expect(false);
    EXPECT_TRUE(Window().IsModifed());

    Window().PutIsModifed(false);
    ClickBox("optFileProcess(0)");
    expect(true);
    EXPECT_TRUE(Window().IsModifed());
}

TEST_F(OptionHandlersTest, AnUnusableBoxHasTheColourOfAButton)
{
    Show(files);
    const QPalette desktop;

    EXPECT_EQ(Background("txtStartFolder"), desktop.color(QPalette::Base));
    EXPECT_EQ(Background("txtGetFileName"), desktop.color(QPalette::Button));
    ClickBox("optFileProcess(1)");
    EXPECT_EQ(Background("txtStartFolder"), desktop.color(QPalette::Button));
    EXPECT_EQ(Background("txtGetFileName"), desktop.color(QPalette::Base));
}

// Where the list comes from.

TEST_F(OptionHandlersTest, TheSourceOfTheListEnablesTheBoxOfItsFile)
{
    Show(0);
    const QPalette desktop;
    const auto expect = [this, &desktop](bool isFile) {
        for (const char* control : {"picBrowse1", "txtLoadsearch", "cmdBrowse1"})
            EXPECT_EQ(IsEnabled(control), isFile) << control;
        EXPECT_EQ(Background("txtLoadsearch"), desktop.color(isFile ? QPalette::Base : QPalette::Button));
    };
    expect(true);

    ClickBox("optLoad(1)");
    expect(false);
    EXPECT_TRUE(Window().IsModifed());

    Window().PutIsModifed(false);
    ClickBox("optLoad(0)");
    expect(true);
    EXPECT_TRUE(Window().IsModifed());
}

TEST_F(OptionHandlersTest, TheGridIsGreyWhileTheListComesFromAFile)
{
    SetPairs({{u"a", u"b"}});
    Show(0);
    EXPECT_EQ(Grid().palette().color(QPalette::Text), QPalette().color(QPalette::Text));

    ClickBox("optLoad(0)");

    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText}) {
        EXPECT_EQ(Grid().palette().color(role), QColor(0x80, 0x80, 0x80)) << role;
        EXPECT_EQ(Grid().horizontalHeader()->palette().color(role), QColor(0x80, 0x80, 0x80)) << role;
    }
}

TEST_F(OptionHandlersTest, TheArrowKeysSwitchTheSourceOfTheList)
{
    Show(0);
    The("optLoad(0)").setFocus();

    QTest::keyClick(&The("optLoad(0)"), Qt::Key_Down);
    EXPECT_TRUE(IsChecked("optLoad(1)"));
    EXPECT_TRUE(IsEnabled("cmdAdd"));

    QTest::keyClick(&The("optLoad(1)"), Qt::Key_Up);
    EXPECT_TRUE(IsChecked("optLoad(0)"));
    EXPECT_FALSE(IsEnabled("cmdAdd"));
}

// The three options of a pair.

struct OptionOfPair {
    const char* name;
    bool OptionSetting::*field;
    const char* text;
};

class PairOptionTest : public OptionHandlersTest, public testing::WithParamInterface<OptionOfPair>
{
};

TEST_P(PairOptionTest, AClickReachesThePairOfTheSelectedRow)
{
    EditPairs({{u"a", u""}, {u"b", u""}});
    ClickCell(2, ItemColumn::Number);

    ClickBox(GetParam().name);

    EXPECT_TRUE((*Items().Item(2)->OptionSetting).*GetParam().field);
    EXPECT_FALSE((*Items().Item(1)->OptionSetting).*GetParam().field);
    EXPECT_EQ(Cell(2, ItemColumn::Options), GetParam().text);
    EXPECT_EQ(Cell(1, ItemColumn::Options), "");
    EXPECT_TRUE(Window().IsModifed());
}

TEST_P(PairOptionTest, TheBoxShowsTheRowThatTheUserGoesTo)
{
    SetPairs({{u"a", u""}, {u"b", u""}});
    (*Items().Item(2)->OptionSetting).*GetParam().field = true;
    Show(0);
    EXPECT_FALSE(IsChecked(GetParam().name));

    ClickCell(2, ItemColumn::Number);
    EXPECT_TRUE(IsChecked(GetParam().name));

    ClickCell(1, ItemColumn::Number);
    EXPECT_FALSE(IsChecked(GetParam().name));
    EXPECT_FALSE(Window().IsModifed()) << "looking changes nothing";
}

INSTANTIATE_TEST_SUITE_P(
    Options, PairOptionTest,
    testing::Values(OptionOfPair{"chkMatchCase", &OptionSetting::MatchCase, "Match Case"},
                    OptionOfPair{"chkMatchWholeWord", &OptionSetting::MatchWholeWord, "Match Whole Word"},
                    OptionOfPair{"chkPromptOnReplace", &OptionSetting::PromptOnReplace, "Prompt On Replace"}),
    [](const auto& parameter) { return std::string(parameter.param.name); });

TEST_F(OptionHandlersTest, AllSelectedRowsTakeAllThreeOptions)
{
    SetPairs({{u"a", u""}, {u"b", u""}, {u"c", u""}});
    Items().Item(1)->OptionSetting->PromptOnReplace = true;
    Items().Item(3)->OptionSetting->MatchWholeWord = true;
    Show(0);
    ClickCell(1, ItemColumn::Number);
    ClickCell(3, ItemColumn::Number, Qt::ControlModifier);

    ClickBox("chkMatchCase");

    for (const int row : {1, 3})
        EXPECT_EQ(Cell(row, ItemColumn::Options), "Match Case,Match Whole Word") << row;
    EXPECT_EQ(Cell(2, ItemColumn::Options), "");
}

TEST_F(OptionHandlersTest, WithoutASelectedRowAnOptionChangesNoPair)
{
    EditPairs({{u"a", u""}});
    Grid().clearSelection();

    ClickBox("chkMatchCase");

    EXPECT_TRUE(IsChecked("chkMatchCase"));
    EXPECT_FALSE(Items().Item(1)->OptionSetting->MatchCase);
    EXPECT_FALSE(Window().IsModifed());
}

TEST_F(OptionHandlersTest, TheBoxOfTheWidthReappliesTheOthers)
{
    EditPairs({{u"a", u""}, {u"b", u""}});
    Items().Item(1)->OptionSetting->MatchCase = true;  // the form does not know

    ClickBox("chkHAlfFulll");

    EXPECT_FALSE(Items().Item(1)->OptionSetting->MatchCase);
    EXPECT_EQ(Cell(1, ItemColumn::Options), "");
    EXPECT_TRUE(Window().IsModifed());
}

// Double clicks.

TEST_F(OptionHandlersTest, ADoubleClickOpensTheTextOfTheBox)
{
    const String list = folder.Write(u"a.csv");
    const String names = folder.Write(u"names.txt");
    const String decks = folder.MakeFolder(u"decks");
    Options().FileToProcessFolderPath = decks;
    CurrentProject->CustomProperies->Item(1)->PropertyValue = list;
    Show(0);
    QTest::mouseDClick(&The("txtLoadsearch"), Qt::LeftButton);
    ShowTab(files);
    QTest::mouseDClick(&The("txtStartFolder"), Qt::LeftButton);
    ClickBox("optFileProcess(1)");
    Type("txtGetFileName", ToQt(names));
    QTest::mouseDClick(&The("txtGetFileName"), Qt::LeftButton);

    EXPECT_THAT(shell.Opened(), ElementsAre(list, decks, names));
    EXPECT_THAT(Log(), IsEmpty());
}

}  // namespace
}  // namespace tessarine
