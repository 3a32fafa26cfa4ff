#include "office/builtin/compound/CompoundFile.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

#include "files/CompoundFile.h"
#include "office/builtin/compound/CompoundFormat.h"
#include "office/builtin/limits/Damage.h"
#include "platform/CaseFolding.h"
#include "platform/LittleEndian.h"

namespace tessarine::builtin
{

namespace
{

using namespace compound;
using littleendian::Get;

constexpr std::uint64_t wholeChain = std::numeric_limits<std::uint64_t>::max();

std::vector<std::uint32_t> NumbersIn(std::string_view table)
{
    std::vector<std::uint32_t> numbers(table.size() / numberSize);
    for (std::size_t i = 0; i < numbers.size(); ++i)
        numbers[i] = Get<std::uint32_t>(table, i * numberSize);
    return numbers;
}

/// What the length tells, up to the NUL that it counts as well. Some lengths leave it out.
String NameIn(std::string_view record)
{
    const std::size_t length = Get<std::uint16_t>(record, record::nameLength) / 2;
    String name;
    for (std::size_t i = 0; i < std::min(length, record::nameUnits); ++i)
        name += Get<char16_t>(record, 2 * i);
    return name.substr(0, name.find(u'\0'));
}

/// The name for messages, without the control characters that names of property streams begin with.
std::string PlainName(const CompoundEntry& entry)
{
    String name = entry.name;
    std::erase_if(name, [](char16_t unit) { return unit < u' '; });
    return ToUtf8(name);
}

/// Takes the bytes of a chain piece by piece: `read(sector, byteInSector, piece)` for sectors that lie side by side.
template <class Reader>
void ForEachPiece(const SectorChain& chain, unsigned shift, std::uint64_t offset, std::span<std::byte> buffer,
                  const Reader& read)
{
    const std::uint64_t sectorSize = std::uint64_t{1} << shift;
    while (!buffer.empty()) {
        const SectorChain::Run run = chain.At(static_cast<std::uint32_t>(offset >> shift));
        const std::uint64_t inSector = offset & (sectorSize - 1);
        const auto length = std::min<std::uint64_t>(buffer.size(), (std::uint64_t{run.count} << shift) - inSector);
        read(run.sector, inSector, buffer.first(static_cast<std::size_t>(length)));
        buffer = buffer.subspan(static_cast<std::size_t>(length));
        offset += length;
    }
}

}  // namespace

CompoundFile::CompoundFile(const RandomAccessBytes& bytes, const Limits& limits) : bytes_(bytes)
{
    ReadHeader();
    SectorTable fat = ReadFat();
    ReadDirectory(fat, limits);
    ReadTree();
    FindStreams(fat);
}

void CompoundFile::ReadHeader()
{
    if (bytes_.Size() < headerSize)
        throw Damage({}, "the header of the compound file is cut");
    header_.resize(headerSize);
    bytes_.Read(0, std::as_writable_bytes(std::span(header_)));
    if (!IsCompoundFile(header_))
        throw Damage({}, "it is not a compound file");
    sectorShift_ = Get<std::uint16_t>(header_, header::sectorShift);
    if ((sectorShift_ != 9 && sectorShift_ != 12) ||
        Get<std::uint16_t>(header_, header::miniSectorShift) != miniSectorShift)
        throw Damage({}, "the sectors of the compound file have no size that they can have");
    const std::uint64_t afterHeader = bytes_.Size() - std::min(bytes_.Size(), Position(0));
    sectors_ = static_cast<std::uint32_t>(
        std::min<std::uint64_t>(SectorsOf(afterHeader, sectorShift_), std::uint64_t{highestSector} + 1));
}

/// As many of the numbers as the file has sectors. Those that no sector of the FAT holds lead nowhere.
SectorTable CompoundFile::ReadFat() const
{
    const std::uint64_t perSector = (std::uint64_t{1} << sectorShift_) / numberSize;
    const std::uint64_t needed = SectorsOf(sectors_, sectorShift_ - 2);
    std::vector<std::uint32_t> next(sectors_, freeSector);
    std::vector<std::uint32_t> own;  // sectors of the tables themselves
    std::uint64_t done = 0;
    const auto readFatSectors = [&](std::string_view difat) {
        for (std::size_t at = 0; at < difat.size() && done < needed; at += numberSize, ++done) {
            const auto sector = Get<std::uint32_t>(difat, at);
            if (sector >= sectors_)
                continue;
            const auto numbers = NumbersIn(ReadPadded(sector, 1));
            const std::uint64_t count = std::min(perSector, sectors_ - done * perSector);
            std::copy_n(numbers.begin(), count, next.begin() + static_cast<std::ptrdiff_t>(done * perSector));
            own.push_back(sector);
        }
    };

    readFatSectors(std::string_view(header_).substr(header::difat));
    auto difatAt = HeaderNumber(header::firstDifatSector);
    while (done < needed && difatAt < sectors_) {
        const std::string difat = ReadPadded(difatAt, 1);
        own.push_back(difatAt);
        readFatSectors(std::string_view(difat).substr(0, difat.size() - numberSize));
        difatAt = Get<std::uint32_t>(difat, difat.size() - numberSize);
    }

    SectorTable fat(std::move(next));
    for (const std::uint32_t sector : own)
        fat.Keep(sector);
    return fat;
}

void CompoundFile::ReadDirectory(SectorTable& fat, const Limits& limits)
{
    const std::uint64_t most = limits.directoryBytes >> sectorShift_;
    const auto [chain, isWhole] = fat.Take(HeaderNumber(header::firstDirectorySector), most + 1);
    if (chain.Count() > most)
        throw Damage({}, "the directory of the compound file is too large");
    if (!isWhole || chain.Count() == 0)
        throw Damage({}, "the directory of the compound file is cut");
    directory_ = ReadTable(chain);
    if (Get<std::uint8_t>(RecordAt(0), record::type) != type::root)
        throw Damage({}, "the directory of the compound file has no root");
}

/// Follows the trees of siblings from the root on. A tree that is not followed to its end would lose streams when the
/// file is written anew, so that there is no leniency here.
void CompoundFile::ReadTree()
{
    struct Branch {
        std::uint32_t number;
        std::uint32_t parent;  // number of a record, too
    };
    const std::size_t records = directory_.size() / recordSize;
    std::vector<bool> isMet(records);
    std::vector<Branch> pending;
    const auto follow = [&](std::uint32_t number, std::uint32_t parent) {
        if (number != noRecord)
            pending.push_back({number, parent});
    };

    std::vector<Branch> found{{0, 0}};
    isMet[0] = true;
    follow(Get<std::uint32_t>(RecordAt(0), record::child), 0);
    while (!pending.empty()) {
        const Branch branch = pending.back();
        pending.pop_back();
        if (branch.number >= records || isMet[branch.number])
            throw Damage({}, "the directory of the compound file names an entry that is missing, or one twice");
        isMet[branch.number] = true;
        found.push_back(branch);
        const std::string_view record = RecordAt(branch.number);
        const auto kind = Get<std::uint8_t>(record, record::type);
        if (kind != type::storage && kind != type::stream)
            throw Damage({}, "the directory of the compound file names an entry of an unknown kind");
        follow(Get<std::uint32_t>(record, record::left), branch.parent);
        follow(Get<std::uint32_t>(record, record::right), branch.parent);
        if (kind == type::storage)
            follow(Get<std::uint32_t>(record, record::child), branch.number);
    }

    std::ranges::sort(found, {}, &Branch::number);
    std::vector<std::size_t> positions(records);
    for (std::size_t i = 0; i < found.size(); ++i)
        positions[found[i].number] = i;
    entries_.reserve(found.size());
    for (const Branch& branch : found)
        AddEntry(branch.number, positions[branch.parent]);
}

void CompoundFile::AddEntry(std::uint32_t number, std::size_t parent)
{
    const std::string_view record = RecordAt(number);
    CompoundEntry entry{.name = NameIn(record), .kind = CompoundEntry::Kind::Root, .parent = parent, .number = number};
    std::memcpy(entry.classId.data(), record.data() + record::classId, entry.classId.size());
    if (number != 0) {
        const bool isStream = Get<std::uint8_t>(record, record::type) == type::stream;
        entry.kind = isStream ? CompoundEntry::Kind::Stream : CompoundEntry::Kind::Storage;
        entry.size = isStream ? SizeIn(record) : 0;
    }
    entries_.push_back(std::move(entry));
}

void CompoundFile::FindStreams(SectorTable& fat)
{
    // Some root of a file without small streams names a first sector all the same.
    if (SizeIn(RecordAt(0)) > 0)
        miniStream_ = fat.Take(Get<std::uint32_t>(RecordAt(0), record::start), wholeChain).chain;
    SectorTable miniFat = ReadMiniFat(fat);

    places_.resize(entries_.size());
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        if (entries_[i].kind != CompoundEntry::Kind::Stream)
            continue;
        Place& place = places_[i];
        place.isMini = entries_[i].size < HeaderNumber(header::miniCutoff);
        const std::uint64_t needed = SectorsOf(entries_[i].size, place.isMini ? miniSectorShift : sectorShift_);
        const auto first = Get<std::uint32_t>(RecordAt(entries_[i].number), record::start);
        place.chain = (place.isMini ? miniFat : fat).Take(first, needed).chain;
        place.isWhole = place.chain.Count() == needed;
    }
}

