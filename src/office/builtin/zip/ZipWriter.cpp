#include "office/builtin/zip/ZipWriter.h"

#include <algorithm>
#include <numeric>
#include <span>

#include "office/builtin/limits/Damage.h"
#include "office/builtin/zip/Deflate.h"
#include "office/builtin/zip/NewEntry.h"
#include "office/builtin/zip/ZipFormat.h"

namespace tessarine::builtin
{

namespace
{

using namespace zip;

/// The new place and sizes of an entry that was written anew, or the new place alone of one that was copied.
struct Placed {
    std::uint64_t localHeader = 0;
    bool rewritten = false;
    std::uint32_t crc = 0;
    std::uint64_t packedSize = 0;
    std::uint64_t size = 0;
};

class Writer
{
public:
    Writer(const RandomAccessBytes& source, const ZipDirectory& directory, const ZipChanges& changes,
           ReplacementFile& target)
        : source_(source),
          directory_(directory),
          changes_(changes),
          target_(target),
          placed_(directory.Entries().size())
    {
    }

    void Write()
    {
        WriteEntries();
        WriteAdded();
        // Entries that are written anew have no zip64 field, so that their offsets must fit into 32 bits.
        if (target_.Position() >= in64)
            throw Failure(FailureNumber::BadFormat, u"The presentation would grow beyond 4 GiB");
        WriteDirectory();
    }

private:
    void Put(std::string_view bytes) { target_.Write(std::as_bytes(std::span(bytes))); }

    std::string ReadSource(std::uint64_t offset, std::uint64_t length) const
    {
        std::string bytes(length, '\0');
        source_.Read(offset, std::as_writable_bytes(std::span(bytes)));
        return bytes;
    }

    /// Entries in the order of the file, each with all bytes up to the next one; neighbours that stay are copied in one
    /// go.
    void WriteEntries()
    {
        const auto& entries = directory_.Entries();
        std::vector<std::size_t> order(entries.size());
        std::iota(order.begin(), order.end(), std::size_t{0});
        std::ranges::stable_sort(order, {}, [&](std::size_t i) { return entries[i].localHeader; });

        std::uint64_t copiedTo = 0;  // everything of the source before this is written, or meant to be left out
        std::uint64_t pendingFrom = 0;
        const auto flushPending = [&](std::uint64_t to) {
            if (to > pendingFrom)
                target_.CopyFrom(source_, pendingFrom, to - pendingFrom);
        };
        for (std::size_t k = 0; k < order.size(); ++k) {
            const std::size_t i = order[k];
            const std::uint64_t start = entries[i].localHeader;
            const std::uint64_t next = k + 1 < order.size() ? entries[order[k + 1]].localHeader : directory_.Start();
            if (start < copiedTo || ZipDirectory::DataOffset(source_, entries[i]) + entries[i].packedSize > next)
                throw Damage(entries[i].name, "it overlaps another entry", start);
            // A second record of the same local header counts as overlapping, too.
            copiedTo = start + 1;

            const auto replacement = changes_.replaced.find(i);
            if (replacement == changes_.replaced.end() && !changes_.removed.contains(i)) {
                placed_[i].localHeader = target_.Position() + (start - pendingFrom);
                continue;
            }
            flushPending(start);
            pendingFrom = next;
            if (replacement != changes_.replaced.end())
                WriteReplaced(i, replacement->second);
        }
        flushPending(directory_.Start());
    }

    /// The old local header with new sizes. The descriptor that may have followed the data goes, as the header can tell
    /// the sizes now.
    void WriteReplaced(std::size_t i, const std::string& content)
    {
        const ZipEntry& entry = directory_.Entries()[i];
        const std::uint64_t data = ZipDirectory::DataOffset(source_, entry);
        std::string header = ReadSource(entry.localHeader, data - entry.localHeader);
        // Both headers keep their method, so that what was stored stays stored.
        const std::string packed = entry.method == zipStored ? content : Deflate(content);
        Placed& place = placed_[i];
        place = {target_.Position(), true, Crc32(content), packed.size(), content.size()};

        const auto flags = static_cast<std::uint16_t>(Get<std::uint16_t>(header, local::flags) & ~flagDataDescriptor);
        zip::Put<std::uint16_t>(header, local::flags, flags);
        zip::Put<std::uint32_t>(header, local::crc, place.crc);
        PutValues(header, localSize + Get<std::uint16_t>(header, local::nameLength), local::extraLength,
                  {{{local::size, entry.size, place.size}, {local::packedSize, entry.packedSize, place.packedSize}}});
        Put(header);
        Put(packed);
    }

