#include "saving/HalfWrittenFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "platform/Crc32.h"

namespace tessarine
{
namespace
{

constexpr std::size_t blockLength = WriteEntry::BlockLength;

/// A content without two equal blocks.
std::string Content(std::size_t length, char seed)
{
    std::string content(length, seed);
    for (std::size_t i = 0; i < length; i += blockLength)
        content[i] = static_cast<char>(i / blockLength + 1);
    return content;
}

BlockReader ReaderOf(const std::string& content)
{
    return [&content](std::uint64_t offset, std::span<std::byte> buffer) {
        const std::size_t begin = std::min<std::size_t>(offset, content.size());
        const std::size_t length = std::min(buffer.size(), content.size() - begin);
        std::copy_n(std::as_bytes(std::span(content)).begin() + static_cast<std::ptrdiff_t>(begin), length,
                    buffer.begin());
        return length;
    };
}

WriteProgress ProgressOf(const std::string& now, const std::string& before, const std::string& after)
{
    WriteEntry entry;
    entry.mark.size = before.size();
    entry.copyMark.size = after.size();
    const auto bytes = std::as_bytes(std::span(before));
    for (std::size_t begin = 0; begin < before.size(); begin += blockLength)
        entry.oldBlocks.push_back(Crc32(bytes.subspan(begin, std::min(blockLength, before.size() - begin))));
    return ProgressOfWrite(entry, ReaderOf(now), now.size(), ReaderOf(after));
}

/// Lengths of the old and the new content, in bytes.
struct Lengths {
    std::size_t before;
    std::size_t after;
};

class HalfWrittenFile : public testing::TestWithParam<Lengths>
{
protected:
    const std::string before_ = Content(GetParam().before, 'o');
    const std::string after_ = Content(GetParam().after, 'n');
};

TEST_P(HalfWrittenFile, IsOldBeforeTheFirstByteAndNewAfterTheLast)
{
    EXPECT_EQ(ProgressOf(before_, before_, after_), WriteProgress::NotBegun);
    EXPECT_EQ(ProgressOf(after_, before_, after_), WriteProgress::Done);
}

TEST_P(HalfWrittenFile, IsKnownWhereverTheWriteStopsBetweenBlocks)
{
    for (std::size_t written = blockLength; written < after_.size(); written += blockLength) {
        std::string now = before_;
        now.resize(std::max(now.size(), written));
        now.replace(0, written, after_, 0, written);
        EXPECT_EQ(ProgressOf(now, before_, after_), WriteProgress::HalfDone) << written;
    }
}

TEST_P(HalfWrittenFile, IsKnownBeforeItsEndIsCutOff)
{
    if (after_.size() >= before_.size())
        return;
    std::string now = before_;
    now.replace(0, after_.size(), after_);

    EXPECT_EQ(ProgressOf(now, before_, after_), WriteProgress::HalfDone);
}

TEST_P(HalfWrittenFile, IsKnownWhenItWasMadeLongerAhead)
{
    if (after_.size() <= before_.size())
        return;
    std::string now = before_;
    now.resize(after_.size());

    EXPECT_EQ(ProgressOf(now, before_, after_), WriteProgress::HalfDone);
}

TEST_P(HalfWrittenFile, IsUnrelatedWithAForeignByteInAnyBlock)
{
    std::string mixed = before_;
    mixed.resize(std::max(mixed.size(), blockLength));
    mixed.replace(0, blockLength, after_, 0, blockLength);
    for (std::size_t i = 1; i < mixed.size(); i += blockLength) {
        std::string now = mixed;
        now[i] = 'x';
        EXPECT_EQ(ProgressOf(now, before_, after_), WriteProgress::Unrelated) << i;
    }
}

TEST_P(HalfWrittenFile, IsUnrelatedWhenItHasLostItsEnd)
{
    const std::size_t shorter = std::min(before_.size(), after_.size()) - 1;

    EXPECT_EQ(ProgressOf(before_.substr(0, shorter), before_, after_), WriteProgress::Unrelated);
    EXPECT_EQ(ProgressOf(after_.substr(0, shorter), before_, after_), WriteProgress::Unrelated);
    EXPECT_EQ(ProgressOf({}, before_, after_), WriteProgress::Unrelated);
}

TEST_P(HalfWrittenFile, IsUnrelatedWhenSomebodyHasAppendedToIt)
{
    const std::string longer = before_ + std::string(2 * blockLength + GetParam().after, 'x');

    EXPECT_EQ(ProgressOf(longer, before_, after_), WriteProgress::Unrelated);
}

INSTANTIATE_TEST_SUITE_P(
    Lengths, HalfWrittenFile,
    testing::Values(Lengths{3 * blockLength, 3 * blockLength}, Lengths{5 * blockLength + 7, 2 * blockLength + 100},
                    Lengths{2 * blockLength + 100, 5 * blockLength + 7}, Lengths{2 * blockLength, 2 * blockLength + 1},
                    Lengths{2 * blockLength + 1, 2 * blockLength}),
    [](const auto& parameter) {
        return std::to_string(parameter.param.before) + "To" + std::to_string(parameter.param.after);
    });

}  // namespace
}  // namespace tessarine