/// No more of it than the mini stream has sectors.
SectorTable CompoundFile::ReadMiniFat(SectorTable& fat) const
{
    const SectorChain chain = fat.Take(HeaderNumber(header::firstMiniFatSector), wholeChain).chain;
    std::vector<std::uint32_t> next = NumbersIn(ReadTable(chain));
    const std::uint64_t sectors = std::uint64_t{miniStream_.Count()} << (sectorShift_ - miniSectorShift);
    next.resize(std::min<std::uint64_t>(next.size(), sectors));
    return SectorTable(std::move(next));
}

std::optional<std::size_t> CompoundFile::Find(std::size_t storage, StringView name) const
{
    const String sought = ToUpper(name);
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        const CompoundEntry& entry = entries_[i];
        if (i != root && entry.parent == storage && entry.name.size() == name.size() && ToUpper(entry.name) == sought)
            return i;
    }
    return std::nullopt;
}

void CompoundFile::RequireSectors(std::size_t stream) const
{
    if (!places_[stream].isWhole)
        throw Damage(PlainName(entries_[stream]), "it lacks sectors of the compound file");
}

void CompoundFile::Read(std::size_t stream, std::uint64_t offset, std::span<std::byte> buffer) const
{
    RequireSectors(stream);
    const CompoundEntry& entry = entries_[stream];
    if (offset > entry.size || buffer.size() > entry.size - offset)
        throw Damage(PlainName(entry), "it ends too early", offset);
    const Place& place = places_[stream];
    place.isMini ? ReadMiniSectors(place.chain, offset, buffer) : ReadSectors(place.chain, offset, buffer);
}

