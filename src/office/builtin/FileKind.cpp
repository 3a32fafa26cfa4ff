#include "office/builtin/FileKind.h"

#include <algorithm>
#include <array>
#include <span>
#include <string_view>

#include "files/CompoundFile.h"  // IsCompoundFile
#include "office/builtin/compound/CompoundFile.h"
#include "office/builtin/zip/ZipDirectory.h"

namespace tessarine::builtin
{

namespace
{

FileKind CompoundKind(const RandomAccessBytes& bytes)
{
    const CompoundFile directory(bytes);
    const auto has = [&](StringView name) { return directory.Find(CompoundFile::root, name).has_value(); };
    // [MS-OFFCRYPTO]. The text is in two pieces, as "\x06D" would be one character.
    if (has(u"EncryptedPackage") || has(u"\x06"
                                        u"DataSpaces"))
        return FileKind::EncryptedPackage;
    // Before the older kinds: "97-2003 & 95" files hold both, and the newer presentation counts.
    if (has(u"PowerPoint Document") || has(u"PP97_DUALSTORAGE"))
        return FileKind::BinaryPresentation;
    if (has(u"PP40") || has(u"Text_Content"))
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
