#include "support/CompoundBuilder.h"

#include <algorithm>
#include <stdexcept>

#include "platform/String.h"
#include "support/LittleEndian.h"

namespace tessarine::test
{

namespace
{

constexpr std::uint32_t FreeSector = 0xFFFFFFFF;
constexpr std::uint32_t EndOfChain = 0xFFFFFFFE;
constexpr std::uint32_t FatSector = 0xFFFFFFFD;
constexpr std::uint32_t DifatSector = 0xFFFFFFFC;
constexpr std::uint32_t NoEntry = 0xFFFFFFFF;
constexpr std::size_t MiniSector = 64;
constexpr std::size_t MiniCutoff = 4096;
constexpr std::size_t EntrySize = 128;
constexpr std::size_t DifatOfHeader = 109;

std::size_t CountOf(std::size_t bytes, std::size_t unit)
{
    return (bytes + unit - 1) / unit;
}

String UpperCase(StringView name)
{
    String upper(name);
    for (auto& unit : upper)
        unit = unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - 32) : unit;
    return upper;
}

/// Shorter names first, then by upper case.
bool GoesBefore(const String& left, const String& right)
{
    return left.size() != right.size() ? left.size() < right.size() : UpperCase(left) < UpperCase(right);
}

std::string Parent(const std::string& path)
{
    const auto slash = path.rfind('/');
    return slash == std::string::npos ? std::string() : path.substr(0, slash);
}

struct DirectoryEntry {
    String name;
    int kind = 1;  ///< 1 storage, 2 stream, 5 root
    bool red = false;
    std::uint32_t left = NoEntry;
    std::uint32_t right = NoEntry;
    std::uint32_t child = NoEntry;
    CompoundMarks marks;
    std::uint32_t start = 0;
    std::uint64_t size = 0;
};

std::string BytesOf(const DirectoryEntry& entry)
{
    using namespace little;
    if (entry.name.size() > 31)
        throw std::invalid_argument("The name of an entry is too long.");
    std::string bytes = Wide(entry.name);
    bytes.resize(64);
    bytes += Short(static_cast<std::uint32_t>(2 * entry.name.size() + 2)) +
             Byte(static_cast<std::uint32_t>(entry.kind)) + Byte(entry.red ? 0 : 1) + Long(entry.left) +
             Long(entry.right) + Long(entry.child);
    bytes.append(entry.marks.classId.begin(), entry.marks.classId.end());
    bytes += Long(entry.marks.state) + LongLong(entry.marks.created) + LongLong(entry.marks.modified) +
             Long(entry.start) + LongLong(entry.size);
    return bytes;
}

std::string UnusedEntry()
{
    std::string bytes(EntrySize, '\0');
    for (const std::size_t at : {0x44U, 0x48U, 0x4CU})
        little::PutLong(bytes, at, NoEntry);
    return bytes;
}

/// A balanced tree over entries that are in order; those of an incomplete deepest level are red.
std::uint32_t Tree(std::vector<DirectoryEntry>& all, const std::vector<std::uint32_t>& sorted, std::size_t begin,
                   std::size_t end, std::size_t depth, std::size_t blackLevels)
{
    if (begin == end)
        return NoEntry;
    const std::size_t middle = begin + (end - begin) / 2;
    const std::uint32_t left = Tree(all, sorted, begin, middle, depth + 1, blackLevels);
    const std::uint32_t right = Tree(all, sorted, middle + 1, end, depth + 1, blackLevels);
    auto& entry = all[sorted[middle]];
    entry.left = left;
    entry.right = right;
    entry.red = depth >= blackLevels;
    return sorted[middle];
}

std::uint32_t Siblings(std::vector<DirectoryEntry>& all, std::vector<std::uint32_t> entries)
{
    std::sort(entries.begin(), entries.end(),
              [&](auto left, auto right) { return GoesBefore(all[left].name, all[right].name); });
    std::size_t complete = 0;  // Levels of the tree that have all their nodes.
    while ((std::size_t{2} << complete) - 1 <= entries.size())
        ++complete;
    return Tree(all, entries, 0, entries.size(), 0, complete);
}

}  // namespace

