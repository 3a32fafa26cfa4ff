#include "ui/run/ResultReport.h"

#include <algorithm>
#include <memory>
#include <string>

#include "app/LanguageText.h"
#include "log/Treatments.h"
#include "platform/CheckedInteger.h"
#include "ui/run/ResultTree.h"

namespace tessarine
{

namespace
{

using Position = ResultModel::Position;

// Of the language file; the lines of results are texts of the window that shows them.
const String languageSection = u"frmProcessingDocuments";

/// Shows what was added, also when a failure ends the adding.
class Showing
{
public:
    explicit Showing(ResultTree& tree) : tree_(tree) {}
    ~Showing()
    {
        // A destructor can't pass on a failure.
        Skip([this] { tree_.ShowAdditions(); });
    }
    Showing(const Showing&) = delete;
    Showing& operator=(const Showing&) = delete;

private:
    ResultTree& tree_;
};

Position FileOf(ResultModel& results, const CounterStatuses& status, ResultCounters counters)
{
    // A further result of the same name goes under the same file, which then counts as changed once.
    if (const auto file = results.Nodes().FindFile(status.FileName))
        return *file;
    const Position file = results.AddFile(status.FileName);
    if (status.FileStausAfterProcess == FileStatus::Counted)
        ++counters.mFilesChanged;
    return file;
}

/// The pairs of a result and where each has hits: what was counted, and what was told without a count, as in footers.
class FoundPairs
{
public:
    explicit FoundPairs(const StoredHits* hits) : hits_(hits) {}

    bool HasHits(std::int32_t pair, const CounterStatus& status, Location location) const
    {
        return status.Count(location) > 0 || (hits_ != nullptr && hits_->groups.contains({pair, location}));
    }

    ItemKind KindOf(std::int32_t pair, const CounterStatus& status) const
    {
        const bool hasHits = std::ranges::any_of(
            SearchLocations, [&](const SearchLocation& row) { return HasHits(pair, status, row.location); });
        return hasHits ? ItemKind::PairWithHits : ItemKind::PairWithoutHits;
    }

private:
    const StoredHits* hits_;
};

std::int64_t Occurrences(const std::vector<std::shared_ptr<CounterStatus>>& pairs)
{
    std::int64_t sum = 0;
    for (const auto& pair : pairs) {
        if (!pair)
            continue;  // fails when its turn comes to be shown
        for (const std::int32_t count : pair->Counts())
            sum += std::max(count, 0);
    }
    return sum;
}

void AddPair(ResultModel& results, Position file, std::int32_t pair, const CounterStatus& status, bool isReqCount,
             ResultCounters counters, const FoundPairs& found)
{
    const Position item = results.AddItem(file, status.FindWhat, found.KindOf(pair, status));
    for (const SearchLocation& row : SearchLocations) {
        const std::int32_t count = status.Count(row.location);
        // Not searched, so there is nothing to tell of the place.
        if (count == -1)
            continue;
        results.AddLocation(file, item, LocationText(row.location, count, isReqCount), row.location,
                            found.HasHits(pair, status, row.location));
        // Last, so that a total that no longer fits leaves the count itself to be seen in the tree.
        counters.mTotalChanges = CheckedSum(counters.mTotalChanges, count);
    }
}

String WarningText(const String& warning)
{
    String text = GetLngString(languageSection, u"trvChangedFiles.Warning");
    // A language file may lack the key, and the warning is worth more than its frame.
    const std::size_t place = text.find(u"%s");
    if (place == String::npos)
        return warning;
    return text.replace(place, 2, warning);
}

}  // namespace

void AddResult(ResultTree* tree, const CounterStatuses& status, bool isReqCount, ResultCounters counters,
               const std::vector<String>& warnings, const StoredHits* hits)
{
    // A status that has no tree shows nothing.
    if (tree == nullptr)
        return;
    ResultModel& results = tree->Results();
    const Showing showing(*tree);
    const Position file = FileOf(results, status, counters);
    const bool isCounted = status.FileStausAfterProcess == FileStatus::Counted;
    const auto pairs = isCounted ? status.NewEnum() : std::vector<std::shared_ptr<CounterStatus>>();
    results.AddReport(file, hits != nullptr ? hits->file : ResultNodes::NotStored, Occurrences(pairs));
    if (isCounted && status.HasNewContent == false)
        results.AddItem(file, GetLngString(languageSection, u"trvChangedFiles.CountedOnly"), ItemKind::Line);
    // Before the counts, whose total may no longer fit.
    for (const String& warning : warnings)
        results.AddItem(file, WarningText(warning), ItemKind::Line);
    const FoundPairs found(hits);
    std::int32_t position = 0;
    for (const auto& pair : pairs)
        AddPair(results, file, ++position, *NotNull(pair), isReqCount, counters, found);
    if (status.FileStausAfterProcess == FileStatus::NotProcessed)
        results.AddItem(file, status.mError, ItemKind::Line);
}

String LocationText(Location location, std::int32_t count, bool isReqCount)
{
    const SearchLocation& row = RowOf(location);
    String text = row.inResults;
    if (isReqCount)
        text += FromUtf8(std::to_string(count));
    else
        text += count >= 1 ? row.found : row.notFound;
    return text + u')';
}

}  // namespace tessarine
