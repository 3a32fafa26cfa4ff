#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "platform/String.h"

namespace tessarine
{

/// Texts under numbers, each kept once: a run shows the same find texts and counts in thousands of files.
class SharedTexts
{
public:
    using Number = std::uint32_t;

    /// The number of a text, a new one when it was not there.
    Number Add(const String& text);

    Number Count() const { return static_cast<Number>(texts_.size()); }  ///< Numbers go up to here, from 0.

    /// The text under a number that Add gave. It stays where it is for as long as this object lives.
    const String& operator[](Number number) const { return *texts_[number]; }

private:
    std::unordered_map<String, Number> numbers_;  // each text once, with its place in texts_
    std::vector<const String*> texts_;            // the keys of numbers_
};

/// Lists of texts under numbers. Lists that begin alike share their beginning, and equal ones are one: in a long run
/// nearly all files have the same row for each location.
class SharedLists
{
public:
    using Number = std::uint32_t;
    static constexpr Number Empty = 0;  ///< The list without a text.

    /// The list that has one more text at its end, a new one when there was none. `list` stays what it is.
    Number Append(Number list, SharedTexts::Number text);

    /// How many texts a list has.
    std::uint32_t Count(Number list) const { return lists_[list].count; }

    /// A text by its position from 0, which must be below the count. The later the text, the faster it is found.
    SharedTexts::Number At(Number list, std::uint32_t position) const;

private:
    struct List {
        Number beginning;  // the list without its last text
        SharedTexts::Number last;
        std::uint32_t count;  // of all its texts
    };

    std::vector<List> lists_{{Empty, 0, 0}};
    std::unordered_map<std::uint64_t, Number> longer_;  // by beginning and last text
};

}  // namespace tessarine
