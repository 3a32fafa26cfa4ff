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

    const ResultNodes& Nodes() const { return nodes_; }

    Position AddFile(const String& text) { return nodes_.AddFile(text); }
    Position AddItem(Position file, const String& text);

    /// Only to an item that is not shown yet.
    void AddLocation(Position file, Position item, const String& text) { nodes_.AddLocation(file, item, text); }

    void ShowAdditions();

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

    const String& TextOf(const QModelIndex& index) const;
    bool IsFile(const QModelIndex& index) const;

private:
    void ShowItems(Position file);

    ResultNodes nodes_;
    std::vector<Position> shownItems_;  // by file; as long as there are files shown
    std::vector<Position> grownFiles_;  // shown, with items that are not
};

}  // namespace tessarine
