#include "platform/SpecialFolders.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <string>
#include <utility>

namespace tessarine
{

namespace
{

SpecialFoldersPort specialFolders;

std::string Environment(const char* name)
{
    const char* value = std::getenv(name);
    return value ? value : "";
}

std::string HomeFolder()
{
    if (std::string home = Environment("HOME"); !home.empty())
        return home;
    // Services and scheduled jobs often run without the variable.
    const passwd* user = getpwuid(getuid());
    return user && user->pw_dir ? user->pw_dir : "";
}

std::string WithoutTrailingSeparator(std::string path)
{
    while (path.size() > 1 && path.back() == '/')
        path.pop_back();
    return path;
}

}  // namespace

String GetSpecialFolderPath(std::int32_t folder)
{
    if (specialFolders)
        return specialFolders(folder);
    if (folder != ApplicationDataFolderNumber)
        return {};
    // The rules for XDG base directories have relative paths ignored.
    if (const std::string dataHome = Environment("XDG_DATA_HOME"); dataHome.starts_with('/'))
        return FromUtf8(WithoutTrailingSeparator(dataHome));
    const std::string home = HomeFolder();
    return home.empty() ? String() : FromUtf8(WithoutTrailingSeparator(home) + "/.local/share");
}

SpecialFoldersPort SetSpecialFolders(SpecialFoldersPort port)
{
    return std::exchange(specialFolders, std::move(port));
}

}  // namespace tessarine
