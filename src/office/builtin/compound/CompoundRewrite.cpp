#include "office/builtin/compound/CompoundRewrite.h"

#include <algorithm>
#include <array>
#include <functional>
#include <set>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "office/builtin/compound/CompoundFormat.h"
#include "office/builtin/compound/SectorLayout.h"
#include "office/builtin/compound/SiblingTree.h"
#include "platform/LittleEndian.h"

namespace tessarine::builtin
{

namespace
{

using namespace compound;
using Kind = CompoundEntry::Kind;

/// Takes the new file from front to back.
struct Sink {
    std::function<void(std::span<const std::byte>)> write;
    std::function<void(CompoundFile::Piece)> copy;  // a piece of the old file
};

/// The entries in each storage, by positions.
std::vector<std::vector<std::size_t>> ChildrenOf(const std::vector<CompoundEntry>& entries)
{
    std::vector<std::vector<std::size_t>> children(entries.size());
    for (std::size_t i = 1; i < entries.size(); ++i)
        children[entries[i].parent].push_back(i);
    return children;
}

/// Lays the new file out when it is made, and writes it from front to back: header, streams, mini stream with its
/// table, directory, tables.
class Rewrite
{
public:
    Rewrite(const CompoundFile& old, const CompoundChanges& changes, const Sink& sink)
        : old_(old),
          changes_(changes),
          sink_(sink),
          isKept_(old.Entries().size(), true),
          sectors_(old.SectorShift()),
          miniSectors_(miniSectorShift)
    {
        LeaveOutRemoved();
        for (std::size_t i = 0; i < isKept_.size(); ++i)
            if (IsCopied(i))
                old_.RequireSectors(i);
        MakeDirectory();
        PlaceStreams();
    }

    void Write()
    {
        const std::string miniTable = miniSectors_.Table(old_.SectorShift());
        const std::uint32_t firstMiniTableSector = sectors_.Add(miniTable.size());
        const std::uint32_t firstDirectorySector = sectors_.Add(directory_.size());
        sectors_.AddTables();

        WriteHeader(firstMiniTableSector, firstDirectorySector);
        ForEachStream(false, [&](std::size_t i) { WriteStream(i, old_.SectorShift()); });
        ForEachStream(true, [&](std::size_t i) { WriteStream(i, miniSectorShift); });
        Fill(std::uint64_t{miniSectors_.Count()} << miniSectorShift, old_.SectorShift());
        Put(miniTable);
        Put(directory_);
        Put(sectors_.Table(old_.SectorShift()));
        Put(sectors_.List());
    }

private:
    bool IsStream(std::size_t i) const { return isKept_[i] && old_.Entries()[i].kind == Kind::Stream; }
    bool IsCopied(std::size_t i) const { return IsStream(i) && !changes_.streams.contains(i); }

    std::uint64_t SizeOf(std::size_t i) const
    {
        const auto changed = changes_.streams.find(i);
        return changed == changes_.streams.end() ? old_.Entries()[i].size : changed->second.size();
    }

    void LeaveOutRemoved()
    {
        if (changes_.removed.empty())
            return;
        const auto children = ChildrenOf(old_.Entries());
        std::vector<std::size_t> pending(changes_.removed.begin(), changes_.removed.end());
        while (!pending.empty()) {
            const std::size_t i = pending.back();
            pending.pop_back();
            isKept_[i] = false;
            pending.insert(pending.end(), children[i].begin(), children[i].end());
        }
    }

    /// The records that are kept, each at its old place, and free ones in the gaps.
    void MakeDirectory()
    {
        std::string free(recordSize, '\0');
        for (const std::size_t field : {record::left, record::right, record::child})
            littleendian::Put<std::uint32_t>(free, field, noRecord);

        const auto& entries = old_.Entries();
        for (std::size_t i = 0; i < entries.size(); ++i) {
            if (!isKept_[i])
                continue;
            while (directory_.size() < entries[i].number * recordSize)
                directory_ += free;
            directory_ += old_.Record(i);
        }
        while (directory_.size() % (std::size_t{1} << old_.SectorShift()) != 0)
            directory_ += free;
        std::set<std::size_t> bereft;
        for (const std::size_t i : changes_.removed)
            if (isKept_[entries[i].parent])
                bereft.insert(entries[i].parent);
        for (const std::size_t storage : bereft)
            LinkChildren(storage);
    }

    void LinkChildren(std::size_t storage)
    {
        const auto& entries = old_.Entries();
        std::vector<Sibling> siblings;
        for (std::size_t i = 1; i < entries.size(); ++i)
            if (isKept_[i] && entries[i].parent == storage)
                siblings.emplace_back(entries[i].name, entries[i].number);
        PutInRecord<std::uint32_t>(storage, record::child, LinkSiblings(std::move(siblings), directory_));
    }

    template <class Integer>
    void PutInRecord(std::size_t i, std::size_t field, Integer value)
    {
        littleendian::Put<Integer>(directory_, old_.Entries()[i].number * recordSize + field, value);
    }

