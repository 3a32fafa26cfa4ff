#include "platform/CodePage.h"

namespace tessarine
{

std::string CodePageName(std::uint16_t number)
{
    switch (number) {
        case 10000:
            return "macintosh";
        case 437:
        case 720:
        case 737:
        case 775:
        case 850:
        case 852:
        case 855:
        case 857:
        case 858:
        case 860:
        case 861:
        case 862:
        case 863:
        case 864:
        case 865:
        case 866:
        case 869:
            return "cp" + std::to_string(number);
        default:
            return "windows-" + std::to_string(number);
    }
}

}  // namespace tessarine
