#include "i18n/LanguageOfControls.h"

#include <gmock/gmock.h>

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>
#include <QToolBar>

#include "app/ChosenLanguage.h"
#include "support/ErrorLogRecorder.h"
#include "support/TemporaryFolder.h"

namespace tessarine
{
namespace
{

/// A window with built-in texts, and a language file for it.
class LanguageOfControlsTest : public testing::Test
{
protected:
    template <class Control>
    Control& Add(const char* name)
    {
        auto* const control = new Control(&window_);
        control->setObjectName(name);
        control->setToolTip("built in");
        return *control;
    }

    template <class Control>
    Control& AddCaptioned(const char* name)
    {
        Control& control = Add<Control>(name);
        control.setText("built in");
        return control;
    }

    static QAction& AddItem(QWidget& menu, const char* name, const QString& text = "built in")
    {
        auto* const item = new QAction(text, &menu);
        item->setObjectName(name);
        menu.addAction(item);
        return *item;
    }

    static QMenu& AddMenu(QMenuBar& bar, const char* name)
    {
        QMenu* const menu = bar.addMenu("built in");
        menu->menuAction()->setObjectName(name);
        return *menu;
    }

    /// Applies a language file that has these keys for the window.
    void Apply(const std::string& keys, ControlTips tips = ControlTips::TextAndListBoxes)
    {
        program_.Write(u"Languages/English.lng", "[frmTest]\n" + keys + "\n[frmOther]\nlbl.caption=wrong window\n");
        ApplyLanguage(window_, u"frmTest", tips);
    }

