#include "support/ZipBuilder.h"

#include <libdeflate.h>

#include <algorithm>
#include <memory>
#include <stdexcept>

namespace tessarine::test
{
namespace
{

constexpr std::uint16_t StoredMethod = 0;
constexpr std::uint16_t DeflateMethod = 8;
constexpr std::uint16_t DataDescriptorFlag = 0x0008;
constexpr std::uint16_t Utf8Flag = 0x0800;
constexpr std::uint16_t Zip64Field = 0x0001;
constexpr std::uint32_t SeeZip64Field = 0xFFFFFFFF;
constexpr int CompressionLevel = 6;

void Append16(std::string& out, std::uint64_t value)
{
    out += static_cast<char>(value & 0xFF);
    out += static_cast<char>((value >> 8) & 0xFF);
}

void Append32(std::string& out, std::uint64_t value)
{
    Append16(out, value);
    Append16(out, value >> 16);
}

void Append64(std::string& out, std::uint64_t value)
{
    Append32(out, value);
    Append32(out, value >> 32);
}

std::string Deflate(const std::string& bytes)
{
    const std::unique_ptr<libdeflate_compressor, decltype(&libdeflate_free_compressor)> compressor(
        libdeflate_alloc_compressor(CompressionLevel), libdeflate_free_compressor);
    std::string packed(libdeflate_deflate_compress_bound(compressor.get(), bytes.size()), '\0');
    const std::size_t size =
        libdeflate_deflate_compress(compressor.get(), bytes.data(), bytes.size(), packed.data(), packed.size());
    if (size == 0)
        throw std::runtime_error("deflate failed");
    packed.resize(size);
    return packed;
}

/// What both headers of one entry tell.
struct WrittenEntry {
    const ZipEntry& entry;
    std::string packed;
    std::uint32_t crc;
    std::uint64_t offset;

    std::uint16_t Version() const { return entry.zip64 ? 45 : 20; }
    std::uint16_t Method() const { return entry.stored ? StoredMethod : DeflateMethod; }
    std::uint16_t Flags() const
    {
        const bool isAscii = std::ranges::all_of(entry.name, [](char c) { return static_cast<signed char>(c) >= 0; });
        return static_cast<std::uint16_t>((entry.dataDescriptor ? DataDescriptorFlag : 0) | (isAscii ? 0 : Utf8Flag));
    }
};

void AppendLocalHeader(std::string& out, const WrittenEntry& written)
{
    const ZipEntry& entry = written.entry;
    const bool late = entry.dataDescriptor;
    std::string extra;
    if (entry.zip64) {
        std::string sizes;
        Append64(sizes, late ? 0 : entry.bytes.size());
        Append64(sizes, late ? 0 : written.packed.size());
        extra = ExtraField(Zip64Field, sizes);
    }
    extra += entry.extraField;

    Append32(out, 0x04034B50);
    Append16(out, written.Version());
    Append16(out, written.Flags());
    Append16(out, written.Method());
    Append16(out, entry.modified.time);
    Append16(out, entry.modified.date);
    Append32(out, late ? 0 : written.crc);
    Append32(out, entry.zip64 ? SeeZip64Field : late ? 0 : written.packed.size());
    Append32(out, entry.zip64 ? SeeZip64Field : late ? 0 : entry.bytes.size());
    Append16(out, entry.name.size());
    Append16(out, extra.size());
    out += entry.name;
    out += extra;
}

void AppendDataDescriptor(std::string& out, const WrittenEntry& written)
{
    Append32(out, 0x08074B50);
    Append32(out, written.crc);
    if (written.entry.zip64) {
        Append64(out, written.packed.size());
        Append64(out, written.entry.bytes.size());
    } else {
        Append32(out, written.packed.size());
        Append32(out, written.entry.bytes.size());
    }
}

void AppendCentralHeader(std::string& out, const WrittenEntry& written)
{
    const ZipEntry& entry = written.entry;
    std::string extra;
    if (entry.zip64) {
        std::string fields;
        Append64(fields, entry.bytes.size());
        Append64(fields, written.packed.size());
        Append64(fields, written.offset);
        extra = ExtraField(Zip64Field, fields);
    }
    extra += entry.extraField;

    Append32(out, 0x02014B50);
    Append16(out, written.Version());
    Append16(out, written.Version());
    Append16(out, written.Flags());
    Append16(out, written.Method());
    Append16(out, entry.modified.time);
    Append16(out, entry.modified.date);
    Append32(out, written.crc);
    Append32(out, entry.zip64 ? SeeZip64Field : written.packed.size());
    Append32(out, entry.zip64 ? SeeZip64Field : entry.bytes.size());
    Append16(out, entry.name.size());
    Append16(out, extra.size());
    Append16(out, entry.comment.size());
    Append16(out, 0);
    Append16(out, 0);
    Append32(out, entry.externalAttributes);
    Append32(out, entry.zip64 ? SeeZip64Field : written.offset);
    out += entry.name;
    out += extra;
    out += entry.comment;
}

void AppendZip64End(std::string& out, std::uint64_t count, std::uint64_t directoryStart)
{
    const std::uint64_t start = out.size();
    Append32(out, 0x06064B50);
    Append64(out, 44);  // size of the rest of this record
    Append16(out, 45);
    Append16(out, 45);
    Append32(out, 0);
    Append32(out, 0);
    Append64(out, count);
    Append64(out, count);
    Append64(out, start - directoryStart);
    Append64(out, directoryStart);

    Append32(out, 0x07064B50);
    Append32(out, 0);
    Append64(out, start);
    Append32(out, 1);
}

}  // namespace

DosDateTime MakeDosDateTime(int year, int month, int day, int hour, int minute, int second)
{
    return {static_cast<std::uint16_t>((year - 1980) << 9 | month << 5 | day),
            static_cast<std::uint16_t>(hour << 11 | minute << 5 | second / 2)};
}

std::string ExtraField(std::uint16_t id, std::string_view data)
{
    std::string field;
    Append16(field, id);
    Append16(field, data.size());
    field += data;
    return field;
}

std::string ZipBuilder::Bytes() const
{
    std::string out = prefix;
    std::vector<WrittenEntry> directory;
    for (const ZipEntry& entry : entries) {
        directory.push_back({entry, entry.stored ? entry.bytes : Deflate(entry.bytes),
                             libdeflate_crc32(0, entry.bytes.data(), entry.bytes.size()), out.size()});
        AppendLocalHeader(out, directory.back());
        out += directory.back().packed;
        if (entry.dataDescriptor)
            AppendDataDescriptor(out, directory.back());
    }

    const std::uint64_t directoryStart = out.size();
    for (const WrittenEntry& written : directory)
        AppendCentralHeader(out, written);
    const std::uint64_t directorySize = out.size() - directoryStart;
    if (zip64End)
        AppendZip64End(out, entries.size(), directoryStart);

    Append32(out, 0x06054B50);
    Append16(out, 0);
    Append16(out, 0);
    Append16(out, zip64End ? 0xFFFF : entries.size());
    Append16(out, zip64End ? 0xFFFF : entries.size());
    Append32(out, zip64End ? SeeZip64Field : directorySize);
    Append32(out, zip64End ? SeeZip64Field : directoryStart);
    Append16(out, comment.size());
    out += comment;
    return out;
}

}  // namespace tessarine::test
