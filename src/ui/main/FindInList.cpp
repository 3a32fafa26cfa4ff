#include <algorithm>

#include <QLabel>

#include "app/GlobalState.h"
#include "app/LanguageText.h"
#include "i18n/QtText.h"
#include "log/Treatments.h"
#include "ui/main/FindBar.h"
#include "ui/main/frmMain.h"
#include "ui/main/ItemsGrid.h"

// Looking for a text in the list of pairs.

namespace tessarine
{

namespace
{

/// The rows, from 1, whose pair holds a text in one of its own, whatever the case of the letters.
std::vector<std::int32_t> RowsWith(const QString& text, const ItemsModel& items)
{
    std::vector<std::int32_t> rows;
    const auto holds = [&](const String& own) { return QStringView(own).contains(text, Qt::CaseInsensitive); };
    for (std::int32_t row = 1; row < items.Rows(); ++row)
        if (const auto& pair = items.RowData(row); pair && (holds(pair->FindWhat) || holds(pair->ReplaceWith)))
            rows.push_back(row);
    return rows;
}

}  // namespace

void frmMain::OpenFind()
{
    LogAndReturn({u"OpenFind", place}, [this] {
        grdItems->EndEdit();
        findBar_->Open();
    });
}

/// The first row from the current one on, so that a text can be typed letter by letter.
void frmMain::FindTyped()
{
    FindInList(grdItems->Row(), true);
}

void frmMain::FindNext()
{
    FindInList(grdItems->Row() + 1, true);
}

void frmMain::FindPrevious()
{
    FindInList(grdItems->Row() - 1, false);
}

/// Makes the next row with the text current, from a row on in a direction; behind the last one comes the first.
void frmMain::FindInList(std::int32_t from, bool isForwards)
{
    LogAndReturn({u"FindInList", place}, [&] {
        grdItems->EndEdit();
        const QString text = findBar_->Text();
        if (text.isEmpty()) {
            findBar_->PutResult({});
            if (!findBar_->isVisible())
                findBar_->Open();
            return;
        }
        const std::vector<std::int32_t> rows = RowsWith(text, grdItems->Items());
        if (rows.empty()) {
            findBar_->show();  // a key may have asked while it was closed, and wants an answer
            findBar_->PutResult(ToQt(GetLngString(u"frmMain", u"FindInList.Nothing")));
            return;
        }
        auto found = isForwards ? std::ranges::lower_bound(rows, from) : std::ranges::upper_bound(rows, from);
        if (isForwards)
            found = found == rows.end() ? rows.begin() : found;
        else
            found = std::prev(found == rows.begin() ? rows.end() : found);
        grdItems->SetRow(*found);
        findBar_->PutResult(ToQt(GetLngString(u"frmMain", u"FindInList.Place"))
                                .replace(QStringLiteral("%d"), QString::number(found - rows.begin() + 1))
                                .replace(QStringLiteral("%i"), QString::number(rows.size())));
    });
}

}  // namespace tessarine
