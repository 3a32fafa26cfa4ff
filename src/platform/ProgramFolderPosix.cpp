#include "platform/ProgramFolder.h"

#include <filesystem>
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

String SetProgramFolder(String folder)
{
    return std::exchange(setFolder, std::move(folder));
}

}  // namespace tessarine
