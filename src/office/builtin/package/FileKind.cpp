#include "office/builtin/package/FileKind.h"

#include <algorithm>
#include <array>
#include <span>
#include <string_view>

#include "files/CompoundFile.h"
#include "office/builtin/package/WholeFile.h"
#include "office/builtin/zip/ZipDirectory.h"

namespace tessarine::builtin
{

namespace
{

FileKind CompoundKind(const RandomAccessBytes& bytes)
{
    // A file beyond this is too large to be a presentation that the engine would take.
    constexpr std::uint64_t largest = 1u << 30;
    if (bytes.Size() > largest)
        return FileKind::DamagedCompound;
    const WholeFile content(bytes);
    const std::span<const std::byte> memory = content.Bytes();
    const CompoundFile file({reinterpret_cast<const char*>(memory.data()), memory.size()});
    if (file.IsEmpty())
        return FileKind::DamagedCompound;
    // [MS-OFFCRYPTO]. The text is in two pieces, as "\x06D" would be one character.
    if (file.Has("EncryptedPackage") || file.Has("\x06"
                                                 "DataSpaces"))
        return FileKind::EncryptedPackage;
    // Before the older kinds: "97-2003 & 95" files hold both, and the newer presentation counts.
    if (file.Has("PowerPoint Document") || file.Has("PP97_DUALSTORAGE"))
        return FileKind::BinaryPresentation;
    if (file.Has("PP40") || file.Has("Text_Content"))
        return FileKind::OldPresentation;
    return FileKind::OtherCompound;
}

}  // namespace

FileKind FileKindOf(const RandomAccessBytes& bytes)
{
    // A flat package begins with an XML declaration and an instruction for the shell; its root comes soon after.
    std::array<char, 512> buffer{};
    const std::size_t length = std::min<std::uint64_t>(bytes.Size(), buffer.size());
    bytes.Read(0, std::as_writable_bytes(std::span(buffer).first(length)));
    const std::string_view head(buffer.data(), length);
    if (head.empty())
        return FileKind::Empty;
    // A first entry, an archive without entries, and the mark in front of one that was split once.
    if (head.starts_with("PK\x03\x04") || head.starts_with("PK\x05\x06") || head.starts_with("PK\x07\x08"))
        return FileKind::Package;
    if (IsCompoundFile(head))
        return CompoundKind(bytes);
    if (head.find("<pkg:package") != std::string_view::npos)
        return FileKind::FlatPackage;
    // Other bytes may stand in front of a package; its directory is at its end.
    return HasZipEnd(bytes) ? FileKind::Package : FileKind::Other;
}

}  // namespace tessarine::builtin
