#include "ui/main/MainWindowTest.h"

#include <algorithm>

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
#include <QScrollArea>
#include <QStyle>
#include <QStyleOptionButton>
#include <QTabWidget>

#include "app/LanguageText.h"
#include "model/Excel.h"
#include "office/sheets/ExcelProvider.h"
#include "platform/ProgramFolder.h"

namespace tessarine
{

namespace
{

/// As an input method does, so that any script can be typed.
void Commit(QWidget& box, const QString& text)
{
    QInputMethodEvent event;
    event.setCommitString(text);
    QApplication::sendEvent(&box, &event);
}

}  // namespace

MainWindowTest::MainWindowTest()
{
    previousDataFolder_ = std::exchange(ApplicationDataFolder, folder.MakeFolder(u"data"));
    previousProgramFolder_ = SetProgramFolder(FromUtf8(TESSARINE_PROGRAM_FOLDER));
    excel::SetProvider(sheets::CreateProvider());
    CurrentLanguageFile = u"English.lng";
    IsBuiltInEngine = false;  // whatever a start of the program in another test has chosen
    CurrentProject = std::make_shared<Project>(powerPoint.Provider());
    CurrentProject->CustomProperies->Add(u"FindAndReplaceFilePath", {});
    CurrentProject->CustomProperies->Add(u"FindAndReplaceListSource", u"EXTERNAL");
    CurrentProject->CustomProperies->Add(u"LANG", {});
}

MainWindowTest::~MainWindowTest()
{
    window_.reset();
    CurrentProject->FindAndReplaceList.reset();
    CurrentProject.reset();
    CurrentLanguageFile.clear();
    excel::SetProvider({});
    SetProgramFolder(previousProgramFolder_);
    ApplicationDataFolder = previousDataFolder_;
}

frmMain& MainWindowTest::Window()
{
    if (!window_) {
        window_ = std::make_unique<frmMain>();
        window_->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(window_.get()));
    }
    return *window_;
}

void MainWindowTest::SetPairs(const std::vector<Pair>& pairs)
{
    auto list = std::make_shared<FindAndReplaceItems>();
    for (const Pair& pair : pairs) {
        const auto setting = std::make_shared<OptionSetting>();
        for (const auto location : pair.locations)
            (*setting).*location = true;
        list->Add(pair.find, pair.with, setting, CurrentProject);
    }
    CurrentProject->FindAndReplaceList = list;
    CurrentProject->CustomProperies->Item(2)->PropertyValue = u"INTERNAL";
}

void MainWindowTest::EditPairs(const std::vector<Pair>& pairs)
{
    SetPairs(pairs);
    Window().LoadProjectOnForm();
    Window().PutIsModifed(false);
}

void MainWindowTest::Click(const char* name)
{
    QWidget& control = The(name);
    ASSERT_TRUE(control.isVisible()) << name << " can't be seen";
    QTest::mouseClick(&control, Qt::LeftButton);
}

void MainWindowTest::ClickBox(const char* name)
{
    QWidget& box = The(name);
    ASSERT_TRUE(box.isVisible()) << name << " can't be seen";
    constexpr int inIndicator = 8;
    QTest::mouseClick(&box, Qt::LeftButton, {}, QPoint(inIndicator, box.height() / 2));
}

void MainWindowTest::Choose(const char* menuItem)
{
    The<QAction>(menuItem).trigger();
}

void MainWindowTest::Type(const char* name, const QString& text)
{
    QWidget& box = The(name);
    ASSERT_TRUE(box.isVisible() && box.isEnabled()) << name << " can't be typed into";
    box.setFocus();
    QTest::keyClick(&box, Qt::Key_A, Qt::ControlModifier);
    Commit(box, text);
}

std::string MainWindowTest::Text(const char* name)
{
    if (const auto* const list = Window().findChild<QComboBox*>(name))
        return list->currentText().toStdString();
    return The<QLineEdit>(name).text().toStdString();
}

bool MainWindowTest::IsChecked(const char* name)
{
    return The<QAbstractButton>(name).isChecked();
}

void MainWindowTest::ShowTab(int tab)
{
    The<QTabWidget>("SSTab1").setCurrentIndex(tab);
}

int MainWindowTest::Tab()
{
    return The<QTabWidget>("SSTab1").currentIndex();
}

std::string MainWindowTest::Cell(int row, int column)
{
    return Grid().Items().index(row - 1, column).data().toString().toStdString();
}

void MainWindowTest::ClickCell(int row, int column, Qt::KeyboardModifiers modifiers)
{
    const QModelIndex index = Grid().Items().index(row - 1, column);
    Grid().scrollTo(index);
    QTest::mouseClick(Grid().viewport(), Qt::LeftButton, modifiers, Grid().visualRect(index).center());
}

QWidget* MainWindowTest::Editor()
{
    for (QLineEdit* editor : Grid().viewport()->findChildren<QLineEdit*>())
        if (editor->isVisible())
            return editor;
    return nullptr;
}

void MainWindowTest::TypeInCell(int row, int column, const QString& text)
{
    ClickCell(row, column);
    ASSERT_NE(Editor(), nullptr) << "no editor in row " << row;
    QTest::keyClick(Editor(), Qt::Key_A, Qt::ControlModifier);
    Commit(*Editor(), text);
    EndEdit();
}

void MainWindowTest::EndEdit()
{
    QTest::keyClick(Editor(), Qt::Key_Return);
    QCoreApplication::processEvents();  // the editor closes after the key
}

void MainWindowTest::ClickLocation(int row)
{
    auto& list = The<QListWidget>("lstLookIn");
    ASSERT_TRUE(list.isEnabled() && list.isVisible());
    const QRect entry = list.visualItemRect(list.item(row));
    constexpr int inIndicator = 10;
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, entry.topLeft() + QPoint(inIndicator, entry.height() / 2));
}

std::vector<int> MainWindowTest::CheckedLocations()
{
    const auto& list = The<QListWidget>("lstLookIn");
    std::vector<int> rows;
    for (int row = 0; row < list.count(); ++row)
        if (list.item(row)->checkState() == Qt::Checked)
            rows.push_back(row);
    return rows;
}

void MainWindowTest::BringIntoView(QWidget& control)
{
    for (QWidget* outer = control.parentWidget(); outer != nullptr; outer = outer->parentWidget())
        if (auto* const page = qobject_cast<QScrollArea*>(outer))
            page->ensureWidgetVisible(&control);
}

int MainWindowTest::StartWidth(const ItemsGrid& grid, int column, int twips)
{
    return std::max(twips * grid.logicalDpiX() / 1440, grid.horizontalHeader()->sectionSizeHint(column));
}

std::vector<std::string> MainWindowTest::Finds()
{
    std::vector<std::string> texts;
    for (const auto& item : Items().NewEnum())
        texts.push_back(ToUtf8(item->FindWhat));
    return texts;
}

std::string MainWindowTest::Title()
{
    return Window().windowTitle().toStdString();
}

std::string MainWindowTest::Log()
{
    const String path = folder.PathOf(u"data/Errors.Log");
    const std::string content = ContentOf(path);
    return content == "<missing>" ? std::string() : content;
}

std::string MainWindowTest::English(const String& section, const String& key)
{
    return ToUtf8(GetLngString(section, key));
}

}  // namespace tessarine
