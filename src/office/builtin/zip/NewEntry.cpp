#include "office/builtin/zip/NewEntry.h"

#include "office/builtin/zip/Deflate.h"
#include "office/builtin/zip/ZipDirectory.h"
#include "office/builtin/zip/ZipFormat.h"

namespace tessarine::builtin
{

using namespace zip;

NewEntry::NewEntry(std::string_view name, std::string_view content, std::uint64_t offset)
{
    // Dates of the epoch of zip: a new part has no old date to keep, and the result depends on the input alone.
    // APPNOTE 4.4.3 and 4.4.4: 2.0 is the first version with deflate; bit 11 says that the name is UTF-8.
    constexpr std::uint16_t version = 20;
    constexpr std::uint16_t utf8Names = 0x0800;
    constexpr std::uint16_t firstOfJanuary1980 = 0x0021;
    const std::string packed = Deflate(content);

    std::string common;  // the fields that both kinds of header share
    Append<std::uint16_t>(common, version);
    Append<std::uint16_t>(common, utf8Names);
    Append<std::uint16_t>(common, zipDeflated);
    Append<std::uint16_t>(common, std::uint16_t{0});
    Append<std::uint16_t>(common, firstOfJanuary1980);
    Append<std::uint32_t>(common, Crc32(content));
    Append<std::uint32_t>(common, static_cast<std::uint32_t>(packed.size()));
    Append<std::uint32_t>(common, static_cast<std::uint32_t>(content.size()));
    Append<std::uint16_t>(common, static_cast<std::uint16_t>(name.size()));
    Append<std::uint16_t>(common, std::uint16_t{0});

    Append<std::uint32_t>(local, localSignature);
    (local += common) += name;
    local += packed;

    Append<std::uint32_t>(record, centralSignature);
    Append<std::uint16_t>(record, version);
    record += common;
    record.append(10, '\0');  // comment length, disk, internal and external attributes
    Append<std::uint32_t>(record, static_cast<std::uint32_t>(offset));
    record += name;
}

}  // namespace tessarine::builtin
