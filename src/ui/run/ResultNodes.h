#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "ui/run/SharedTexts.h"

namespace tessarine
{

/// The nodes of a result tree: files, their items, and the items' locations. Only a file has a key, its text. Built for
/// tens of thousands of files with dozens of items each: an item takes eight bytes, a location mostly none.
///
/// All positions count from 0, in the order of addition.
class ResultNodes
{
public:
    using Position = std::uint32_t;

    /// Appends a file under its text as key. An empty text is no key, nor is one that a file has already.
    Position AddFile(const String& text);

    /// The file with a key, if there is one. An empty key is none.
    std::optional<Position> FindFile(const String& key) const;

    Position AddItem(Position file, const String& text);

    /// Appends a location to an item.
    void AddLocation(Position file, Position item, const String& text);

    Position FileCount() const { return static_cast<Position>(files_.size()); }
    Position ItemCount(Position file) const { return static_cast<Position>(files_[file].items.size()); }
    Position LocationCount(Position file, Position item) const { return lists_.Count(ItemAt(file, item).locations); }

    const String& FileText(Position file) const { return files_[file].text; }
    const String& ItemText(Position file, Position item) const { return texts_[ItemAt(file, item).text]; }
    const String& LocationText(Position file, Position item, Position location) const
    {
        return texts_[lists_.At(ItemAt(file, item).locations, location)];
    }

    /// Visits the files and items in the order in which they were added, which is not that of the tree when a file got
    /// items a second time. The item is absent for a file itself.
    void ForEach(const std::function<void(Position file, std::optional<Position> item)>& visit) const;

private:
    struct Item {
        SharedTexts::Number text;
        SharedLists::Number locations;
    };

    struct File {
        String text;
        std::vector<Item> items;
    };

    /// A file, or items added to one without anything in between.
    struct Addition {
        Position file;
        Position firstItem;
        Position itemsEnd;
        bool isWithFile;
    };

    const Item& ItemAt(Position file, Position item) const { return files_[file].items[item]; }

    std::deque<File> files_;  // never moved: keys_ points to the texts
    std::unordered_map<std::u16string_view, Position> keys_;
    std::vector<Addition> additions_;
    SharedTexts texts_;
    SharedLists lists_;
};

}  // namespace tessarine
