#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/LittleEndian.h"

/// Records, of which a binary presentation consists ([MS-PPT] 2.3.1): a header, and content of a length that the header
/// tells, which in a container is further records. Numbers are little-endian.
namespace tessarine::builtin
{

/// The stream that holds the records, for failures.
inline constexpr std::string_view documentStream = "PowerPoint Document";

/// A number in bytes that were checked to hold it.
inline std::uint16_t U16At(std::string_view bytes, std::size_t offset)
{
    return littleendian::Get<std::uint16_t>(bytes, offset);
}
inline std::uint32_t U32At(std::string_view bytes, std::size_t offset)
{
    return littleendian::Get<std::uint32_t>(bytes, offset);
}

inline void AppendU16(std::string& bytes, std::uint16_t number)
{
    littleendian::Append(bytes, number);
}
inline void AppendU32(std::string& bytes, std::uint32_t number)
{
    littleendian::Append(bytes, number);
}

/// Where a record lies in the bytes that it was read from, and what its header tells.
struct Record {
    static constexpr std::size_t headerSize = 8;

    std::uint16_t type = 0;      ///< See RecordTypes.h.
    std::uint16_t instance = 0;  ///< Tells kinds of one type apart; 12 bits.
    std::uint8_t version = 0;    ///< 0xF in a container; 4 bits.
    std::size_t begin = 0;       ///< Of the header.
    std::size_t end = 0;         ///< Of the content.

    bool IsContainer() const { return version == 0xF; }
    std::size_t ContentBegin() const { return begin + headerSize; }
    std::size_t ContentSize() const { return end - ContentBegin(); }
    std::string_view Content(std::string_view bytes) const { return bytes.substr(ContentBegin(), ContentSize()); }
    /// Whether the content holds that many bytes, as an atom of a known form has to.
    bool Holds(std::size_t size) const { return ContentSize() >= size; }
};

/// Raises `FileCorrupt` for a record that doesn't fit into what holds it.
[[noreturn]] void RaiseRecordOutside(std::size_t offset);
[[noreturn]] void RaiseRecordTooLong(std::size_t offset);

/// The record that begins at an offset and ends at `end` at the latest. Raises `FileCorrupt` when it doesn't fit.
/// Inline, as every search steps over all records of a page.
inline Record RecordAt(std::string_view bytes, std::size_t offset, std::size_t end)
{
    if (end > bytes.size() || offset > end || end - offset < Record::headerSize)
        RaiseRecordOutside(offset);
    const std::uint16_t head = U16At(bytes, offset);
    const std::uint32_t length = U32At(bytes, offset + 4);
    if (length > end - offset - Record::headerSize)
        RaiseRecordTooLong(offset);
    return {.type = U16At(bytes, offset + 2),
            .instance = static_cast<std::uint16_t>(head >> 4),
            .version = static_cast<std::uint8_t>(head & 0xF),
            .begin = offset,
            .end = offset + Record::headerSize + length};
}

/// The records between two offsets, one after the other. Fewer bytes at the end than a header has are no record.
/// Raises `FileCorrupt` when one doesn't fit.
class Records
{
public:
    Records(std::string_view bytes, std::size_t begin, std::size_t end) : bytes_(bytes), begin_(begin), end_(end) {}
    /// Those in a container; none in an atom.
    Records(std::string_view bytes, const Record& container)
        : Records(bytes, container.ContentBegin(), container.IsContainer() ? container.end : container.ContentBegin())
    {
    }

    struct End {
    };
    class Iterator
    {
    public:
        Iterator(std::string_view bytes, std::size_t begin, std::size_t end) : bytes_(bytes), end_(end)
        {
            ReadAt(begin);
        }
        const Record& operator*() const { return record_; }
        const Record* operator->() const { return &record_; }
        Iterator& operator++()
        {
            ReadAt(record_.end);
            return *this;
        }
        bool operator==(End /*end*/) const { return isAtEnd_; }

    private:
        void ReadAt(std::size_t offset)
        {
            isAtEnd_ = offset >= end_ || end_ - offset < Record::headerSize;
            if (!isAtEnd_)
                record_ = RecordAt(bytes_, offset, end_);
        }

        std::string_view bytes_;
        std::size_t end_;
        bool isAtEnd_ = false;
        Record record_;
    };
    Iterator begin() const { return {bytes_, begin_, end_}; }
    End end() const { return {}; }

private:
    std::string_view bytes_;
    std::size_t begin_;
    std::size_t end_;
};

/// Goes through records between two offsets, however deeply they are nested, each container before what it holds.
/// Raises as Records does.
template <class Visit>
void ForEachRecord(std::string_view bytes, std::size_t begin, std::size_t end, Visit&& visit)
{
    std::vector<std::size_t> ends{end};  // of the containers that it is in
    for (std::size_t at = begin;;) {
        // Fewer bytes than a header has are no record, but the rest of their container.
        while (!ends.empty() && (at >= ends.back() || ends.back() - at < Record::headerSize)) {
            at = ends.back();
            ends.pop_back();
        }
        if (ends.empty())
            return;
        const Record record = RecordAt(bytes, at, ends.back());
        visit(record);
        if (record.IsContainer())
            ends.push_back(record.end);
        at = record.IsContainer() ? record.ContentBegin() : record.end;
    }
}

/// The same for what a container holds; nothing for an atom.
template <class Visit>
void ForEachRecord(std::string_view bytes, const Record& container, Visit&& visit)
{
    if (container.IsContainer())
        ForEachRecord(bytes, container.ContentBegin(), container.end, visit);
}

/// A record as bytes. Raises `BadFormat` for more content than a header can tell.
std::string RecordOf(std::uint16_t type, std::uint16_t instance, std::uint8_t version, std::string_view content);
/// The same with type, instance and version of an old one.
std::string RecordLike(const Record& old, std::string_view content);

/// UTF-16 text of an atom such as CString, as far as it is whole.
std::u16string Utf16Content(std::string_view content);
std::string BytesOfUtf16(std::u16string_view text);

/// A CString record ([MS-PPT] 2.2.27); the instance tells what it is for.
std::string CStringOf(std::uint16_t instance, std::u16string_view text);

}  // namespace tessarine::builtin
