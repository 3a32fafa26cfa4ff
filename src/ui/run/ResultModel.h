#pragma once

#include <vector>

#include <QAbstractItemModel>

#include "ui/run/ResultNodes.h"

namespace tessarine
{

/// The nodes of a result tree, as a view sees them. A node is added at once and shown by ShowAdditions, so that a
/// file's many rows cost a view one look.
class ResultModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    using Position = ResultNodes::Position;
    using QAbstractItemModel::QAbstractItemModel;

    const ResultNodes& Nodes() const { return nodes_; }  ///< All that were added, shown or not.

    /// Appends a file, or an item to a file. Both give the new node's position among its like, from 0.
    Position AddFile(const String& text) { return nodes_.AddFile(text); }
    Position AddItem(Position file, const String& text);

    /// Appends a location to an item that is not shown yet. To one that is, views would never see it.
    void AddLocation(Position file, Position item, const String& text) { nodes_.AddLocation(file, item, text); }

    /// Lets views see what was added since the last call.
    void ShowAdditions();

    // What views read, in Qt's own terms.

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

    const String& TextOf(const QModelIndex& index) const;  ///< The text of a node; `index` must be valid.
    bool IsFile(const QModelIndex& index) const;           ///< Whether a node is a file; false without one.

private:
    void ShowItems(Position file);  // of a file that is shown already

    ResultNodes nodes_;
    std::vector<Position> shownItems_;  // by file; as long as there are files shown
    std::vector<Position> grownFiles_;  // shown, with items that are not
};

}  // namespace tessarine
