#include "office/builtin/package/FileKind.h"

#include <gsf/gsf.h>
#include <algorithm>
#include <array>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "office/builtin/package/WholeFile.h"
#include "office/builtin/zip/ZipDirectory.h"

namespace tessarine::builtin
{

namespace
{

struct Unreference {
    void operator()(void* object) const { g_object_unref(object); }
};
template <class Object>
using GsfPointer = std::unique_ptr<Object, Unreference>;

void KeepQuiet(const char*, GLogLevelFlags, const char*, void*) {}

/// The names in a compound file's root (MS-CFB 2.6). Empty when it can't be read.
std::vector<std::string> RootNames(const RandomAccessBytes& bytes)
{
    // Only the directory is wanted. A file beyond this is too large to be a presentation that the engine would take.
    constexpr std::uint64_t largest = 1u << 30;
    if (bytes.Size() > largest)
        return {};
    // The library writes its opinion of a damaged file to the terminal. The user gets it from the result instead.
    [[maybe_unused]] static const guint handler =
        g_log_set_handler("libgsf:msole", G_LOG_LEVEL_MASK, KeepQuiet, nullptr);
    const WholeFile content(bytes);
    const std::span<const std::byte> memory = content.Bytes();
    const GsfPointer<GsfInput> input(gsf_input_memory_new(reinterpret_cast<const guint8*>(memory.data()),
                                                          static_cast<gsf_off_t>(memory.size()), FALSE));
    if (!input)
        return {};
    const GsfPointer<GsfInfile> file(gsf_infile_msole_new(input.get(), nullptr));
    std::vector<std::string> names;
    for (int i = 0; file && i < gsf_infile_num_children(file.get()); ++i)
        if (const char* name = gsf_infile_name_by_index(file.get(), i))
            names.emplace_back(name);
    return names;
}

FileKind CompoundKind(const RandomAccessBytes& bytes)
{
    const auto names = RootNames(bytes);
    const auto has = [&](std::string_view name) { return std::ranges::find(names, name) != names.end(); };
    if (names.empty())
        return FileKind::DamagedCompound;
    // [MS-OFFCRYPTO]. The text is in two pieces, as "\x06D" would be one character.
    if (has("EncryptedPackage") || has("\x06"
                                       "DataSpaces"))
        return FileKind::EncryptedPackage;
    // Before the older kinds: "97-2003 & 95" files hold both, and the newer presentation counts.
    if (has("PowerPoint Document") || has("PP97_DUALSTORAGE"))
        return FileKind::BinaryPresentation;
    if (has("PP40") || has("Text_Content"))
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
    if (head.starts_with("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"))
        return CompoundKind(bytes);
    if (head.find("<pkg:package") != std::string_view::npos)
        return FileKind::FlatPackage;
    // Other bytes may stand in front of a package; its directory is at its end.
    return HasZipEnd(bytes) ? FileKind::Package : FileKind::Other;
}

}  // namespace tessarine::builtin
