#include "desktop/FirstExcel.h"
#include "office/sheets/ExcelProvider.h"
#include "office/windows/ExcelProvider.h"
#include "SystemExcel.h"

namespace tessarine
{

std::shared_ptr<excel::Provider> SystemExcel()
{
    return FirstExcel(windows::CreateExcelProvider(), sheets::CreateProvider());
}

}  // namespace tessarine
