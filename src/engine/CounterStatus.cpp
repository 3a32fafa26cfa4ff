#include "engine/CounterStatus.h"

namespace tessarine
{

void CounterStatus::PutCount(Location location, std::int32_t value)
{
    counts_[static_cast<std::size_t>(location)] = value;
    // Never set back: a location without hits does not take away what another one has found.
    if (value > 0)
        FileStausAfterProcess = FileStatus::Counted;
}

}  // namespace tessarine
