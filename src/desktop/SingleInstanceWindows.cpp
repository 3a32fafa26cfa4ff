#include "desktop/SingleInstance.h"

#include "platform/NativePath.h"
#include "platform/ProgramInfo.h"
#include "platform/WindowsHeaders.h"

namespace tessarine
{

/// The system forgets the mutex when its last holder ends, however that comes.
struct SingleInstance::Lock {
    HANDLE mutex;
};

SingleInstance::SingleInstance()
{
    // Of the session: another user who is logged on as well has a program of his own.
    const NativeString name = L"Local\\" + NativeName(ToUtf8(CompanyName) + "." + ToUtf8(ExecutableName));
    SetLastError(ERROR_SUCCESS);
    lock_.reset(new Lock{CreateMutexW(nullptr, FALSE, name.c_str())});
    isPreviousRunning_ = GetLastError() == ERROR_ALREADY_EXISTS;
}

SingleInstance::~SingleInstance()
{
    if (lock_->mutex != nullptr)
        CloseHandle(lock_->mutex);
}

}  // namespace tessarine
