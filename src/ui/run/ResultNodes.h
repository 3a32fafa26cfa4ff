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

    /// Appends a file with its text as its key. A file whose text is empty, or the key of another file already, is
    /// appended without a key.
    Position AddFile(const String& text);

    /// The file with a key, if there is one; never one for an empty key.
    std::optional<Position> FindFile(const String& key) const;

    Position AddItem(Position file, const String& text);  ///< Appends an item to a file.

    /// Appends a location, the third level, to an item.
    void AddLocation(Position file, Position item, const String& text);

    // Counts and texts. A position beyond the count must not be asked for.

    Position FileCount() const { return static_cast<Position>(files_.size()); }
    Position ItemCount(Position file) const { return static_cast<Position>(files_[file].items.size()); }
    Position LocationCount(Position file, Position item) const { return lists_.Count(ItemAt(file, item).locations); }

    const String& FileText(Position file) const { return files_[file].text; }
    const String& ItemText(Position file, Position item) const { return texts_[ItemAt(file, item).text]; }
    const String& LocationText(Position file, Position item, Position location) const
    {
        return texts_[lists_.At(ItemAt(file, item).locations, location)];
    }

    /// Visits the files and items in the order in which they were added. That is not the order of the tree when a file
    /// was reported a second time and got more items then. `item` is absent in the visit of a file itself.
    void ForEach(const std::function<void(Position file, std::optional<Position> item)>& visit) const;

private:
    /// Eight bytes, whatever its text and locations are.
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

    std::deque<File> files_;                                  // never moved: keys_ points to the texts
    std::unordered_map<std::u16string_view, Position> keys_;  // the file of each key
    std::vector<Addition> additions_;                         // in the order of the log
    SharedTexts texts_;
    SharedLists lists_;
};

}  // namespace tessarine
