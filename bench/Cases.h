#pragma once

#include <functional>
#include <string>
#include <vector>

#include "Decks.h"
#include "Subject.h"

namespace tessarine::bench
{

/// What a case is measured beside: the least work for the same outcome, or the same without what the case is about.
struct Floor {
    std::string name;
    std::function<void(const Paths&)> work;
};

/// One thing that a user waits for, with one set of decks.
struct Case {
    enum class Hits { None, Some };

    std::string name;
    DeckSet set;
    std::function<Outcome(const Paths&)> work;
    Hits hits = Hits::None;     ///< What the outcome must hold, or the measurement is refused.
    bool changesDecks = false;  ///< Works on a copy of the decks, and each floor on another.
    std::vector<Floor> floors;
};

std::vector<Case> AllCases();

}  // namespace tessarine::bench
