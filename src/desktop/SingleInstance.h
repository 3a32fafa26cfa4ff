#pragma once

#include <memory>

class QLockFile;

namespace tessarine
{

/// Tells whether the program runs already for this user, by a lock in the user's runtime folder that the first instance
/// holds while it lives. The lock of a program that has died counts for nothing. Where no lock can be written, each
/// instance takes itself for the first.
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
    std::unique_ptr<QLockFile> lock_;  // held when this is the first instance
    bool isPreviousRunning_ = false;
};

}  // namespace tessarine
