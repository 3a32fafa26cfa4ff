#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "batch/JobFiles.h"
#include "platform/String.h"

namespace tessarine::batch
{

struct BatchCall;

/// The files of a job with their sizes, in their order, as they were when the first of its shards looked for them
/// (docs/formats/plan.md).
struct SharePlan {
    CollectedFiles collected;
    std::vector<std::uint64_t> sizes;  ///< Of each file, in bytes.
};

/// What a call says of its files: two calls for which it is equal name the same ones.
std::string FilesNamed(const BatchCall& call);

/// The plan in the file that the call names. Whoever comes first makes it with `collect`; of several who come at the
/// same time one makes it, and all take that one.
///
/// Refuses (Refusal.h) a file that is no plan, and one of a call that names other files. Raises `collect`'s failures
/// and what reading and writing raise.
SharePlan PlanOf(const BatchCall& call, const std::function<CollectedFiles()>& collect);

}  // namespace tessarine::batch
