// Zip files: the directory and every entry, straight from bytes.
#include <cstdint>
#include <span>

#include "files/RandomAccessFile.h"
#include "office/builtin/package/Package.h"
#include "platform/Failure.h"
#include "Require.h"

namespace tessarine::fuzz
{

namespace
{

using builtin::Package;

void ReadEveryEntry(std::span<const std::byte> bytes)
{
    const auto file = BytesInMemory(bytes);
    const builtin::ZipDirectory directory(*file, builtin::Limits::Small());
    Package package(BytesInMemory(bytes), builtin::Limits::Small());
    for (Package::Entry entry = 0; entry < directory.Entries().size(); ++entry) {
        const auto found = package.Find(package.NameOf(entry));
        Require(found && *found >= entry, "an entry is found by its name, or a later one of the same name");
        try {
            const std::string content = package.Read(entry);
            Require(content.size() == directory.Entries()[entry].size,
                    "an entry has the size that the directory tells");
            Require(package.Read(entry) == content, "reading twice gives the same");
            package.ReadXml(entry);
        } catch (const Failure&) {
        }  // the next entry may be sound
    }
    Require(!package.IsChanged(), "reading changes nothing");
}

}  // namespace

}  // namespace tessarine::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    try {
        tessarine::fuzz::ReadEveryEntry({reinterpret_cast<const std::byte*>(data), size});
    } catch (const tessarine::Failure&) {
    }  // refusing is a good answer; all else is a find
    return 0;
}
