#pragma once

#include <sys/types.h>

#include <functional>

#include "platform/String.h"

namespace tessarine
{

/// Another process that does something at once and then waits until the end of the scope: what it opened or locked
/// stays so until then.
class OtherProcess
{
public:
    /// Runs `act` in a copy of this process and returns when it is through. Raises std::runtime_error when `act` gives
    /// false or raises.
    explicit OtherProcess(const std::function<bool()>& act);
    ~OtherProcess();  ///< Waits for its end.
    OtherProcess(const OtherProcess&) = delete;
    OtherProcess& operator=(const OtherProcess&) = delete;

private:
    pid_t child_ = -1;
    int done_ = -1;  // the child ends when this is closed
};

/// Another process that holds a lock on a file.
class LockedByAnother : public OtherProcess
{
public:
    enum class Kind {
        Record,         ///< For writing, by fcntl.
        WholeFile,      ///< Against everybody, by flock.
        SharedWithAll,  ///< The same kind, for reading.
        Run             ///< As a run locks it.
    };

    LockedByAnother(const String& path, Kind kind);
};

}  // namespace tessarine
