#include "BinaryFloors.h"

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "FloorFile.h"

namespace tessarine::bench
{

namespace
{

constexpr std::uint32_t EndOfChain = 0xFFFFFFFE;
constexpr std::uint32_t LastSector = 0xFFFFFFFA;

template <class Number>
Number At(const std::string& bytes, std::size_t at)
{
    Number number;
    std::memcpy(&number, bytes.data() + at, sizeof number);
    return number;
}

/// A compound file without fault, as the builder makes them: sectors of 512 bytes.
class Streams
{
public:
    explicit Streams(const File& file) : file_(file)
    {
        std::string header;
        file.Read(0, header, SectorSize);
        for (std::size_t at = 76; at < SectorSize && At<std::uint32_t>(header, at) < LastSector; at += 4)
            AddTable(At<std::uint32_t>(header, at));
        std::string list;
        for (auto sector = At<std::uint32_t>(header, 68); sector < LastSector; sector = At<std::uint32_t>(list, 508)) {
            file.Read(Offset(sector), list, SectorSize);
            for (std::size_t at = 0; at < 508 && At<std::uint32_t>(list, at) < LastSector; at += 4)
                AddTable(At<std::uint32_t>(list, at));
        }
        directory_ = Chain(At<std::uint32_t>(header, 48));
    }

    std::string Document() const
    {
        static const std::string name("P\0o\0w\0e\0r\0P\0o\0i\0n\0t\0 \0D\0o\0c\0u\0m\0e\0n\0t\0", 38);
        const std::size_t entry = directory_.find(name);
        if (entry == std::string::npos)
            throw std::runtime_error("no document");
        std::string stream = Chain(At<std::uint32_t>(directory_, entry + 116));
        stream.resize(At<std::uint32_t>(directory_, entry + 120));
        return stream;
    }

private:
    static constexpr std::size_t SectorSize = 512;

    static std::size_t Offset(std::uint32_t sector) { return (std::size_t{sector} + 1) * SectorSize; }

    void AddTable(std::uint32_t sector)
    {
        std::string bytes;
        file_.Read(Offset(sector), bytes, SectorSize);
        for (std::size_t at = 0; at < SectorSize; at += 4)
            next_.push_back(At<std::uint32_t>(bytes, at));
    }

    /// Sectors that follow each other are read at once.
    std::string Chain(std::uint32_t sector) const
    {
        std::string bytes;
        std::string piece;
        while (sector < LastSector) {
            const std::uint32_t first = sector;
            std::size_t count = 1;
            for (; next_[sector] == sector + 1; ++count)
                ++sector;
            sector = next_[sector];
            if (bytes.empty() && sector == EndOfChain) {
                file_.Read(Offset(first), bytes, count * SectorSize);
                return bytes;
            }
            file_.Read(Offset(first), piece, count * SectorSize);
            bytes += piece;
        }
        return bytes;
    }

    const File& file_;
    std::vector<std::uint32_t> next_;
    std::string directory_;
};

/// The number of records, so that nobody leaves the walk out.
std::size_t RecordsIn(const std::string& stream)
{
    std::size_t records = 0;
    for (std::size_t at = 0; at + 8 <= stream.size(); ++records) {
        const bool isContainer = (stream[at] & 0xF) == 0xF;
        at += isContainer ? 8 : 8 + std::size_t{At<std::uint32_t>(stream, at + 4)};
    }
    return records;
}

}  // namespace

std::size_t WalkRecords(const std::filesystem::path& deck)
{
    const File file(deck, O_RDONLY);
    const std::string stream = Streams(file).Document();
    if (RecordsIn(stream) == 0)
        throw std::runtime_error("no record");
    return stream.size();
}

void WriteRecordsAgain(const std::filesystem::path& deck, bool flush)
{
    WalkRecords(deck);
    const std::filesystem::path fresh = deck.string() + ".floor";
    {
        const File source(deck, O_RDONLY);
        const File target(fresh, O_WRONLY | O_CREAT | O_TRUNC);
        std::string bytes;
        source.Read(0, bytes, source.Size());
        target.Write(bytes);
        if (flush)
            target.Flush();
    }
    PutInPlace(fresh, deck, flush);
}

}  // namespace tessarine::bench
