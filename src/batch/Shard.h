#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace tessarine::batch
{

/// One of several shares of a job's files, as `--shard I/N` names it.
struct Shard {
    std::int32_t index = 1;  ///< From 1.
    std::int32_t count = 1;

    bool operator==(const Shard&) const = default;
};

/// The shard that a run has processed, and what of the division of the files tells it from other divisions.
struct ShardFacts {
    Shard shard;
    std::int64_t files = 0;  ///< Of the whole job.
    std::string division;    ///< Equal for all shares that the same files were divided into (DivisionOf).
};

}  // namespace tessarine::batch
