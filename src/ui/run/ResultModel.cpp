#include "ui/run/ResultModel.h"

#include <algorithm>
#include <utility>

#include "i18n/QtText.h"

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

ResultNodes::Position RowOf(const QModelIndex& index)
{
    return static_cast<ResultNodes::Position>(index.row());
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

int Count(std::size_t size)
{
    return static_cast<int>(size);
}

}  // namespace

ResultModel::Position ResultModel::AddItem(Position file, const String& text)
{
    // Items of a file that is not shown yet are shown with it; a shown file has to be told of separately.
    if (file < shownItems_.size() && std::ranges::find(grownFiles_, file) == grownFiles_.end())
        grownFiles_.push_back(file);
    return nodes_.AddItem(file, text);
}

void ResultModel::ShowAdditions()
{
    for (const Position file : std::exchange(grownFiles_, {}))
        ShowItems(file);
    if (shownItems_.size() == nodes_.FileCount())
        return;
    // One announcement for all new files: each one costs a view a layout of its own.
    beginInsertRows({}, Count(shownItems_.size()), Count(nodes_.FileCount()) - 1);
    for (Position file = static_cast<Position>(shownItems_.size()); file < nodes_.FileCount(); ++file)
        shownItems_.push_back(nodes_.ItemCount(file));
    endInsertRows();
}

void ResultModel::ShowItems(Position file)
{
    beginInsertRows(index(Count(file), 0), Count(shownItems_[file]), Count(nodes_.ItemCount(file)) - 1);
    shownItems_[file] = nodes_.ItemCount(file);
    endInsertRows();
}

QModelIndex ResultModel::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent))
        return {};
    switch (LevelOf(parent)) {
        case Level::Root:
            return createIndex(row, column, Parents{0});
        case Level::File:
            return createIndex(row, column, OfItem(RowOf(parent)));
        default:
            return createIndex(row, column, OfLocation(FileOf(parent), RowOf(parent)));
    }
}

QModelIndex ResultModel::parent(const QModelIndex& index) const
{
    switch (LevelOf(index)) {
        case Level::Item:
            return createIndex(Count(FileOf(index)), 0, Parents{0});
        case Level::Location:
            return createIndex(Count(ItemOf(index)), 0, OfItem(FileOf(index)));
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
            return Count(shownItems_.size());
        case Level::File:
            return Count(shownItems_[RowOf(parent)]);
        case Level::Item:
            return Count(nodes_.LocationCount(FileOf(parent), RowOf(parent)));
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
    return index.isValid() && role == Qt::DisplayRole ? ToQt(TextOf(index)) : QVariant();
}

const String& ResultModel::TextOf(const QModelIndex& index) const
{
    switch (LevelOf(index)) {
        case Level::File:
            return nodes_.FileText(RowOf(index));
        case Level::Item:
            return nodes_.ItemText(FileOf(index), RowOf(index));
        default:
            return nodes_.LocationText(FileOf(index), ItemOf(index), RowOf(index));
    }
}

bool ResultModel::IsFile(const QModelIndex& index) const
{
    return LevelOf(index) == Level::File;
}

}  // namespace tessarine
