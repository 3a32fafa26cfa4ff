#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

#include "office/windows/SystemEvent.h"

namespace tessarine::windows
{

/// The thread that automation calls are made on, so that the calling thread can have its windows handle their events
/// while it waits. It lives in the multithreaded apartment: a busy server's answer then comes back as a number, and
/// nobody has to pump messages for it.
///
/// Jobs run one after the other, in the order in which they came in.
class ComThread
{
public:
    ComThread();
    ~ComThread();  ///< Waits until the last job is done. Not to be called on the thread itself.
    ComThread(const ComThread&) = delete;
    ComThread& operator=(const ComThread&) = delete;

    /// Runs a job, waits for it, and raises what it raised. Meanwhile events are delivered (DeliverPendingEvents) as
    /// they come in. One that itself runs a job waits its turn: the job in progress ends first. Raises `GivenUp` in
    /// place of running it while the run's file is given up (platform/GivingUp.h).
    void Run(const std::function<void()>& job);

    /// The same for a job with a result.
    template <class Job>
    auto Ask(Job&& job) -> decltype(job())
    {
        std::optional<decltype(job())> result;
        Run([&] { result.emplace(job()); });
        return std::move(*result);
    }

    /// Runs a job some time, without waiting for it. It must not raise. Out of memory it is never run.
    void Post(std::function<void()> job) noexcept;

private:
    void Work();
    void Put(std::function<void()> job);
    SystemEvent TakeEvent();
    void GiveBack(SystemEvent event);

    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<std::function<void()>> jobs_;
    bool isEnding_ = false;
    std::vector<SystemEvent> idleEvents_;  // making one anew for each call would cost as much as a short call
    std::thread thread_;                   // last, as it uses all of the above
};

}  // namespace tessarine::windows
