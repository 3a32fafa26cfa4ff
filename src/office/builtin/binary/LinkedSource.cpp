#include "office/builtin/binary/LinkedSource.h"

#include <algorithm>
#include <optional>
#include <span>
#include <string>

#include "office/builtin/compound/CompoundFile.h"
#include "office/builtin/limits/Damage.h"
#include "office/builtin/zip/Deflate.h"
#include "platform/Failure.h"

namespace tessarine::builtin
{

namespace
{

using namespace std::string_view_literals;

/// Class ids of the monikers of a file and of a part of it, as they stand in streams.
constexpr std::string_view fileMoniker = "\x03\x03\x00\x00\x00\x00\x00\x00\xC0\x00\x00\x00\x00\x00\x00\x46"sv;
constexpr std::string_view itemMoniker = "\x04\x03\x00\x00\x00\x00\x00\x00\xC0\x00\x00\x00\x00\x00\x00\x46"sv;

/// ExOleObjStg ([MS-PPT] 2.10.34): packed, behind the size that it has unpacked.
constexpr std::uint16_t isPacked = 1;

std::string Unpacked(std::string_view content, const Limits& limits)
{
    // A stream of zlib (RFC 1950): two bytes in front of the packed ones, and a checksum of four behind.
    constexpr std::size_t sizeBytes = 4;
    constexpr std::size_t headBytes = 2;
    constexpr std::size_t checksumBytes = 4;
    if (content.size() < sizeBytes + headBytes + checksumBytes)
        throw Damage(documentStream, "the storage of an object is cut");
    const std::size_t size = U32At(content, 0);
    const std::string_view packed =
        content.substr(sizeBytes + headBytes, content.size() - sizeBytes - headBytes - checksumBytes);
    if (size > limits.partBytes || (size > limits.alwaysUnpacked && size / limits.ratio > packed.size()))
        throw Damage(documentStream, "the storage of an object would be too large");
    std::string unpacked(size, '\0');
    if (!Inflate(packed, unpacked.data(), size))
        throw Damage(documentStream, "the storage of an object can't be unpacked");
    return unpacked;
}

/// The bytes of a text that a length stands in front of; nothing where it doesn't fit.
std::optional<std::string_view> Counted(std::string_view& bytes)
{
    if (bytes.size() < 4 || U32At(bytes, 0) > bytes.size() - 4)
        return {};
    const std::string_view text = bytes.substr(4, U32At(bytes, 0));
    bytes.remove_prefix(4 + text.size());
    return text;
}

/// As far as a NUL. Bytes beyond ASCII are taken for Latin letters: the stream doesn't tell their code page.
String TextOf(std::string_view bytes)
{
    bytes = bytes.substr(0, bytes.find('\0'));
    String text(bytes.size(), u'\0');
    std::ranges::transform(bytes, text.begin(), [](char byte) { return static_cast<unsigned char>(byte); });
    return text;
}

/// What follows the class id of a file moniker: a count of folders to go up, the path in bytes, a mark and fields that
/// are reserved, and where it is there the path in UTF-16.
std::optional<String> PathIn(std::string_view bytes)
{
    constexpr std::size_t upCount = 2;
    constexpr std::size_t betweenPaths = 24;
    constexpr std::size_t keyBytes = 2;
    if (bytes.size() < upCount)
        return {};
    bytes.remove_prefix(upCount);
    const auto narrow = Counted(bytes);
    if (!narrow)
        return {};
    if (bytes.size() >= betweenPaths) {
        bytes.remove_prefix(betweenPaths);
        // Its size, and in that the size of the text behind a key.
        if (const auto wide = Counted(bytes); wide && wide->size() > 4 + keyBytes) {
            const std::size_t size = std::min<std::size_t>(U32At(*wide, 0), wide->size() - 4 - keyBytes);
            return Utf16Content(wide->substr(4 + keyBytes, size));
        }
    }
    return TextOf(*narrow);
}

/// What follows that of an item moniker: a delimiter, and the name of the part.
std::optional<String> ItemIn(std::string_view bytes)
{
    const auto delimiter = Counted(bytes);
    const auto item = delimiter ? Counted(bytes) : std::nullopt;
    return item ? std::optional(TextOf(*delimiter) + TextOf(*item)) : std::nullopt;
}

/// The last file, and all parts behind it: the stream tells first where the source is from here, then where it is by
/// itself. Monikers are looked for by their class ids, as writers don't agree whether a moniker's size counts itself.
std::optional<String> SourceIn(std::string_view stream)
{
    constexpr std::size_t longest = 32767;  // of a path
    const std::size_t last = stream.rfind(fileMoniker);
    if (last == std::string_view::npos)
        return {};
    auto source = PathIn(stream.substr(last + fileMoniker.size()));
    if (!source)
        return {};
    for (std::size_t at = stream.find(itemMoniker, last); at != std::string_view::npos && source->size() <= longest;
         at = stream.find(itemMoniker, at + 1))
        if (const auto item = ItemIn(stream.substr(at + itemMoniker.size())))
            *source += *item;
    if (source->size() > longest)
        return {};
    return source;
}

}  // namespace

String SourceInStorage(std::string_view bytes, const Record& storage, const Limits& limits)
{
    const std::string_view content = storage.Content(bytes);
    const std::string unpacked = storage.instance == isPacked ? Unpacked(content, limits) : std::string(content);
    const auto file = BytesInMemory(std::as_bytes(std::span(unpacked)));
    const CompoundFile directory(*file);
    const auto entry = directory.Find(CompoundFile::root,
                                      u"\x01"
                                      u"Ole");
    const auto source = entry ? SourceIn(directory.Bytes(*entry)) : std::nullopt;
    if (!source)
        throw Failure(FailureNumber::InvalidRequest, u"A linked object names no source");
    return *source;
}

}  // namespace tessarine::builtin
