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
/// Its own comfort: the context menu and Ctrl+C copy a node's text, the menu expands and collapses all, Enter asks to
/// open a node.
class ResultTree : public QTreeView
{
    Q_OBJECT

public:
    explicit ResultTree(const char* name, QWidget* parent = nullptr);

    /// The nodes are added here; the tree shows them from ShowAdditions on.
    ResultModel& Results() { return results_; }

    /// Shows what was added: at once in a tree of some hundred files, later on in a larger one, where each look at the
    /// rows costs time, a few times a second and only while the tree is in sight.
    void ShowAdditions();

    const ResultNodes& Nodes() const { return results_.Nodes(); }

    /// The node at a point of the tree, in pixels from its upper left corner; none on empty space.
    std::optional<ResultNode> HitTest(float x, float y) const;

    std::optional<ResultNode> CurrentNode() const;

    void CopyNode();  ///< The current node's text to the clipboard; nothing without one.

    /// All levels, but only the files of a tree so large that its rows would not fit in reasonable memory.
    void ExpandAll();

    void PutMenuCaptions(const QString& copyNode, const QString& expandAll, const QString& collapseAll);

Q_SIGNALS:
    /// The pointer has moved over the tree, or come in.
    void MouseMove(int Button, int Shift, float X, float Y);

    void DblClick();  ///< Also on empty space.
    void OpenRequested(const ResultNode& node);

protected:
    bool viewportEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void BuildMenu();
    std::optional<ResultNode> NodeOf(const QModelIndex& index) const;

    ResultModel results_;
    QTimer nextShowing_;
    QAction* mnuCopyNode = nullptr;
    QAction* mnuExpandAll = nullptr;
    QAction* mnuCollapseAll = nullptr;
};

}  // namespace tessarine
