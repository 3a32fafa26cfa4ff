#include "shell/DesktopOpener.h"

#include "platform/AnsiText.h"
#include "platform/WindowsHeaders.h"

// After the system's own, which it builds on.
#include <shellapi.h>

namespace tessarine
{

namespace
{

/// The shell's code has the type of a handle for the sake of older programs.
std::int32_t CodeOf(HINSTANCE result)
{
    return static_cast<std::int32_t>(reinterpret_cast<INT_PTR>(result));
}

}  // namespace

std::int32_t OpenWithDesktop(const String& target, std::chrono::milliseconds)
{
    HWND const owner = GetDesktopWindow();
    if (const auto file = ToAnsi(target))
        return CodeOf(ShellExecuteA(owner, "Open", file->c_str(), "", "C:\\", SW_SHOWNORMAL));
    const std::wstring file(target.begin(), target.end());
    return CodeOf(ShellExecuteW(owner, L"Open", file.c_str(), L"", L"C:\\", SW_SHOWNORMAL));
}

}  // namespace tessarine
