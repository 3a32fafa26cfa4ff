#pragma once

#include <cstdint>
#include <memory>

#include "engine/SearchFunctions.h"
#include "platform/CheckedInteger.h"
#include "platform/Failure.h"

namespace tessarine
{

/// The two walks of SearchFunction over a text range. Both start again from the first character of the last hit, not
/// from behind it, and give the number of hits. `Count` is the type in which they count: failure 6 when it is full.
template <class Count>
Count FindInTextRange(SearchFunctions& engine, powerpoint::TextRange& textRange)
{
    Count count = 0;
    std::int32_t After = 0;
    while (true) {
        const FindAndReplaceItem& item = *NotNull(engine.mItem);
        const auto hit = textRange.Find(item.FindWhat, After, engine.MatchCaseFlag, engine.WholeWordsFlag);
        if (!hit)
            return count;
        count = CheckedSum(count, 1);
        After = hit->Start();
        if (!engine.IsRequiredCount)
            return count;
        engine.Yield();
    }
}

template <class Count>
Count ReplaceInTextRange(SearchFunctions& engine, powerpoint::TextRange& textRange)
{
    Count count = 0;
    std::int32_t After = 0;
    while (true) {
        const FindAndReplaceItem& item = *NotNull(engine.mItem);
        const auto hit =
            textRange.Replace(item.FindWhat, item.ReplaceWith, After, engine.MatchCaseFlag, engine.WholeWordsFlag);
        if (!hit)
            return count;
        // No guard for a replacement that holds the find text behind its start: it is found again until the count is
        // full. This is intended.
        count = CheckedSum(count, 1);
        After = hit->Start();
        engine.Yield();
        if (hit->Start() == 0)
            return count;
    }
}

}  // namespace tessarine
