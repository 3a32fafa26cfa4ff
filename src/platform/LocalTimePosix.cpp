#include "platform/LocalTime.h"

#include <time.h>

namespace tessarine
{

std::optional<std::tm> LocalTime(std::time_t moment)
{
    std::tm local = {};
    if (localtime_r(&moment, &local) == nullptr)
        return std::nullopt;
    return local;
}

}  // namespace tessarine
