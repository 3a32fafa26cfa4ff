#include "office/sheets/CellErrors.h"

namespace tessarine::sheets
{

const char* NameOfError(CellError error)
{
    // The codes of MS-XLS 2.5.10 (BErr).
    switch (error.code) {
        case 0x00:
            return "#NULL!";
        case 0x07:
            return "#DIV/0!";
        case 0x0F:
            return "#VALUE!";
        case 0x17:
            return "#REF!";
        case 0x1D:
            return "#NAME?";
        case 0x24:
            return "#NUM!";
        case 0x2A:
            return "#N/A";
        default:
            return "#UNKNOWN!";
    }
}

}  // namespace tessarine::sheets