    /// The streams of the mini stream or all others, in the order of their records.
    void ForEachStream(bool isMini, const std::function<void(std::size_t)>& use) const
    {
        for (std::size_t i = 0; i < isKept_.size(); ++i)
            if (IsStream(i) && (SizeOf(i) < miniCutoff) == isMini)
                use(i);
    }

    void PlaceStreams()
    {
        ForEachStream(false, [&](std::size_t i) { PlaceStream(i, sectors_); });
        ForEachStream(true, [&](std::size_t i) { PlaceStream(i, miniSectors_); });
        const std::uint64_t miniStream = std::uint64_t{miniSectors_.Count()} << miniSectorShift;
        PutPlace(CompoundFile::root, sectors_.Add(miniStream), miniStream);
    }

    void PlaceStream(std::size_t i, SectorLayout& sectors)
    {
        PutPlace(i, sectors.Add(SizeOf(i)), SizeOf(i));
        // A storage has children, a stream none, whatever the old file says.
        PutInRecord<std::uint32_t>(i, record::child, noRecord);
    }

    void PutPlace(std::size_t i, std::uint32_t start, std::uint64_t size)
    {
        PutInRecord<std::uint32_t>(i, record::start, start);
        PutInRecord<std::uint64_t>(i, record::size, size);
    }

    void WriteHeader(std::uint32_t firstMiniTableSector, std::uint32_t firstDirectorySector)
    {
        std::string header(old_.Header().substr(0, header::difat));
        const auto put = [&](std::size_t field, std::uint64_t value) {
            littleendian::Put<std::uint32_t>(header, field, static_cast<std::uint32_t>(value));
        };
        const bool countsDirectory = littleendian::Get<std::uint16_t>(header, header::majorVersion) >= version4;
        put(header::directorySectors, countsDirectory ? directory_.size() >> old_.SectorShift() : 0);
        put(header::fatSectors, sectors_.TableSectors());
        put(header::firstDirectorySector, firstDirectorySector);
        put(header::miniCutoff, miniCutoff);
        put(header::firstMiniFatSector, firstMiniTableSector);
        put(header::miniFatSectors, SectorsOf(std::uint64_t{miniSectors_.Count()} * numberSize, old_.SectorShift()));
        put(header::firstDifatSector, sectors_.FirstListSector());
        put(header::difatSectors, sectors_.ListSectors());
        header += sectors_.HeaderList();
        Put(header);
        Fill(header.size(), old_.SectorShift());
    }

    void WriteStream(std::size_t i, unsigned sectorShift)
    {
        const auto changed = changes_.streams.find(i);
        if (changed != changes_.streams.end())
            Put(changed->second);
        else
            CopyStream(i);
        Fill(SizeOf(i), sectorShift);
    }

    /// Long pieces are copied as they lie; short ones are gathered into blocks.
    void CopyStream(std::size_t i)
    {
        std::array<std::byte, 65536> buffer;
        for (std::uint64_t offset = 0; offset < SizeOf(i);) {
            const auto piece = old_.PieceAt(i, offset);
            if (piece && piece->length >= buffer.size()) {
                sink_.copy(*piece);
                offset += piece->length;
                continue;
            }
            const auto block = std::span(buffer).first(std::min<std::uint64_t>(buffer.size(), SizeOf(i) - offset));
            old_.Read(i, offset, block);
            sink_.write(block);
            offset += block.size();
        }
    }

    /// Zeros from the end of so many bytes to that of their last sector.
    void Fill(std::uint64_t bytes, unsigned sectorShift)
    {
        const std::uint64_t whole = SectorsOf(bytes, sectorShift) << sectorShift;
        Put(std::string(static_cast<std::size_t>(whole - bytes), '\0'));
    }

    void Put(std::string_view bytes) { sink_.write(std::as_bytes(std::span(bytes))); }

    const CompoundFile& old_;
    const CompoundChanges& changes_;
    const Sink& sink_;
    std::vector<bool> isKept_;
    std::string directory_;
    SectorLayout sectors_;
    SectorLayout miniSectors_;
};

}  // namespace

void WriteCompoundFile(const CompoundFile& old, const CompoundChanges& changes, ReplacementFile& target)
{
    const Sink sink{
        .write = [&](std::span<const std::byte> bytes) { target.Write(bytes); },
        .copy = [&](CompoundFile::Piece piece) { target.CopyFrom(old.Source(), piece.position, piece.length); }};
    Rewrite(old, changes, sink).Write();
}

std::string RewrittenCompoundFile(const CompoundFile& old, const CompoundChanges& changes)
{
    std::string written;
    const Sink sink{.write =
                        [&](std::span<const std::byte> bytes) {
                            written.append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
                        },
                    .copy =
                        [&](CompoundFile::Piece piece) {
                            const std::size_t end = written.size();
                            written.resize(end + static_cast<std::size_t>(piece.length));
                            old.Source().Read(piece.position, std::as_writable_bytes(std::span(written).subspan(end)));
                        }};
    Rewrite(old, changes, sink).Write();
    return written;
}

}  // namespace tessarine::builtin
