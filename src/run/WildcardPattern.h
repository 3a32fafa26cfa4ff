#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/String.h"

namespace tessarine
{

/// The failure of a pattern that is not valid, under the number that Visual Basic gives it.
inline constexpr std::int32_t InvalidPatternString = 93;

/// A wildcard pattern. Case counts. A character is a UTF-16 unit.
///
///   *       any run of characters, also an empty one
///   ?       one character
///   #       one digit, 0 to 9
///   [...]   one character of the set: characters and ranges such as A-Z; "-" at its begin or end is a hyphen
///   [!...]  one character that is not in the set
///   []      nothing at all
///   [!]     an exclamation mark
///
/// Everything else stands for itself.
class WildcardPattern
{
public:
    /// Raises `InvalidPatternString` for a set that is not closed or a range that runs backwards.
    explicit WildcardPattern(StringView pattern);

    /// True when the pattern covers the whole subject. Takes at most the product of both lengths in steps.
    bool Matches(StringView subject) const;

private:
    struct Range {
        char16_t first;  // both ends are in the range
        char16_t last;
    };

    /// One character of the subject, or any run of them.
    struct Element {
        bool isAnyRun = false;
        bool isNegated = false;
        std::vector<Range> ranges{};

        bool Takes(char16_t unit) const;
    };

    static Element SetOf(StringView content);  // of what stands between the brackets

    std::vector<Element> elements_;
};

}  // namespace tessarine
