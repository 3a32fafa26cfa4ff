#include "office/sheets/ExcelProvider.h"
#include "SystemExcel.h"

namespace tessarine
{

std::shared_ptr<excel::Provider> SystemExcel()
{
    return sheets::CreateProvider();
}

}  // namespace tessarine
