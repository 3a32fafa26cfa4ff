#include "ui/run/ResultTree.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>

#include "i18n/QtText.h"

namespace tessarine
{

namespace
{

/// Rows that a view may have open at once; each takes it some 32 bytes and its share of every layout.
constexpr std::size_t mostExpandedRows = 200'000;

/// Files up to which each addition is shown at once, and the time between two showings beyond that.
constexpr ResultNodes::Position fewFiles = 500;
constexpr int betweenShowings = 250;  // milliseconds

/// Qt's modifiers as a mask of 1 for Shift, 2 for Ctrl and 4 for Alt.
int ShiftOf(Qt::KeyboardModifiers modifiers)
{
    return (modifiers.testFlag(Qt::ShiftModifier) ? 1 : 0) | (modifiers.testFlag(Qt::ControlModifier) ? 2 : 0) |
           (modifiers.testFlag(Qt::AltModifier) ? 4 : 0);
}

std::size_t RowsOf(const ResultNodes& nodes)
{
    std::size_t rows = 0;
    nodes.ForEach([&](ResultNodes::Position file, std::optional<ResultNodes::Position> item) {
        rows += 1 + (item ? nodes.LocationCount(file, *item) : 0);
    });
    return rows;
}

}  // namespace

ResultTree::ResultTree(const char* name, QWidget* parent) : QTreeView(parent)
{
    setObjectName(name);
    setModel(&results_);
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setExpandsOnDoubleClick(false);  // a double click opens a file, and does nothing elsewhere
    setMouseTracking(true);
    // A path is read to its end by scrolling. Only the rows in sight are measured.
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    header()->setResizeContentsPrecision(0);
    nextShowing_.setSingleShot(true);
    nextShowing_.setInterval(betweenShowings);
    connect(&nextShowing_, &QTimer::timeout, &results_, &ResultModel::ShowAdditions);
    BuildMenu();
}

void ResultTree::ShowAdditions()
{
    if (Nodes().FileCount() <= fewFiles)
        results_.ShowAdditions();
    // A tree that can't be seen is brought up to date by showEvent.
    else if (isVisible() && !nextShowing_.isActive())
        nextShowing_.start();
    Q_EMIT Added();
}

void ResultTree::PutFilter(const NodeFilter& filter)
{
    results_.ShowAdditions();
    results_.PutFilter(filter);
    // The view is not told when the current row goes out of sight.
    Q_EMIT CurrentChanged();
}

void ResultTree::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    QTreeView::currentChanged(current, previous);
    Q_EMIT CurrentChanged();
}

void ResultTree::showEvent(QShowEvent* event)
{
    results_.ShowAdditions();
    QTreeView::showEvent(event);
}

void ResultTree::BuildMenu()
{
    const auto add = [this](const char* name) {
        auto* const item = new QAction(this);
        item->setObjectName(name);
        addAction(item);
        return item;
    };
    mnuCopyNode = add("mnuCopyNode");
    mnuExpandAll = add("mnuExpandAll");
    mnuCollapseAll = add("mnuCollapseAll");
    mnuCopyNode->setShortcut(QKeySequence::Copy);
    // Of this tree alone: with three trees in a window the key would be ambiguous and do nothing.
    mnuCopyNode->setShortcutContext(Qt::WidgetShortcut);
    connect(mnuCopyNode, &QAction::triggered, this, &ResultTree::CopyNode);
    connect(mnuExpandAll, &QAction::triggered, this, &ResultTree::ExpandAll);
    connect(mnuCollapseAll, &QAction::triggered, this, &QTreeView::collapseAll);
}

void ResultTree::PutMenuCaptions(const QString& copyNode, const QString& expandAll, const QString& collapseAll)
{
    mnuCopyNode->setText(copyNode);
    mnuExpandAll->setText(expandAll);
    mnuCollapseAll->setText(collapseAll);
}

std::optional<ResultNode> ResultTree::HitTest(float x, float y) const
{
    return NodeOf(indexAt(QPointF(x, y).toPoint()));
}

std::optional<ResultNode> ResultTree::CurrentNode() const
{
    return NodeOf(currentIndex());
}

std::optional<ResultModel::Node> ResultTree::CurrentPlace() const
{
    return currentIndex().isValid() ? std::optional(results_.NodeAt(currentIndex())) : std::nullopt;
}

std::optional<ResultNode> ResultTree::NodeOf(const QModelIndex& index) const
{
    if (!index.isValid())
        return std::nullopt;
    const String& text = results_.TextOf(index);
    return ResultNode{text, results_.IsFile(index) ? text : String()};
}

void ResultTree::ChooseFile(const String& path)
{
    results_.ShowAdditions();
    const auto file = Nodes().FindFile(path);
    const QModelIndex index = file ? results_.IndexOf({*file, {}, {}}) : QModelIndex();
    if (!index.isValid())
        return;
    setCurrentIndex(index);
    scrollTo(index);
}

void ResultTree::CopyNode()
{
    if (const auto node = CurrentNode())
        QGuiApplication::clipboard()->setText(ToQt(node->Text));
}

void ResultTree::ExpandAll()
{
    if (RowsOf(Nodes()) <= mostExpandedRows)
        expandAll();
    else
        // Files are opened then, and their pairs stay closed.
        expandToDepth(0);
}

bool ResultTree::viewportEvent(QEvent* event)
{
    // A tree that opens under a pointer at rest gets no move; coming in tells the position as well.
    if (event->type() == QEvent::MouseMove || event->type() == QEvent::Enter) {
        const auto* const pointer = static_cast<QSinglePointEvent*>(event);
        const QPointF position = pointer->position();
        Q_EMIT MouseMove(static_cast<int>(pointer->buttons()), ShiftOf(pointer->modifiers()),
                         static_cast<float>(position.x()), static_cast<float>(position.y()));
    }
    return QTreeView::viewportEvent(event);
}

void ResultTree::contextMenuEvent(QContextMenuEvent* event)
{
    Q_EMIT MenuAboutToShow();
    auto* const menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addActions(actions());
    // The key asks at no place of its own: beside the current row then.
    const bool isKey = event->reason() == QContextMenuEvent::Keyboard && currentIndex().isValid();
    menu->popup(isKey ? viewport()->mapToGlobal(visualRect(currentIndex()).bottomLeft()) : event->globalPos());
}

void ResultTree::mouseDoubleClickEvent(QMouseEvent* event)
{
    QTreeView::mouseDoubleClickEvent(event);
    Q_EMIT DblClick();
}

void ResultTree::keyPressEvent(QKeyEvent* event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const auto node = isEnter ? CurrentNode() : std::nullopt;
    if (!node) {
        QTreeView::keyPressEvent(event);
        return;
    }
    event->accept();
    Q_EMIT OpenRequested(*node);
}

}  // namespace tessarine
