#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "Cases.h"

namespace tessarine::bench
{

/// Seconds of one pass over a set of decks. The lowest of several passes: noise only ever adds.
struct Timing {
    double cpu = 0;
    double wall = 0;
};

struct Result {
    std::string name;
    DeckSet set;
    Timing work;
    std::vector<std::string> floorNames;
    std::vector<Timing> floors;
    std::size_t slideBytes = 0;  ///< Slide and notes XML of the set.
    std::int64_t peakKibibytes = 0;
};

/// The results as a Markdown table under a line that says when and on what they were measured.
std::string TableOf(const std::vector<Result>& results);

/// Puts a table into a Markdown file, between its two lines "<!-- measured -->" and "<!-- end of measured -->". Raises
/// std::runtime_error when they are missing.
void WriteIntoDocument(const std::string& table, const std::filesystem::path& document);

}  // namespace tessarine::bench
