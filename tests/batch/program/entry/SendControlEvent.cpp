#include <cstdlib>
#include <cstring>

#include "platform/WindowsHeaders.h"

namespace
{

/// Keeps the events from ending this process, which is on the console, too.
BOOL WINAPI PassOver(DWORD)
{
    return TRUE;
}

}  // namespace

/// Called as "send-control-event PROCESS ctrl-c|ctrl-break": sends an event to all processes on the console of another
/// one. Exit status 0 when that was done, 1 when the other one has no console, 2 when the system refuses it.
int main(int argumentCount, char** arguments)
{
    if (argumentCount != 3)
        return 2;
    const DWORD process = std::strtoul(arguments[1], nullptr, 10);
    const DWORD event = std::strcmp(arguments[2], "ctrl-c") == 0 ? CTRL_C_EVENT : CTRL_BREAK_EVENT;
    FreeConsole();
    if (!AttachConsole(process))
        return 1;
    return SetConsoleCtrlHandler(&PassOver, TRUE) && GenerateConsoleCtrlEvent(event, 0) ? 0 : 2;
}
