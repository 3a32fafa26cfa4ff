#pragma once

#include <optional>

#include "platform/Failure.h"

namespace tessarine
{

/// Runs `body` and keeps what it fails with, besides handing it on.
template <class Body>
auto KeepFailure(std::optional<Failure>& kept, Body&& body)
{
    kept.reset();
    try {
        return body();
    } catch (...) {
        kept = CurrentFailure();
        throw;
    }
}

}  // namespace tessarine
