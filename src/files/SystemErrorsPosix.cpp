#include "files/SystemErrors.h"

#include <cstring>

namespace tessarine
{

std::string ErrorText(int error)
{
    return std::strerror(error);
}

}  // namespace tessarine
