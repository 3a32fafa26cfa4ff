#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "platform/String.h"

/// What is measured: the built-in engine, driven as the programs drive it.
namespace tessarine::bench
{

using Paths = std::vector<std::filesystem::path>;

struct Pair {
    String find;
    String replace;
};

/// What a run says about itself, so that a fast run that does nothing is noticed.
struct Outcome {
    std::int64_t files = 0;
    std::int64_t failed = 0;
    std::int64_t occurrences = 0;
};

/// Opens and closes every deck.
Outcome OpenAndClose(const Paths& decks);

/// One run over the decks, every occurrence counted, in the places that are on unless others are asked for: slides,
/// shapes and notes.
Outcome Find(const Paths& decks, const std::vector<Pair>& pairs);
Outcome Replace(const Paths& decks, const std::vector<Pair>& pairs);

/// One call of the batch program, a find with these options over the decks.
Outcome CallBatchProgram(const std::vector<std::string>& options, const Paths& decks);

/// The pair that every third slide holds, and pairs of other words that no deck holds.
Pair SoughtPair();
std::vector<Pair> PairsThatDoNotOccur(int count);

}  // namespace tessarine::bench