    /// A value that a header holds in 32 bits, or in its zip64 field, where that says so.
    struct Value {
        std::size_t field;
        std::uint64_t before;
        std::uint64_t now;
    };

    /// Puts values where the header has them: those that stand in the zip64 field stay there. They are given in the
    /// order of that field. One that holds no values any more, or others than the header, goes: parts fit into 32 bits,
    /// and readers refuse such a field.
    static void PutValues(std::string& header, std::size_t extraStart, std::size_t lengthField,
                          const std::vector<Value>& values)
    {
        const auto isIn64 = [&](const Value& value) { return Get<std::uint32_t>(header, value.field) == in64; };
        const auto [begin, end] = FindZip64Field(header, extraStart, lengthField);
        const bool isNeeded = std::ranges::any_of(values, isIn64);
        std::size_t slot = begin;
        for (const Value& value : values) {
            const bool hasSlot = end - slot >= 8;
            const bool isThere = isIn64(value) && hasSlot;
            const bool isCopy = !isNeeded && hasSlot && Get<std::uint64_t>(header, slot) == value.before;
            if (isThere || isCopy) {
                zip::Put<std::uint64_t>(header, slot, value.now);
                slot += 8;
            }
            if (!isThere)
                zip::Put<std::uint32_t>(header, value.field, static_cast<std::uint32_t>(value.now));
        }
        if (slot == begin || (!isNeeded && slot != end))
            DropZip64Field(header, extraStart, lengthField);
    }

    /// Where the values of the zip64 field stand among a header's extra fields; nowhere without one.
    static std::pair<std::size_t, std::size_t> FindZip64Field(std::string_view header, std::size_t extraStart,
                                                              std::size_t lengthField)
    {
        const std::size_t extraEnd = extraStart + Get<std::uint16_t>(header, lengthField);
        for (std::size_t at = extraStart; at + 4 <= extraEnd;) {
            const std::size_t end = at + 4 + Get<std::uint16_t>(header, at + 2);
            if (end > extraEnd)
                break;
            if (Get<std::uint16_t>(header, at) == extraZip64)
                return {at + 4, end};
            at = end;
        }
        return {};
    }

    /// Removes the zip64 field from the extra fields of a header.
    static void DropZip64Field(std::string& header, std::size_t extraStart, std::size_t lengthField)
    {
        std::size_t length = Get<std::uint16_t>(header, lengthField);
        std::size_t at = extraStart;
        while (at + 4 <= extraStart + length) {
            const std::size_t field = 4 + std::size_t{Get<std::uint16_t>(header, at + 2)};
            if (at + field > extraStart + length)
                return;
            if (Get<std::uint16_t>(header, at) == extraZip64) {
                header.erase(at, field);
                length -= field;
                zip::Put<std::uint16_t>(header, lengthField, static_cast<std::uint16_t>(length));
            } else {
                at += field;
            }
        }
    }

    void WriteAdded()
    {
        for (const auto& [name, content] : changes_.added) {
            const NewEntry entry(name, content, target_.Position());
            Put(entry.local);
            addedRecords_ += entry.record;
        }
    }

    void WriteDirectory()
    {
        const std::uint64_t start = target_.Position();
        std::uint64_t count = changes_.added.size();
        const auto& entries = directory_.Entries();
        for (std::size_t i = 0; i < entries.size(); ++i) {
            if (changes_.removed.contains(i))
                continue;
            Put(RecordOf(entries[i], placed_[i]));
            ++count;
        }
        Put(addedRecords_);
        WriteEnd(start, target_.Position() - start, count);
    }

