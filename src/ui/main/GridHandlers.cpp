#include <QCheckBox>
#include <QKeyEvent>
#include <QPushButton>

#include "app/GlobalState.h"
#include "i18n/QtText.h"
#include "log/Treatments.h"
#include "platform/CheckedInteger.h"
#include "platform/Messages.h"
#include "ui/main/frmMain.h"
#include "ui/main/ItemsGrid.h"

namespace tessarine
{

namespace
{

FindAndReplaceItems& List()
{
    return *NotNull(NotNull(CurrentProject)->FindAndReplaceList);
}

/// Tab, and Alt, which acts as Tab does.
bool IsLeaveKey(const QKeyEvent& key)
{
    return key.key() == Qt::Key_Tab || key.key() == Qt::Key_Backtab || key.key() == Qt::Key_Alt;
}

/// The walks over all rows count in 16 bits: from 32,768 rows on they raise Overflow.
void CheckRowCount(const ItemsGrid& grid)
{
    Checked<std::int16_t>(grid.Rows() - 1);
}

}  // namespace

void frmMain::LoadGrid(const FindAndReplaceItems& List)
{
    LogAndReturn({u"LoadGrid", place}, [&] {
        grdItems->Items().SetItems(List.NewEnum());
        if (grdItems->Rows() > 1) {
            grdItems->SetRow(1);
            FillItemOnForm(*NotNull(grdItems->Items().RowData(1)));
        }
        EnableDisableControl();
    });
}

void frmMain::SetItemOnGridRow(std::int32_t Row, const std::shared_ptr<FindAndReplaceItem>& Item)
{
    LogAndReturn({u"SetItemOnGridRow", place}, [&] { grdItems->Items().SetRowData(Row, Item); });
}

void frmMain::cmdAdd_Click()
{
    LogAndReturn({u"cmdAdd_Click", place}, [this] {
        // An edit that ended within the step would be part of it.
        grdItems->EndEdit();
        AsOneStep({}, [this] { AddRow(); });
    });
}

void frmMain::AddRow()
{
    const bool hasCurrentRow = grdItems->Row() >= 1;
    grdItems->Items().AddRow();
    const std::int32_t added = grdItems->Rows() - 1;

    std::shared_ptr<FindAndReplaceItem> shown;
    if (hasCurrentRow) {
        // The row shows this pair of the form's until the list's own takes its place below; both share the options.
        shown = NotNull(GetItemFromForm());
        List().Add({}, {}, shown->OptionSetting, CurrentProject);
        grdItems->Items().SetRowData(added, shown);
    } else {
        const auto setting = std::make_shared<OptionSetting>();
        setting->InSlides = true;
        List().Add({}, {}, setting, CurrentProject);
        shown = std::make_shared<FindAndReplaceItem>();
        grdItems->Items().SetRowData(added, List().Item(1));
    }
    grdItems->SetRow(added);
    EnableDisableControl();
    FillItemOnForm(*shown);
    CheckRowCount(*grdItems);  // this late, so that a row too many is there and only its editor stays closed
    grdItems->SelectCell(added, ItemColumn::FindWhat);

    const auto last = List().Item(List().Count());
    SetItemOnGridRow(added, last);
    FillItemOnForm(*NotNull(last));
    cmdDelete->setEnabled(grdItems->Rows() > 1);
    MarkListChange();
    // Last, because the form may show no location at all, and a pair without one is never looked for.
    EnsureOneLocation();
}

void frmMain::cmdDelete_Click()
{
    LogAndReturn({u"cmdDelete_Click", place}, [this] {
        // An edit that ended after the removal would give its text to the pair that has moved up.
        grdItems->EndEdit();
        if (grdItems->Row() < 1)
            return;
        if (ShowMessage(u"Are you sure you want to delete selected find and replace item?", MessageIcon::Question,
                        MessageButtons::YesNo) != MessageAnswer::Yes)
            return;
        CheckRowCount(*grdItems);
        const std::vector<std::int32_t> rows = grdItems->SelectedRows();
        AsOneStep({}, [&] {
            // From the last on, so that the numbers of the others stay.
            for (auto row = rows.rbegin(); row != rows.rend(); ++row)
                List().Remove(*row);
        });
        grdItems->RemoveRows(rows);
        if (grdItems->Rows() == 1)
            cmdDelete->setEnabled(false);
        EnableDisableControl();
        MarkListChange();
        // Rows counts the heading: this asks whether two pairs are left, the next line whether there is one.
        if (grdItems->Rows() > 2)
            grdItems->setFocus();
        if (grdItems->Rows() > 1)
            grdItems->SetRow(1);
        // Another pair stands where the pointer last was.
        LastHoverRow = 0;
    });
}

void frmMain::cmdSwap_Click()
{
    LogAndReturn({u"cmdSwap_Click", place}, [this] {
        grdItems->EndEdit();
        CheckRowCount(*grdItems);
        const std::vector<std::int32_t> rows = grdItems->SelectedRows();
        AsOneStep(rows, [&] {
            for (const std::int32_t row : rows) {
                FindAndReplaceItem& item = *NotNull(List().Item(row));
                std::swap(item.FindWhat, item.ReplaceWith);
            }
        });
        LoadGrid(List());
        MarkListChange();
    });
}

/// Puts the list's own pair into a row. It stands there already, with the texts that were typed, except where
/// cmdAdd_Click has failed half-way and left the form's pair; nothing can have been typed into that one.
void frmMain::TakePairFromList(std::int32_t row)
{
    grdItems->Items().SetRowData(row, NotNull(List().Item(row)));
}

void frmMain::grdItems_AfterEdit(std::int32_t Row, int /*Col*/)
{
    LogAndReturn({u"grdItems_AfterEdit", place}, [&] {
        if (Row == 0)
            return;
        TakePairFromList(Row);
        MarkListChange();
    });
}

void frmMain::grdItems_BeforeRowColChange(std::int32_t OldRow)
{
    LogAndReturn({u"grdItems_BeforeRowColChange", place}, [&] {
        if (OldRow != 0)
            TakePairFromList(OldRow);
    });
}

void frmMain::grdItems_AfterRowColChange(std::int32_t OldRow, std::int32_t NewRow)
{
    LogAndReturn({u"grdItems_AfterRowColChange", place}, [&] {
        // The grid itself opens the editor of a typed cell.
        if (NewRow < 1 || OldRow == NewRow)
            return;
        const auto& item = grdItems->Items().RowData(NewRow);
        if (item)
            FillItemOnForm(*item);
        else
            ShowMessage(u"Empty", MessageIcon::None);
    });
}

bool frmMain::grdItems_KeyDownEdit(const QKeyEvent& Key)
{
    return LogAndReturn({u"grdItems_KeyDownEdit", place}, [&] {
        if (!IsLeaveKey(Key))
            return false;
        const std::int32_t row = grdItems->Row();
        const bool isShiftAlone =
            (Key.modifiers() & (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier)) == Qt::ShiftModifier;
        if (isShiftAlone) {
            if (grdItems->Col() != ItemColumn::FindWhat)
                return false;
            if (row > 1)
                grdItems->SelectCell(row - 1, ItemColumn::ReplaceWith);
            return true;  // the heading can't be entered
        }
        if (grdItems->Col() != ItemColumn::ReplaceWith || row == 0)
            return false;
        if (row == grdItems->Rows() - 1)
            cmdAdd_Click();
        else
            grdItems->SelectCell(row + 1, ItemColumn::FindWhat);
        return true;
    });
}

void frmMain::grdItems_KeyDown(QKeyEvent& Key)
{
    LogAndReturn({u"grdItems_KeyDown", place}, [&] {
        if (Key.key() == Qt::Key_Delete && grdItems->Rows() > 1)
            cmdDelete_Click();
        else if (Key.key() == Qt::Key_Tab || Key.key() == Qt::Key_Backtab)
            cmdAdd->setFocus();  // whatever is held with it
        else if (Key.key() == Qt::Key_A && Key.modifiers() == Qt::ControlModifier)
            grdItems->SelectAll();
        else
            return;
        Key.accept();
    });
}

void frmMain::grdItems_MouseMove(std::int32_t MouseRow)
{
    LogAndReturn({u"grdItems_MouseMove", place}, [&] {
        if (MouseRow < 1 || MouseRow == LastHoverRow)
            return;
        grdItems->Items().SetUnderlinedRow(MouseRow);
        LastHoverRow = MouseRow;
    });
}

}  // namespace tessarine
