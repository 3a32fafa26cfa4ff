#include <clocale>
#include <memory>

#include <QApplication>

#include "app/GlobalState.h"
#include "app/Main.h"
#include "desktop/DesktopPorts.h"
#include "desktop/SingleInstance.h"
#include "desktop/SystemLook.h"
#include "i18n/QtText.h"
#include "icons/Icons.h"
#include "model/Excel.h"
#include "office/system/SystemEngines.h"
#include "platform/Locale.h"
#include "platform/ProgramInfo.h"
#include "settings/EngineSetting.h"
#include "shell/FileAssociation.h"
#include "SystemExcel.h"
#include "ui/main/frmMain.h"

namespace
{

using namespace tessarine;

void SetUpApplication()
{
    std::setlocale(LC_ALL, "C.UTF-8");  // Qt takes over the user's; numbers go through UseSystemLocale alone
    UseSystemLocale();
    // The main window ends the program, see below. Qt's own rule asks the window of a run to close first, which it
    // takes for a cancel.
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setApplicationName(ToQt(ExecutableName));
    QGuiApplication::setDesktopFileName(ToQt(ExecutableName));
    ApplySystemLook();
    QApplication::setWindowIcon(Icon("tessarine"));
}

}  // namespace

int main(int, char** arguments)
{
    int noArguments = 1;  // the program takes none, and Qt would act on its own
    PrepareSystemLook();
    QApplication application(noArguments, arguments);
    SetUpApplication();
    const DesktopPorts ports;
    const SingleInstance instance;
    excel::SetProvider(SystemExcel());

    std::unique_ptr<frmMain> window;
    Main(SystemEngines(), {.IsPreviousInstanceRunning = [&instance] { return instance.IsPreviousInstanceRunning(); },
                           .RegisterFileType = RegisterFileType,
                           .ShowMainWindow =
                               [&window] {
                                   window = std::make_unique<frmMain>();
                                   window->Unloaded += [] { QCoreApplication::exit(); };
                                   window->show();
                               },
                           .IsBuiltInEngineAgreed = IsBuiltInEngineAgreed,
                           .RememberBuiltInEngine = RememberBuiltInEngine});
    const int status = window ? QApplication::exec() : 0;
    if (CurrentProject)
        CurrentProject->FindAndReplaceList.reset();  // its pairs point back at the project
    return status;
}
