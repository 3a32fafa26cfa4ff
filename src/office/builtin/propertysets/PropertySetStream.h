#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tessarine::builtin
{

/// Names a kind of property set, as its 16 bytes stand in the file.
using FormatId = std::array<unsigned char, 16>;

/// {F29F85E0-4FF9-1068-AB91-08002B27B3D9}
inline constexpr FormatId summaryFormat{0xE0, 0x85, 0x9F, 0xF2, 0xF9, 0x4F, 0x68, 0x10,
                                        0xAB, 0x91, 0x08, 0x00, 0x2B, 0x27, 0xB3, 0xD9};
/// {D5CDD502-2E9C-101B-9397-08002B2CF9AE}
inline constexpr FormatId documentSummaryFormat{0x02, 0xD5, 0xCD, 0xD5, 0x9C, 0x2E, 0x1B, 0x10,
                                                0x93, 0x97, 0x08, 0x00, 0x2B, 0x2C, 0xF9, 0xAE};
/// {D5CDD505-2E9C-101B-9397-08002B2CF9AE}
inline constexpr FormatId userDefinedFormat{0x05, 0xD5, 0xCD, 0xD5, 0x9C, 0x2E, 0x1B, 0x10,
                                            0x93, 0x97, 0x08, 0x00, 0x2B, 0x2C, 0xF9, 0xAE};

/// A stream of property sets ([MS-OLEPS] 2.21): where the values lie, and the stream with some of them changed. A value
/// is handed out and taken as its bytes; what they mean is TypedValue's matter.
///
/// Edits are splices: all bytes of other values, of gaps, of sections that nobody knows and after the last section
/// stay, and the offsets in the tables follow. The bytes of a replaced value are gone.
class PropertySetStream
{
public:
    struct Property {
        std::uint32_t id = 0;
        /// Where its value is in the stream: up to the next value, and to the end of the section for the last one.
        std::size_t begin = 0;
        std::size_t end = 0;
        /// Whether another entry of the table claims the same bytes, so that it can't be replaced.
        bool isShared = false;
    };

    /// One property set, as the stream was read.
    struct Section {
        FormatId format{};
        std::size_t begin = 0;
        std::size_t end = 0;
        std::size_t entries = 0;           // of its table
        std::uint16_t codePage = 1252;     // of its texts; 1200 is UTF-16
        std::vector<Property> properties;  // in the table's order; of those with the same id, and of those with the
                                           // same bytes, the first one alone
        std::map<std::uint32_t, std::size_t> byId;  // positions in properties

        std::size_t TableEnd() const { return begin + 8 + 8 * entries; }
    };

    /// Takes the bytes apart. Raises `FileCorrupt` for what isn't a stream of property sets; `name` is the stream's,
    /// for the failure's text.
    PropertySetStream(std::string bytes, std::string_view name);

    /// The first section of a format; null when there is none. It lives as long as the stream.
    const Section* Find(const FormatId& format) const;

    /// The bytes of a value, as it was put or read, with what padding follows them: the type, 16 bits of padding, the
    /// value. Nothing for a property that isn't there.
    std::optional<std::string_view> Value(const Section& section, std::uint32_t id) const;

    /// Replaces a value, or adds one to the end of the section. `replaced` tells how many of the old bytes belong to
    /// the old value; up to three bytes of padding go with them. Raises `Unspecified` where another property has the
    /// same bytes.
    void Put(const Section& section, std::uint32_t id, std::string value, std::size_t replaced);

    bool IsEdited() const { return !edits_.empty(); }

    /// The stream with all edits. Raises `FileCorrupt` when it would not read as it was edited.
    std::string Bytes() const;

private:
    struct Edit {
        std::string value;
        std::size_t replaced = 0;  // bytes of the value that the stream was read with
    };

    void ReadSections();
    void ReadTable(Section& section);
    static const Property* FindProperty(const Section& section, std::uint32_t id);
    void CheckReadAgain(const PropertySetStream& again) const;
    std::string NewSection(const Section& section) const;

    std::string bytes_;  // as they were read
    std::string name_;
    std::vector<Section> sections_;                                // in the order of the stream's header
    std::map<std::pair<std::size_t, std::uint32_t>, Edit> edits_;  // by the beginning of the section and the id
};

}  // namespace tessarine::builtin
