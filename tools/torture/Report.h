#pragma once

#include <map>
#include <string>

#include "Program.h"

namespace tessarine::torture
{

enum class FileResult { Failed = 0, Done = 1, NothingToDo = 2 };

/// What a run said of one file.
struct FileLine {
    FileResult result = FileResult::Failed;
    std::string error;
    bool warned = false;
};

/// A report in JSON, read with a reader that is not the program's.
struct Report {
    std::map<std::string, FileLine> files;  ///< By the last part of their paths.
    bool hasSummary = false;
    bool isReadable = true;  ///< Each line is one object.

    const FileLine* Of(const std::string& name) const;  ///< Null when the report says nothing of the file.
    bool AnyFailed() const;
};

Report ReadReport(const Outcome& outcome);

}  // namespace tessarine::torture
