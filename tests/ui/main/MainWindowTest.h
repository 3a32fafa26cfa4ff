#pragma once

#include <gmock/gmock.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <QTest>

#include "app/GlobalState.h"
#include "i18n/QtText.h"
#include "log/ErrorLog.h"
#include "model/FindAndReplaceItem.h"
#include "support/FakePowerPoint.h"
#include "support/MessageRecorder.h"
#include "support/qt/ShellRecorder.h"
#include "support/qt/UserFolders.h"
#include "support/TemporaryFolder.h"
#include "ui/main/frmMain.h"
#include "ui/main/ItemsGrid.h"

namespace tessarine
{

/// A pair for a test's list: the two texts and the locations that are on.
struct Pair {
    String find;
    String with;
    std::vector<bool OptionSetting::*> locations = {&OptionSetting::InSlides};
};

/// The main window over a job of its own, on a desktop that records: dialogs and messages are answered ahead, the
/// default project, the settings and the error log lie in folders of the test.
class MainWindowTest : public testing::Test
{
protected:
    MainWindowTest();
    ~MainWindowTest() override;

    /// The window, made and shown at the first call, as the program's entry does it.
    frmMain& Window();

    /// Puts pairs into the project's list, and "INTERNAL" as its source. Before the window is made, or followed by
    /// LoadProjectOnForm.
    void SetPairs(const std::vector<Pair>& pairs);

    /// Leaves the window on the list that it edits itself, with these pairs and not modified.
    void EditPairs(const std::vector<Pair>& pairs);

    // Controls by their names.

    template <class Control = QWidget>
    Control& The(const char* name)
    {
        auto* const control = Window().findChild<Control*>(QString::fromLatin1(name));
        if (control == nullptr)
            throw std::runtime_error(std::string("no control named ") + name);
        return *control;
    }

    ItemsGrid& Grid() { return The<ItemsGrid>("grdItems"); }
    void Click(const char* name);
    void ClickBox(const char* name);  ///< On the box itself: a label may be wider than the text.
    void Choose(const char* menuItem);
    void Type(const char* name, const QString& text);
    std::string Text(const char* name);
    bool IsEnabled(const char* name) { return The(name).isEnabled(); }
    bool IsChecked(const char* name);
    void ShowTab(int tab);
    int Tab();

    // The grid and the locations.

    std::string Cell(int row, int column);  ///< Rows from 1.
    void ClickCell(int row, int column, Qt::KeyboardModifiers modifiers = {});
    QWidget* Editor();  ///< The open cell editor, null without one.
    void EndEdit();     ///< Return in the open editor.
    void TypeInCell(int row, int column, const QString& text);
    void ClickLocation(int row);
    std::vector<int> CheckedLocations();

    /// Scrolls to a control, where the screen has no room for its whole page.
    static void BringIntoView(QWidget& control);

    /// What a column has at the start, told in twips: more where a wide font makes its heading need it.
    static int StartWidth(const ItemsGrid& grid, int column, int twips);

    // What the program knows.

    FindAndReplaceItems& Items() { return *CurrentProject->FindAndReplaceList; }
    std::vector<std::string> Finds();
    ProjectOptions& Options() { return *CurrentProject->options; }
    std::string Title();
    std::string Log();  ///< The error log, byte for byte.
    std::string English(const String& section, const String& key);

    const TemporaryFolder folder;
    const UserFolders userFolders;
    FakePowerPoint powerPoint;
    MessageRecorder messages;
    ShellRecorder shell;

private:
    std::unique_ptr<frmMain> window_;
    String previousDataFolder_;
    String previousProgramFolder_;
};

}  // namespace tessarine
