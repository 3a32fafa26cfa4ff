#include "desktop/FirstExcel.h"
#include "office/builtin/Provider.h"
#include "office/sheets/ExcelProvider.h"
#include "office/windows/ExcelProvider.h"
#include "office/windows/PowerPointProvider.h"
#include "SystemEngines.h"

namespace tessarine
{

DesktopEngines SystemEngines()
{
    return {windows::CreatePowerPointProvider(), builtin::CreateProvider()};
}

std::shared_ptr<excel::Provider> SystemExcel()
{
    return FirstExcel(windows::CreateExcelProvider(), sheets::CreateProvider());
}

}  // namespace tessarine
