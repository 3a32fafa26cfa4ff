#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace tessarine::bench
{

/// A folder of equal-sized presentations. The same name always stands for the same bytes.
struct DeckSet {
    enum class Form { Package, Binary };

    std::string_view name;
    int decks = 0;
    int slides = 0;              ///< Of each deck.
    std::size_t mediaBytes = 0;  ///< Of each deck: one video that does not compress, stored.
    Form form = Form::Package;
};

/// An ordinary folder; big decks; a very long one, for costs that grow faster than the slides; decks where nearly
/// every byte is media; and the two decks of a short call.
inline constexpr DeckSet Small{"200 x 10", 200, 10, 0};
inline constexpr DeckSet Middle{"60 x 60", 60, 60, 0};
inline constexpr DeckSet Large{"4 x 1000", 4, 1000, 0};
inline constexpr DeckSet Media{"10 x 20 + 50 MB", 10, 20, 50'000'000};
inline constexpr DeckSet Two{"2 x 10", 2, 10, 0};
/// The same as the first three, as PowerPoint 2003 would hold them.
inline constexpr DeckSet BinarySmall{"200 x 10 binary", 200, 10, 0, DeckSet::Form::Binary};
inline constexpr DeckSet BinaryMiddle{"60 x 60 binary", 60, 60, 0, DeckSet::Form::Binary};
inline constexpr DeckSet BinaryLarge{"4 x 1000 binary", 4, 1000, 0, DeckSet::Form::Binary};

/// The files of a set, made on first use below `folder` and kept there.
std::vector<std::filesystem::path> MakeDecks(const DeckSet& set, const std::filesystem::path& folder);

/// True for an entry that holds a slide or a notes page, and for one of those that holds a hit.
bool IsSlideOrNotes(std::string_view entryName);
bool HoldsHit(std::string_view entryName);

}  // namespace tessarine::bench
