#include "ZipWriter.h"

#include <libdeflate.h>
#include <stdexcept>

namespace tessarine::bench
{

namespace
{

constexpr std::uint16_t Stored = 0;
constexpr std::uint16_t Deflated = 8;

void Put16(std::string& out, std::uint32_t value)
{
    out += static_cast<char>(value & 0xff);
    out += static_cast<char>(value >> 8 & 0xff);
}

void Put32(std::string& out, std::uint32_t value)
{
    Put16(out, value & 0xffff);
    Put16(out, value >> 16);
}

}  // namespace

void ZipWriter::Compressor::operator()(libdeflate_compressor* compressor) const
{
    libdeflate_free_compressor(compressor);
}

ZipWriter::ZipWriter(const std::filesystem::path& path)
    : file_(path, std::ios::binary | std::ios::trunc), compressor_(libdeflate_alloc_compressor(PackingLevel))
{
    file_.exceptions(std::ios::failbit | std::ios::badbit);
}

ZipWriter::~ZipWriter() = default;

void ZipWriter::AddDeflated(std::string_view name, std::string_view bytes)
{
    packed_.resize(libdeflate_deflate_compress_bound(compressor_.get(), bytes.size()));
    const std::size_t size =
        libdeflate_deflate_compress(compressor_.get(), bytes.data(), bytes.size(), packed_.data(), packed_.size());
    if (size == 0)
        throw std::runtime_error("deflate failed");
    Add(name, bytes, std::string_view(packed_).substr(0, size), Deflated);
}

void ZipWriter::AddStored(std::string_view name, std::string_view bytes)
{
    Add(name, bytes, bytes, Stored);
}

void ZipWriter::Add(std::string_view name, std::string_view bytes, std::string_view packed, std::uint16_t method)
{
    // The fields that the local header and the directory share: from "version needed" to "extra field length".
    std::string common;
    Put16(common, 20);
    Put16(common, 0);
    Put16(common, method);
    Put16(common, 0);
    Put16(common, 33);  // 1980-01-01
    Put32(common, libdeflate_crc32(0, bytes.data(), bytes.size()));
    Put32(common, static_cast<std::uint32_t>(packed.size()));
    Put32(common, static_cast<std::uint32_t>(bytes.size()));
    Put16(common, static_cast<std::uint32_t>(name.size()));
    Put16(common, 0);

    std::string local = "PK\x03\x04";
    local += common;
    local += name;
    file_.write(local.data(), static_cast<std::streamsize>(local.size()));
    file_.write(packed.data(), static_cast<std::streamsize>(packed.size()));

    directory_ += "PK\x01\x02";
    Put16(directory_, 20);
    directory_ += common;
    Put16(directory_, 0);  // comment
    Put16(directory_, 0);  // disk
    Put16(directory_, 0);  // internal attributes
    Put32(directory_, 0);  // external attributes
    Put32(directory_, offset_);
    directory_ += name;

    offset_ += static_cast<std::uint32_t>(local.size() + packed.size());
    ++count_;
}

void ZipWriter::Finish()
{
    std::string end = "PK\x05\x06";
    Put32(end, 0);
    Put16(end, count_);
    Put16(end, count_);
    Put32(end, static_cast<std::uint32_t>(directory_.size()));
    Put32(end, offset_);
    Put16(end, 0);
    directory_ += end;
    file_.write(directory_.data(), static_cast<std::streamsize>(directory_.size()));
    file_.close();
}

}  // namespace tessarine::bench
