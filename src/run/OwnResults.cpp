#include "run/OwnResults.h"

#include <utility>

namespace tessarine
{

bool OwnResults::Take(const std::shared_ptr<CounterStatuses>& result)
{
    // A null result is not remembered: the last real one may be handed over again after it, and must still be known.
    return result && result != std::exchange(last_, result);
}

}  // namespace tessarine
