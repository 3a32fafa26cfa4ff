#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "engine/CounterStatus.h"
#include "model/KeyedCollection.h"
#include "platform/String.h"

namespace tessarine
{

/// The result of one file: one CounterStatus per pair, in the order of the pairs. Positions count from 1.
///
/// A failing operation writes one line to the error log and gives its empty result.
class CounterStatuses
{
public:
    String mError;  ///< Why the file could not be processed; empty unless FileStausAfterProcess is 0.
    std::int32_t FileStausAfterProcess = FileStatus::NotProcessed;
    /// Whether the file has other content than before: occurrences may be counted where nothing can be changed, as in
    /// properties that can only be read, and footers change without a count. Nothing in a run that only finds, and
    /// where the presentation program can't tell.
    std::optional<bool> HasNewContent;
    String FileName;  ///< Full path. Set by the run.

    /// Appends a result and returns it. `FileStausAfterProcess` is written after the counts, so that it has the last
    /// word over a status that a count has raised. An empty `sKey` stands for none; a key already in use adds nothing
    /// and gives null.
    std::shared_ptr<CounterStatus> Add(const CounterStatus::LocationCounts& counts, std::int32_t FileStausAfterProcess,
                                       const String& FindWhat, const String& ReplaceWith, const String& sKey);

    /// The same with the counts one by one. A location that has no parameter here counts as not searched.
    std::shared_ptr<CounterStatus> Add(std::int32_t Slides_Replaced, std::int32_t HyperlinkAddresses_eplaced,
                                       std::int32_t ShapesAndTextboxes_Replaced, std::int32_t Header_Replaced,
                                       std::int32_t Footer_Replaced, std::int32_t BuiltinProperies_Replaced,
                                       std::int32_t CustomProperties_Replaced, std::int32_t Notes_Replaced,
                                       std::int32_t Links_Replaced, std::int32_t SlideMasterPerSlide_Replaced,
                                       std::int32_t SlideMasterPerPresentation_Replaced,
                                       std::int32_t TitleMaster_Replaced, std::int32_t HandoutMaster_Replaced,
                                       std::int32_t NotesMaster_Replaced, std::int32_t FileStausAfterProcess,
                                       const String& FindWhat, const String& ReplaceWith, const String& sKey);

    /// The result at a position, or under a key; null for a bad one.
    std::shared_ptr<CounterStatus> Item(const IndexKey& vntIndexKey) const;

    std::int32_t Count() const;
    void Remove(const IndexKey& vntIndexKey);  ///< Later results close up. A bad position or key changes nothing.

    /// The results in order, for a for-each loop.
    std::vector<std::shared_ptr<CounterStatus>> NewEnum() const;

private:
    KeyedCollection<CounterStatus> items_;
};

}  // namespace tessarine
