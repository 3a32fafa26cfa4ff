#include "ui/main/ItemsGrid.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>

#include "ui/main/ItemEditor.h"

namespace tessarine
{

namespace
{

/// Of the columns, in twips, so that they are equally wide on the screen at every resolution.
constexpr std::array<int, ItemColumn::Count> startTwips{400, 1500, 1500, 2500, 2500, 1500};

bool IsPlainClick(const QEvent* event)
{
    if (event == nullptr || event->type() != QEvent::MouseButtonPress)
        return false;
    const auto* const press = static_cast<const QMouseEvent*>(event);
    return press->button() == Qt::LeftButton && press->modifiers() == Qt::NoModifier;
}

}  // namespace

ItemsGrid::ItemsGrid(QWidget* parent) : QTableView(parent)
{
    setModel(&model_);
    auto* const editor = new ItemEditor(this);
    setItemDelegate(editor);
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(CurrentChanged | DoubleClicked | SelectedClicked | EditKeyPressed | AnyKeyPressed);
    setTabKeyNavigation(false);  // Tab leaves the grid
    setWordWrap(false);
    setMouseTracking(true);
    setHorizontalScrollMode(ScrollPerPixel);
    // Of one height, so that thousands of rows need not be measured.
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(verticalHeader()->minimumSectionSize());
    horizontalHeader()->setStretchLastSection(false);  // the typed columns take what is left
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionsClickable(false);

    editor->KeyDown = [this](const QKeyEvent& key) { return KeyDownEdit && KeyDownEdit(key); };
    connect(editor, &ItemEditor::TextChanged, this, [this](const QModelIndex& index, const QString& before) {
        Q_EMIT AfterEdit(index.row() + 1, index.column(), before);
    });
    connect(selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& current, const QModelIndex& previous) {
                // While rows go, the current one wanders: the handlers would write to pairs that are not there any
                // more.
                if (!isRemoving_)
                    Q_EMIT RowColChange(previous.row() + 1, previous.column(), current.row() + 1, current.column());
            });
    for (const auto signal : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved})
        connect(&model_, signal, this, &ItemsGrid::FitColumns);
    connect(&model_, &QAbstractItemModel::modelReset, this, &ItemsGrid::FitColumns);
    for (const auto signal : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved})
        connect(&model_, signal, this, &ItemsGrid::DescribeForReaders);
    connect(&model_, &QAbstractItemModel::modelReset, this, &ItemsGrid::DescribeForReaders);
    connect(&model_, &QAbstractItemModel::headerDataChanged, this, &ItemsGrid::FitColumns);
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, &ItemsGrid::ColumnResized);
}

std::int32_t ItemsGrid::Row() const
{
    return currentIndex().row() + 1;
}

int ItemsGrid::Col() const
{
    return std::max(currentIndex().column(), 0);
}

void ItemsGrid::SetRow(std::int32_t row)
{
    SelectCell(row, ItemColumn::Number);
}

