#include "support/CompoundReader.h"

#include <algorithm>
#include <functional>
#include <stdexcept>

namespace tessarine::test
{

namespace
{

constexpr std::uint32_t ReadFreeSector = 0xFFFFFFFF;
constexpr std::uint32_t ReadEndOfChain = 0xFFFFFFFE;

[[noreturn]] void Fault(const std::string& what)
{
    throw std::runtime_error("Compound file: " + what + ".");
}

std::uint64_t NumberAt(const std::string& bytes, std::size_t at, std::size_t size)
{
    if (at > bytes.size() || size > bytes.size() - at)
        Fault("too short");
    std::uint64_t number = 0;
    for (std::size_t i = size; i-- > 0;)
        number = number << 8 | static_cast<unsigned char>(bytes[at + i]);
    return number;
}

std::uint32_t LongAt(const std::string& bytes, std::size_t at)
{
    return static_cast<std::uint32_t>(NumberAt(bytes, at, 4));
}

class CompoundView
{
public:
    explicit CompoundView(const std::string& file) : file_(file)
    {
        if (NumberAt(file, 0, 8) != 0xE11AB1A1E011CFD0)
            Fault("another signature");
        sector_ = std::size_t{1} << NumberAt(file, 30, 2);
        ReadFat();
        const std::string directory = Chain(LongAt(file, 48), "directory");
        for (std::size_t at = 0; at < directory.size(); at += 128)
            directory_.push_back(directory.substr(at, 128));
        miniFat_ = Chain(LongAt(file, 60), "mini FAT");
        mini_ = Chain(LongAt(directory_.at(0), 116), "mini stream");
        met_.resize(directory_.size());
        entries_.resize(directory_.size());
        Visit(0, "");
    }

    std::vector<ReadEntry> Entries() const
    {
        std::vector<ReadEntry> reachable;
        for (std::size_t i = 0; i < entries_.size(); ++i)
            if (met_[i])
                reachable.push_back(entries_[i]);
        return reachable;
    }

private:
    void ReadFat()
    {
        std::vector<std::uint32_t> sectors;
        for (std::size_t i = 0; i < 109; ++i)
            sectors.push_back(LongAt(file_, 76 + 4 * i));
        std::uint32_t next = LongAt(file_, 68);
        for (std::uint32_t left = LongAt(file_, 72); left > 0; --left) {
            const std::string block = Sector(next);
            for (std::size_t at = 0; at + 4 < sector_; at += 4)
                sectors.push_back(LongAt(block, at));
            next = LongAt(block, sector_ - 4);
        }
        sectors.erase(std::remove(sectors.begin(), sectors.end(), ReadFreeSector), sectors.end());
        if (sectors.size() != LongAt(file_, 44))
            Fault("the header counts other FAT sectors");
        for (const auto number : sectors)
            fat_ += Sector(number);
        used_.resize(fat_.size() / 4);
    }

    std::string Sector(std::uint32_t number) const
    {
        const std::size_t start = (std::size_t{number} + 1) * sector_;
        if (start + sector_ > file_.size())
            Fault("a sector outside of the file");
        return file_.substr(start, sector_);
    }

    std::string Chain(std::uint32_t number, const std::string& what)
    {
        std::string bytes;
        for (; number != ReadEndOfChain; number = LongAt(fat_, std::size_t{4} * number)) {
            if (number >= used_.size() || used_[number])
                Fault("the chain of the " + what + " goes wrong");
            used_[number] = true;
            bytes += Sector(number);
        }
        return bytes;
    }

    std::string MiniChain(std::uint32_t number, std::uint64_t size) const
    {
        std::string bytes;
        for (; bytes.size() < size; number = LongAt(miniFat_, std::size_t{4} * number)) {
            if (std::size_t{number} * 64 + 64 > mini_.size())
                Fault("a mini sector outside of the mini stream");
            bytes += mini_.substr(std::size_t{number} * 64, 64);
        }
        if (number != ReadEndOfChain)
            Fault("a mini chain is longer than its stream");
        return bytes.substr(0, size);
    }

    void Visit(std::uint32_t number, const std::string& folder)
    {
        if (number >= directory_.size() || met_[number])
            Fault("a directory entry is met twice or missing");
        met_[number] = true;
        const std::string& raw = directory_[number];
        String name;
        if (NumberAt(raw, 64, 2) > 64)
            Fault("a name reaches beyond its place");
        for (std::size_t at = 0; at + 2 < NumberAt(raw, 64, 2); at += 2)
            name += static_cast<char16_t>(NumberAt(raw, at, 2));
        auto& entry = entries_[number];
        entry.kind = static_cast<int>(NumberAt(raw, 66, 1));
        entry.path = entry.kind == 5 ? "" : folder + ToUtf8(name);
        std::copy(raw.begin() + 80, raw.begin() + 96, entry.marks.classId.begin());
        entry.marks.state = LongAt(raw, 96);
        entry.marks.created = NumberAt(raw, 100, 8);
        entry.marks.modified = NumberAt(raw, 108, 8);
        if (entry.kind == 2)
            ReadStream(entry, raw);
        const std::uint32_t child = LongAt(raw, 76);
        if (child == ReadFreeSector)
            return;
        std::vector<std::uint32_t> siblings;
        InOrder(child, siblings);
        const std::string inside = entry.path.empty() ? "" : entry.path + "/";
        for (const auto sibling : siblings)
            Visit(sibling, inside);
        for (std::size_t i = 1; i < siblings.size(); ++i)
            if (NumberAt(directory_[siblings[i - 1]], 64, 2) > NumberAt(directory_[siblings[i]], 64, 2))
                Fault("siblings aren't in order");
    }

    void ReadStream(ReadEntry& entry, const std::string& raw)
    {
        const std::uint64_t size = NumberAt(raw, 120, 8);
        const std::uint32_t start = LongAt(raw, 116);
        entry.bytes = size == 0 ? "" : size < 4096 ? MiniChain(start, size) : Chain(start, entry.path);
        if (entry.bytes.size() < size || entry.bytes.size() >= size + sector_)
            Fault("a chain doesn't fit its stream");
        entry.bytes.resize(size);
    }

    void InOrder(std::uint32_t number, std::vector<std::uint32_t>& siblings) const
    {
        if (number == ReadFreeSector)
            return;
        if (number >= directory_.size() || siblings.size() > directory_.size())
            Fault("the tree of the directory goes wrong");
        InOrder(LongAt(directory_[number], 68), siblings);
        siblings.push_back(number);
        InOrder(LongAt(directory_[number], 72), siblings);
    }

    const std::string& file_;
    std::size_t sector_ = 512;
    std::string fat_;
    std::vector<bool> used_;
    std::vector<std::string> directory_;
    std::string miniFat_;
    std::string mini_;
    std::vector<bool> met_;
    std::vector<ReadEntry> entries_;
};

}  // namespace

std::vector<ReadEntry> EntriesOf(const std::string& file)
{
    return CompoundView(file).Entries();
}

std::string StreamOf(const std::string& file, const std::string& path)
{
    for (auto& entry : EntriesOf(file))
        if (entry.kind == 2 && entry.path == path)
            return entry.bytes;
    throw std::runtime_error("Compound file: no stream of that name.");
}

}  // namespace tessarine::test
