#include "platform/ProgramFolder.h"

#include <utility>

#include "platform/FolderOf.h"
#include "platform/NativePath.h"
#include "platform/WindowsHeaders.h"

namespace tessarine
{

namespace
{

String setFolder;

/// The longest path that the system has at all.
constexpr std::size_t longestPath = 32768;

}  // namespace

String ProgramFolder()
{
    if (!setFolder.empty())
        return setFolder;
    std::wstring path(longestPath, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    const String text = PathText(path);
    return String(WithoutTrailingSeparator(FolderOf(StringView(text))));
}

String DataFolder()
{
    return ProgramFolder();
}

String SetProgramFolder(String folder)
{
    return std::exchange(setFolder, std::move(folder));
}

}  // namespace tessarine
