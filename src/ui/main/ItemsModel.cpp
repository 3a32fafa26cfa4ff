#include "ui/main/ItemsModel.h"

#include <algorithm>

#include <QColor>
#include <QFont>
#include <QGuiApplication>
#include <QPalette>

#include "engine/EndlessReplacement.h"
#include "i18n/QtText.h"
#include "icons/Icons.h"
#include "model/ItemText.h"
#include "ui/main/CellText.h"

namespace tessarine
{

namespace
{

/// The background of every second row: a light blue, or its counterpart on a dark desktop.
QColor EvenRowColour()
{
    constexpr int middle = 128;
    const bool isLight = QGuiApplication::palette().color(QPalette::Base).lightness() >= middle;
    return isLight ? QColor(236, 239, 249) : QGuiApplication::palette().color(QPalette::AlternateBase);
}

bool IsTyped(int column)
{
    return column == ItemColumn::FindWhat || column == ItemColumn::ReplaceWith;
}

}  // namespace

void ItemsModel::SetItems(const std::vector<Item>& items)
{
    beginResetModel();
    underlinedRow_ = 0;
    rows_ = items;
    endResetModel();
}

void ItemsModel::AddRow()
{
    const int last = static_cast<int>(rows_.size());
    beginInsertRows({}, last, last);
    rows_.emplace_back();
    endInsertRows();
}

void ItemsModel::RemoveRows(const std::vector<std::int32_t>& ascendingRows)
{
    // Views follow each removal of neighbours one by one, which is slow for a scattered selection of thousands.
    constexpr std::size_t fewRemovals = 50;
    std::vector<std::pair<std::int32_t, std::int32_t>> runs;  // first and last row
    for (const std::int32_t row : ascendingRows) {
        if (!runs.empty() && runs.back().second + 1 == row)
            runs.back().second = row;
        else
            runs.emplace_back(row, row);
    }
    underlinedRow_ = 0;
    const bool asReset = runs.size() > fewRemovals;
    if (asReset)
        beginResetModel();
    // From the last run on, so that the positions of those before it stay.
    std::ranges::reverse(runs);
    for (const auto& [first, last] : runs) {
        if (!asReset)
            beginRemoveRows({}, first - 1, last - 1);
        rows_.erase(rows_.begin() + (first - 1), rows_.begin() + last);
        if (!asReset)
            endRemoveRows();
    }
    if (asReset)
        endResetModel();
    if (!rows_.empty())  // the rows after them have new numbers
        Q_EMIT dataChanged(index(0, ItemColumn::Number), index(rowCount() - 1, ItemColumn::Number));
}

void ItemsModel::SetRowData(std::int32_t row, Item item)
{
    rows_.at(static_cast<std::size_t>(row) - 1) = std::move(item);
    RowChanged(row);
}

void ItemsModel::SetHead(int column, const QString& text)
{
    heads_.at(static_cast<std::size_t>(column)) = text;
    Q_EMIT headerDataChanged(Qt::Horizontal, column, column);
}

void ItemsModel::SetUnderlinedRow(std::int32_t row)
{
    const std::int32_t before = std::exchange(underlinedRow_, row);
    for (const std::int32_t changed : {before, row})
        // Rows counts the heading, so the last pair's row is one below it.
        if (changed >= 1 && changed < Rows())
            RowChanged(changed);
}

void ItemsModel::SetEndlessTip(const QString& tip)
{
    endlessTip_ = tip;
}

void ItemsModel::RowChanged(std::int32_t row)
{
    Q_EMIT dataChanged(index(row - 1, 0), index(row - 1, ItemColumn::Count - 1));
}

int ItemsModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int ItemsModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ItemColumn::Count;
}

QString ItemsModel::Text(std::int32_t row, int column) const
{
    if (column == ItemColumn::Number)
        return QString::number(row);
    const Item& pair = RowData(row);
    if (!pair)
        return {};
    if (column == ItemColumn::FindWhat)
        return ToQt(pair->FindWhat);
    if (column == ItemColumn::ReplaceWith)
        return ToQt(pair->ReplaceWith);
    if (!pair->OptionSetting)
        return {};
    switch (column) {
        case ItemColumn::SearchType:
            return ToQt(CreateSearchType(*pair));
        case ItemColumn::Locations:
            return ToQt(CreateLocationString(*pair));
        default:
            return ToQt(CreateOptionStrin(*pair));
    }
}

bool ItemsModel::NeverEnds(std::int32_t row) const
{
    const Item& pair = RowData(row);
    return pair && pair->OptionSetting && tessarine::NeverEnds(pair->FindWhat, pair->ReplaceWith, *pair->OptionSetting);
}

QVariant ItemsModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    const std::int32_t row = index.row() + 1;
    const int column = index.column();
    switch (role) {
        case Qt::DisplayRole:
        case Qt::EditRole:
            return Text(row, column);
        case Qt::ToolTipRole:
            if (column == ItemColumn::ReplaceWith && NeverEnds(row))
                return endlessTip_;
            // What is wider than its column is seen whole in the tip; ItemEditor keeps it back for texts that are not.
            if (IsTyped(column))
                return TipOfText(Text(row, column));
            return column >= ItemColumn::SearchType ? QVariant(Text(row, column)) : QVariant();
        case Qt::AccessibleDescriptionRole:  // of the mark, for those who do not see it
            return column == ItemColumn::ReplaceWith && NeverEnds(row) ? QVariant(endlessTip_) : QVariant();
        case Qt::DecorationRole:
            return column == ItemColumn::ReplaceWith && NeverEnds(row) ? QVariant(Icon("warning")) : QVariant();
        case Qt::BackgroundRole:
            return row % 2 == 0 ? QVariant(EvenRowColour()) : QVariant();
        case Qt::TextAlignmentRole:
            return column == ItemColumn::Number ? QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter) : QVariant();
        case Qt::FontRole:
            // An underline alone: the rest of the font stays the view's.
            if (row == underlinedRow_) {
                QFont underlined;
                underlined.setUnderline(true);
                return underlined;
            }
            return {};
        default:
            return {};
    }
}

QVariant ItemsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= ItemColumn::Count)
        return {};
    if (role == Qt::DisplayRole)
        return heads_.at(static_cast<std::size_t>(section));
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue((section == ItemColumn::Number ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    return {};
}

bool ItemsModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!index.isValid() || role != Qt::EditRole || !IsTyped(index.column()))
        return false;
    const Item& pair = RowData(index.row() + 1);
    if (!pair)
        return false;
    (index.column() == ItemColumn::FindWhat ? pair->FindWhat : pair->ReplaceWith) = FromQt(value.toString());
    RowChanged(index.row() + 1);
    return true;
}

Qt::ItemFlags ItemsModel::flags(const QModelIndex& index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    const Qt::ItemFlags shown = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    return IsTyped(index.column()) ? shown | Qt::ItemIsEditable : shown;
}

}  // namespace tessarine
