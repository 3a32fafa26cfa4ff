#pragma once

#include <filesystem>
#include <vector>

#include "support/BinaryDeck.h"
#include "support/Deck.h"

/// A small folder of decks as an office has them, for trying the program out. They mention "Fabrikam" in every place
/// that a job can search; one does not mention it at all.
namespace tessarine::test
{

struct SampleDeck {
    std::filesystem::path path;  ///< In the folder of samples; some lie in a folder below.
    Deck deck;
};

/// One of PowerPoint 97 to 2003.
struct BinarySampleDeck {
    std::filesystem::path path;
    ppt::BinaryDeck deck;
};

/// The same decks at each call.
std::vector<SampleDeck> SampleDecks();
std::vector<BinarySampleDeck> BinarySampleDecks();

/// Writes them, making folders as needed; files of the same names are overwritten. Raises std::runtime_error or
/// std::filesystem::filesystem_error.
void WriteSampleDecks(const std::filesystem::path& folder);

}  // namespace tessarine::test
