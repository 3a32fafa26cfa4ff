#include "ui/run/ResultReport.h"

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

void AddItem(ResultModel& results, Position file, const CounterStatus& status, bool isReqCount, ResultCounters counters)
{
    const Position item = results.AddItem(file, status.FindWhat);
    for (const SearchLocation& row : SearchLocations) {
        const std::int32_t count = status.Count(row.location);
        // Not searched, so there is nothing to tell of the place.
        if (count == -1)
            continue;
        results.AddLocation(file, item, LocationText(row.location, count, isReqCount));
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
               const std::vector<String>& warnings)
{
    // A status that has no tree shows nothing.
    if (tree == nullptr)
        return;
    ResultModel& results = tree->Results();
    const Showing showing(*tree);
    const Position file = FileOf(results, status, counters);
    if (status.FileStausAfterProcess == FileStatus::Counted && status.HasNewContent == false)
        results.AddItem(file, GetLngString(languageSection, u"trvChangedFiles.CountedOnly"));
    // Before the counts, whose total may no longer fit.
    for (const String& warning : warnings)
        results.AddItem(file, WarningText(warning));
    if (status.FileStausAfterProcess == FileStatus::Counted)
        for (const auto& item : status.NewEnum())
            AddItem(results, file, *NotNull(item), isReqCount, counters);
    if (status.FileStausAfterProcess == FileStatus::NotProcessed)
        results.AddItem(file, status.mError);
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
