#pragma once

#include <string>
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

private:
    friend void NoteFlush(int descriptor);

    std::vector<std::string> flushed_;
};

}  // namespace tessarine
