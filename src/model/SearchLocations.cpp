#include "model/SearchLocations.h"

namespace tessarine
{

String SearchMethodText(std::int32_t searchMethod)
{
    return searchMethod == 0 ? u"Normal Search" : u"";
}

}  // namespace tessarine
