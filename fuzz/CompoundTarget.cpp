// Compound files: the directory, every stream, and new files with streams changed and left out.
#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "office/builtin/compound/CompoundRewrite.h"
#include "platform/Failure.h"
#include "Require.h"
#include "support/CompoundReader.h"

namespace tessarine::fuzz
{

namespace
{

using builtin::CompoundChanges;
using builtin::CompoundEntry;
using builtin::CompoundFile;

/// What a file holds, by the numbers of the records: an entry's content, nothing for a storage.
using Contents = std::map<std::uint32_t, std::optional<std::string>>;

bool IsStream(const CompoundFile& file, std::size_t entry)
{
    return file.Entries()[entry].kind == CompoundEntry::Kind::Stream;
}

Contents ContentsOf(const CompoundFile& file)
{
    Contents contents;
    for (std::size_t i = 0; i < file.Entries().size(); ++i)
        contents[file.Entries()[i].number] = IsStream(file, i) ? std::optional(file.Bytes(i)) : std::nullopt;
    return contents;
}

Contents ContentsOf(const std::string& bytes)
{
    const auto memory = BytesInMemory(std::as_bytes(std::span(bytes)));
    return ContentsOf(CompoundFile(*memory));
}

/// What a reader that takes no fault finds in the file; nothing when it finds a fault. It follows all that a header
/// counts and knows one size that parts small streams from large ones, so that it is asked of usual headers alone.
std::optional<std::vector<test::ReadEntry>> StrictlyRead(const std::string& bytes)
{
    constexpr std::size_t miniCutoff = 56;
    constexpr std::size_t difatSectors = 72;
    if (bytes.compare(miniCutoff, 4, std::string("\0\x10\0\0", 4)) != 0 ||
        bytes.compare(difatSectors, 4, std::string(4, '\0')) != 0)
        return std::nullopt;
    try {
        return test::EntriesOf(bytes);
    } catch (const std::runtime_error&) {
        return std::nullopt;
    }
}

void StaysAsItIs(const CompoundFile& file, const std::string& bytes)
{
    const std::string written = RewrittenCompoundFile(file, {});
    Require(ContentsOf(written) == ContentsOf(file), "a file that is written anew holds the same");
    const auto before = StrictlyRead(bytes);
    // It takes what a stream may name as its children for entries, too.
    if (before && before->size() == file.Entries().size())
        Require(StrictlyRead(written) == before, "a file without fault stays without");
}

/// Gives every third stream other bytes and leaves out one entry, which the file's last byte chooses.
void Changes(const CompoundFile& file, std::size_t seed)
{
    CompoundChanges changes;
    for (std::size_t i = seed % 3; i < file.Entries().size(); i += 3)
        if (IsStream(file, i))
            changes.streams[i] = std::string((seed * 37 + i * 1001) % 9000, static_cast<char>('a' + i % 26));
    const std::size_t left = seed % file.Entries().size();
    if (left != CompoundFile::root)
        changes.removed.insert(left);

    Contents expected = ContentsOf(file);
    for (const auto& [i, bytes] : changes.streams)
        expected[file.Entries()[i].number] = bytes;
    for (std::size_t i = 1; i < file.Entries().size(); ++i) {
        std::size_t above = i;
        while (above != CompoundFile::root && above != left)
            above = file.Entries()[above].parent;
        if (left != CompoundFile::root && above == left)
            expected.erase(file.Entries()[i].number);
    }
    Require(ContentsOf(RewrittenCompoundFile(file, changes)) == expected, "what is written holds what was put");
}

void ReadAndWrite(const std::string& bytes)
{
    const auto memory = BytesInMemory(std::as_bytes(std::span(bytes)));
    const CompoundFile file(*memory, builtin::Limits::Small());
    std::uint64_t size = 0;
    bool isWhole = true;
    for (std::size_t i = 0; i < file.Entries().size(); ++i) {
        if (!IsStream(file, i))
            continue;
        try {
            size += file.Bytes(i).size();
        } catch (const Failure&) {
            isWhole = false;  // the next stream may be sound
        }
    }
    Require(size <= bytes.size(), "all streams together are no larger than the file");
    if (!isWhole) {
        bool isRefused = false;
        try {
            RewrittenCompoundFile(file, {});
        } catch (const Failure&) {
            isRefused = true;
        }
        Require(isRefused, "a file that can't be read whole isn't written anew");
        return;
    }
    StaysAsItIs(file, bytes);
    Changes(file, static_cast<unsigned char>(bytes.back()));
}

}  // namespace

}  // namespace tessarine::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tessarine;
    try {
        fuzz::ReadAndWrite(std::string(reinterpret_cast<const char*>(data), size));
    } catch (const Failure& failure) {
        // refusing is a good answer, as a damaged file; all else is a find
        fuzz::Require(failure.number == FailureNumber::FileCorrupt, "a refusal says that the file is damaged");
    }
    return 0;
}
