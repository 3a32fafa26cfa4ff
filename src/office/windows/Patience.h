#pragma once

#include "office/windows/AutomationNumbers.h"
#include "office/windows/ComHeaders.h"

namespace tessarine::windows
{

/// Makes a call again for as long as the server is too busy for it, and gives its result. Intended without an end: a
/// server that shows a message box waits for its user, and so does the run.
template <class Call>
HRESULT WhenNotBusy(Call&& call)
{
    constexpr DWORD pauseInMilliseconds = 50;
    for (;;) {
        const HRESULT result = call();
        if (!IsBusy(result))
            return result;
        Sleep(pauseInMilliseconds);
    }
}

}  // namespace tessarine::windows
