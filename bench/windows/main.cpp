#include <chrono>
#include <cstdio>
#include <functional>
#include <string>

#include <QApplication>
#include <QCheckBox>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTest>

#include "app/GlobalState.h"
#include "app/Main.h"
#include "files/Files.h"
#include "i18n/QtText.h"
#include "log/ErrorLog.h"
#include "office/builtin/Provider.h"
#include "platform/Messages.h"
#include "platform/PathSeparator.h"
#include "platform/ProgramFolder.h"
#include "RunCost.h"
#include "ui/main/frmMain.h"
#include "ui/main/ItemsGrid.h"

// What a person waits for in the windows: the start, with its parts, and the grid under 10,000 pairs, each line one
// wall time, the window shown, drawn and idle at its end; then what the windows add to a run.

namespace
{

using namespace tessarine;

constexpr int pairs = 10'000;

/// Runs a step, lets the windows settle, and prints how long it took.
void Measure(const char* name, const std::function<void()>& step)
{
    const auto start = std::chrono::steady_clock::now();
    step();
    QCoreApplication::processEvents();
    const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - start;
    std::printf("%-64s %8.1f ms\n", name, taken.count());
}

/// A default project as a user leaves it: `count` pairs, its list the one in the grid.
void WriteDefaultProject(int count)
{
    ProjectOwner project;
    for (int number = 0; number < count; ++number) {
        const auto setting = std::make_shared<OptionSetting>();
        setting->InSlides = setting->InShapesAndTextboxes = true;
        const String text = FromQt(QStringLiteral("Product name %1").arg(number));
        project->FindAndReplaceList->Add(text, text + u" (new)", setting, project.get());
    }
    project->CustomProperies->Add(u"FindAndReplaceFilePath", {});
    project->CustomProperies->Add(u"FindAndReplaceListSource", u"INTERNAL");
    project->CustomProperies->Add(u"LANG", u"English.lng");
    String path = DefaultProjectPath();
    project->SaveAsProject(path, true);
}

template <class Control>
Control& The(QWidget& window, const char* name)
{
    return *window.findChild<Control*>(name);
}

void MeasureGrid(frmMain& window)
{
    auto& grid = The<ItemsGrid>(window, "grdItems");
    Measure("select all", [&] { grid.SelectAll(); });
    Measure("tick Match Case for all", [&] { The<QCheckBox>(window, "chkMatchCase").click(); });
    Measure("tick all 14 locations for all", [&] { The<QCheckBox>(window, "chkSelectAll").click(); });
    Measure("add a pair", [&] { The<QPushButton>(window, "cmdAdd").click(); });
    Measure("go to the first row", [&] { grid.SetRow(1); });
    Measure("type a text and leave the row", [&] {
        grid.SelectCell(1, ItemColumn::FindWhat);
        QTest::keyClicks(QApplication::focusWidget(), "x");
        grid.SetRow(2);
    });
    Measure("delete every second pair", [&] {
        QItemSelection half;
        for (int row = 0; row < pairs; row += 2)
            half.select(grid.Items().index(row, 0), grid.Items().index(row, ItemColumn::Options));
        grid.selectionModel()->select(half, QItemSelectionModel::ClearAndSelect);
        The<QPushButton>(window, "cmdDelete").click();
    });
    Measure("delete the rest", [&] {
        grid.SelectAll();
        The<QPushButton>(window, "cmdDelete").click();
    });
}

}  // namespace

int main(int argumentCount, char** arguments)
{
    const QTemporaryDir home;
    for (const char* name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME"})
        qputenv(name, QFile::encodeName(home.path()));
    SetProgramFolder(FromUtf8(TESSARINE_PROGRAM_FOLDER));
    SetMessageBox([](const Message&) { return MessageAnswer::Yes; });
    GetFileStorageFolder();

    for (const int count : {10, pairs}) {
        WriteDefaultProject(count);
        std::printf("Start with a default project of %d pairs\n", count);
        std::unique_ptr<QApplication> application;
        std::unique_ptr<frmMain> window;
        Measure("  Qt", [&] { application = std::make_unique<QApplication>(argumentCount, arguments); });
        const auto provider = builtin::CreateProvider();
        Measure("  probe of PowerPoint", [&] { IsPowerPointAvailable(provider); });
        Measure("  project", [&] {
            std::int32_t error = 0;
            CurrentProject = std::make_shared<Project>(provider);
            CurrentProject->LoadProject(DefaultProjectPath(), error);
        });
        Measure("  language", [] { FileExists(ProgramFolder() + PathSeparator + u"Languages/English.lng"); });
        CurrentLanguageFile = u"English.lng";
        Measure("  form: controls, their texts, the job in them", [&] { window = std::make_unique<frmMain>(); });
        Measure("  form: shown and drawn", [&] {
            window->show();
            (void)QTest::qWaitForWindowExposed(window.get());
        });
        if (count == pairs) {
            std::printf("The grid with %d pairs\n", count);
            MeasureGrid(*window);
        }
        window.reset();
        CurrentProject->FindAndReplaceList.reset();
        CurrentProject.reset();
    }
    const QApplication application(argumentCount, arguments);
    bench::MeasureRuns();
    bench::MeasureReport();
    return 0;
}
