#include "shell/GetFolder.h"

#include <array>
#include <memory>

#include "platform/AnsiText.h"
#include "platform/CodePage.h"
#include "platform/NativePath.h"

namespace tessarine
{

namespace
{

constexpr UINT fileSystemFoldersWithStatus = 5;
constexpr UINT filesToo = 16389;
constexpr UINT newStyle = 64;

constexpr UINT setStatusText = 0x464;
constexpr UINT setSelection = 0x466;

/// The path of an item; empty when it has none.
String PathOf(const ITEMIDLIST* item)
{
    std::string buffer(512, ' ');
    if (!SHGetPathFromIDListA(item, buffer.data()))
        return {};
    std::array<wchar_t, 512> wide{};
    if (SHGetPathFromIDListW(item, wide.data()))
        if (const String path = PathText(wide.data()); !ToAnsi(path))
            return path;
    return FromCodePage(buffer.substr(0, buffer.find('\0')), SystemCodePage());
}

}  // namespace

String GetFolder(HWND Owner, const String& StartFolder, const String& Title, bool IncludeFiles, bool NewStyle)
{
    const std::string title = ToAnsi(Title).value_or("");
    std::array<char, MAX_PATH> name{};
    BROWSEINFOA dialog{};
    dialog.hwndOwner = Owner;
    dialog.pszDisplayName = name.data();
    dialog.lpszTitle = title.c_str();
    dialog.ulFlags = (IncludeFiles ? filesToo : fileSystemFoldersWithStatus) | (NewStyle ? newStyle : 0);
    if (const auto start = ToAnsi(StartFolder); start && !start->empty()) {
        BrowseStartFolder = *start + '\0';
        dialog.lpfn = GetAddressofFunction(BrowseCallbackProc);
    }
    const std::unique_ptr<ITEMIDLIST, decltype(&CoTaskMemFree)> chosen(SHBrowseForFolderA(&dialog), &CoTaskMemFree);
    return chosen ? PathOf(chosen.get()) : String();
}

int CALLBACK BrowseCallbackProc(HWND Window, UINT Message, LPARAM Param, LPARAM)
{
    if (Message == BFFM_INITIALIZED) {
        SendMessageA(Window, setSelection, 1, reinterpret_cast<LPARAM>(BrowseStartFolder.c_str()));
    } else if (Message == BFFM_SELCHANGED) {
        std::array<char, MAX_PATH> path{};
        if (SHGetPathFromIDListA(reinterpret_cast<const ITEMIDLIST*>(Param), path.data()))
            SendMessageA(Window, setStatusText, 0, reinterpret_cast<LPARAM>(path.data()));
    }
    return 0;
}

BFFCALLBACK GetAddressofFunction(BFFCALLBACK Address)
{
    return Address;
}

}  // namespace tessarine
