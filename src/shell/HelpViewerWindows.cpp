#include "shell/HelpViewer.h"

#include <QApplication>
#include <QWidget>

#include "files/Files.h"
#include "platform/AnsiText.h"
#include "platform/ProgramFolder.h"
#include "platform/WindowsHeaders.h"

namespace tessarine
{

namespace
{

constexpr UINT showContents = 1;

/// The window that all others of the program belong to. The help must not belong to a message that asks for it: it
/// would go away together with the message.
HWND MainWindow()
{
    const QWidget* window = QApplication::activeWindow();
    while (window != nullptr && window->parentWidget() != nullptr)
        window = window->parentWidget()->window();
    return window == nullptr ? nullptr : reinterpret_cast<HWND>(window->winId());
}

/// A function of the help library; null where there is none. Linked, it would keep the program from starting there.
template <class Function>
Function HelpFunction(const char* name)
{
    // Stays loaded: the help's window lives in it.
    static HMODULE const library = LoadLibraryExW(L"hhctrl.ocx", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    return library == nullptr ? nullptr
                              : reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, name)));
}

}  // namespace

String HelpPath()
{
    return DataFolder() + u"\\Help.chm";
}

void ShowHelpFile(const String& path)
{
    using HtmlHelpA = HWND(WINAPI*)(HWND, const char*, UINT, DWORD_PTR);
    using HtmlHelpW = HWND(WINAPI*)(HWND, const wchar_t*, UINT, DWORD_PTR);
    if (!FileExists(path))
        return;  // the library would show a message of its own
    if (const auto file = ToAnsi(path)) {
        if (const auto htmlHelp = HelpFunction<HtmlHelpA>("HtmlHelpA"))
            htmlHelp(MainWindow(), file->c_str(), showContents, 0);
    } else if (const auto htmlHelp = HelpFunction<HtmlHelpW>("HtmlHelpW")) {
        // In a folder whose name the code page lacks a letter for.
        htmlHelp(MainWindow(), std::wstring(path.begin(), path.end()).c_str(), showContents, 0);
    }
}

}  // namespace tessarine
