#include "support/BinaryOle.h"

#include <libdeflate.h>

#include <memory>
#include <stdexcept>

#include "support/BinaryRecords.h"
#include "support/CompoundBuilder.h"

namespace tessarine::test::ppt
{

namespace
{

/// 00000303-0000-0000-C000-000000000046 and its neighbours, which differ in the first byte.
std::string MonikerClass(char number)
{
    return std::string{number} + std::string("\x03\x00\x00\x00\x00\x00\x00\xC0\x00\x00\x00\x00\x00\x00\x46", 15);
}

/// Characters of one byte, for the half of a moniker that is in the system's code page.
std::string Narrow(const String& text)
{
    std::string narrow;
    for (const char16_t unit : text)
        narrow += unit <= 0xFF ? static_cast<char>(unit) : '?';
    return narrow + '\0';
}

std::string Length(const std::string& bytes)
{
    return Long(static_cast<std::uint32_t>(bytes.size()));
}

std::string FileMoniker(const String& path)
{
    constexpr std::uint32_t NoServer = 0xFFFF;
    constexpr std::uint32_t Version = 0xDEAD;
    constexpr std::uint32_t KeyOfPath = 3;
    const std::string narrow = Narrow(path);
    const std::string wide = ppt::Wide(path);
    const std::string unicode = Length(wide) + Short(KeyOfPath) + wide;
    return MonikerClass(3) + Short(0) + Length(narrow) + narrow + Short(NoServer) + Short(Version) +
           std::string(20, '\0') + Length(unicode) + unicode;
}

std::string ItemMoniker(const String& item)
{
    const std::string delimiter("!\0", 2);
    const std::string narrow = Narrow(item);
    return MonikerClass(4) + Length(delimiter) + delimiter + Length(narrow) + narrow;
}

}  // namespace

std::string MonikerOf(const String& path, const String& item)
{
    if (item.empty())
        return FileMoniker(path);
    return MonikerClass(9) + Long(2) + FileMoniker(path) + ItemMoniker(item);
}

std::string OleStream(const std::string& moniker)
{
    const std::string head = Long(0x02000001) + Long(moniker.empty() ? 0 : 1) + Long(1) + Long(0) + Long(0);
    if (moniker.empty())
        return head;
    // The size of a moniker counts itself. Behind the absolute one: class id, name, times.
    const std::string relative = Long(0);
    const std::string absolute = Long(static_cast<std::uint32_t>(moniker.size() + 4)) + moniker;
    return head + relative + absolute + Long(0xFFFFFFFF) + std::string(16, '\0') + Long(0) + Long(0) +
           std::string(24, '\0');
}

std::string OleStorage(const std::string& moniker)
{
    return CompoundBuilder()
        .Stream("\x01Ole", OleStream(moniker))
        .Stream("Contents", "An object's own contents")
        .Bytes();
}

std::string OleStorageRecord(const std::string& storage, bool packed)
{
    constexpr std::uint32_t ExOleObjStg = 4113;
    if (!packed)
        return Atom(ExOleObjStg, storage);
    const std::unique_ptr<libdeflate_compressor, decltype(&libdeflate_free_compressor)> compressor(
        libdeflate_alloc_compressor(6), libdeflate_free_compressor);
    std::string bytes(libdeflate_zlib_compress_bound(compressor.get(), storage.size()), '\0');
    const auto size =
        libdeflate_zlib_compress(compressor.get(), storage.data(), storage.size(), bytes.data(), bytes.size());
    if (size == 0)
        throw std::runtime_error("A storage can't be packed.");
    bytes.resize(size);
    return Atom(ExOleObjStg, Length(storage) + bytes, 1);
}

}  // namespace tessarine::test::ppt
