#include <QCheckBox>
#include <QListWidget>

#include "app/GlobalState.h"
#include "log/Treatments.h"
#include "model/SearchLocations.h"
#include "ui/main/frmMain.h"
#include "ui/main/ItemsGrid.h"

namespace tessarine
{

namespace
{

bool IsChecked(const QListWidget& list, std::size_t row)
{
    return list.item(static_cast<int>(row))->checkState() == Qt::Checked;
}

void Check(QListWidget& list, std::size_t row, bool isChecked)
{
    list.item(static_cast<int>(row))->setCheckState(isChecked ? Qt::Checked : Qt::Unchecked);
}

void TakeLocationsFrom(const QListWidget& list, OptionSetting& setting)
{
    for (std::size_t row = 0; row < SearchLocations.size(); ++row)
        setting.*SearchLocations[row].isOn = IsChecked(list, row);
}

}  // namespace

void frmMain::FillItemOnForm(const FindAndReplaceItem& Item)
{
    LogAndReturn({u"FillItemOnForm", place}, [&] {
        IsFillingItem = true;
        const OptionSetting& setting = *NotNull(Item.OptionSetting);
        for (std::size_t row = 0; row < SearchLocations.size(); ++row)
            Check(*lstLookIn, row, setting.*SearchLocations[row].isOn);
        chkMatchCase->setChecked(setting.MatchCase);
        chkMatchWholeWord->setChecked(setting.MatchWholeWord);
        chkPromptOnReplace->setChecked(setting.PromptOnReplace);
        IsFillingItem = false;
    });
}

std::shared_ptr<FindAndReplaceItem> frmMain::GetItemFromForm() const
{
    return LogAndReturn({u"GetItemFromForm", place}, [this] {
        auto item = std::make_shared<FindAndReplaceItem>();
        OptionSetting& setting = *item->OptionSetting;
        TakeLocationsFrom(*lstLookIn, setting);
        setting.MatchCase = chkMatchCase->isChecked();
        setting.MatchWholeWord = chkMatchWholeWord->isChecked();
        setting.PromptOnReplace = chkPromptOnReplace->isChecked();
        return item;
    });
}

/// Copies all check marks to the pair of a row.
void frmMain::TakeLocations(std::int32_t row)
{
    const auto item = NotNull(NotNull(CurrentProject)->FindAndReplaceList)->Item(row);
    TakeLocationsFrom(*lstLookIn, *NotNull(NotNull(item)->OptionSetting));
    SetItemOnGridRow(row, item);
}

void frmMain::EnsureOneLocation()
{
    LogAndReturn({u"EnsureOneLocation", place}, [this] {
        for (std::size_t row = 0; row < SearchLocations.size(); ++row)
            if (IsChecked(*lstLookIn, row))
                return;
        Check(*lstLookIn, 0, true);
        for (const std::int32_t row : grdItems->SelectedRows())
            TakeLocations(row);
    });
}

void frmMain::lstLookIn_ItemCheck()
{
    LogAndReturn({u"lstLookIn_ItemCheck", place}, [this] {
        if (IsFillingItem)
            return;
        const std::vector<std::int32_t> rows = grdItems->SelectedRows();
        if (rows.empty())
            return;
        // All marks and not the changed one alone: rows that are selected together become alike.
        AsOneStep(rows, [&] {
            for (const std::int32_t row : rows)
                TakeLocations(row);
        });
        MarkListChange();
    });
}

void frmMain::chkSelectAll_Click()
{
    LogAndReturn({u"chkSelectAll_Click", place}, [this] {
        // Each check mark is handled as if it had been clicked, and all of them are one step to undo.
        AsOneStep(grdItems->SelectedRows(), [this] {
            for (std::size_t row = 0; row < SearchLocations.size(); ++row)
                Check(*lstLookIn, row, chkSelectAll->isChecked());
        });
    });
}

}  // namespace tessarine
