#include "run/OwnResults.h"

#include <utility>

namespace tessarine
{

bool OwnResults::Take(const std::shared_ptr<CounterStatuses>& result)
{
    return result && result != std::exchange(last_, result);
}

}  // namespace tessarine
