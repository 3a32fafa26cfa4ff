#include "Cases.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "BinaryFloors.h"
#include "Floors.h"

namespace tessarine::bench
{

namespace
{

template <class Work>
Floor ForEachDeck(const std::string& name, Work&& work)
{
    return {name, [work](const Paths& decks) { std::for_each(decks.begin(), decks.end(), work); }};
}

const Floor OpenFloor = ForEachDeck("inflate what names the slides", [](const auto& deck) { InflateNames(deck); });
const Floor FindFloor = ForEachDeck("inflate slides and notes", [](const auto& deck) { InflateSlidesAndNotes(deck); });
const Floor ReplaceFloor =
    ForEachDeck("inflate, deflate hits, copy, flush", [](const auto& deck) { DeflateHitsAgain(deck, true); });
const Floor ReplaceFloorUnflushed =
    ForEachDeck("the same without the flush", [](const auto& deck) { DeflateHitsAgain(deck, false); });

const Floor BinaryFindFloor =
    ForEachDeck("read the document, step over its records", [](const auto& deck) { WalkRecords(deck); });
const Floor BinaryReplaceFloor =
    ForEachDeck("the same, write the file, flush", [](const auto& deck) { WriteRecordsAgain(deck, true); });
const Floor BinaryReplaceFloorUnflushed =
    ForEachDeck("the same without the flush", [](const auto& deck) { WriteRecordsAgain(deck, false); });

bool IsBinary(const DeckSet& set)
{
    return set.form == DeckSet::Form::Binary;
}

std::vector<Floor> FindFloors(const DeckSet& set)
{
    return {IsBinary(set) ? BinaryFindFloor : FindFloor};
}

std::vector<Floor> ReplaceFloors(const DeckSet& set)
{
    if (IsBinary(set))
        return {BinaryReplaceFloor, BinaryReplaceFloorUnflushed};
    return {ReplaceFloor, ReplaceFloorUnflushed};
}

Case FindWithHits(const std::string& name, const DeckSet& set)
{
    const auto work = [](const Paths& decks) { return Find(decks, {SoughtPair()}); };
    return {name, set, work, Case::Hits::Some, false, FindFloors(set)};
}

Case FindWithoutHits(const std::string& name, const DeckSet& set, int pairs)
{
    const auto work = [pairs](const Paths& decks) { return Find(decks, PairsThatDoNotOccur(pairs)); };
    return {name, set, work, Case::Hits::None, false, FindFloors(set)};
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
    return {name, set, work, Case::Hits::Some, true, ReplaceFloors(set)};
}

Case ReplaceWithoutHits(const DeckSet& set)
{
    const auto work = [](const Paths& decks) { return Replace(decks, PairsThatDoNotOccur(1)); };
    return {"ReplaceWithoutHits", set, work, Case::Hits::None, true, {FindFloor}};
}

/// Calls of the batch program that show hits, beside the same without.
Case ShowHits(const std::string& name, const DeckSet& set, const std::vector<std::string>& find,
              std::vector<std::string> show = {"--show"})
{
    const auto work = [](const std::vector<std::string>& options) {
        return [options](const Paths& decks) { return CallBatchProgram(options, decks); };
    };
    show.insert(show.begin(), find.begin(), find.end());
    return {name, set, work(show), Case::Hits::Some, false, {{"the same, hits not shown", work(find)}}};
}

}  // namespace

std::vector<Case> AllCases()
{
    std::vector<Case> cases;
    for (const DeckSet& set : {Small, Middle, Large})
        cases.push_back({"OpenOnly", set, OpenAndClose, Case::Hits::None, false, {OpenFloor}});
    for (const DeckSet& set : {Small, Middle, Large, BinarySmall, BinaryMiddle, BinaryLarge})
        cases.push_back(FindWithoutHits("FindWithoutHits", set, 1));
    for (const DeckSet& set : {Small, Middle, Large, BinarySmall, BinaryMiddle, BinaryLarge})
        cases.push_back(FindWithHits("FindWithHits", set));
    for (const DeckSet& set : {Small, Middle, Large, BinarySmall, BinaryMiddle, BinaryLarge})
        cases.push_back(ReplaceAndSave("ReplaceAndSave", set));
    cases.push_back(ReplaceWithoutHits(Small));
    cases.push_back(FindWithoutHits("PairsThatDoNotOccur/1", Middle, 1));
    cases.push_back(FindWithoutHits("PairsThatDoNotOccur/500", Middle, 500));
    cases.push_back(FindWithHits("MediaDeck/Find", Media));
    cases.push_back(ReplaceAndSave("MediaDeck/ReplaceAndSave", Media));
    const std::vector<std::string> usual{"--find", "Fabrikam"};
    const std::vector<std::string> letter{"--find", "e"};
    for (const DeckSet& set : {Small, Middle, Large})
        cases.push_back(ShowHits("ShowHits", set, usual));
    cases.push_back(ShowHits("ShowHits/json", Middle, {"--find", "Fabrikam", "--format", "json"}));
    cases.push_back(ShowHits("ShowHits/of a letter", Middle, letter));
    cases.push_back(ShowHits("ShowHits/of a letter, all", Middle, letter, {"--show", "--max-hits", "0"}));
    const auto callForTwo = [usual](const Paths& decks) { return CallBatchProgram(usual, decks); };
    cases.push_back({"BatchOfTwoSmallDecks", Two, callForTwo, Case::Hits::Some, false, {}});
    return cases;
}

}  // namespace tessarine::bench
