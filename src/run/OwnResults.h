#pragma once

#include <memory>

namespace tessarine
{

class CounterStatuses;

/// Tells a file's own result from what Project::AfterFileProcess hands over when the run has none for the file: null,
/// or the result of the file before once more. One object follows one run.
class OwnResults
{
public:
    /// Takes what was handed over for the next file. True when it is that file's own result.
    bool Take(const std::shared_ptr<CounterStatuses>& result);

private:
    std::shared_ptr<CounterStatuses> last_;  // held, so that no newer result can stand at its address
};

}  // namespace tessarine
