#pragma once

#include <cstddef>
#include <functional>
#include <vector>

namespace tessarine
{

/// While it lives, lets a test act right before the system exchanges two files or renames one to a free name: in the
/// last moment in which another program can.
class RenameHook
{
public:
    /// One step before each rename, which gives the error that the rename fails with, or 0. Those after the last step
    /// are simply made.
    explicit RenameHook(std::vector<std::function<int()>> steps);
    ~RenameHook();
    RenameHook(const RenameHook&) = delete;
    RenameHook& operator=(const RenameHook&) = delete;

private:
    friend int ActBeforeRename();

    std::vector<std::function<int()>> steps_;
    std::size_t next_ = 0;
};

}  // namespace tessarine