/// The sectors of one file while it is made.
class CompoundLayout
{
public:
    explicit CompoundLayout(const CompoundBuilder& builder)
        : builder_(builder), sector_(builder.largeSectors_ ? 4096 : 512)
    {
    }

    std::string Bytes()
    {
        for (std::size_t i = 0; i < builder_.freeSectors_; ++i) {
            sectors_.append(sector_, builder_.junk_);
            fat_.push_back(FreeSector);
        }
        MakeEntries();
        PlaceStreams();
        std::string directory;
        for (const auto& entry : directory_)
            directory += BytesOf(entry);
        while (directory.size() % sector_ != 0)
            directory += UnusedEntry();
        const auto directorySectors = static_cast<std::uint32_t>(directory.size() / sector_);
        const std::uint32_t directoryStart = Chain(std::move(directory));
        const std::uint32_t miniSectors = static_cast<std::uint32_t>(CountOf(4 * miniFat_.size(), sector_));
        const std::uint32_t miniStart = Chain(Numbers(miniFat_, FreeSector));
        const auto difatStart = PlaceFat();
        return Header(directorySectors, directoryStart, miniSectors, miniStart, difatStart) + sectors_;
    }

private:
    void MakeEntries()
    {
        std::map<std::string, std::uint32_t> numbers;
        std::map<std::string, std::vector<std::uint32_t>> children;
        for (const auto& [path, made] : builder_.entries_) {
            const auto number = static_cast<std::uint32_t>(directory_.size());
            numbers[path] = number;
            if (!path.empty())
                children[Parent(path)].push_back(number);
            DirectoryEntry entry;
            entry.name = path.empty() ? u"Root Entry" : FromUtf8(path.substr(path.rfind('/') + 1));
            entry.kind = path.empty() ? 5 : made.stream ? 2 : 1;
            entry.marks = made.marks;
            directory_.push_back(std::move(entry));
        }
        for (auto& [path, entries] : children)
            directory_[numbers.at(path)].child = Siblings(directory_, entries);
    }

    void PlaceStreams()
    {
        std::string mini;
        std::size_t number = 0;
        for (const auto& [path, made] : builder_.entries_) {
            auto& entry = directory_[number++];
            if (!made.stream)
                continue;
            entry.size = made.bytes.size();
            entry.start = made.bytes.size() < MiniCutoff ? MiniChain(mini, made.bytes) : Chain(made.bytes);
        }
        directory_[0].size = mini.size();
        directory_[0].start = Chain(std::move(mini));
    }

    std::uint32_t MiniChain(std::string& mini, const std::string& bytes)
    {
        const std::size_t count = CountOf(bytes.size(), MiniSector);
        const auto start = static_cast<std::uint32_t>(miniFat_.size());
        for (std::size_t i = 0; i < count; ++i)
            miniFat_.push_back(i + 1 == count ? EndOfChain : static_cast<std::uint32_t>(start + i + 1));
        mini += bytes;
        mini.resize(miniFat_.size() * MiniSector);
        return count == 0 ? EndOfChain : start;
    }

    std::uint32_t Chain(std::string bytes)
    {
        const std::size_t count = CountOf(bytes.size(), sector_);
        if (count == 0)
            return EndOfChain;
        bytes.resize(count * sector_);
        const std::size_t first = fat_.size();
        for (std::size_t i = 0; i < count; ++i) {
            const std::size_t block = builder_.scattered_ ? count - 1 - i : i;
            sectors_.append(bytes, block * sector_, sector_);
            if (builder_.scattered_)
                fat_.push_back(i == 0 ? EndOfChain : static_cast<std::uint32_t>(first + i - 1));
            else
                fat_.push_back(i + 1 == count ? EndOfChain : static_cast<std::uint32_t>(first + i + 1));
        }
        return static_cast<std::uint32_t>(builder_.scattered_ ? first + count - 1 : first);
    }

    std::string Numbers(const std::vector<std::uint32_t>& numbers, std::uint32_t filling) const
    {
        std::string bytes;
        for (const auto number : numbers)
            bytes += little::Long(number);
        while (bytes.size() % sector_ != 0)
            bytes += little::Long(filling);
        return bytes;
    }

