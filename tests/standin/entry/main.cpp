#include <filesystem>
#include <string_view>

#include "office/builtin/Provider.h"
#include "office/sheets/ExcelProvider.h"
#include "platform/Locale.h"
#include "standin/LocalServer.h"
#include "standin/OrderedWatch.h"
#include "standin/ServedExcel.h"
#include "standin/ServedPowerPoint.h"

// stand-in /powerpoint FOLDER | /excel FOLDER, started by the system for a caller or by hand for a user's own instance

int wmain(int argumentCount, wchar_t** arguments)
{
    using namespace tessarine;
    using namespace tessarine::standin;

    if (argumentCount < 3 || FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)))
        return 1;
    UseSystemLocale();
    const auto watch = WatchIn(std::filesystem::path(arguments[2]));
    int status = 1;
    if (arguments[1] == std::wstring_view(PowerPointProgram.argument))
        status = ServeUntilQuit(PowerPointProgram, watch, [&](std::function<void()> quit) {
            return ServePowerPoint(watch, builtin::CreateProvider()->CreateApplication(), std::move(quit));
        });
    else if (arguments[1] == std::wstring_view(ExcelProgram.argument))
        status = ServeUntilQuit(ExcelProgram, watch, [&](std::function<void()> quit) {
            return ServeExcel(watch, sheets::CreateProvider()->CreateApplication(), std::move(quit));
        });
    CoUninitialize();
    return status;
}
