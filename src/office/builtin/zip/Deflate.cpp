#include "office/builtin/zip/Deflate.h"

#include <libdeflate.h>
#include <memory>
#include <new>

namespace tessarine::builtin
{

namespace
{

// The default of zlib and of libdeflate alike.
constexpr int level = 6;

struct Free {
    void operator()(libdeflate_decompressor* decompressor) const { libdeflate_free_decompressor(decompressor); }
    void operator()(libdeflate_compressor* compressor) const { libdeflate_free_compressor(compressor); }
};

}  // namespace

bool Inflate(std::string_view packed, char* target, std::size_t size)
{
    // One for the life of the thread: making one costs more than inflating a small part.
    static thread_local const std::unique_ptr<libdeflate_decompressor, Free> decompressor(
        libdeflate_alloc_decompressor());
    if (!decompressor)
        throw std::bad_alloc();
    return libdeflate_deflate_decompress(decompressor.get(), packed.data(), packed.size(), target, size, nullptr) ==
           LIBDEFLATE_SUCCESS;
}

std::string Deflate(std::string_view data)
{
    static thread_local const std::unique_ptr<libdeflate_compressor, Free> compressor(
        libdeflate_alloc_compressor(level));
    if (!compressor)
        throw std::bad_alloc();
    std::string packed(libdeflate_deflate_compress_bound(compressor.get(), data.size()), '\0');
    packed.resize(
        libdeflate_deflate_compress(compressor.get(), data.data(), data.size(), packed.data(), packed.size()));
    return packed;
}

std::uint32_t Crc32(std::string_view data)
{
    return libdeflate_crc32(0, data.data(), data.size());
}

}  // namespace tessarine::builtin
