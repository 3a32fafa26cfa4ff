#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "model/ProjectKeys.h"
#include "platform/String.h"

/// The columns of a list file (docs/lists.md), in their order: two texts, then the switches of an item. PromptOnReplace
/// and SearchMethod have none. Columns count from 1.
namespace tessarine
{

inline constexpr std::int32_t FindWhatColumn = 1;     ///< Text to look for.
inline constexpr std::int32_t ReplaceWithColumn = 2;  ///< Text to put in its place.
inline constexpr std::int32_t FirstSwitchColumn = 3;  ///< The switches begin here.

/// The switches in the order of the project file's keys, of which the last has no column.
inline constexpr std::size_t ListSwitchCount = OptionKeys.size() - 1;
static_assert(OptionKeys.back().field == &OptionSetting::PromptOnReplace);

inline constexpr std::int32_t ListColumnCount = FirstSwitchColumn - 1 + static_cast<std::int32_t>(ListSwitchCount);
static_assert(ListColumnCount == 18,
              "lists of older versions have 18 columns and are refused for any other number: settle how they are read");

/// What stands above each column.
inline constexpr std::array<const char16_t*, ListColumnCount> ListHeaders = [] {
    std::array<const char16_t*, ListColumnCount> headers{u"Find What", u"Replace With"};
    for (std::size_t n = 0; n < ListSwitchCount; ++n)
        headers[n + FirstSwitchColumn - 1] = OptionKeys[n].name;
    return headers;
}();

}  // namespace tessarine