void ItemsGrid::SelectCell(std::int32_t row, int column)
{
    // Not setCurrentIndex() of the view, which would look at Shift and Ctrl.
    selectionModel()->setCurrentIndex(model_.index(row - 1, column),
                                      QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    scrollTo(currentIndex());
}

void ItemsGrid::PutSelectedRows(const std::vector<std::int32_t>& ascendingRows)
{
    QItemSelection selection;
    for (auto row = ascendingRows.begin(); row != ascendingRows.end();) {
        const std::int32_t first = *row;
        std::int32_t last = first;
        for (++row; row != ascendingRows.end() && *row == last + 1; ++row)
            last = *row;
        selection.append({model_.index(first - 1, 0), model_.index(last - 1, ItemColumn::Count - 1)});
    }
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    if (ascendingRows.empty())
        return;
    selectionModel()->setCurrentIndex(model_.index(ascendingRows.front() - 1, ItemColumn::Number),
                                      QItemSelectionModel::NoUpdate);
    scrollTo(currentIndex());
}

void ItemsGrid::SelectAll()
{
    selectAll();
}

void ItemsGrid::EndEdit()
{
    if (QWidget* const editor = indexWidget(currentIndex())) {
        commitData(editor);
        closeEditor(editor, QAbstractItemDelegate::NoHint);
    }
}

void ItemsGrid::RemoveRows(const std::vector<std::int32_t>& ascendingRows)
{
    isRemoving_ = true;
    selectionModel()->clear();
    model_.RemoveRows(ascendingRows);
    selectionModel()->clear();  // views make a neighbour of removed rows current
    isRemoving_ = false;
}

std::vector<std::int32_t> ItemsGrid::SelectedRows() const
{
    std::vector<std::int32_t> rows;
    // Ranges may overlap, so that a row is met twice.
    for (const QItemSelectionRange& range : selectionModel()->selection())
        for (int row = range.top(); row <= range.bottom(); ++row)
            rows.push_back(row + 1);
    std::ranges::sort(rows);
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return rows;
}

std::int32_t ItemsGrid::MouseRow(const QPoint& position) const
{
    return rowAt(position.y()) + 1;
}

void ItemsGrid::ShowAsActive(bool isActive)
{
    const QColor grey(0x80, 0x80, 0x80);
    isActive_ = isActive;
    QPalette colours;  // of the desktop
    if (!isActive)
        for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
            colours.setColor(role, grey);
    setPalette(colours);  // the heading takes it over
    DescribeForReaders();
}

void ItemsGrid::SetStartWidths()
{
    constexpr int twipsOfAnInch = 1440;
    for (int column = 0; column < ItemColumn::Count; ++column)
        PutWidth(column, startTwips.at(static_cast<std::size_t>(column)) * logicalDpiX() / twipsOfAnInch);
    hideColumn(ItemColumn::SearchType);
    FitColumns();
}

/// Without a message to the sharing, which is no business of a column that changes on purpose.
void ItemsGrid::PutWidth(int column, int width)
{
    isSharing_ = true;
    setColumnWidth(column, width);
    isSharing_ = false;
}

int ItemsGrid::LeastWidth(int column) const
{
    constexpr int twipsOfAnInch = 1440;
    const int start = startTwips.at(static_cast<std::size_t>(column)) * logicalDpiX() / twipsOfAnInch;
    // The last row has the widest number.
    const int number =
        column == ItemColumn::Number ? sizeHintForIndex(model_.index(model_.rowCount() - 1, column)).width() : 0;
    return std::max({start, number, horizontalHeader()->sectionSizeHint(column)});
}

/// Widens the columns in which the heading, or the largest number, has no room.
void ItemsGrid::FitColumns()
{
    for (int column = 0; column < ItemColumn::Count; ++column) {
        const int least = LeastWidth(column);
        if (!isColumnHidden(column) && columnWidth(column) < least)
            PutWidth(column, least);
    }
    if (isVisible())  // until then there is nothing to share
        ShareWidth();
}

int ItemsGrid::WidthForTyped() const
{
    int left = viewport()->width();
    for (const int column : {ItemColumn::Number, ItemColumn::SearchType, ItemColumn::Locations, ItemColumn::Options})
        left -= columnWidth(column);  // 0 for a hidden one
    return left;
}

void ItemsGrid::ShareWidth()
{
    const auto [findLeast, withLeast] =
        std::pair(LeastWidth(ItemColumn::FindWhat), LeastWidth(ItemColumn::ReplaceWith));
    const int shared = std::max(WidthForTyped(), findLeast + withLeast);
    const double find = columnWidth(ItemColumn::FindWhat);
    const double part = find / std::max(1.0, find + columnWidth(ItemColumn::ReplaceWith));
    const int newFind = std::clamp(static_cast<int>(std::lround(shared * part)), findLeast, shared - withLeast);
    PutWidth(ItemColumn::FindWhat, newFind);
    PutWidth(ItemColumn::ReplaceWith, shared - newFind);
}

void ItemsGrid::ColumnResized(int column)
{
    if (isSharing_ || !isVisible() || column == ItemColumn::ReplaceWith)
        return;
    if (column == ItemColumn::FindWhat)
        PutWidth(ItemColumn::ReplaceWith,
                 std::max(WidthForTyped() - columnWidth(ItemColumn::FindWhat), LeastWidth(ItemColumn::ReplaceWith)));
    else
        ShareWidth();
}

void ItemsGrid::resizeEvent(QResizeEvent* event)
{
    QTableView::resizeEvent(event);
    ShareWidth();
}

void ItemsGrid::SetEmptyTexts(const QString& active, const QString& inactive)
{
    emptyTextWhenActive_ = active;
    emptyTextWhenInactive_ = inactive;
    DescribeForReaders();
    viewport()->update();
}

/// Nothing while there are rows.
QString ItemsGrid::EmptyText() const
{
    if (model_.rowCount() > 0)
        return {};
    return isActive_ ? emptyTextWhenActive_ : emptyTextWhenInactive_;
}

/// For those who hear the grid instead of seeing it.
void ItemsGrid::DescribeForReaders()
{
    setAccessibleDescription(EmptyText());
}

bool ItemsGrid::event(QEvent* event)
{
    // Widgets move the focus on Tab before they look at keys.
    if (event->type() == QEvent::KeyPress) {
        auto& key = *static_cast<QKeyEvent*>(event);
        if (key.key() == Qt::Key_Tab || key.key() == Qt::Key_Backtab) {
            Q_EMIT KeyDown(key);
            return true;
        }
    }
    return QTableView::event(event);
}

void ItemsGrid::keyPressEvent(QKeyEvent* event)
{
    // The window is asked first; a key that it does not accept is the view's own.
    event->ignore();
    Q_EMIT KeyDown(*event);
    if (!event->isAccepted())
        QTableView::keyPressEvent(event);
}

void ItemsGrid::mousePressEvent(QMouseEvent* event)
{
    opensEditors_ = event->button() != Qt::RightButton;
    QTableView::mousePressEvent(event);
    opensEditors_ = true;
}

void ItemsGrid::mouseMoveEvent(QMouseEvent* event)
{
    opensEditors_ = (event->buttons() & Qt::LeftButton) == 0;
    QTableView::mouseMoveEvent(event);
    opensEditors_ = true;
    Q_EMIT MouseMove(MouseRow(event->pos()));
}

bool ItemsGrid::viewportEvent(QEvent* event)
{
    if (event->type() == QEvent::Leave)
        Q_EMIT MouseLeave();
    return QTableView::viewportEvent(event);
}

bool ItemsGrid::edit(const QModelIndex& index, EditTrigger trigger, QEvent* event)
{
    return (opensEditors_ || trigger != CurrentChanged) && QTableView::edit(index, trigger, event);
}

QItemSelectionModel::SelectionFlags ItemsGrid::selectionCommand(const QModelIndex& index, const QEvent* event) const
{
    // Views wait for the button's release with a row that is selected already; the editor that has opened by then would
    // keep that from them.
    if (index.isValid() && IsPlainClick(event))
        return QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows;
    return QTableView::selectionCommand(index, event);
}

void ItemsGrid::paintEvent(QPaintEvent* event)
{
    QTableView::paintEvent(event);
    const QString text = EmptyText();
    if (text.isEmpty())
        return;
    constexpr int margin = 16;  // at the sides alone: on a small screen the grid is only a few lines high
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(viewport()->rect().adjusted(margin, 0, -margin, 0), int{Qt::AlignCenter} | int{Qt::TextWordWrap},
                     text);
}

}  // namespace tessarine
