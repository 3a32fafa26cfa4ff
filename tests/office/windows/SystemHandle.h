#pragma once

#include <memory>

#include "office/windows/ComHeaders.h"

namespace tessarine::test
{

struct CloseSystemHandle {
    void operator()(void* handle) const noexcept { CloseHandle(handle); }
};

/// A handle of the system that closes itself.
using SystemHandle = std::unique_ptr<void, CloseSystemHandle>;

}  // namespace tessarine::test
