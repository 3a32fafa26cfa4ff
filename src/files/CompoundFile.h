#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Compound files (MS-CFB): the container of binary workbooks, binary presentations and encrypted packages. Linux reads
/// and writes them with libgsf, Windows with its own structured storage.
namespace tessarine
{

/// Whether a file that begins with these bytes says that it is a compound file.
bool IsCompoundFile(std::string_view head);

/// A compound file, opened. Borrows its bytes.
class CompoundFile
{
public:
    /// Reads the directory alone. One that can't be read has no entries. The bytes must outlive this object.
    explicit CompoundFile(std::string_view file);
    ~CompoundFile();
    CompoundFile(const CompoundFile&) = delete;
    CompoundFile& operator=(const CompoundFile&) = delete;

    /// Whether the root has no entries, as that of a damaged file.
    bool IsEmpty() const { return names_.empty(); }

    /// Whether the root has an entry of this name, whatever its case (ASCII).
    bool Has(std::string_view name) const { return EntryOf(name) < names_.size(); }

    /// The bytes of a stream in the root. Nothing when there is no such stream or it can't be read to its end.
    std::optional<std::string> Stream(std::string_view name) const;

private:
    struct Directory;  // of the library that reads it

    /// The number of an entry in names_, their count when there is none of the name.
    std::size_t EntryOf(std::string_view name) const;

    std::size_t size_;                // of the file, in bytes
    std::vector<std::string> names_;  // of the root's entries, in UTF-8
    std::unique_ptr<Directory> directory_;
};

/// The bytes of a compound file with one stream. Nothing when it would be too large.
std::optional<std::string> CompoundFileOf(std::string_view name, std::string_view stream);

}  // namespace tessarine
