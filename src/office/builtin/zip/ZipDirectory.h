#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "files/RandomAccessFile.h"
#include "office/builtin/limits/Limits.h"

namespace tessarine::builtin
{

/// One entry, as the central directory tells it (the sizes in local headers are often missing and never used).
struct ZipEntry {
    std::string_view name;  ///< Raw bytes, in the directory's memory.
    std::uint16_t flags = 0;
    std::uint16_t method = 0;       ///< How the bytes are packed: zipStored, zipDeflated or what packages don't use.
    std::uint32_t crc = 0;          ///< Of the unpacked bytes.
    std::uint64_t packedSize = 0;   ///< In bytes, as it lies in the file.
    std::uint64_t size = 0;         ///< In bytes, unpacked.
    std::uint64_t localHeader = 0;  ///< Offset in the file.
    std::size_t record = 0;         ///< Offset of its record in ZipDirectory::Records().
    std::size_t recordSize = 0;     ///< In bytes, with name, extra fields and comment.

    /// By the flag of APPNOTE 4.4.4; what lies there needs a password.
    bool IsEncrypted() const { return (flags & 1) != 0; }
};

constexpr std::uint16_t zipStored = 0;    ///< Not packed at all.
constexpr std::uint16_t zipDeflated = 8;  ///< Deflate, what all programs use.

/// True when the bytes end as a zip file does, whatever they begin with.
bool HasZipEnd(const RandomAccessBytes& bytes);

/// The central directory of a zip file (PKWARE APPNOTE 4.3): where every entry lies, and the record of each as it
/// stands in the file, because a save hands on what it does not change.
///
/// Bytes in front of the first entry, zip64 and data descriptors are understood. Archives in several pieces are not.
/// The limits bound the memory that a hostile file can take.
class ZipDirectory
{
public:
    /// Reads the directory. Raises `FileCorrupt` when there is none, or when what it says doesn't fit together or into
    /// the file. So it does when the directory is that of a zip file inside of this one, whose own end is missing: the
    /// bytes in front of the inner file are a zip file themselves, or there are others after its end.
    ZipDirectory(const RandomAccessBytes& bytes, const Limits& limits);

    /// In the order of the directory, which need not be the order in the file. They live as long as this object.
    const std::vector<ZipEntry>& Entries() const { return entries_; }
    std::string_view Records() const { return records_; }  ///< All central records, as in the file.
    std::uint64_t Start() const { return start_; }         ///< Offset of the central directory in the file.
    std::uint64_t Shift() const { return shift_; }  ///< What stored offsets lack against the file's (bytes in front).
    std::string_view Comment() const { return comment_; }  ///< The archive comment.
    bool HasEnd64() const { return hasEnd64_; }            ///< There is a zip64 end record, needed or not.
    /// The end record without its comment, as in the file.
    std::string_view EndRecord() const { return endRecord_; }
    std::string_view Trailer() const { return trailer_; }  ///< Bytes after the archive, such as padding.

    /// Offset of an entry's packed bytes. Reads its local header; raises `FileCorrupt` when there is none.
    static std::uint64_t DataOffset(const RandomAccessBytes& bytes, const ZipEntry& entry);

    /// An entry's packed bytes, read together with its local header; they lie in `buffer`. Raises as DataOffset does.
    static std::string_view ReadPacked(const RandomAccessBytes& bytes, const ZipEntry& entry, std::string& buffer);

private:
    /// Fills entries_ from records_. Raises `FileCorrupt` for a record that is cut, an entry outside of the file, and a
    /// number of records that doesn't fit `count`.
    void ReadRecords(std::uint64_t count, const Limits& limits);

    std::string records_;
    std::string comment_;
    std::string trailer_;
    std::string endRecord_;
    bool hasEnd64_ = false;
    std::vector<ZipEntry> entries_;
    std::uint64_t start_ = 0;
    std::uint64_t shift_ = 0;
    std::uint64_t fileSize_ = 0;
};

}  // namespace tessarine::builtin
