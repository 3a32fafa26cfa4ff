#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

#include <QAbstractTableModel>

#include "model/FindAndReplaceItem.h"

namespace tessarine
{

/// Columns of the list of pairs. The user types in FindWhat and ReplaceWith; the others are shown alone.
namespace ItemColumn
{
inline constexpr int Number = 0;       ///< The row's own number.
inline constexpr int FindWhat = 1;     ///< Typed.
inline constexpr int ReplaceWith = 2;  ///< Typed.
inline constexpr int SearchType = 3;   ///< Hidden.
inline constexpr int Locations = 4;    ///< Those that are on, by SearchLocations.
inline constexpr int Options = 5;      ///< Those that are on, by PairOptions.
inline constexpr int Count = 6;
}  // namespace ItemColumn

/// The rows of the grid of pairs. Rows count from 1 here, as in the list of pairs; row 0 is the heading.
///
/// A row holds a reference to its pair (shared with the list) and nothing else: every cell is read from the pair when
/// it is shown, and a typed text is written to it. A row without a pair is empty and can't be typed into.
class ItemsModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    using Item = std::shared_ptr<FindAndReplaceItem>;

    using QAbstractTableModel::QAbstractTableModel;

    std::int32_t Rows() const { return static_cast<std::int32_t>(rows_.size()) + 1; }  ///< With the heading.
    void SetItems(const std::vector<Item>& items);  ///< One row for each, in place of all that were there.
    void AddRow();                                  ///< At the end, without a pair.

    /// Removes rows given by their numbers, in ascending order. The rows after them close up.
    void RemoveRows(const std::vector<std::int32_t>& ascendingRows);

    /// The pair of a row; null for a row without one.
    const Item& RowData(std::int32_t row) const { return rows_.at(static_cast<std::size_t>(row) - 1); }

    /// Gives a row its pair and shows it, also when the row has had the same pair before.
    void SetRowData(std::int32_t row, Item item);

    void SetHead(int column, const QString& text);  ///< The text above a column.
    void SetUnderlinedRow(std::int32_t row);        ///< The one row that is underlined; 0 for none.
    void SetEndlessTip(const QString& tip);         ///< Tip of the mark on a pair whose replacing would not end.

    // What views read and write, in Qt's own terms: rows from 0, without the heading.

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    /// Writes a typed text to the pair. False, and nothing is written, for another column or a row without a pair.
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;  ///< Cells of the two typed columns can be edited.

private:
    QString Text(std::int32_t row, int column) const;  // of a cell, read from its pair
    bool NeverEnds(std::int32_t row) const;            // whether replacing by the pair would not end
    void RowChanged(std::int32_t row);                 // has the views read the row again

    std::vector<Item> rows_;
    std::array<QString, ItemColumn::Count> heads_;
    QString endlessTip_;
    std::int32_t underlinedRow_ = 0;  // 0 for none
};

}  // namespace tessarine
