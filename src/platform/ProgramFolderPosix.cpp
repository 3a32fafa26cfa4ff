#include "platform/ProgramFolder.h"

#include <filesystem>
#include <system_error>
#include <utility>

namespace tessarine
{

namespace
{

String setFolder;

}  // namespace

String ProgramFolder()
{
    if (!setFolder.empty())
        return setFolder;
    // Unlike the path that the program was called by, this link names the executable whatever the current folder was.
    return FromUtf8(std::filesystem::read_symlink("/proc/self/exe").parent_path().string());
}

String DataFolder()
{
    const String programs = ProgramFolder();
    const auto installed = std::filesystem::path(ToUtf8(programs)) / TESSARINE_DATA_FROM_PROGRAMS;
    std::error_code unknown;
    if (!std::filesystem::is_directory(installed, unknown))
        return programs;
    return FromUtf8(installed.lexically_normal().string());
}

String SetProgramFolder(String folder)
{
    return std::exchange(setFolder, std::move(folder));
}

}  // namespace tessarine
