#include "office/builtin/zip/ZipDirectory.h"

#include <algorithm>
#include <array>
#include <optional>

#include "office/builtin/limits/Damage.h"
#include "office/builtin/zip/ZipFormat.h"

namespace tessarine::builtin
{

namespace
{

using namespace zip;

std::string ReadString(const RandomAccessBytes& bytes, std::uint64_t offset, std::uint64_t length)
{
    std::string text(length, '\0');
    bytes.Read(offset, std::as_writable_bytes(std::span(text)));
    return text;
}

struct End {
    std::uint64_t count = 0;
    std::uint64_t directorySize = 0;
    std::uint64_t directoryStart = 0;  // as stored
    std::uint64_t directoryLimit = 0;  // where the directory ends: the offset at which the first end record really lies
    std::string record;                // without the comment
    std::string comment;
    std::string trailer;
    bool has64 = false;  // the values are those of a zip64 end record
};

/// The last end record whose comment fits into the file. Searched backwards, as the comment may hold anything.
std::optional<End> FindEnd(const RandomAccessBytes& bytes)
{
    constexpr std::uint64_t longestComment = 0xFFFF;
    const std::uint64_t size = bytes.Size();
    if (size < endSize)
        return std::nullopt;

    // Nearly every file has no comment, so that its last bytes are the record.
    for (const std::uint64_t tailSize : {std::uint64_t{endSize}, std::min(size, endSize + longestComment)}) {
        const std::uint64_t tailStart = size - tailSize;
        const std::string tail = ReadString(bytes, tailStart, tailSize);
        for (std::size_t at = tail.size() - endSize + 1; at-- > 0;) {
            if (Get<std::uint32_t>(tail, at) != endSignature)
                continue;
            const std::size_t commentLength = Get<std::uint16_t>(tail, at + end::commentLength);
            // The signature may occur in a comment by chance. The comment of a real record ends within the file.
            if (commentLength > tail.size() - at - endSize)
                continue;
            return End{.count = Get<std::uint16_t>(tail, at + end::count),
                       .directorySize = Get<std::uint32_t>(tail, at + end::directorySize),
                       .directoryStart = Get<std::uint32_t>(tail, at + end::directoryStart),
                       .directoryLimit = tailStart + at,
                       .record = tail.substr(at, endSize),
                       .comment = tail.substr(at + endSize, commentLength),
                       .trailer = tail.substr(at + endSize + commentLength)};
        }
    }
    return std::nullopt;
}

/// Replaces the values by those of the zip64 end record when there is one.
void ReadEnd64(const RandomAccessBytes& bytes, End& found)
{
    const bool needed = found.count == count64 || found.directorySize == in64 || found.directoryStart == in64;
    // A record that is not needed lies between the directory and its end all the same.
    const bool isThere = found.directoryStart + found.directorySize != found.directoryLimit;
    if ((!needed && !isThere) || found.directoryLimit < end64LocatorSize)
        return;
    const std::uint64_t locatorAt = found.directoryLimit - end64LocatorSize;
    const std::string locator = ReadString(bytes, locatorAt, end64LocatorSize);
    if (Get<std::uint32_t>(locator, 0) != end64LocatorSignature)
        return;  // values that happen to be all ones
    const auto stored = Get<std::uint64_t>(locator, 8);
    // Bytes in front of the archive shift the record; it then lies right before its locator.
    for (const std::uint64_t at : {stored, locatorAt - std::min<std::uint64_t>(locatorAt, end64Size)}) {
        if (at > locatorAt || locatorAt - at < end64Size)
            continue;
        const std::string record = ReadString(bytes, at, end64Size);
        if (Get<std::uint32_t>(record, 0) != end64Signature)
            continue;
        found.count = Get<std::uint64_t>(record, end64::count);
        found.directorySize = Get<std::uint64_t>(record, end64::directorySize);
        found.directoryStart = Get<std::uint64_t>(record, end64::directoryStart);
        found.directoryLimit = at;
        found.has64 = true;
        return;
    }
    if (!needed)
        return;
    throw Damage({}, "the zip64 end record is missing");
}

/// Takes the values that do not fit into 32 bits from the zip64 extra field, in the order in which they stand there.
void ReadExtra64(std::string_view extra, ZipEntry& entry)
{
    while (extra.size() >= 4) {
        const auto id = Get<std::uint16_t>(extra, 0);
        const std::size_t length = std::min<std::size_t>(Get<std::uint16_t>(extra, 2), extra.size() - 4);
        std::string_view field = extra.substr(4, length);
        extra.remove_prefix(4 + length);
        if (id != extraZip64)
            continue;
        for (std::uint64_t* value : {&entry.size, &entry.packedSize, &entry.localHeader}) {
            if (*value != in64)
                continue;
            if (field.size() < 8)
                throw Damage(entry.name, "its zip64 sizes are missing");
            *value = Get<std::uint64_t>(field, 0);
            field.remove_prefix(8);
        }
        return;
    }
}

/// A file that is cut may hold another one, stored whole. The end record found is that one's then, and what is edited
/// by it is the inner file. It shows by offsets that count from elsewhere than the file's begin.
void CheckIsOfWholeFile(const RandomAccessBytes& bytes, std::uint64_t shift, std::string_view trailer)
{
    if (shift == 0)
        return;
    // In front of a package may be a program that unpacks it, and after one padding; but not an entry, and no content.
    const std::string begin = ReadString(bytes, 0, std::min<std::uint64_t>(bytes.Size(), 4));
    const bool isZipInFront = begin.size() == 4 && Get<std::uint32_t>(begin, 0) == localSignature;
    if (isZipInFront || trailer.find_first_not_of('\0') != std::string_view::npos)
        throw Damage({}, "the end of the zip file is missing; the only end there is belongs to a file inside");
}

}  // namespace

bool HasZipEnd(const RandomAccessBytes& bytes)
{
    return FindEnd(bytes).has_value();
}

ZipDirectory::ZipDirectory(const RandomAccessBytes& bytes, const Limits& limits) : fileSize_(bytes.Size())
{
    auto found = FindEnd(bytes);
    if (!found)
        throw Damage({}, "the end of the zip file is missing");
    ReadEnd64(bytes, *found);
    if (found->directorySize > found->directoryLimit)
        throw Damage({}, "the zip directory does not fit into the file");
    // Asked before memory of that size is taken.
    if (found->directorySize > limits.directoryBytes)
        throw Damage({}, "the zip directory is too large");

    // The directory ends where the end record begins. What is missing against its stored offset are bytes in front.
    start_ = found->directoryLimit - found->directorySize;
    if (start_ < found->directoryStart)
        throw Damage({}, "the zip directory is cut");
    shift_ = start_ - found->directoryStart;
    CheckIsOfWholeFile(bytes, shift_, found->trailer);
    hasEnd64_ = found->has64;
    endRecord_ = std::move(found->record);
    comment_ = std::move(found->comment);
    trailer_ = std::move(found->trailer);
    records_ = ReadString(bytes, start_, found->directorySize);
    ReadRecords(found->count, limits);
}

void ZipDirectory::ReadRecords(std::uint64_t count, const Limits& limits)
{
    entries_.reserve(std::min<std::uint64_t>(count, records_.size() / centralSize));
    const std::string_view records = records_;
    std::size_t at = 0;
    // The count has 16 bits without zip64 and wraps in some files; the signatures tell where the records end.
    while (records.size() - at >= centralSize && Get<std::uint32_t>(records, at) == centralSignature) {
        if (entries_.size() >= limits.parts)
            throw Damage({}, "the zip file has too many entries");
        const std::string_view record = records.substr(at);
        const std::size_t nameLength = Get<std::uint16_t>(record, central::nameLength);
        const std::size_t extraLength = Get<std::uint16_t>(record, central::extraLength);
        const std::size_t recordSize =
            centralSize + nameLength + extraLength + Get<std::uint16_t>(record, central::commentLength);
        if (recordSize > record.size())
            throw Damage({}, "the zip directory is cut", start_ + at);

        ZipEntry entry{.name = record.substr(centralSize, nameLength),
                       .flags = Get<std::uint16_t>(record, central::flags),
                       .method = Get<std::uint16_t>(record, central::method),
                       .crc = Get<std::uint32_t>(record, central::crc),
                       .packedSize = Get<std::uint32_t>(record, central::packedSize),
                       .size = Get<std::uint32_t>(record, central::size),
                       .localHeader = Get<std::uint32_t>(record, central::localHeader),
                       .record = at,
                       .recordSize = recordSize};
        ReadExtra64(record.substr(centralSize + nameLength, extraLength), entry);
        // Differences, because sums of what a hostile file says may overflow.
        if (entry.localHeader > start_ || shift_ > start_ - entry.localHeader)
            throw Damage(entry.name, "it lies outside of the file");
        entry.localHeader += shift_;
        if (entry.packedSize > start_ - entry.localHeader)
            throw Damage(entry.name, "it lies outside of the file");
        entries_.push_back(entry);
        at += recordSize;
    }
    // Only the bits that can't have wrapped are compared.
    if ((entries_.size() & 0xFFFF) != (count & 0xFFFF))
        throw Damage({}, "the zip directory lacks entries");
}

namespace
{

/// Size of a local header with its name and extra fields. Raises when the bytes are no local header.
std::size_t LocalHeaderSize(std::string_view header, const ZipEntry& entry)
{
    if (Get<std::uint32_t>(header, 0) != localSignature)
        throw Damage(entry.name, "its local header is missing", entry.localHeader);
    return localSize + Get<std::uint16_t>(header, local::nameLength) + Get<std::uint16_t>(header, local::extraLength);
}

void CheckData(const RandomAccessBytes& bytes, const ZipEntry& entry, std::uint64_t data)
{
    if (data > bytes.Size() || entry.packedSize > bytes.Size() - data)
        throw Damage(entry.name, "it is cut", data);
}

}  // namespace

std::uint64_t ZipDirectory::DataOffset(const RandomAccessBytes& bytes, const ZipEntry& entry)
{
    std::array<char, localSize> header;
    bytes.Read(entry.localHeader, std::as_writable_bytes(std::span(header)));
    const std::uint64_t data = entry.localHeader + LocalHeaderSize({header.data(), header.size()}, entry);
    CheckData(bytes, entry, data);
    return data;
}

std::string_view ZipDirectory::ReadPacked(const RandomAccessBytes& bytes, const ZipEntry& entry, std::string& buffer)
{
    // Local headers seldom have more extra fields than this: one read fetches header and data.
    constexpr std::uint64_t expectedExtra = 64;
    const std::uint64_t wanted = localSize + entry.name.size() + expectedExtra + entry.packedSize;
    buffer.resize(std::min(wanted, bytes.Size() - std::min(bytes.Size(), entry.localHeader)));
    if (buffer.size() < localSize)
        throw Damage(entry.name, "its local header is missing", entry.localHeader);
    bytes.Read(entry.localHeader, std::as_writable_bytes(std::span(buffer)));
    const std::size_t headerSize = LocalHeaderSize(buffer, entry);
    CheckData(bytes, entry, entry.localHeader + headerSize);
    if (buffer.size() < headerSize + entry.packedSize) {
        buffer.resize(headerSize + entry.packedSize);
        bytes.Read(entry.localHeader, std::as_writable_bytes(std::span(buffer)));
    }
    return std::string_view(buffer).substr(headerSize, entry.packedSize);
}

}  // namespace tessarine::builtin
