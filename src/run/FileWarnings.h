#pragma once

#include <vector>

#include "log/Warnings.h"
#include "platform/String.h"

namespace tessarine
{

/// Gathers the warnings (log/Warnings.h) of one file after the other, for as long as it lives.
class FileWarnings
{
public:
    FileWarnings();
    ~FileWarnings();
    FileWarnings(const FileWarnings&) = delete;
    FileWarnings& operator=(const FileWarnings&) = delete;

    /// The warnings since the last call, in their order and each once.
    std::vector<String> Take();

private:
    std::vector<String> texts_;
    WarningPort before_;
};

}  // namespace tessarine
