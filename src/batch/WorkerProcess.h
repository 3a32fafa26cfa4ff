#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tessarine::batch
{

/// Another process of this program, which works for this one: what it reads comes from here, what it writes goes here,
/// and what it says on standard error goes where ours does.
///
/// It does not outlive this process, however this one ends. The keys that cancel a run don't reach it: they are for
/// this process to take, and a worker ends between two files, when its input ends.
///
/// An object belongs to one thread, which must live as long as the process does.
class WorkerProcess
{
public:
    /// Starts it with these arguments, which don't hold the program's name. Raises `DeviceIO` with the system's reason.
    explicit WorkerProcess(const std::vector<std::string>& arguments);

    /// Ends it at once where it has not ended.
    ~WorkerProcess();
    WorkerProcess(const WorkerProcess&) = delete;
    WorkerProcess& operator=(const WorkerProcess&) = delete;

    /// False when nobody reads it any more.
    bool Write(std::string_view bytes);

    /// Fills `bytes` whole; false when it has ended before.
    bool Read(std::span<char> bytes);

    /// Tells it that nothing more comes.
    void CloseInput();

    /// Waits for its end, which it must have been told of or be at, and tells how it ended: "exit status 1", or what
    /// killed it.
    std::string End();

private:
    class System;

    std::unique_ptr<System> system_;
};

/// For the worker's own side, at its start: it ends at once with the process that it works for, and leaves no new file
/// of a save half written where the system lets it.
void EndWithStarter();

}  // namespace tessarine::batch
