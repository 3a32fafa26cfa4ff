#include "platform/SpecialFolders.h"

#include <array>
#include <memory>
#include <utility>

#include "platform/NativePath.h"
#include "platform/WindowsHeaders.h"

#include <objbase.h>
#include <shlobj.h>

namespace tessarine
{

namespace
{

SpecialFoldersPort specialFolders;

}  // namespace

String GetSpecialFolderPath(std::int32_t folder)
{
    if (specialFolders)
        return specialFolders(folder);
    ITEMIDLIST* place = nullptr;
    if (SHGetSpecialFolderLocation(nullptr, folder, &place) != S_OK)
        return {};
    const std::unique_ptr<ITEMIDLIST, void (*)(void*)> owned(place, &CoTaskMemFree);
    // Twice what the system asks for; it ends what it writes with a NUL.
    std::array<wchar_t, 512> path{};
    if (!SHGetPathFromIDListW(place, path.data()))
        return {};
    return PathText(path.data());
}

SpecialFoldersPort SetSpecialFolders(SpecialFoldersPort port)
{
    return std::exchange(specialFolders, std::move(port));
}

}  // namespace tessarine
