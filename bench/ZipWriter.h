#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>

struct libdeflate_compressor;

namespace tessarine::bench
{

/// The level at which presentations are packed, by the decks and by the floors: the usual one of office programs.
inline constexpr int PackingLevel = 6;

/// Writes a zip file front to back, entries dated 1980-01-01 as office programs do. Raises std::runtime_error when the
/// file can't be written.
class ZipWriter
{
public:
    explicit ZipWriter(const std::filesystem::path& path);
    ~ZipWriter();
    ZipWriter(const ZipWriter&) = delete;
    ZipWriter& operator=(const ZipWriter&) = delete;

    void AddDeflated(std::string_view name, std::string_view bytes);
    void AddStored(std::string_view name, std::string_view bytes);
    void Finish();  ///< Writes the directory. Without it the file is no zip.

private:
    void Add(std::string_view name, std::string_view bytes, std::string_view packed, std::uint16_t method);

    struct Compressor {
        void operator()(libdeflate_compressor* compressor) const;
    };

    std::ofstream file_;
    std::unique_ptr<libdeflate_compressor, Compressor> compressor_;
    std::string packed_;
    std::string directory_;
    std::uint32_t offset_ = 0;
    std::uint16_t count_ = 0;
};

}  // namespace tessarine::bench
