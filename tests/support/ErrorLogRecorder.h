#pragma once

#include <string>
#include <vector>

#include "support/TemporaryFolder.h"

namespace tessarine
{

/// While it lives the error log lies in a folder of its own, for a test to read.
class ErrorLogRecorder
{
public:
    ErrorLogRecorder();
    ~ErrorLogRecorder();
    ErrorLogRecorder(const ErrorLogRecorder&) = delete;
    ErrorLogRecorder& operator=(const ErrorLogRecorder&) = delete;

    /// The log as it stands, byte for byte; empty when nothing was logged.
    std::string Bytes() const;

    /// The messages of the lines so far, without the "- ", the date and the time that follow them, and without the
    /// lines that only name the file of the line before.
    std::vector<std::string> Lines() const;

    /// The same with those lines ("In file /folder/a.pptx").
    std::vector<std::string> LinesWithFiles() const;

private:
    TemporaryFolder folder_;
    String previousFolder_;
};

}  // namespace tessarine