    const ErrorLogRecorder log_;
    const TemporaryFolder program_;
    const ChosenLanguage language_{program_.Path(), u"English.lng"};
    QMainWindow window_;
};

TEST_F(LanguageOfControlsTest, GivesLabelsAndButtonsACaptionAndATip)
{
    auto& label = AddCaptioned<QLabel>("lbl");
    auto& button = AddCaptioned<QPushButton>("cmd");
    auto& option = AddCaptioned<QRadioButton>("opt");
    auto& box = AddCaptioned<QCheckBox>("chk");

    Apply(
        "lbl.caption=Label\nlbl.ToolTipText=Label tip\ncmd.caption=&Button\ncmd.ToolTipText=Button tip\n"
        "opt.caption=Option\nopt.ToolTipText=Option tip\nchk.caption=Box\nchk.ToolTipText=Box tip");

    EXPECT_EQ(label.text(), "Label");
    EXPECT_EQ(label.toolTip(), "Label tip");
    EXPECT_EQ(button.text(), "&Button");
    EXPECT_EQ(button.toolTip(), "Button tip");
    EXPECT_EQ(option.text(), "Option");
    EXPECT_EQ(option.toolTip(), "Option tip");
    EXPECT_EQ(box.text(), "Box");
    EXPECT_EQ(box.toolTip(), "Box tip");
    EXPECT_THAT(log_.Lines(), testing::IsEmpty());
}

TEST_F(LanguageOfControlsTest, EmptiesWhatTheFileIsSilentAbout)
{
    auto& label = AddCaptioned<QLabel>("lbl");
    auto& frame = Add<QGroupBox>("fra");
    frame.setTitle("built in");
    auto& grid = Add<QTableView>("grd");

    Apply("other.caption=Other");

    EXPECT_EQ(label.text(), "");
    EXPECT_EQ(label.toolTip(), "");
    EXPECT_EQ(frame.title(), "");
    EXPECT_EQ(grid.toolTip(), "");
}

TEST_F(LanguageOfControlsTest, TellsMembersOfAnArrayApart)
{
    auto& first = AddCaptioned<QPushButton>("cmd(0)");
    auto& second = AddCaptioned<QPushButton>("cmd(1)");

    Apply("cmd(0).caption=First\ncmd(1).caption=Second\ncmd(1).ToolTipText=Second tip");

    EXPECT_EQ(first.text(), "First");
    EXPECT_EQ(second.text(), "Second");
    EXPECT_EQ(second.toolTip(), "Second tip");
}

TEST_F(LanguageOfControlsTest, GivesFramesACaptionAlone)
{
    auto& frame = Add<QGroupBox>("fra");

    Apply("fra.Caption=Frame\nfra.ToolTipText=not asked for");

    EXPECT_EQ(frame.title(), "Frame");
    EXPECT_EQ(frame.toolTip(), "built in");
}

TEST_F(LanguageOfControlsTest, GivesTipsToTextAndListBoxesWhenAskedFor)
{
    auto& combo = Add<QComboBox>("cbo");
    auto& grid = Add<QTableView>("grd");
    auto& text = Add<QLineEdit>("txt");
    auto& list = Add<QListWidget>("lst");
    text.setText("typed");

    Apply("cbo.ToolTipText=Combo\ngrd.ToolTipText=Grid\ntxt.ToolTipText=Text\nlst.ToolTipText=List");

    EXPECT_EQ(combo.toolTip(), "Combo");
    EXPECT_EQ(grid.toolTip(), "Grid");
    EXPECT_EQ(text.toolTip(), "Text");
    EXPECT_EQ(text.text(), "typed");
    EXPECT_EQ(list.toolTip(), "List");
}

TEST_F(LanguageOfControlsTest, LeavesTextAndListBoxesAloneOtherwise)
{
    auto& combo = Add<QComboBox>("cbo");
    auto& text = Add<QLineEdit>("txt");
    auto& list = Add<QListWidget>("lst");

    Apply("cbo.ToolTipText=Combo\ntxt.ToolTipText=Text\nlst.ToolTipText=List", ControlTips::Basic);

    EXPECT_EQ(combo.toolTip(), "Combo");
    EXPECT_EQ(text.toolTip(), "built in");
    EXPECT_EQ(list.toolTip(), "built in");
}

TEST_F(LanguageOfControlsTest, GivesMenuItemsACaptionAtEachDepth)
{
    QMenu& file = AddMenu(*window_.menuBar(), "mnuFile");
    QAction& open = AddItem(file, "mnuOpen");
    QMenu* const more = file.addMenu("built in");
    more->menuAction()->setObjectName("mnuMore");
    QAction& deep = AddItem(*more, "mnuDeep");
    QAction& member = AddItem(*more, "mnuMember");

    Apply(
        "mnuFile.caption=&File\nmnuOpen.caption=&Open\nmnuMore.caption=More\nmnuDeep.caption=Deep\n"
        "mnuMember.caption=Member");

    EXPECT_EQ(file.title(), "&File");
    EXPECT_EQ(open.text(), "&Open");
    EXPECT_EQ(more->title(), "More");
    EXPECT_EQ(deep.text(), "Deep");
    EXPECT_EQ(member.text(), "Member");
}

TEST_F(LanguageOfControlsTest, MakesASeparatorOfADash)
{
    QMenu& file = AddMenu(*window_.menuBar(), "mnuFile");
    QAction& line = AddItem(file, "mnuSep1");

    Apply("mnuSep1.caption=-");

    EXPECT_TRUE(line.isSeparator());
}

TEST_F(LanguageOfControlsTest, MakesAnEmptyItemOfASeparatorWithoutText)
{
    QMenu& file = AddMenu(*window_.menuBar(), "mnuFile");
    QAction& line = AddItem(file, "mnuSep1");
    line.setSeparator(true);

    Apply("mnuFile.caption=File");

    EXPECT_FALSE(line.isSeparator());
    EXPECT_EQ(line.text(), "");
}

TEST_F(LanguageOfControlsTest, KeepsTheRecentFiles)
{
    QMenu& recent = AddMenu(*window_.menuBar(), "mnuRecent");
    QAction& file = AddItem(recent, "mnuDefRF(0)", "1 job.tsq");

    Apply("mnuRecent.caption=Recent\nmnuDefRF(0).caption=wrong\nmnuDefRF.caption=wrong");

    EXPECT_EQ(file.text(), "1 job.tsq");
    EXPECT_EQ(recent.title(), "Recent");
}

TEST_F(LanguageOfControlsTest, GivesAToolbarAndItsButtonsTips)
{
    auto& bar = Add<QToolBar>("Toolbar1");
    QAction* const open = bar.addAction("Open");
    QAction* const gap = bar.addSeparator();
    QAction* const help = bar.addAction("Help");

    Apply("Toolbar1.ToolTipText=Bar\nToolbar1.Buttons(1).ToolTipText=Open a job\nToolbar1.Buttons(3).ToolTipText=Help");

    EXPECT_EQ(bar.toolTip(), "Bar");
    EXPECT_EQ(open->toolTip(), "Open a job");
    EXPECT_TRUE(gap->isSeparator());
    EXPECT_EQ(help->toolTip(), "Help");
    EXPECT_EQ(open->text(), "Open");
}

TEST_F(LanguageOfControlsTest, LeavesPartsWithoutANameOfOurs)
{
    auto& unnamed = AddCaptioned<QLabel>("");
    auto& partOfQt = AddCaptioned<QPushButton>("qt_part");

    Apply("qt_part.caption=wrong\n.caption=wrong");

    EXPECT_EQ(unnamed.text(), "built in");
    EXPECT_EQ(partOfQt.text(), "built in");
}

TEST_F(LanguageOfControlsTest, TakesAnotherLanguageWithoutATrace)
{
    auto& label = AddCaptioned<QLabel>("lbl");
    QMenu& file = AddMenu(*window_.menuBar(), "mnuFile");
    QAction& item = AddItem(file, "mnuItem");
    Apply("lbl.caption=One\nlbl.ToolTipText=Tip\nmnuItem.caption=-");

    Apply("lbl.caption=Eins\nmnuItem.caption=Punkt");

    EXPECT_EQ(label.text(), "Eins");
    EXPECT_EQ(label.toolTip(), "");
    EXPECT_FALSE(item.isSeparator());
    EXPECT_EQ(item.text(), "Punkt");
}

}  // namespace
}  // namespace tessarine
