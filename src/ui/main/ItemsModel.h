#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

#include <QAbstractTableModel>
#include <QColor>

#include "model/FindAndReplaceItem.h"

namespace tessarine
{

/// Columns of the list of pairs.
namespace ItemColumn
{
inline constexpr int Number = 0;
inline constexpr int FindWhat = 1;
inline constexpr int ReplaceWith = 2;
inline constexpr int SearchType = 3;
inline constexpr int Locations = 4;
inline constexpr int Options = 5;
inline constexpr int Count = 6;
}  // namespace ItemColumn

/// The rows of the grid of pairs. Rows count from 1 here, as in the list of pairs; row 0 is the heading. Each row holds
/// the two texts that the user types, and the pair that it stands for (shared with the list), from which the other
/// columns are read when they are shown.
class ItemsModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    using Item = std::shared_ptr<FindAndReplaceItem>;

    using QAbstractTableModel::QAbstractTableModel;

    std::int32_t Rows() const { return static_cast<std::int32_t>(rows_.size()) + 1; }  ///< With the heading.
    void SetItems(const std::vector<Item>& items);  ///< One row each, in place of all.
    void AddRow();                                  ///< At the end, empty and without a pair.
    void RemoveRows(const std::vector<std::int32_t>& ascendingRows);

    const QString& FindWhat(std::int32_t row) const { return At(row).findWhat; }
    const QString& ReplaceWith(std::int32_t row) const { return At(row).replaceWith; }
    const Item& RowData(std::int32_t row) const { return At(row).item; }

    /// The pair that a row stands for. The two texts stay.
    void SetRowData(std::int32_t row, Item item);

    void SetHead(int column, const QString& text);
    void SetUnderlinedRow(std::int32_t row);  ///< 0 for none.
    void SetEndlessTip(const QString& tip);   ///< Of the mark on a pair whose replacing would not end.

    // --- What views read ----------------------------------------------------------------------------------------

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    struct Row {
        QString findWhat;
        QString replaceWith;
        Item item;
    };

    const Row& At(std::int32_t row) const { return rows_.at(static_cast<std::size_t>(row) - 1); }
    QString Text(std::int32_t row, int column) const;
    bool NeverEnds(std::int32_t row) const;
    void RowChanged(std::int32_t row);

    std::vector<Row> rows_;
    std::array<QString, ItemColumn::Count> heads_;
    QString endlessTip_;
    std::int32_t underlinedRow_ = 0;
};

}  // namespace tessarine
