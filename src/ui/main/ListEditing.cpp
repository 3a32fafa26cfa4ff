#include <algorithm>

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QRadioButton>

#include "app/GlobalState.h"
#include "i18n/QtText.h"
#include "log/Treatments.h"
#include "model/ItemText.h"
#include "ui/main/frmMain.h"
#include "ui/main/ItemsGrid.h"
#include "ui/main/PairsOnClipboard.h"

// What makes the list of pairs comfortable to edit: undo and redo, the clipboard, moving rows.

namespace tessarine
{

namespace
{

using PairList = std::vector<std::shared_ptr<FindAndReplaceItem>>;

const std::shared_ptr<FindAndReplaceItems>& ListOfProject()
{
    return NotNull(CurrentProject)->FindAndReplaceList;
}

/// The row numbers of `count` rows from one on.
std::vector<std::int32_t> RowsFrom(std::size_t first, std::size_t count)
{
    std::vector<std::int32_t> rows;
    for (std::size_t n = 0; n < count; ++n)
        rows.push_back(static_cast<std::int32_t>(first + n));
    return rows;
}

std::size_t PositionOf(std::int32_t row)
{
    return static_cast<std::size_t>(row) - 1;
}

}  // namespace

void frmMain::AsOneStep(const std::vector<std::int32_t>& rows, const std::function<void()>& change)
{
    listHistory_.Do(ListOfProject(), rows, change);
}

/// A text that was typed into a row is a step, too.
void frmMain::KeepTypedText(std::int32_t row, int column, const QString& before)
{
    LogAndReturn({u"KeepTypedText", place}, [&] {
        const auto item = NotNull(ListOfProject()->Item(row));
        PairContent content = ContentOf(*item);
        (column == ItemColumn::FindWhat ? content.FindWhat : content.ReplaceWith) = FromQt(before);
        listHistory_.Rewritten(item, std::move(content));
    });
}

void frmMain::MarkListChange()
{
    isModifed_ = true;
    BuildTitle();
}

/// An undone change of the list is none any more; other changes still are.
void frmMain::MarkAsListStands()
{
    isModifed_ = isMarkedBesidesList_ || !listHistory_.IsAsSaved();
    BuildTitle();
}

bool frmMain::CanEditList() const
{
    return optLoad[1]->isChecked();
}

/// Shows the list anew, with rows of it selected and the first of them current.
void frmMain::ShowList(const std::vector<std::int32_t>& rows)
{
    grdItems->Items().SetItems(ListOfProject()->NewEnum());
    grdItems->PutSelectedRows(rows);
    LastHoverRow = 0;
    EnableDisableControl();
}

void frmMain::UndoListStep()
{
    LogAndReturn({u"UndoListStep", place}, [this] {
        grdItems->EndEdit();
        if (const auto rows = listHistory_.Undo(*NotNull(ListOfProject()))) {
            ShowList(*rows);
            MarkAsListStands();
        }
    });
}

void frmMain::RedoListStep()
{
    LogAndReturn({u"RedoListStep", place}, [this] {
        grdItems->EndEdit();
        if (const auto rows = listHistory_.Redo(*NotNull(ListOfProject()))) {
            ShowList(*rows);
            MarkAsListStands();
        }
    });
}

void frmMain::CopyPairs()
{
    LogAndReturn({u"CopyPairs", place}, [this] {
        grdItems->EndEdit();
        PairList pairs;
        for (const std::int32_t row : grdItems->SelectedRows())
            pairs.push_back(NotNull(ListOfProject()->Item(row)));
        if (!pairs.empty())
            QGuiApplication::clipboard()->setMimeData(PairsForClipboard(pairs));
    });
}

void frmMain::CutPairs()
{
    LogAndReturn({u"CutPairs", place}, [this] {
        const std::vector<std::int32_t> rows = grdItems->SelectedRows();
        if (rows.empty() || !CanEditList())
            return;
        CopyPairs();
        PairList kept;
        const PairList pairs = ListOfProject()->NewEnum();
        for (std::size_t n = 0; n < pairs.size(); ++n)
            if (!std::ranges::binary_search(rows, static_cast<std::int32_t>(n) + 1))
                kept.push_back(pairs[n]);
        AsOneStep({}, [&] { ListOfProject()->Assign(kept); });
        const auto next = std::min(PositionOf(rows.front()) + 1, kept.size());
        ShowList(RowsFrom(next, kept.empty() ? 0 : 1));
        MarkListChange();
    });
}

bool frmMain::HasPairsToPaste()
{
    const QMimeData* const clipped = QGuiApplication::clipboard()->mimeData();
    return clipped != nullptr && !PairsFromClipboard(*clipped).empty();
}

/// Nothing that stands in the list is overwritten: an undo of that would be asked for more often than thanked for.
void frmMain::PastePairs()
{
    LogAndReturn({u"PastePairs", place}, [this] {
        const QMimeData* const clipped = QGuiApplication::clipboard()->mimeData();
        if (!CanEditList() || clipped == nullptr)
            return;
        grdItems->EndEdit();
        const std::vector<ClipboardPair> pasted = PairsFromClipboard(*clipped);
        if (pasted.empty())
            return;
        const OptionSetting shown = SettingOfNewPairs();
        PairList added;
        for (const ClipboardPair& pair : pasted) {
            const auto item = std::make_shared<FindAndReplaceItem>();
            item->FindWhat = pair.FindWhat;
            item->ReplaceWith = pair.ReplaceWith;
            item->Project = CurrentProject;
            *item->OptionSetting = pair.setting.value_or(shown);
            added.push_back(item);
        }
        PairList pairs = ListOfProject()->NewEnum();
        const std::vector<std::int32_t> selected = grdItems->SelectedRows();
        const std::size_t position = selected.empty() ? pairs.size() : PositionOf(selected.back()) + 1;
        pairs.insert(pairs.begin() + static_cast<std::ptrdiff_t>(position), added.begin(), added.end());
        AsOneStep({}, [&] { ListOfProject()->Assign(pairs); });
        ShowList(RowsFrom(position + 1, added.size()));
        MarkListChange();
    });
}

/// As Add gives them: what the screen shows, and "Slides" where it shows no location or there is no row.
OptionSetting frmMain::SettingOfNewPairs()
{
    OptionSetting setting;
    if (grdItems->Row() >= 1)
        setting = *NotNull(GetItemFromForm())->OptionSetting;
    if (CreateLocationString(FindAndReplaceItem{std::make_shared<OptionSetting>(setting), {}, {}, {}}).empty())
        setting.InSlides = true;
    return setting;
}

void frmMain::MovePairsUp()
{
    LogAndReturn({u"MovePairsUp", place}, [this] { MovePairs(true); });
}

void frmMain::MovePairsDown()
{
    LogAndReturn({u"MovePairsDown", place}, [this] { MovePairs(false); });
}

/// By one row; rows that stand at the end already stay, and those that come against them close up.
void frmMain::MovePairs(bool isUp)
{
    if (!CanEditList())
        return;
    grdItems->EndEdit();
    PairList pairs = ListOfProject()->NewEnum();
    std::vector<std::int32_t> rows = grdItems->SelectedRows();
    const auto last = static_cast<std::int32_t>(pairs.size());
    std::int32_t end = isUp ? 1 : last;  // the first row that is not taken by a moved one
    if (!isUp)
        std::ranges::reverse(rows);
    bool hasMoved = false;
    for (std::int32_t& row : rows) {
        if (row != end) {
            const std::int32_t to = isUp ? row - 1 : row + 1;
            std::swap(pairs[PositionOf(row)], pairs[PositionOf(to)]);
            row = to;
            hasMoved = true;
        }
        end = isUp ? row + 1 : row - 1;
    }
    if (!hasMoved)
        return;
    std::ranges::sort(rows);
    AsOneStep({}, [&] { ListOfProject()->Assign(pairs); });
    ShowList(rows);
    MarkListChange();
}

void frmMain::SelectAllPairs()
{
    grdItems->EndEdit();
    grdItems->SelectAll();
}

}  // namespace tessarine
