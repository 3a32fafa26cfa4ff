#pragma once

#include <cstdint>
#include <functional>

#include "platform/Failure.h"

namespace tessarine::test
{

/// The number of the failure that a body raises; 0 for none.
inline std::int32_t NumberRaised(const std::function<void()>& body)
{
    try {
        body();
    } catch (const Failure& failure) {
        return failure.number;
    }
    return 0;
}

}  // namespace tessarine::test
