#pragma once

#include <functional>

namespace tessarine
{

/// While it lives, lets a test act right before the system exchanges two files or renames one to a free name: in the
/// last moment in which another program can.
class RenameHook
{
public:
    /// `act` is called once. With `isSupported` false the file system then says that it can't do such renames.
    explicit RenameHook(std::function<void()> act, bool isSupported = true);
    ~RenameHook();
    RenameHook(const RenameHook&) = delete;
    RenameHook& operator=(const RenameHook&) = delete;

private:
    friend bool ActBeforeRename();

    std::function<void()> act_;
    bool isSupported_;
};

}  // namespace tessarine
