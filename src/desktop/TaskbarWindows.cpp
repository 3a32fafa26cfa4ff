#include "desktop/Taskbar.h"

#include <algorithm>
#include <memory>

#include <QApplication>
#include <QWidget>

#include "platform/WindowsHeaders.h"

#include <shobjidl.h>

namespace tessarine
{

namespace
{

using TaskbarList = std::unique_ptr<ITaskbarList3, void (*)(ITaskbarList3*)>;

/// Null where the shell has none.
TaskbarList CreateTaskbarList()
{
    ITaskbarList3* list = nullptr;
    // Qt has made this a thread for COM.
    if (FAILED(CoCreateInstance(CLSID_TaskbarList, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&list))))
        list = nullptr;
    TaskbarList owned(list, [](ITaskbarList3* taskbar) { taskbar->Release(); });
    if (owned && FAILED(owned->HrInit()))
        owned.reset();
    return owned;
}

}  // namespace

void TellTaskbar(std::optional<double> share)
{
    const TaskbarList taskbar = CreateTaskbarList();
    if (!taskbar)
        return;
    constexpr int whole = 1000;
    // Windows without an owner are those with a button.
    for (const QWidget* window : QApplication::topLevelWidgets()) {
        if (!window->isVisible() || window->parentWidget() != nullptr)
            continue;
        const auto handle = reinterpret_cast<HWND>(window->winId());
        taskbar->SetProgressState(handle, share ? TBPF_NORMAL : TBPF_NOPROGRESS);
        if (share)
            taskbar->SetProgressValue(handle, static_cast<ULONGLONG>(std::clamp(*share, 0.0, 1.0) * whole), whole);
    }
}

}  // namespace tessarine
