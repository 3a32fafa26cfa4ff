#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include <QTableView>

#include "ui/main/ItemsModel.h"

class QKeyEvent;

namespace tessarine
{

/// The grid of pairs: a heading, row 0, and a row per pair, from 1. Columns are those of ItemColumn. Entering a cell of
/// the two typed columns, by mouse, key or code, opens its editor. Several rows can be selected at once; whole rows are
/// selected, whatever cell is clicked.
class ItemsGrid : public QTableView
{
    Q_OBJECT

public:
    explicit ItemsGrid(QWidget* parent = nullptr);

    ItemsModel& Items() { return model_; }
    const ItemsModel& Items() const { return model_; }
    std::int32_t Rows() const { return model_.Rows(); }  ///< With the heading.

    std::int32_t Row() const;                       ///< The current row; 0 when there is none.
    int Col() const;                                ///< The current column; 0 when there is none.
    void SetRow(std::int32_t row);                  ///< Makes a row current, and the only one selected.
    void SelectCell(std::int32_t row, int column);  ///< The same, in a column; opens the editor of a typed cell.
    void PutSelectedRows(const std::vector<std::int32_t>& ascendingRows);  ///< Makes the first of them current.
    void SelectAll();  ///< All pairs; the heading is no row of the view.
    void EndEdit();    ///< Gives the text of an open editor to the model, and closes the editor.
    void RemoveRows(const std::vector<std::int32_t>& ascendingRows);  ///< No row is current or selected then.

    /// The numbers of the selected rows, ascending. The heading is never among them.
    std::vector<std::int32_t> SelectedRows() const;

    /// The row under the pointer; 0 for the heading or none.
    std::int32_t MouseRow(const QPoint& position) const;

    /// The colour of the texts: that of the desktop while the list can be edited, grey otherwise.
    void ShowAsActive(bool isActive);

    /// Gives the columns the widths that they start with and hides the search type. From then on the two typed columns
    /// share what the others leave of the grid, in the proportion that they have; none is ever narrower than at the
    /// start, or than its heading.
    void SetStartWidths();

    /// What stands in a grid without rows: while the list can be edited, and while it comes from elsewhere.
    void SetEmptyTexts(const QString& active, const QString& inactive);

    /// A key in the cell editor: true when it has been dealt with and must not reach the editor.
    std::function<bool(const QKeyEvent& key)> KeyDownEdit;

Q_SIGNALS:
    /// An edit has changed the text of a cell, which was `before`.
    void AfterEdit(std::int32_t row, int column, const QString& before);

    /// The current cell has changed, by other means than a removal; an open editor of the old one has given its text to
    /// the model.
    void RowColChange(std::int32_t oldRow, int oldColumn, std::int32_t newRow, int newColumn);

    void KeyDown(QKeyEvent& key);           ///< A key while no editor is open. An accepted key goes no further.
    void MouseMove(std::int32_t mouseRow);  ///< The pointer has moved over a row, or over row 0.
    void MouseLeave();                      ///< The pointer has left the rows.

protected:
    bool event(QEvent* event) override;             // Tab, before Qt moves the focus by it
    void keyPressEvent(QKeyEvent* event) override;  // the window first, then the view
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;  // shares the new width
    void paintEvent(QPaintEvent* event) override;    // and the empty text over a grid without rows
    bool viewportEvent(QEvent* event) override;      // tells when the pointer leaves

    /// No editor opens while the pointer is drawn over rows to select them, or for the context menu.
    bool edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) override;

    /// A plain click selects its row alone, also when more rows are selected.
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index, const QEvent* event) const override;

private:
    void FitColumns();               // to headings and numbers
    void ShareWidth();               // what the other columns leave, among the two typed ones
    void ColumnResized(int column);  // by the user, or to fit
    void PutWidth(int column, int width);
    int LeastWidth(int column) const;  // that a column is meant to have
    int WidthForTyped() const;         // of the two typed columns together

    ItemsModel model_;
    QString EmptyText() const;  // that is seen now
    void DescribeForReaders();

    QString emptyTextWhenActive_;
    QString emptyTextWhenInactive_;
    bool isActive_ = false;     // the list can be edited
    bool isRemoving_ = false;   // meanwhile changes of the current cell are not told
    bool isSharing_ = false;    // meanwhile the typed columns change on purpose
    bool opensEditors_ = true;  // in a cell that becomes the current one
};

}  // namespace tessarine
