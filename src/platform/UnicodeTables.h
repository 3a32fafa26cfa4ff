#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

/// What the Unicode Character Database says of case and categories, as tables that the build makes from it
/// (tools/unicode).
namespace tessarine
{

constexpr std::size_t unicodeBlockSize = 64;

/// Neighbours beyond U+FFFF, all mapped to a character at one distance.
struct CodePointShift {
    char32_t first;
    char32_t last;  ///< Of the range; belongs to it.
    std::int32_t by;
};

/// A mapping of characters one to one that keeps their length in UTF-16. A character that the tables don't name, half a
/// surrogate pair among them, stays as it is.
class CaseMapping
{
public:
    constexpr CaseMapping(const std::uint8_t* blocks, const char16_t (*shifts)[unicodeBlockSize],
                          std::span<const CodePointShift> pairs)
        : blocks_(blocks), shifts_(shifts), pairs_(pairs)
    {
    }

    /// A single UTF-16 unit.
    char16_t operator()(char16_t unit) const
    {
        return static_cast<char16_t>(unit + shifts_[blocks_[unit / unicodeBlockSize]][unit % unicodeBlockSize]);
    }

    /// A character beyond U+FFFF.
    char32_t OfPair(char32_t codePoint) const;

private:
    const std::uint8_t* blocks_;                  // the number of each block of units in shifts_
    const char16_t (*shifts_)[unicodeBlockSize];  // the distance to what a unit is mapped to
    std::span<const CodePointShift> pairs_;       // from low to high
};

struct CodePointRange {
    char32_t first;
    char32_t last;  ///< Belongs to the range.
};

extern const CaseMapping simpleFolding;
extern const CaseMapping simpleUpperCase;

/// Letters, combining marks and decimal digits, from low to high.
extern const std::span<const CodePointRange> wordCharacters;

}  // namespace tessarine
