#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace tessarine::test
{

/// One record of a project file, read and written after docs/formats/tsq.md alone. Texts are the bytes of the file.
struct StoredRecord {
    std::string name;
    std::variant<bool, std::int32_t, std::string> value;

    bool operator==(const StoredRecord&) const = default;
};

/// The records of the block that a file begins with. Throws std::runtime_error when it does not follow the page.
std::vector<StoredRecord> ReadStoredBag(const std::string& file);

/// A whole block with these records.
std::string StoredBag(const std::vector<StoredRecord>& records);

/// The bytes of one record.
std::string RecordBytes(const StoredRecord& record);

/// A block around bytes that need not be records, with a length and a checksum that fit.
std::string BlockAround(const std::string& records, std::uint32_t count, std::uint32_t version = 1);

/// A block that is given without its checksum, with the checksum appended.
std::string WithChecksum(const std::string& block);

}  // namespace tessarine::test
