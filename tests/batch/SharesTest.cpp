#include <algorithm>
#include <numeric>
#include <set>

#include <gmock/gmock.h>

#include "batch/Digest.h"
#include "batch/Shares.h"

namespace tessarine::batch
{
namespace
{

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<JobFile> FilesNamed(std::size_t count)
{
    std::vector<JobFile> files;
    for (std::size_t number = 0; number < count; ++number)
        files.push_back({u"decks/" + FromUtf8(std::to_string(number)) + u".pptx", {}});
    return files;
}

/// What each share weighs, from the first to the last.
std::vector<std::uint64_t> WeightsOf(const std::vector<std::uint64_t>& sizes, const std::vector<std::int32_t>& shares,
                                     std::int32_t count)
{
    std::vector<std::uint64_t> weights(static_cast<std::size_t>(count));
    for (std::size_t file = 0; file < sizes.size(); ++file)
        weights.at(static_cast<std::size_t>(shares[file] - 1)) += sizes[file] + CostOfAFile;
    return weights;
}

TEST(SharesBySize, HoldAboutTheSame)
{
    constexpr std::uint64_t mebibyte = 1u << 20;
    std::vector<std::uint64_t> sizes{900 * mebibyte, 40 * mebibyte};
    for (std::uint64_t number = 0; number < 2000; ++number)
        sizes.push_back((number * 7919) % (2 * mebibyte));

    const auto weights = WeightsOf(sizes, SharesBySize(sizes, 3), 3);

    EXPECT_LE(*std::ranges::max_element(weights) - *std::ranges::min_element(weights), 2 * mebibyte);
}

TEST(SharesBySize, SpreadSmallFilesBesideALargeOne)
{
    const std::vector<std::uint64_t> sizes{1u << 30, 10, 10, 10, 10};

    EXPECT_THAT(SharesBySize(sizes, 2), ElementsAre(1, 2, 2, 2, 2));
    EXPECT_THAT(SharesBySize({5, 5, 5, 5, 5, 5}, 3), ElementsAre(1, 2, 3, 1, 2, 3));
    EXPECT_THAT(SharesBySize({0, 0, 0}, 3), ElementsAre(1, 2, 3));
}

TEST(SharesBySize, MayBeEmpty)
{
    EXPECT_THAT(SharesBySize({}, 4), IsEmpty());
    EXPECT_THAT(SharesBySize({7}, 4), ElementsAre(1));
    EXPECT_THAT(SharesBySize({7, 8}, 1), ElementsAre(1, 1));
}

TEST(SharesByPath, DependOnNoOtherFile)
{
    const std::vector<JobFile> files = FilesNamed(400);
    const auto shares = SharesByPath(files, 5);
    std::vector<JobFile> others(files.rbegin(), files.rend());
    others.erase(others.begin(), others.begin() + 100);

    const auto sharesOfOthers = SharesByPath(others, 5);

    for (std::size_t at = 0; at < others.size(); ++at)
        EXPECT_EQ(sharesOfOthers[at], shares[others.size() - 1 - at]) << ToUtf8(others[at].path);
}

TEST(SharesByPath, HoldAboutAsManyFiles)
{
    for (const std::int32_t count : {2, 3, 8, 16}) {
        const auto shares = SharesByPath(FilesNamed(8000), count);
        for (std::int32_t share = 1; share <= count; ++share)
            EXPECT_NEAR(static_cast<double>(std::ranges::count(shares, share)), 8000.0 / count, 2000.0 / count);
    }
}

TEST(SharesByPath, AreTheSameOnEveryMachine)
{
    EXPECT_EQ(Digest().Text(), "cbf29ce484222325");
    EXPECT_EQ(Digest().Add("a").Add("b").Text(), Digest().Add("a").Add("b").Text());
    EXPECT_NE(Digest().Add("a").Add("b").Text(), Digest().Add("ab").Text());
    EXPECT_THAT(SharesByPath(FilesNamed(12), 4), ElementsAre(3, 1, 2, 2, 2, 4, 3, 3, 1, 3, 4, 1));
}

TEST(TakeShare, LeavesTheFilesOfOneShareWithTheirNumbers)
{
    std::vector<JobFile> files = FilesNamed(5);

    const ShardFacts facts = TakeShare(files, {1, 2, 1, 3, 2}, {2, 3});

    ASSERT_EQ(files.size(), 2u);
    EXPECT_EQ(files[0].path, u"decks/1.pptx");
    EXPECT_EQ(files[0].number, 2);
    EXPECT_EQ(files[1].path, u"decks/4.pptx");
    EXPECT_EQ(files[1].number, 5);
    EXPECT_EQ(facts.files, 5);
    EXPECT_EQ(facts.shard, (Shard{2, 3}));
}

TEST(TakeShare, TellsDivisionsApart)
{
    const auto divisionOf = [](std::size_t count, const std::vector<std::int32_t>& shares) {
        return DivisionOf(FilesNamed(count), shares);
    };
    const std::set<std::string> divisions{divisionOf(2, {1, 1}), divisionOf(2, {1, 2}), divisionOf(2, {2, 1}),
                                          divisionOf(3, {1, 1, 1}), divisionOf(1, {1})};
    EXPECT_EQ(divisions.size(), 5u);
    EXPECT_EQ(divisionOf(2, {1, 2}), divisionOf(2, {1, 2}));
}

}  // namespace
}  // namespace tessarine::batch
