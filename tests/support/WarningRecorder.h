#pragma once

#include <string>
#include <utility>
#include <vector>

#include "log/Warnings.h"

namespace tessarine
{

/// Notes the warnings of the process while it lives.
class WarningRecorder
{
public:
    WarningRecorder()
        : before_(SetWarningReceiver(
              [this](const String& path, const String& text) { warnings_.emplace_back(path, ToUtf8(text)); }))
    {
    }
    ~WarningRecorder() { SetWarningReceiver(std::move(before_)); }
    WarningRecorder(const WarningRecorder&) = delete;
    WarningRecorder& operator=(const WarningRecorder&) = delete;

    /// Path and text of each, in their order.
    const std::vector<std::pair<String, std::string>>& Warnings() const { return warnings_; }

private:
    std::vector<std::pair<String, std::string>> warnings_;
    WarningPort before_;
};

}  // namespace tessarine
