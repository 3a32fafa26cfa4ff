#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Property sets [MS-OLEPS] of a binary deck under construction. A value is its type with its bytes.
namespace tessarine::test::ppt
{

std::string TextValue(const std::string& bytes);  ///< VT_LPSTR in the section's code page, which the caller writes.
std::string WideValue(std::u16string_view text);  ///< VT_LPWSTR
std::string ShortValue(int value);                ///< VT_I2
std::string NumberValue(int value);               ///< VT_I4
std::string RealValue(double value);              ///< VT_R8
std::string TruthValue(bool value);               ///< VT_BOOL
std::string TimeValue(std::uint64_t steps);       ///< VT_FILETIME, 100-nanosecond steps since 1601 or of a duration.
std::string BlobValue(const std::string& bytes);  ///< VT_BLOB
std::string TextsValue(const std::vector<std::string>& texts);  ///< VT_VECTOR of VT_LPSTR

/// What the custom property "_PID_HLINKS" holds: address and location of each link of the document, in the order of
/// their records.
std::string LinksValue(const std::vector<std::pair<std::u16string, std::u16string>>& links);

/// One section of a stream.
class PropertySection
{
public:
    PropertySection& CodePage(int codePage);  ///< Property 1; 0 leaves it out. 1252 by default.
    PropertySection& Put(std::uint32_t id, std::string value);

    /// A property of a name, in the code page's bytes (UTF-16 for 1200); ids count up from 2.
    PropertySection& Named(const std::string& name, std::string value);

    bool IsEmpty() const { return values_.empty(); }
    std::string Bytes() const;

private:
    std::string Dictionary() const;

    int codePage_ = 1252;
    std::vector<std::pair<std::uint32_t, std::string>> values_;
    std::vector<std::pair<std::uint32_t, std::string>> names_;
    std::uint32_t nextNamed_ = 2;
};

/// Which section a section is.
enum class SectionKind { Summary, DocumentSummary, UserDefined };

std::string PropertySetStream(const std::vector<std::pair<SectionKind, PropertySection>>& sections);

}  // namespace tessarine::test::ppt
