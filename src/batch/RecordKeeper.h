#pragma once

#include <cstddef>
#include <mutex>
#include <optional>

#include "platform/Failure.h"
#include "report/FileReport.h"

namespace tessarine::batch
{

class RecordedReports;
class RunRecord;

/// Keeps the record of a run from any of its threads. Files are named by their index among those that are to do.
class RecordKeeper
{
public:
    /// Borrows both; keeps nothing in a null record.
    RecordKeeper(RunRecord* record, const RecordedReports& reports) : record_(record), reports_(reports) {}

    /// Before a file is touched; false when that can't be recorded, so that it must not be.
    bool Begins(std::size_t toDo);
    void Done(std::size_t toDo, const FileReport& report);

    /// Why something could not be recorded, of the first that could not.
    std::optional<Failure> failure() const;

private:
    template <class Keep>
    bool Keeps(const Keep& keep);

    RunRecord* record_;
    const RecordedReports& reports_;
    mutable std::mutex mutex_;
    std::optional<Failure> failure_;
};

}  // namespace tessarine::batch
