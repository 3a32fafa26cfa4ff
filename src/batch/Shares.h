#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "batch/JobFiles.h"
#include "batch/Shard.h"

/// The division of a job's files into shares. The same files give the same shares on every machine and in every run.
namespace tessarine::batch
{

/// What a file costs besides its size, in bytes: opening it, and its line of the report.
inline constexpr std::uint64_t CostOfAFile = 64u << 10;

/// The share of each file, from 1, by the files' sizes (in bytes) and CostOfAFile: all shares weigh about the same.
std::vector<std::int32_t> SharesBySize(const std::vector<std::uint64_t>& sizes, std::int32_t count);

/// The share of each file by its path alone, so that no other file and no size matters: shares hold about as many files
/// each.
std::vector<std::int32_t> SharesByPath(const std::vector<JobFile>& files, std::int32_t count);

/// The size of each file as it is now; 0 for one that is refused or can't be asked.
std::vector<std::uint64_t> SizesOf(const std::vector<JobFile>& files);

/// Tells one division from others: 16 hexadecimal digits that depend on the paths in their order and on the shares.
std::string DivisionOf(const std::vector<JobFile>& files, const std::vector<std::int32_t>& shares);

/// Leaves the files of one share, in their order, and gives each its number in the whole job (JobFile::number).
ShardFacts TakeShare(std::vector<JobFile>& files, const std::vector<std::int32_t>& shares, const Shard& shard);

}  // namespace tessarine::batch
