#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace tessarine
{

/// Notes what the process flushes to the disk while it lives: "file" or "folder", in their order.
class FlushRecorder
{
public:
    FlushRecorder();
    ~FlushRecorder();
    FlushRecorder(const FlushRecorder&) = delete;
    FlushRecorder& operator=(const FlushRecorder&) = delete;

    const std::vector<std::string>& Flushed() const { return flushed_; }

    /// From here on folders can't be flushed: the device fails.
    void FailFolders() { failsFolders_ = true; }

    /// Lets a test act once, right before a folder is flushed.
    void BeforeFolder(std::function<void()> step) { beforeFolder_ = std::move(step); }

private:
    friend bool NoteFlush(int descriptor);

    std::vector<std::string> flushed_;
    bool failsFolders_ = false;
    std::function<void()> beforeFolder_;
};

}  // namespace tessarine
