#pragma once

#include <cstdint>
#include <memory>

#include "engine/SearchFunctions.h"
#include "engine/TextHits.h"
#include "platform/CheckedInteger.h"
#include "platform/Failure.h"

namespace tessarine
{

/// The two walks of SearchFunction over a text range. Both go on from the first character of the last hit, not from its
/// end, and give the number of hits. `Count` is the type in which they count: Overflow when it is full. `hits` is told
/// of each; null to tell nobody.
template <class Count>
Count FindInTextRange(SearchFunctions& engine, powerpoint::TextRange& textRange, TextHits* hits = nullptr)
{
    Count count = 0;
    std::int32_t After = 0;  // from the first character on
    while (true) {
        // Read anew each time, as the user may change the pair while events are delivered.
        const FindAndReplaceItem& item = *NotNull(engine.mItem);
        const auto hit = textRange.Find(item.FindWhat, After, engine.MatchCaseFlag, engine.WholeWordsFlag);
        if (!hit)
            return count;
        count = CheckedSum(count, 1);
        After = hit->Start();
        if (hits != nullptr)
            hits->Found(textRange, After, static_cast<std::int32_t>(item.FindWhat.size()));
        // One hit stands for all of the text.
        if (!engine.IsRequiredCount)
            return count;
        engine.Yield();
    }
}

template <class Count>
Count ReplaceInTextRange(SearchFunctions& engine, powerpoint::TextRange& textRange, TextHits* hits = nullptr)
{
    Count count = 0;
    std::int32_t After = 0;  // from the first character on
    while (true) {
        const FindAndReplaceItem& item = *NotNull(engine.mItem);
        if (hits != nullptr)
            hits->BeforeReplace(textRange, item.FindWhat, After, engine.MatchCaseFlag, engine.WholeWordsFlag);
        const auto hit =
            textRange.Replace(item.FindWhat, item.ReplaceWith, After, engine.MatchCaseFlag, engine.WholeWordsFlag);
        if (!hit)
            return count;
        // A replacement that holds the find text after its start is found again until the count is full: a guard here
        // would change the counts of jobs that end today. NeverEnds tells such pairs beforehand.
        count = CheckedSum(count, 1);
        After = hit->Start();
        if (hits != nullptr)
            hits->Replaced(textRange, After, item.ReplaceWith);
        engine.Yield();
        // Without a position there is no place to go on from.
        if (hit->Start() == 0)
            return count;
    }
}

}  // namespace tessarine
