#pragma once

#include <cstddef>
#include <map>
#include <vector>

#include "batch/JobFiles.h"

namespace tessarine::batch
{

/// The files that must not be processed at the same time: those that are one file under several names (hard links, or
/// the same path twice), and those whose backups have one name. Gives for each of them the last one before it, as
/// indexes.
std::map<std::size_t, std::size_t> SameFiles(const std::vector<JobFile>& files);

}  // namespace tessarine::batch
