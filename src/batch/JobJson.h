#pragma once

#include "batch/ReportJson.h"
#include "platform/String.h"

namespace tessarine
{
class FindAndReplaceItems;
class Project;
}  // namespace tessarine

/// Jobs as JSON objects, with the keys of "job show" (docs/batch.md).
namespace tessarine::batch
{

/// A saved job: its pairs, its files and its options. `path` is the job's file as it was named.
Json JobJson(const String& path, const Project& project);

/// All that decides what a run does with a file: two runs for which it is equal do the same.
Json RunJson(const FindAndReplaceItems& list, const Project& project);

}  // namespace tessarine::batch
