#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/String.h"

namespace tessarine
{

/// The failure of a pattern that says nothing, under the number that it has in Visual Basic.
inline constexpr std::int32_t InvalidPatternString = 93;

/// A wildcard pattern: `*` any run of characters, `?` one character, `#` one digit 0 to 9, `[...]` one character of a
/// set, `[!...]` one that is not in it; everything else stands for itself. A set holds characters and ranges ("A-Z");
/// "-" at its begin or end is a hyphen, "[]" stands for nothing and "[!]" for an exclamation mark. Case counts. A
/// character is a UTF-16 unit.
class WildcardPattern
{
public:
    /// Raises `InvalidPatternString` for a set that is not closed or a range that runs backwards.
    explicit WildcardPattern(StringView pattern);

    /// True when the pattern covers the whole subject. Takes at most the product of both lengths in steps.
    bool Matches(StringView subject) const;

private:
    struct Range {
        char16_t first;
        char16_t last;
    };

    /// One character of the subject, or any run of them.
    struct Element {
        bool isAnyRun = false;
        bool isNegated = false;
        std::vector<Range> ranges{};

        bool Takes(char16_t unit) const;
    };

    static Element SetOf(StringView content);

    std::vector<Element> elements_;
};

}  // namespace tessarine