    /// The file allocation table, which has to hold its own sectors, and the table of those beyond the header's.
    std::uint32_t PlaceFat()
    {
        const std::size_t perSector = sector_ / 4;
        std::size_t fatCount = 0;
        std::size_t difatCount = 0;
        while (CountOf(fat_.size() + fatCount + difatCount, perSector) > fatCount) {
            ++fatCount;
            difatCount = fatCount > DifatOfHeader ? CountOf(fatCount - DifatOfHeader, perSector - 1) : 0;
        }
        const std::size_t first = fat_.size();
        for (std::size_t i = 0; i < fatCount; ++i)
            fatSectors_.push_back(static_cast<std::uint32_t>(first + i));
        fat_.insert(fat_.end(), fatCount, FatSector);
        fat_.insert(fat_.end(), difatCount, DifatSector);
        sectors_ += Numbers(fat_, FreeSector);
        const auto difatStart = static_cast<std::uint32_t>(first + fatCount);
        for (std::size_t i = 0; i < difatCount; ++i) {
            for (std::size_t k = 0; k + 1 < perSector; ++k) {
                const std::size_t which = DifatOfHeader + i * (perSector - 1) + k;
                sectors_ += little::Long(which < fatCount ? fatSectors_[which] : FreeSector);
            }
            sectors_ += little::Long(i + 1 == difatCount ? EndOfChain : static_cast<std::uint32_t>(difatStart + i + 1));
        }
        difatSectors_ = static_cast<std::uint32_t>(difatCount);
        return difatCount == 0 ? EndOfChain : difatStart;
    }

    std::string Header(std::uint32_t directorySectors, std::uint32_t directoryStart, std::uint32_t miniSectors,
                       std::uint32_t miniStart, std::uint32_t difatStart) const
    {
        using namespace little;
        const bool large = builder_.largeSectors_;
        std::string header = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1" + std::string(16, '\0');
        header += Short(0x3E) + Short(large ? 4 : 3) + Short(0xFFFE) + Short(large ? 12 : 9) + Short(6);
        header += std::string(6, '\0') + Long(large ? directorySectors : 0);
        header += Long(static_cast<std::uint32_t>(fatSectors_.size())) + Long(directoryStart) + Long(0);
        header += Long(MiniCutoff) + Long(miniStart) + Long(miniSectors) + Long(difatStart) + Long(difatSectors_);
        for (std::size_t i = 0; i < DifatOfHeader; ++i)
            header += Long(i < fatSectors_.size() ? fatSectors_[i] : FreeSector);
        header.resize(sector_);
        return header;
    }

    const CompoundBuilder& builder_;
    std::size_t sector_;
    std::string sectors_;
    std::vector<std::uint32_t> fat_;
    std::vector<std::uint32_t> fatSectors_;
    std::uint32_t difatSectors_ = 0;
    std::vector<std::uint32_t> miniFat_;
    std::vector<DirectoryEntry> directory_;
};

CompoundBuilder& CompoundBuilder::Stream(const std::string& path, std::string bytes)
{
    if (!Parent(path).empty())
        Storage(Parent(path));
    auto& entry = entries_[path];
    entry.stream = true;
    entry.bytes = std::move(bytes);
    return *this;
}

CompoundBuilder& CompoundBuilder::Storage(const std::string& path)
{
    for (std::string folder = path; !folder.empty(); folder = Parent(folder))
        entries_[folder];
    return *this;
}

CompoundBuilder& CompoundBuilder::Without(const std::string& path)
{
    entries_.erase(path);
    return *this;
}

CompoundBuilder& CompoundBuilder::Marks(const std::string& path, CompoundMarks marks)
{
    entries_.at(path).marks = marks;
    return *this;
}

CompoundBuilder& CompoundBuilder::LargeSectors()
{
    largeSectors_ = true;
    return *this;
}

CompoundBuilder& CompoundBuilder::Scattered()
{
    scattered_ = true;
    return *this;
}

CompoundBuilder& CompoundBuilder::FreeSectors(std::size_t count, char junk)
{
    freeSectors_ = count;
    junk_ = junk;
    return *this;
}

std::string CompoundBuilder::Bytes() const
{
    return CompoundLayout(*this).Bytes();
}

}  // namespace tessarine::test
