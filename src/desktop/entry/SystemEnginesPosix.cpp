#include "office/builtin/Provider.h"
#include "office/sheets/ExcelProvider.h"
#include "SystemEngines.h"

namespace tessarine
{

DesktopEngines SystemEngines()
{
    return {nullptr, builtin::CreateProvider()};
}

std::shared_ptr<excel::Provider> SystemExcel()
{
    return sheets::CreateProvider();
}

}  // namespace tessarine
