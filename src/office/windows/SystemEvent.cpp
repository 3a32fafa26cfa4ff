#include "office/windows/SystemEvent.h"

#include <exception>

#include "office/windows/AutomationNumbers.h"
#include "office/windows/ComHeaders.h"
#include "platform/Messages.h"

namespace tessarine::windows
{

SystemEvent::SystemEvent() : handle_(CreateEventW(nullptr, FALSE, FALSE, nullptr))
{
    if (!handle_)
        throw FailureOfCall(HRESULT_FROM_WIN32(GetLastError()), u"CreateEvent");
}

void SystemEvent::Set() noexcept
{
    SetEvent(handle_.get());
}

void SystemEvent::WaitDeliveringEvents()
{
    const HANDLE handle = handle_.get();
    std::exception_ptr raised;
    // Only what has come in since the last look ends the wait, so that a program that takes no messages does not spin.
    while (MsgWaitForMultipleObjectsEx(1, &handle, INFINITE, raised ? 0 : QS_ALLINPUT, 0) == WAIT_OBJECT_0 + 1) {
        try {
            DeliverPendingEvents();
        } catch (...) {
            raised = std::current_exception();
        }
    }
    if (raised)
        std::rethrow_exception(raised);
}

void SystemEvent::Close::operator()(void* handle) const noexcept
{
    CloseHandle(handle);
}

}  // namespace tessarine::windows
