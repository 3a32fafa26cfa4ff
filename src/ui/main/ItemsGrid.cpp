#include "ui/main/ItemsGrid.h"

#include <algorithm>
#include <array>

#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>

#include "ui/main/ItemEditor.h"

namespace tessarine
{

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
    horizontalHeader()->setStretchLastSection(true);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionsClickable(false);

    editor->KeyDown = [this](const QKeyEvent& key) { return KeyDownEdit && KeyDownEdit(key); };
    connect(editor, &ItemEditor::TextChanged, this,
            [this](const QModelIndex& index) { Q_EMIT AfterEdit(index.row() + 1, index.column()); });
    connect(selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& current, const QModelIndex& previous) {
                // While rows go, the current one wanders: the handlers would write to pairs that are not there any
                // more.
                if (!isRemoving_)
                    Q_EMIT RowColChange(previous.row() + 1, previous.column(), current.row() + 1, current.column());
            });
    for (const auto signal : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved})
        connect(&model_, signal, this, &ItemsGrid::FitNumberColumn);
    connect(&model_, &QAbstractItemModel::modelReset, this, &ItemsGrid::FitNumberColumn);
    connect(&model_, &QAbstractItemModel::headerDataChanged, this, &ItemsGrid::FitNumberColumn);
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
}

void ItemsGrid::SetStartWidths()
{
    // In twips, so that the columns are equally wide on the screen at every resolution.
    constexpr std::array twips{400, 1500, 1500, 2500, 2500};
    constexpr int twipsOfAnInch = 1440;
    for (int column = 0; column < static_cast<int>(twips.size()); ++column)
        setColumnWidth(column, twips[static_cast<std::size_t>(column)] * logicalDpiX() / twipsOfAnInch);
    FitNumberColumn();
    hideColumn(ItemColumn::SearchType);
}

/// Widens the first column where the largest number, or the heading, has no room in it.
void ItemsGrid::FitNumberColumn()
{
    // The last row has the widest number.
    const int needed = std::max(sizeHintForIndex(model_.index(model_.rowCount() - 1, ItemColumn::Number)).width(),
                                horizontalHeader()->sectionSizeHint(ItemColumn::Number));
    if (columnWidth(ItemColumn::Number) < needed)
        setColumnWidth(ItemColumn::Number, needed);
}

void ItemsGrid::SetEmptyText(const QString& text)
{
    emptyText_ = text;
    viewport()->update();
}

bool ItemsGrid::event(QEvent* event)
{
    // Widgets move the focus on Tab before they look at keys.
    if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Tab) {
        Q_EMIT KeyDown(*static_cast<QKeyEvent*>(event));
        return true;
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

void ItemsGrid::mouseMoveEvent(QMouseEvent* event)
{
    QTableView::mouseMoveEvent(event);
    Q_EMIT MouseMove(MouseRow(event->pos()));
}

bool ItemsGrid::viewportEvent(QEvent* event)
{
    if (event->type() == QEvent::Leave)
        Q_EMIT MouseLeave();
    return QTableView::viewportEvent(event);
}

void ItemsGrid::paintEvent(QPaintEvent* event)
{
    QTableView::paintEvent(event);
    // A list from a file makes the grid inactive; how to fill it is of no interest then.
    if (model_.rowCount() > 0 || !isActive_)
        return;
    constexpr int margin = 16;
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(viewport()->rect().adjusted(margin, margin, -margin, -margin),
                     int{Qt::AlignCenter} | int{Qt::TextWordWrap}, emptyText_);
}

}  // namespace tessarine
