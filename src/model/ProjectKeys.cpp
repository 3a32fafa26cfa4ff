#include "model/ProjectKeys.h"

#include <string>

namespace tessarine
{

String ItemKey(std::int32_t item)
{
    return u"Item" + FromUtf8(std::to_string(item));
}

String PropertyKey(std::int32_t number)
{
    return u"Propery" + FromUtf8(std::to_string(number));
}

}  // namespace tessarine
