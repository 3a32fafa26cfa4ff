#include "batch/Cancellation.h"

#include <atomic>
#include <mutex>
#include <string>

#include "batch/LineAtTheEnd.h"
#include "platform/WindowsHeaders.h"
#include "saving/Leftovers.h"

namespace tessarine::batch
{

namespace
{

constexpr UINT endedBySignal = 130;

std::atomic<bool> requested = false;

std::mutex lineGuard;
std::string lineAtTheEnd = LineAtTheEnd({});

void WriteToStandardError(const std::string& text)
{
    const HANDLE stream = GetStdHandle(STD_ERROR_HANDLE);
    DWORD count = 0;
    const String units = FromUtf8(text);
    // Bytes for a pipe or a file, characters for a console.
    if (!WriteConsoleW(stream, units.data(), static_cast<DWORD>(units.size()), &count, nullptr))
        WriteFile(stream, text.data(), static_cast<DWORD>(text.size()), &count, nullptr);
}

/// Comes on a thread of its own: Ctrl-C and Ctrl-Break, and the ends of the console and of the session.
BOOL WINAPI OnConsoleEvent(DWORD event)
{
    if (!requested.exchange(true)) {
        if (event == CTRL_C_EVENT || event == CTRL_BREAK_EVENT)
            return TRUE;
        // The others end the process when this returns, and give it some seconds: enough for the file in work.
        Sleep(INFINITE);
    }
    RemoveNewFilesNow();
    {
        const std::scoped_lock guard(lineGuard);
        WriteToStandardError(lineAtTheEnd);
    }
    // Without the destructors of statics: the run's own thread still uses them.
    TerminateProcess(GetCurrentProcess(), endedBySignal);
    return TRUE;
}

}  // namespace

void WatchForCancel()
{
    // A process may be started with Ctrl-C switched off.
    SetConsoleCtrlHandler(nullptr, FALSE);
    SetConsoleCtrlHandler(&OnConsoleEvent, TRUE);
}

void SetFilesInWork(const std::vector<String>& paths)
{
    const std::string line = LineAtTheEnd(paths);
    const std::scoped_lock guard(lineGuard);
    lineAtTheEnd = line;
}

bool IsCancelRequested()
{
    return requested;
}

}  // namespace tessarine::batch
