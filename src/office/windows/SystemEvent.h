#pragma once

#include <memory>

namespace tessarine::windows
{

/// An event of the system that resets itself: what is waited for together with the messages of a thread.
class SystemEvent
{
public:
    SystemEvent();  ///< Not set. Raises when the system has no more of them.

    void Set() noexcept;

    /// Waits until the event is set, and has the windows of this thread handle what comes in meanwhile. What a handler
    /// raises is raised here, once the event is set.
    void WaitDeliveringEvents();

private:
    struct Close {
        void operator()(void* handle) const noexcept;
    };
    std::unique_ptr<void, Close> handle_;
};

}  // namespace tessarine::windows
