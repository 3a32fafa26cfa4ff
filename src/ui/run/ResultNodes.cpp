#include "ui/run/ResultNodes.h"

namespace tessarine
{

ResultNodes::Position ResultNodes::AddFile(const String& text)
{
    const Position file = FileCount();
    files_.push_back({text, {}});
    // The first file of a name keeps it as its key; a result without a name can't be looked up.
    if (!text.empty())
        keys_.try_emplace(files_.back().text, file);
    additions_.push_back({file, 0, 0, true});
    return file;
}

std::optional<ResultNodes::Position> ResultNodes::FindFile(const String& key) const
{
    const auto found = keys_.find(key);
    return found == keys_.end() ? std::nullopt : std::optional(found->second);
}

ResultNodes::Position ResultNodes::AddItem(Position file, const String& text)
{
    const Position item = ItemCount(file);
    files_[file].items.push_back({texts_.Add(text), SharedLists::Empty});
    // Items that follow each other in one file share an entry: a file has as many items as the job has pairs.
    if (additions_.back().file == file)
        additions_.back().itemsEnd = item + 1;
    else
        additions_.push_back({file, item, item + 1, false});
    return item;
}

void ResultNodes::AddLocation(Position file, Position item, const String& text)
{
    SharedLists::Number& locations = files_[file].items[item].locations;
    locations = lists_.Append(locations, texts_.Add(text));
}

void ResultNodes::ForEach(const std::function<void(Position file, std::optional<Position> item)>& visit) const
{
    for (const Addition& addition : additions_) {
        if (addition.isWithFile)
            visit(addition.file, std::nullopt);
        for (Position item = addition.firstItem; item < addition.itemsEnd; ++item)
            visit(addition.file, item);
    }
}

}  // namespace tessarine
