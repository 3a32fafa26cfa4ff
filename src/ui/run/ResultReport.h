#pragma once

#include <cstdint>
#include <vector>

#include "engine/CounterStatuses.h"
#include "ui/run/HitStore.h"

namespace tessarine
{

class ResultTree;

/// What the results of a run add up to: the counters of the main window that a result moves.
struct ResultCounters {
    std::int32_t& mFilesChanged;  ///< File nodes added for a file with a count.
    std::int32_t& mTotalChanges;  ///< Sum of all location counts.
};

/// Adds a file's result to a tree, and shows it: the file, unless the tree has it already; the items and locations of a
/// file with a count, and in front of them a line when nothing could be changed in it and one for each of `warnings`;
/// the reason of a file that was not processed. `isReqCount` tells whether a location shows its
/// count, or only whether there was any. `hits` are those of the result, by which the tree's nodes lead to them; null
/// when none are kept.
///
/// `tree` is the one of the result's status (frmProcessingDocuments::TreeOf); null for a status without one, for which
/// nothing is added. `Overflow` when the total no longer fits; what was added until then stays.
void AddResult(ResultTree* tree, const CounterStatuses& status, bool isReqCount, ResultCounters counters,
               const std::vector<String>& warnings = {}, const StoredHits* hits = nullptr);

/// The text of a location: its label, the count or a word, and ")". The labels are the same in every language.
String LocationText(Location location, std::int32_t count, bool isReqCount);

}  // namespace tessarine
