#pragma once

#include <optional>

#include <QTimer>
#include <QTreeView>

#include "platform/String.h"
#include "ui/run/ResultModel.h"

class QAction;

namespace tessarine
{

/// A node as it is handed out: its text, and its key, which is empty for all but files.
struct ResultNode {
    String Text;
    String Key;
};

/// One of the three trees of a run: files with their items with their locations, in the order of addition.
///
/// Beyond that, the context menu and Ctrl+C copy a node's text, the menu expands and collapses all, Enter asks to
/// open a node.
class ResultTree : public QTreeView
{
    Q_OBJECT

public:
    explicit ResultTree(const char* name, QWidget* parent = nullptr);  ///< `name` becomes the objectName.

    /// The nodes are added here; the tree shows them from ShowAdditions on.
    ResultModel& Results() { return results_; }

    /// Shows what was added. A tree of some hundred files does so at once. In a larger one each look at the rows costs
    /// time: it shows additions a few times a second, and only while it is in sight.
    void ShowAdditions();

    const ResultNodes& Nodes() const { return results_.Nodes(); }

    /// Shows what passes a filter, and all that was added so far.
    void PutFilter(const NodeFilter& filter);

    /// The node at a point of the tree, in pixels from its upper left corner; none on empty space.
    std::optional<ResultNode> HitTest(float x, float y) const;

    std::optional<ResultNode> CurrentNode() const;  ///< The node that keys act on; none at first.

    std::optional<ResultModel::Node> CurrentPlace() const;  ///< The same node among all nodes.

    /// Makes a file's node the current one and brings it into sight. Nothing happens when there is none, or the filter
    /// leaves it out.
    void ChooseFile(const String& path);

    void CopyNode();  ///< The current node's text to the clipboard; nothing without one.

    /// All levels, but only the files of a tree so large that its rows would not fit in reasonable memory.
    void ExpandAll();

    /// The captions of the context menu, which no language file reaches by itself.
    void PutMenuCaptions(const QString& copyNode, const QString& expandAll, const QString& collapseAll);

Q_SIGNALS:
    /// The pointer has moved over the tree, or come in. `Button` is Qt's mask of pressed buttons; `Shift` adds up 1 for
    /// Shift, 2 for Ctrl and 4 for Alt; the position is in pixels, as in HitTest.
    void MouseMove(int Button, int Shift, float X, float Y);

    void MenuAboutToShow();                      ///< The context menu, with the actions of this widget.
    void DblClick();                             ///< Also on empty space.
    void CurrentChanged();                       ///< Keys act on another node from now on, or on none.
    void Added();                                ///< Nodes were added, whether they are shown already or not.
    void OpenRequested(const ResultNode& node);  ///< Return was pressed on a node of any level.

protected:
    bool viewportEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void BuildMenu();                                                  // the context menu, with the key that copies
    std::optional<ResultNode> NodeOf(const QModelIndex& index) const;  // none for an invalid index

    ResultModel results_;  // the nodes, also those that the view does not know yet
    QTimer nextShowing_;   // runs while a large tree in sight has additions that it does not show yet
    QAction* mnuCopyNode = nullptr;
    QAction* mnuExpandAll = nullptr;
    QAction* mnuCollapseAll = nullptr;
};

}  // namespace tessarine
