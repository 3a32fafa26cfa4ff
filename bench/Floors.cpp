#include "Floors.h"

#include <libdeflate.h>

#include <cstdint>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "Decks.h"
#include "FloorFile.h"
#include "ZipWriter.h"

namespace tessarine::bench
{

namespace
{

// The decks come from ZipWriter: no comment after the directory, no extra fields.
constexpr std::size_t EndSize = 22;
constexpr std::size_t DirectoryHeaderSize = 46;
constexpr std::size_t LocalHeaderSize = 30;

// Gathers what is written into few calls. Long stretches of another file are copied inside the kernel.
class Output
{
public:
    explicit Output(const File& file) : file_(file) { buffer_.reserve(BufferSize); }

    void Append(std::string_view bytes)
    {
        if (buffer_.size() + bytes.size() > BufferSize)
            Drain();
        buffer_ += bytes;
    }

    void AppendFrom(const File& source, std::size_t offset, std::size_t size)
    {
        if (size > BufferSize / 2) {
            Drain();
            file_.CopyFrom(source, offset, size);
        } else {
            source.Read(offset, piece_, size);
            Append(piece_);
        }
    }

    void Drain()
    {
        file_.Write(buffer_);
        buffer_.clear();
    }

private:
    static constexpr std::size_t BufferSize = 256 * 1024;

    const File& file_;
    std::string buffer_;
    std::string piece_;
};

struct Entry {
    std::string_view name;
    std::size_t header;  // its place in the directory
    std::size_t offset;  // of the local header
    std::size_t packedSize;
    std::size_t size;

    std::size_t DataOffset() const { return offset + LocalHeaderSize + name.size(); }
};

std::uint32_t Number(const std::string& bytes, std::size_t at, std::size_t size)
{
    std::uint32_t value = 0;
    std::memcpy(&value, bytes.data() + at, size);
    return value;
}

void PutNumber(std::string& bytes, std::size_t at, std::size_t value)
{
    const auto number = static_cast<std::uint32_t>(value);
    std::memcpy(bytes.data() + at, &number, sizeof number);
}

struct Directory {
    std::string bytes;
    std::size_t offset = 0;
    std::vector<Entry> entries;
};

Directory ReadDirectory(const File& file)
{
    Directory directory;
    const std::size_t end = file.Size() - EndSize;
    file.Read(end, directory.bytes, EndSize);
    const std::size_t count = Number(directory.bytes, 10, 2);
    directory.offset = Number(directory.bytes, 16, 4);
    file.Read(directory.offset, directory.bytes, end + EndSize - directory.offset);

    directory.entries.reserve(count);
    std::size_t at = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t nameSize = Number(directory.bytes, at + 28, 2);
        const std::string_view name(directory.bytes.data() + at + DirectoryHeaderSize, nameSize);
        directory.entries.push_back({name, at, Number(directory.bytes, at + 42, 4), Number(directory.bytes, at + 20, 4),
                                     Number(directory.bytes, at + 24, 4)});
        at += DirectoryHeaderSize + nameSize;
    }
    return directory;
}

struct FreeDecompressor {
    void operator()(libdeflate_decompressor* value) const { libdeflate_free_decompressor(value); }
};
struct FreeCompressor {
    void operator()(libdeflate_compressor* value) const { libdeflate_free_compressor(value); }
};

// The buffers and the machine of one deck, used for one entry after the other.
class Inflater
{
public:
    const std::string& Inflate(const File& file, const Entry& entry)
    {
        file.Read(entry.DataOffset(), packed_, entry.packedSize);
        bytes_.resize(entry.size);
        if (libdeflate_deflate_decompress(machine_.get(), packed_.data(), packed_.size(), bytes_.data(), bytes_.size(),
                                          nullptr) != LIBDEFLATE_SUCCESS)
            throw std::runtime_error("inflate failed");
        return bytes_;
    }

private:
    std::unique_ptr<libdeflate_decompressor, FreeDecompressor> machine_{libdeflate_alloc_decompressor()};
    std::string packed_;
    std::string bytes_;
};

template <class Predicate>
std::size_t InflateIf(const std::filesystem::path& deck, Predicate isWanted)
{
    const File file(deck, O_RDONLY);
    const Directory directory = ReadDirectory(file);
    Inflater inflater;
    std::size_t total = 0;
    for (const Entry& entry : directory.entries) {
        if (isWanted(entry.name))
            total += inflater.Inflate(file, entry).size();
    }
    return total;
}

}  // namespace

std::size_t InflateNames(const std::filesystem::path& deck)
{
    return InflateIf(deck, [](std::string_view name) {
        return name == "[Content_Types].xml" || name == "_rels/.rels" || name == "ppt/presentation.xml" ||
               name == "ppt/_rels/presentation.xml.rels";
    });
}

std::size_t InflateSlidesAndNotes(const std::filesystem::path& deck)
{
    return InflateIf(deck, IsSlideOrNotes);
}

void DeflateHitsAgain(const std::filesystem::path& deck, bool flush)
{
    const std::filesystem::path fresh = deck.string() + ".floor";
    {
        const File source(deck, O_RDONLY);
        const File targetFile(fresh, O_WRONLY | O_CREAT | O_TRUNC);
        Output target(targetFile);
        Directory directory = ReadDirectory(source);
        Inflater inflater;
        const std::unique_ptr<libdeflate_compressor, FreeCompressor> deflater(
            libdeflate_alloc_compressor(PackingLevel));
        std::string packed;

        std::size_t written = 0;  // bytes of the new file
        std::size_t copied = 0;   // bytes of the old file that are dealt with
        for (const Entry& entry : directory.entries) {
            // Everything since the last changed entry moves by as much as the file has grown.
            PutNumber(directory.bytes, entry.header + 42, written + entry.offset - copied);
            if (!IsSlideOrNotes(entry.name))
                continue;
            const std::string& bytes = inflater.Inflate(source, entry);
            if (!HoldsHit(entry.name))
                continue;

            packed.resize(libdeflate_deflate_compress_bound(deflater.get(), bytes.size()));
            packed.resize(
                libdeflate_deflate_compress(deflater.get(), bytes.data(), bytes.size(), packed.data(), packed.size()));
            const std::uint32_t checksum = libdeflate_crc32(0, bytes.data(), bytes.size());

            target.AppendFrom(source, copied, entry.offset - copied);
            written += entry.offset - copied;
            std::string header;
            source.Read(entry.offset, header, LocalHeaderSize + entry.name.size());
            PutNumber(header, 14, checksum);
            PutNumber(header, 18, packed.size());
            PutNumber(directory.bytes, entry.header + 16, checksum);
            PutNumber(directory.bytes, entry.header + 20, packed.size());
            target.Append(header + packed);
            written += header.size() + packed.size();
            copied = entry.DataOffset() + entry.packedSize;
        }
        target.AppendFrom(source, copied, directory.offset - copied);
        PutNumber(directory.bytes, directory.bytes.size() - EndSize + 16, written + directory.offset - copied);
        target.Append(directory.bytes);
        target.Drain();
        if (flush)
            targetFile.Flush();
    }
    PutInPlace(fresh, deck, flush);
}

}  // namespace tessarine::bench
