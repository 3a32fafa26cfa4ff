#pragma once

#include <memory>

namespace tessarine
{

/// Tells whether the program runs already for this user: by a lock in the user's runtime folder, on Windows by a mutex
/// of the session, which the first instance holds while it lives. A program that has died counts for nothing. Where no
/// lock can be had, each instance takes itself for the first.
class SingleInstance
{
public:
    SingleInstance();   ///< Takes the lock, or finds it taken.
    ~SingleInstance();  ///< Gives the lock up.
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;

    /// Whether there was an instance when this object was made.
    bool IsPreviousInstanceRunning() const { return isPreviousRunning_; }

private:
    struct Lock;  // of the system
    std::unique_ptr<Lock> lock_;
    bool isPreviousRunning_ = false;
};

}  // namespace tessarine
