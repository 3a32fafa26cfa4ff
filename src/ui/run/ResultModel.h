#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include <QAbstractItemModel>

#include "ui/run/NodeFilter.h"
#include "ui/run/ResultNodes.h"

namespace tessarine
{

/// The nodes of a result tree, as a view sees them. A node is added at once and shown by ShowAdditions, so that a
/// file's many rows cost a view one look; a filter that changes costs it one as well.
///
/// Nodes without hits are grey: pairs, and locations of pairs.
class ResultModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    using Position = ResultNodes::Position;
    using QAbstractItemModel::QAbstractItemModel;

    /// Where a node stands among all nodes, whatever the filter shows. The further down, the more of it is there.
    struct Node {
        Position file;
        std::optional<Position> item;
        std::optional<Position> location;
    };

    const ResultNodes& Nodes() const { return nodes_; }  ///< All that were added, shown or not.

    /// See ResultNodes. Files and items are appended at the positions that come back.
    Position AddFile(const String& text) { return nodes_.AddFile(text); }
    void AddReport(Position file, std::uint32_t number, std::int64_t hits) { nodes_.AddReport(file, number, hits); }
    Position AddItem(Position file, const String& text, ItemKind kind);

    /// Appends a location to an item that is not shown yet. To one that is, views would never see it.
    void AddLocation(Position file, Position item, const String& text, Location location, bool hasHits)
    {
        nodes_.AddLocation(file, item, text, location, hasHits);
    }

    /// Lets views see what was added since the last call, as far as the filter shows it.
    void ShowAdditions();

    /// Shows what passes the filter, of what is there and of what is to come. Nodes that stay keep their selection and
    /// stay open.
    void PutFilter(const NodeFilter& filter);
    const NodeFilter& Filter() const { return filter_; }

    /// Of the files that pass the filter.
    ResultTotals Totals() const;

    // What views read, in Qt's own terms.

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

    const String& TextOf(const QModelIndex& index) const;  ///< The text of a node; `index` must be valid.
    bool IsFile(const QModelIndex& index) const;           ///< Whether a node is a file; false without one.
    Node NodeAt(const QModelIndex& index) const;           ///< `index` must be valid.
    QModelIndex IndexOf(const Node& node) const;           ///< Invalid when the filter leaves the node out.

private:
    bool IsGrey(const Node& node) const;
    void ShowItems(Position file);  // of a file that is known already

    /// The items of a file that views know, when the filter leaves some out.
    const std::vector<Position>& ItemsShown(Position file) const;
    Position ItemAt(Position file, int row) const;
    std::optional<int> RowOfItem(Position file, Position item) const;

    ResultNodes nodes_;
    NodeFilter filter_;
    std::vector<Position> knownItems_;            // by file: those that views know; as long as there are files known
    std::vector<Position> grownFiles_;            // known, with items that are not
    std::vector<Position> fileOfRow_;             // the files shown
    std::vector<int> rowOfFile_;                  // by file known; -1 for those not shown
    mutable std::optional<ResultTotals> totals_;  // of the files shown, until more come

    // What ItemsShown gave last: a view asks for one file many times.
    mutable std::optional<Position> lastFile_;
    mutable std::vector<Position> lastItems_;
};

}  // namespace tessarine
