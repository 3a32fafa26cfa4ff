#include "Cases.h"

#include <memory>
#include <utility>

#include "Floors.h"

namespace tessarine::bench
{

namespace
{

const Floor OpenFloor{"inflate what names the slides", [](const auto& deck) { InflateNames(deck); }};
const Floor FindFloor{"inflate slides and notes", [](const auto& deck) { InflateSlidesAndNotes(deck); }};
const Floor ReplaceFloor{"inflate, deflate hits, copy, flush", [](const auto& deck) { DeflateHitsAgain(deck, true); }};
const Floor ReplaceFloorUnflushed{"the same without the flush",
                                  [](const auto& deck) { DeflateHitsAgain(deck, false); }};

Case FindWithHits(const std::string& name, const DeckSet& set)
{
    const auto work = [](const Paths& decks) { return Find(decks, {SoughtPair()}); };
    return {name, set, work, Case::Hits::Some, false, {FindFloor}};
}

Case FindWithoutHits(const std::string& name, const DeckSet& set, int pairs)
{
    const auto work = [pairs](const Paths& decks) { return Find(decks, PairsThatDoNotOccur(pairs)); };
    return {name, set, work, Case::Hits::None, false, {FindFloor}};
}

Case ReplaceAndSave(const std::string& name, const DeckSet& set)
{
    // There and back in turn, so that every run finds as many hits as the one before.
    const auto isThere = std::make_shared<bool>(false);
    const auto work = [isThere](const Paths& decks) {
        Pair pair = SoughtPair();
        if (std::exchange(*isThere, !*isThere))
            std::swap(pair.find, pair.replace);
        return Replace(decks, {pair});
    };
    return {name, set, work, Case::Hits::Some, true, {ReplaceFloor, ReplaceFloorUnflushed}};
}

Case ReplaceWithoutHits(const DeckSet& set)
{
    const auto work = [](const Paths& decks) { return Replace(decks, PairsThatDoNotOccur(1)); };
    return {"ReplaceWithoutHits", set, work, Case::Hits::None, true, {FindFloor}};
}

}  // namespace

std::vector<Case> AllCases()
{
    std::vector<Case> cases;
    for (const DeckSet& set : {Small, Middle, Large})
        cases.push_back({"OpenOnly", set, OpenAndClose, Case::Hits::None, false, {OpenFloor}});
    for (const DeckSet& set : {Small, Middle, Large})
        cases.push_back(FindWithoutHits("FindWithoutHits", set, 1));
    for (const DeckSet& set : {Small, Middle, Large})
        cases.push_back(FindWithHits("FindWithHits", set));
    for (const DeckSet& set : {Small, Middle, Large})
        cases.push_back(ReplaceAndSave("ReplaceAndSave", set));
    cases.push_back(ReplaceWithoutHits(Small));
    cases.push_back(FindWithoutHits("PairsThatDoNotOccur/1", Middle, 1));
    cases.push_back(FindWithoutHits("PairsThatDoNotOccur/500", Middle, 500));
    cases.push_back(FindWithHits("MediaDeck/Find", Media));
    cases.push_back(ReplaceAndSave("MediaDeck/ReplaceAndSave", Media));
    cases.push_back({"BatchOfTwoSmallDecks", Two, CallBatchProgram, Case::Hits::None, false, {}});
    return cases;
}

}  // namespace tessarine::bench
