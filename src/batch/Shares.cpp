#include "batch/Shares.h"

#include <algorithm>
#include <functional>
#include <numeric>
#include <queue>
#include <utility>

#include "batch/Digest.h"
#include "files/FileState.h"
#include "platform/NativePath.h"

namespace tessarine::batch
{

std::vector<std::int32_t> SharesBySize(const std::vector<std::uint64_t>& sizes, std::int32_t count)
{
    // The largest first, each to the share that is the lightest by then: no share gets farther from the others than one
    // file is large. Files of one size stay in their order.
    std::vector<std::size_t> order(sizes.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::stable_sort(order, std::greater(), [&](std::size_t file) { return sizes[file]; });

    using WeightOfShare = std::pair<std::uint64_t, std::int32_t>;
    std::priority_queue<WeightOfShare, std::vector<WeightOfShare>, std::greater<>> lightest;
    for (std::int32_t share = 1; share <= count; ++share)
        lightest.emplace(0, share);
    std::vector<std::int32_t> shares(sizes.size());
    for (const std::size_t file : order) {
        const auto [weight, share] = lightest.top();
        lightest.pop();
        lightest.emplace(weight + sizes[file] + CostOfAFile, share);
        shares[file] = share;
    }
    return shares;
}

std::vector<std::int32_t> SharesByPath(const std::vector<JobFile>& files, std::int32_t count)
{
    std::vector<std::int32_t> shares;
    for (const JobFile& file : files) {
        // The upper half: in the lower one paths that differ at their end alone are less well mixed.
        const std::uint64_t mixed = Digest().Add(ToUtf8(file.path)).Number() >> 32;
        shares.push_back(static_cast<std::int32_t>(mixed % static_cast<std::uint64_t>(count)) + 1);
    }
    return shares;
}

std::vector<std::uint64_t> SizesOf(const std::vector<JobFile>& files)
{
    std::vector<std::uint64_t> sizes;
    for (const JobFile& file : files) {
        const auto native = file.refusal.empty() ? NativePathIfValid(file.path) : std::nullopt;
        const auto facts = native ? StatusAt(*native) : std::nullopt;
        sizes.push_back(facts ? facts->state.size : 0);
    }
    return sizes;
}

std::string DivisionOf(const std::vector<JobFile>& files, const std::vector<std::int32_t>& shares)
{
    Digest digest;
    for (std::size_t file = 0; file < files.size(); ++file)
        digest.Add(ToUtf8(files[file].path)).Add(std::to_string(shares[file]));
    return digest.Text();
}

ShardFacts TakeShare(std::vector<JobFile>& files, const std::vector<std::int32_t>& shares, const Shard& shard)
{
    ShardFacts facts{shard, std::ssize(files), DivisionOf(files, shares)};
    std::vector<JobFile> taken;
    for (std::size_t file = 0; file < files.size(); ++file) {
        if (shares[file] != shard.index)
            continue;
        taken.push_back(std::move(files[file]));
        taken.back().number = static_cast<std::int64_t>(file) + 1;
    }
    files = std::move(taken);
    return facts;
}

}  // namespace tessarine::batch
