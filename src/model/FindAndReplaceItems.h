#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "model/FindAndReplaceItem.h"
#include "model/KeyedCollection.h"
#include "platform/Failure.h"

namespace tessarine
{

namespace excel
{
class Application;
class Range;
class Workbook;
class Worksheet;
}  // namespace excel

/// Why a list file was not imported although nothing failed.
struct ListRefusal {
    enum class Reason { FileMissing, OtherExtension, ColumnCount, Header };

    Reason reason = Reason::FileMissing;
    std::int32_t columns = 0;  ///< For ColumnCount: how many columns the file uses.
    std::int32_t column = 0;   ///< For Header: the first column, from 1, whose header differs.
    String header{};           ///< For Header: what stands there instead.
};

/// The find/replace pairs of a job, in the order a run tries them. Positions count from 1.
///
/// A failing operation writes one line to the error log and gives its empty result.
class FindAndReplaceItems
{
public:
    /// When true, an import adds to the list instead of starting from an empty one.
    bool KeepExistingItems = false;

    /// When true, ImportList and ExportsList take .xlsx as they take .xls. Off for the windows, whose dialogs and
    /// messages name three kinds of lists.
    bool TakesXlsx = false;

    /// Reads the pairs of a list file (docs/lists.md), a table of 18 columns below a row of headers, by way of Excel
    /// (model/Excel.h). True when the headers were accepted. The items share one project, made for the import.
    ///
    /// False otherwise: a missing file (a message tells), an extension other than xls, tab and csv, or another number
    /// of columns leave the list as it was; headers that differ leave an empty one, or what KeepExistingItems keeps.
    /// Any failure is logged; the rows before it stay, and the result is true when the headers had been accepted. More
    /// than 32,767 rows are an Overflow.
    bool ImportList(const String& vFilepath);

    /// Writes the list to a file, in place of an older one: .xls and .csv by way of Excel, .tab as text, UTF-8 on
    /// Linux. A folder that is missing and any other extension show a message. A failure is logged; the file is then
    /// the old one or one that Excel had saved.
    ///
    /// After a .tab file one failure is logged although the file is complete: the save that follows every export finds
    /// no workbook. Kept, because the desktop has always logged it.
    void ExportsList(const String& vFilepath);

    /// What the last ImportList or ExportsList logged, nothing when the file was read or written: for callers that tell
    /// more than a yes or no.
    std::optional<Failure> FileFailure;

    /// Why the last ImportList gave false; nothing when it gave true or failed.
    std::optional<ListRefusal> ImportRefusal;

    /// Appends a pair and returns it. `OptionSetting` is shared, not copied: two pairs given the same one change
    /// together. `sKey` may be empty. A key already in use adds nothing and gives null.
    std::shared_ptr<FindAndReplaceItem> Add(const String& FindWhat, const String& ReplaceWith,
                                            const std::shared_ptr<tessarine::OptionSetting>& OptionSetting,
                                            const std::shared_ptr<tessarine::Project>& Project,
                                            const String& sKey = {});

    /// The pair at a position, or under a key; null for a bad one.
    std::shared_ptr<FindAndReplaceItem> Item(const IndexKey& vntIndexKey) const;

    std::int32_t Count() const;
    void Remove(const IndexKey& vntIndexKey);  ///< Later pairs close up. A bad position or key changes nothing.

    /// Takes these pairs (shared, not copied) in place of all that are there, in their order and without keys.
    void Assign(const std::vector<std::shared_ptr<FindAndReplaceItem>>& items);

    /// The pairs in list order, for a for-each loop.
    std::vector<std::shared_ptr<FindAndReplaceItem>> NewEnum() const;

private:
    void Import(const String& path, bool& isAccepted);  // after a failure the rows before it stay
    bool AcceptsHeader(excel::Range& cells);            // the first header that differs goes to ImportRefusal
    void AddRow(excel::Range& cells, std::int32_t row, const std::shared_ptr<Project>& owner);
    bool Export(const String& path);  // true when the list was written as text
    void ExportWorkbook(const String& path);
    void ExportText(const String& path) const;

    KeyedCollection<FindAndReplaceItem> items_;
    // What an import or export left: null, or closed, or still open after one that did not end normally.
    std::shared_ptr<excel::Application> application_;
    std::shared_ptr<excel::Workbook> workbook_;
    std::shared_ptr<excel::Worksheet> worksheet_;
};

}  // namespace tessarine
