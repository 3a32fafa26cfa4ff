#include <filesystem>
#include <string_view>

#include "office/builtin/Provider.h"
#include "office/sheets/ExcelProvider.h"
#include "platform/Locale.h"
#include "standin/ForeignSaves.h"
#include "standin/KeptInterfaces.h"
#include "standin/LocalServer.h"
#include "standin/OrderedWatch.h"
#include "standin/Relay.h"
#include "standin/ServedExcel.h"
#include "standin/ServedPowerPoint.h"

// stand-in /powerpoint FOLDER | /excel FOLDER | /relay FOLDER
//
// Started by the system for a caller, or by hand for an instance of a user's own.
//
// stand-in /register FOLDER
//
// For scripts: from then on both programs are this one, until "stand-in /unregister FOLDER". Their orders and logs are
// in the folder's "powerpoint" and "excel", which are there.

namespace
{

using namespace tessarine;
using namespace tessarine::standin;

int ServePowerPointIn(const std::filesystem::path& folder)
{
    const auto watch = WatchIn(folder);
    return ServeUntilQuit(PowerPointProgram, watch, [&](std::function<void()> quit) {
        const auto provider = WithForeignSaves(builtin::CreateProvider(), folder);
        return ServePowerPoint(watch, provider->CreateApplication(), std::move(quit));
    });
}

int ServeExcelIn(const std::filesystem::path& folder)
{
    const auto watch = WatchIn(folder);
    return ServeUntilQuit(ExcelProgram, watch, [&](std::function<void()> quit) {
        return ServeExcel(watch, sheets::CreateProvider()->CreateApplication(), std::move(quit));
    });
}

bool RegisterBothIn(const std::filesystem::path& folder)
{
    const std::wstring executable = FileBesideThisProgram(L"stand-in.exe");
    return Register(PowerPointProgram, executable, folder / L"powerpoint") &&
           Register(ExcelProgram, executable, folder / L"excel");
}

}  // namespace

int wmain(int argumentCount, wchar_t** arguments)
{
    if (argumentCount < 3)
        return 1;
    const std::wstring_view what = arguments[1];
    if (what == L"/register")
        return RegisterBothIn(arguments[2]) ? 0 : 1;
    if (what == L"/unregister") {
        Unregister(PowerPointProgram);
        Unregister(ExcelProgram);
        return 0;
    }
    const bool isRelay = what == RelayProgram.argument;
    // As PowerPoint and Excel are; the relay must be able to be called back while it calls.
    if (FAILED(CoInitializeEx(nullptr, isRelay ? COINIT_MULTITHREADED : COINIT_APARTMENTTHREADED)))
        return 1;
    KeepInterfaces();
    UseSystemLocale();
    const int status = isRelay                              ? ServeRelay()
                       : what == PowerPointProgram.argument ? ServePowerPointIn(arguments[2])
                       : what == ExcelProgram.argument      ? ServeExcelIn(arguments[2])
                                                            : 1;
    CoUninitialize();
    return status;
}
