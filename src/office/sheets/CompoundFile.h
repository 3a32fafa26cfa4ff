#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

/// Compound files (MS-CFB), the container of a binary workbook.
namespace tessarine::sheets
{

/// Whether the bytes begin as a compound file does.
bool IsCompoundFile(std::string_view file);

/// A compound file, opened. Borrows its bytes.
class CompoundFile
{
public:
    /// Reads the directory alone. The bytes must outlive this object.
    explicit CompoundFile(std::string_view file);  ///< Raises `ApplicationDefined` for a damaged one.
    ~CompoundFile();
    CompoundFile(const CompoundFile&) = delete;
    CompoundFile& operator=(const CompoundFile&) = delete;

    /// Whether the root has an entry of this name, whatever its case (ASCII).
    bool Has(std::string_view name) const { return IndexOf(name) >= 0; }

    /// The bytes of a stream in the root. Raises `ApplicationDefined` when there is no such stream or it can't be read.
    std::string Stream(std::string_view name) const;

private:
    struct Directory;  // of the library that reads it

    /// -1 when the root has no such entry.
    int IndexOf(std::string_view name) const;

    std::size_t size_;  // of the file, in bytes
    std::unique_ptr<Directory> directory_;
};

/// The bytes of a compound file with one stream. Raises `ApplicationDefined` when it can't be made.
std::string CompoundFileOf(const char* name, std::string_view stream);

}  // namespace tessarine::sheets
