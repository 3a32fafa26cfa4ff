#pragma once

#include <cstdio>
#include <cstdlib>

namespace tessarine::fuzz
{

/// Ends the process when a property that holds for every input does not; the fuzzer keeps the input then.
inline void Require(bool holds, const char* property)
{
    if (holds)
        return;
    std::fprintf(stderr, "does not hold: %s\n", property);
    std::abort();
}

}  // namespace tessarine::fuzz
