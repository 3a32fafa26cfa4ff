#include "ui/run/ResultModel.h"

#include <algorithm>
#include <utility>

#include <QGuiApplication>

#include "i18n/QtText.h"
#include "ui/run/GreyText.h"

namespace tessarine
{

namespace
{

/// An index knows its parents by its internal number: the file + 1 in the low half, the item + 1 in the high one; 0 for
/// none.
using Parents = quintptr;
// Two numbers of 32 bits in one; with smaller pointers a file's number would run into the item's.
static_assert(sizeof(Parents) == 8);
constexpr int halfBits = 32;

constexpr Parents OfItem(ResultNodes::Position file)
{
    return Parents{file} + 1;
}

constexpr Parents OfLocation(ResultNodes::Position file, ResultNodes::Position item)
{
    return (Parents{item} + 1) << halfBits | OfItem(file);
}

ResultNodes::Position FileOf(const QModelIndex& index)
{
    return static_cast<ResultNodes::Position>(index.internalId()) - 1;
}

ResultNodes::Position ItemOf(const QModelIndex& index)
{
    return static_cast<ResultNodes::Position>(index.internalId() >> halfBits) - 1;
}

enum class Level { Root, File, Item, Location };

Level LevelOf(const QModelIndex& index)
{
    if (!index.isValid())
        return Level::Root;
    if (index.internalId() == 0)
        return Level::File;
    return index.internalId() >> halfBits == 0 ? Level::Item : Level::Location;
}

/// The row of a file that the filter does not show.
constexpr int hidden = -1;

int Count(std::size_t size)
{
    return static_cast<int>(size);
}

}  // namespace

ResultModel::Position ResultModel::AddItem(Position file, const String& text, ItemKind kind)
{
    // Items of a file that is not known yet are shown with it; a known file has to be told of separately.
    if (file < knownItems_.size() && std::ranges::find(grownFiles_, file) == grownFiles_.end())
        grownFiles_.push_back(file);
    return nodes_.AddItem(file, text, kind);
}

void ResultModel::ShowAdditions()
{
    totals_.reset();
    for (const Position file : std::exchange(grownFiles_, {}))
        ShowItems(file);
    const Position first = static_cast<Position>(knownItems_.size());
    std::vector<Position> shown;
    for (Position file = first; file < nodes_.FileCount(); ++file)
        if (filter_.ShowsFile(nodes_, file))
            shown.push_back(file);
    // One announcement for all new files: each one costs a view a layout of its own.
    if (!shown.empty())
        beginInsertRows({}, Count(fileOfRow_.size()), Count(fileOfRow_.size() + shown.size()) - 1);
    for (Position file = first; file < nodes_.FileCount(); ++file)
        knownItems_.push_back(nodes_.ItemCount(file));
    rowOfFile_.resize(nodes_.FileCount(), hidden);
    for (const Position file : shown) {
        rowOfFile_[file] = Count(fileOfRow_.size());
        fileOfRow_.push_back(file);
    }
    if (!shown.empty())
        endInsertRows();
}

void ResultModel::ShowItems(Position file)
{
    int shown = 0;
    for (Position item = knownItems_[file]; item < nodes_.ItemCount(file); ++item)
        shown += filter_.ShowsItem(nodes_, file, item) ? 1 : 0;
    const QModelIndex parent = IndexOf({file, {}, {}});
    const bool isSeen = parent.isValid() && shown > 0;
    if (isSeen)
        beginInsertRows(parent, rowCount(parent), rowCount(parent) + shown - 1);
    knownItems_[file] = nodes_.ItemCount(file);
    lastFile_.reset();
    if (isSeen)
        endInsertRows();
}

void ResultModel::PutFilter(const NodeFilter& filter)
{
    if (filter == filter_)
        return;
    Q_EMIT layoutAboutToBeChanged();
    const QModelIndexList before = persistentIndexList();
    std::vector<Node> nodes;
    nodes.reserve(static_cast<std::size_t>(before.size()));
    for (const QModelIndex& index : before)
        nodes.push_back(NodeAt(index));

    filter_ = filter;
    totals_.reset();
    lastFile_.reset();
    fileOfRow_.clear();
    rowOfFile_.assign(knownItems_.size(), hidden);
    for (Position file = 0; file < knownItems_.size(); ++file)
        if (filter_.ShowsFile(nodes_, file)) {
            rowOfFile_[file] = Count(fileOfRow_.size());
            fileOfRow_.push_back(file);
        }

    QModelIndexList after;
    after.reserve(before.size());
    for (const Node& node : nodes)
        after.push_back(IndexOf(node));
    changePersistentIndexList(before, after);
    Q_EMIT layoutChanged();
}

ResultTotals ResultModel::Totals() const
{
    if (filter_.name.isEmpty())
        return nodes_.Totals();
    if (!totals_) {
        totals_.emplace();
        for (const Position file : fileOfRow_)
            nodes_.AddTo(*totals_, file);
    }
    return *totals_;
}

const std::vector<ResultModel::Position>& ResultModel::ItemsShown(Position file) const
{
    if (lastFile_ == file)
        return lastItems_;
    lastItems_.clear();
    for (Position item = 0; item < knownItems_[file]; ++item)
        if (filter_.ShowsItem(nodes_, file, item))
            lastItems_.push_back(item);
    lastFile_ = file;
    return lastItems_;
}

ResultModel::Position ResultModel::ItemAt(Position file, int row) const
{
    const auto position = static_cast<std::size_t>(row);
    return filter_.onlyPairsWithHits ? ItemsShown(file)[position] : static_cast<Position>(position);
}

std::optional<int> ResultModel::RowOfItem(Position file, Position item) const
{
    if (!filter_.onlyPairsWithHits)
        return static_cast<int>(item);
    const std::vector<Position>& items = ItemsShown(file);
    const auto place = std::ranges::lower_bound(items, item);
    if (place == items.end() || *place != item)
        return std::nullopt;
    return static_cast<int>(place - items.begin());
}

ResultModel::Node ResultModel::NodeAt(const QModelIndex& index) const
{
    switch (LevelOf(index)) {
        case Level::Item:
            return {FileOf(index), ItemAt(FileOf(index), index.row()), {}};
        case Level::Location:
            return {FileOf(index), ItemOf(index), static_cast<Position>(index.row())};
        default:
            return {fileOfRow_[static_cast<std::size_t>(index.row())], {}, {}};
    }
}

QModelIndex ResultModel::IndexOf(const Node& node) const
{
    if (rowOfFile_[node.file] == hidden)
        return {};
    if (!node.item)
        return createIndex(rowOfFile_[node.file], 0, Parents{0});
    const auto row = RowOfItem(node.file, *node.item);
    if (!row)
        return {};
    if (!node.location)
        return createIndex(*row, 0, OfItem(node.file));
    return createIndex(static_cast<int>(*node.location), 0, OfLocation(node.file, *node.item));
}

QModelIndex ResultModel::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent))
        return {};
    switch (LevelOf(parent)) {
        case Level::Root:
            return createIndex(row, column, Parents{0});
        case Level::File:
            return createIndex(row, column, OfItem(NodeAt(parent).file));
        default:
            return createIndex(row, column, OfLocation(FileOf(parent), *NodeAt(parent).item));
    }
}

