#include "office/builtin/zip/NewZip.h"

#include "office/builtin/zip/NewEntry.h"
#include "office/builtin/zip/ZipFormat.h"

namespace tessarine::builtin
{

using namespace zip;

std::string NewZip(const std::vector<std::pair<std::string, std::string>>& entries)
{
    std::string file, records;
    for (const auto& [name, content] : entries) {
        const NewEntry entry(name, content, file.size());
        file += entry.local;
        records += entry.record;
    }
    const std::size_t start = file.size();
    file += records;
    const auto count = static_cast<std::uint16_t>(entries.size());
    Append<std::uint32_t>(file, endSignature);
    file.append(4, '\0');  // there is one disk
    Append<std::uint16_t>(file, count);
    Append<std::uint16_t>(file, count);
    Append<std::uint32_t>(file, static_cast<std::uint32_t>(records.size()));
    Append<std::uint32_t>(file, static_cast<std::uint32_t>(start));
    Append<std::uint16_t>(file, std::uint16_t{0});  // no comment
    return file;
}

}  // namespace tessarine::builtin
