#include "office/windows/ComThread.h"

#include <exception>

#include "office/windows/ComHeaders.h"
#include "platform/GivingUp.h"

namespace tessarine::windows
{

ComThread::ComThread() : thread_([this] { Work(); }) {}

ComThread::~ComThread()
{
    {
        const std::scoped_lock lock(mutex_);
        isEnding_ = true;
    }
    changed_.notify_one();
    thread_.join();
}

void ComThread::Run(const std::function<void()>& job)
{
    RaiseIfGivenUp();
    SystemEvent done = TakeEvent();
    std::exception_ptr raised;
    Put([&] {
        try {
            job();
        } catch (...) {
            raised = std::current_exception();
        }
        done.Set();
    });

    std::exception_ptr raisedMeanwhile;
    try {
        done.WaitDeliveringEvents();
    } catch (...) {
        raisedMeanwhile = std::current_exception();
    }
    GiveBack(std::move(done));
    // The call's own failure comes first: a caller sorts it by its number.
    if (raised)
        std::rethrow_exception(raised);
    if (raisedMeanwhile)
        std::rethrow_exception(raisedMeanwhile);
}

void ComThread::Post(std::function<void()> job) noexcept
{
    try {
        Put(std::move(job));
    } catch (...) {
        // What the job would have let go of stays until the process ends.
    }
}

void ComThread::Work()
{
    // Where it fails, each call fails with the system's number for a thread without an apartment.
    const bool isApartment = SUCCEEDED(CoInitializeEx(nullptr, COINIT_MULTITHREADED));
    std::unique_lock lock(mutex_);
    for (;;) {
        changed_.wait(lock, [this] { return isEnding_ || !jobs_.empty(); });
        if (jobs_.empty())
            break;
        auto job = std::move(jobs_.front());
        jobs_.pop_front();
        lock.unlock();
        job();
        job = nullptr;  // what it holds may be of the apartment
        lock.lock();
    }
    lock.unlock();
    if (isApartment)
        CoUninitialize();
}

void ComThread::Put(std::function<void()> job)
{
    {
        const std::scoped_lock lock(mutex_);
        jobs_.push_back(std::move(job));
    }
    changed_.notify_one();
}

SystemEvent ComThread::TakeEvent()
{
    const std::scoped_lock lock(mutex_);
    if (idleEvents_.empty())
        return {};
    SystemEvent event = std::move(idleEvents_.back());
    idleEvents_.pop_back();
    return event;
}

void ComThread::GiveBack(SystemEvent event)
{
    const std::scoped_lock lock(mutex_);
    idleEvents_.push_back(std::move(event));
}

}  // namespace tessarine::windows