    std::string RecordOf(const ZipEntry& entry, const Placed& place) const
    {
        std::string record(directory_.Records().substr(entry.record, entry.recordSize));
        if (place.rewritten) {
            zip::Put<std::uint16_t>(record, central::flags,
                                    static_cast<std::uint16_t>(entry.flags & ~flagDataDescriptor));
            zip::Put<std::uint32_t>(record, central::crc, place.crc);
            // The offset in the file counts what is in front of it; the stored one may not.
            PutValues(record, centralSize + entry.name.size(), central::extraLength,
                      {{{central::size, entry.size, place.size},
                        {central::packedSize, entry.packedSize, place.packedSize},
                        {central::localHeader, entry.localHeader - directory_.Shift(), place.localHeader}}});
        } else if (Get<std::uint32_t>(record, central::localHeader) != in64) {
            zip::Put<std::uint32_t>(record, central::localHeader, static_cast<std::uint32_t>(place.localHeader));
        } else {
            PutOffset64(record, entry, place.localHeader);
        }
        return record;
    }

    /// In the zip64 field the offset follows the sizes, as far as these are there (APPNOTE 4.5.3).
    static void PutOffset64(std::string& record, const ZipEntry& entry, std::uint64_t offset)
    {
        const std::size_t extraStart = centralSize + entry.name.size();
        const std::size_t extraEnd = extraStart + Get<std::uint16_t>(record, central::extraLength);
        for (std::size_t at = extraStart; at + 4 <= extraEnd;
             at += 4 + std::size_t{Get<std::uint16_t>(record, at + 2)}) {
            if (Get<std::uint16_t>(record, at) != extraZip64)
                continue;
            std::size_t value = at + 4;
            value += Get<std::uint32_t>(record, central::size) == in64 ? 8 : 0;
            value += Get<std::uint32_t>(record, central::packedSize) == in64 ? 8 : 0;
            if (value + 8 <= extraEnd)
                zip::Put<std::uint64_t>(record, value, offset);
            return;
        }
    }

    void WriteEnd(std::uint64_t start, std::uint64_t size, std::uint64_t count)
    {
        std::string written;
        const bool needs64 = directory_.HasEnd64() || count >= count64 || start >= in64 || size >= in64;
        if (needs64) {
            const std::uint64_t end64At = target_.Position();
            Append<std::uint32_t>(written, end64Signature);
            // The size counts neither the signature nor itself (APPNOTE 4.3.14). 4.5 is the first version with zip64.
            Append<std::uint64_t>(written, end64Size - 12);
            Append<std::uint16_t>(written, std::uint16_t{45});
            Append<std::uint16_t>(written, std::uint16_t{45});
            written.append(8, '\0');
            Append<std::uint64_t>(written, count);
            Append<std::uint64_t>(written, count);
            Append<std::uint64_t>(written, size);
            Append<std::uint64_t>(written, start);
            Append<std::uint32_t>(written, end64LocatorSignature);
            Append<std::uint32_t>(written, std::uint32_t{0});
            Append<std::uint64_t>(written, end64At);
            Append<std::uint32_t>(written, std::uint32_t{1});
        }
        // What referred to the zip64 record does so again.
        const auto old16 = [&](std::size_t field) { return Get<std::uint16_t>(directory_.EndRecord(), field); };
        const auto old32 = [&](std::size_t field) { return Get<std::uint32_t>(directory_.EndRecord(), field); };
        const auto fitting = [&](std::uint64_t value, bool was64, std::uint64_t in) {
            return was64 && directory_.HasEnd64() ? in : std::min<std::uint64_t>(value, in);
        };
        const auto count16 = static_cast<std::uint16_t>(fitting(count, old16(end::count) == count64, count64));
        Append<std::uint32_t>(written, endSignature);
        written.append(4, '\0');
        Append<std::uint16_t>(written, count16);
        Append<std::uint16_t>(written, count16);
        Append<std::uint32_t>(written,
                              static_cast<std::uint32_t>(fitting(size, old32(end::directorySize) == in64, in64)));
        Append<std::uint32_t>(written,
                              static_cast<std::uint32_t>(fitting(start, old32(end::directoryStart) == in64, in64)));
        Append<std::uint16_t>(written, static_cast<std::uint16_t>(directory_.Comment().size()));
        written += directory_.Comment();
        written += directory_.Trailer();
        Put(written);
    }

    const RandomAccessBytes& source_;
    const ZipDirectory& directory_;
    const ZipChanges& changes_;
    ReplacementFile& target_;
    std::vector<Placed> placed_;
    std::string addedRecords_;
};

}  // namespace

void WriteZip(const RandomAccessBytes& source, const ZipDirectory& directory, const ZipChanges& changes,
              ReplacementFile& target)
{
    Writer(source, directory, changes, target).Write();
}

}  // namespace tessarine::builtin
