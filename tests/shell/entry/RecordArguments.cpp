// record-arguments [ARGUMENT]...: writes its arguments, one to a line in UTF-16, into "arguments" beside itself, and is
// what the shell starts for a file type that a test registers.
#include <string>

#include "platform/WindowsHeaders.h"

// After the system's own, which it builds on.
#include <shellapi.h>

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int)
{
    int count = 0;
    wchar_t** const arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    std::wstring text;
    for (int i = 1; i < count; ++i)
        text += std::wstring(arguments[i]) + L"\n";

    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    std::wstring folder = path;
    folder.resize(folder.rfind(L'\\') + 1);
    HANDLE const file = CreateFileW((folder + L"being written").c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    DWORD written = 0;
    WriteFile(file, text.data(), static_cast<DWORD>(text.size() * sizeof(wchar_t)), &written, nullptr);
    CloseHandle(file);
    // Whole from the first moment that the test can see it.
    return MoveFileW((folder + L"being written").c_str(), (folder + L"arguments").c_str()) ? 0 : 1;
}