QModelIndex ResultModel::parent(const QModelIndex& index) const
{
    switch (LevelOf(index)) {
        case Level::Item:
            return IndexOf({FileOf(index), {}, {}});
        case Level::Location:
            return IndexOf({FileOf(index), ItemOf(index), {}});
        default:
            return {};
    }
}

int ResultModel::rowCount(const QModelIndex& parent) const
{
    // By Qt's custom only the first column of a row has children.
    if (parent.column() > 0)
        return 0;
    switch (LevelOf(parent)) {
        case Level::Root:
            return Count(fileOfRow_.size());
        case Level::File: {
            const Position file = NodeAt(parent).file;
            return filter_.onlyPairsWithHits ? Count(ItemsShown(file).size()) : Count(knownItems_[file]);
        }
        case Level::Item: {
            const Node node = NodeAt(parent);
            return Count(nodes_.LocationCount(node.file, *node.item));
        }
        default:
            return 0;
    }
}

int ResultModel::columnCount(const QModelIndex&) const
{
    return 1;
}

QVariant ResultModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    if (role == Qt::DisplayRole)
        return ToQt(TextOf(index));
    if (role == Qt::ForegroundRole && IsGrey(NodeAt(index)))
        return GreyText(QGuiApplication::palette());
    return {};
}

bool ResultModel::IsGrey(const Node& node) const
{
    if (node.location)
        return !nodes_.LocationHasHits(node.file, *node.item, *node.location);
    return node.item && nodes_.KindOf(node.file, *node.item) == ItemKind::PairWithoutHits;
}

const String& ResultModel::TextOf(const QModelIndex& index) const
{
    const Node node = NodeAt(index);
    if (node.location)
        return nodes_.LocationText(node.file, *node.item, *node.location);
    return node.item ? nodes_.ItemText(node.file, *node.item) : nodes_.FileText(node.file);
}

bool ResultModel::IsFile(const QModelIndex& index) const
{
    return LevelOf(index) == Level::File;
}

}  // namespace tessarine
