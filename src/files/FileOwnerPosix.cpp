#include <unistd.h>

#include "files/FileOwner.h"

namespace tessarine
{

std::string OwnerOfNewFiles()
{
    return std::to_string(geteuid());
}

bool IsThisUser(const std::string& owner)
{
    return owner == OwnerOfNewFiles();
}

std::string OwnerOfSuperuser()
{
    return "0";
}

bool IsSuperuser(const std::string& owner)
{
    return owner == OwnerOfSuperuser();
}

}  // namespace tessarine