std::string CompoundFile::Bytes(std::size_t stream) const
{
    RequireSectors(stream);
    std::string bytes(static_cast<std::size_t>(entries_[stream].size), '\0');
    Read(stream, 0, std::as_writable_bytes(std::span(bytes)));
    return bytes;
}

std::optional<CompoundFile::Piece> CompoundFile::PieceAt(std::size_t stream, std::uint64_t offset) const
{
    const Place& place = places_[stream];
    if (place.isMini)
        return std::nullopt;
    const SectorChain::Run run = place.chain.At(static_cast<std::uint32_t>(offset >> sectorShift_));
    const std::uint64_t inSector = offset & ((std::uint64_t{1} << sectorShift_) - 1);
    return Piece{Position(run.sector) + inSector,
                 std::min((std::uint64_t{run.count} << sectorShift_) - inSector, entries_[stream].size - offset)};
}

std::string_view CompoundFile::Record(std::size_t entry) const
{
    return RecordAt(entries_[entry].number);
}

std::uint32_t CompoundFile::HeaderNumber(std::size_t field) const
{
    return Get<std::uint32_t>(header_, field);
}

std::string_view CompoundFile::RecordAt(std::uint32_t number) const
{
    return std::string_view(directory_).substr(number * recordSize, recordSize);
}

std::uint64_t CompoundFile::SizeIn(std::string_view record) const
{
    const bool has64Bits = Get<std::uint16_t>(header_, header::majorVersion) >= version4;
    return has64Bits ? Get<std::uint64_t>(record, record::size) : Get<std::uint32_t>(record, record::size);
}

std::uint64_t CompoundFile::Position(std::uint32_t sector) const
{
    return (std::uint64_t{sector} + 1) << sectorShift_;
}

std::string CompoundFile::ReadTable(const SectorChain& chain) const
{
    std::string table;
    for (std::uint32_t at = 0; at < chain.Count();) {
        const SectorChain::Run run = chain.At(at);
        table += ReadPadded(run.sector, run.count);
        at += run.count;
    }
    return table;
}

/// What the end of the file cuts off the last sector are numbers that lead nowhere.
std::string CompoundFile::ReadPadded(std::uint32_t sector, std::uint64_t count) const
{
    std::string bytes(static_cast<std::size_t>(count << sectorShift_), '\xFF');
    const std::uint64_t there = bytes_.Size() - std::min(bytes_.Size(), Position(sector));
    const auto length = static_cast<std::size_t>(std::min<std::uint64_t>(bytes.size(), there));
    bytes_.Read(Position(sector), std::as_writable_bytes(std::span(bytes)).first(length));
    return bytes;
}

void CompoundFile::ReadSectors(const SectorChain& chain, std::uint64_t offset, std::span<std::byte> buffer) const
{
    ForEachPiece(chain, sectorShift_, offset, buffer,
                 [&](std::uint32_t sector, std::uint64_t inSector, std::span<std::byte> piece) {
                     bytes_.Read(Position(sector) + inSector, piece);
                 });
}

void CompoundFile::ReadMiniSectors(const SectorChain& chain, std::uint64_t offset, std::span<std::byte> buffer) const
{
    ForEachPiece(chain, miniSectorShift, offset, buffer,
                 [&](std::uint32_t sector, std::uint64_t inSector, std::span<std::byte> piece) {
                     ReadSectors(miniStream_, (std::uint64_t{sector} << miniSectorShift) + inSector, piece);
                 });
}

}  // namespace tessarine::builtin
