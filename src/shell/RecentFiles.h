#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "platform/String.h"

class QAction;
class QMenu;

namespace tessarine
{

/// The project files last used: a store that only grows, and a menu that is its view.
///
/// The store is section "MRUFiles" of the application's settings. Keys are numbers from "0" on without gaps, in the
/// order of use; a path may stand in many entries.
///
/// The menu's items are an array `mnuDefRF`: at first one, captioned "(Empty)", then up to 11, of which the last one is
/// hidden. An item's text is its caption, its data (text) is its tag: the path that a click means, empty on "(Empty)".
///
/// A failure in a procedure is logged and ends it.
class RecentFiles
{
public:
    /// Puts mnuDefRF(0) into `mnuRecent`. A click on an item calls `click` with its index.
    RecentFiles(QMenu& mnuRecent, std::function<void(std::int32_t)> click);
    RecentFiles(const RecentFiles&) = delete;
    RecentFiles& operator=(const RecentFiles&) = delete;

    /// Records a use of a file, and builds the menu anew. Events are delivered meanwhile, hence a path of its own.
    void SaveMRUFileList(String Path);

    /// Builds the menu from the store: the latest use at the top, numbered from 1, each path once. MRUCount must be 0
    /// and the menu have its one item.
    void GetMRUFileList();

    String Caption(std::int32_t Index) const;
    String Tag(std::int32_t Index) const;
    std::int32_t HighestIndex() const;  ///< Of the menu's array.

    std::int32_t MRUCount = 0;  ///< The highest index in use, at most 10.

    /// Reads of the store in the last GetMRUFileList, which is the number of its entries plus 1.
    std::int16_t MRUStoreCount = 0;

private:
    void AddMRUItem(const String& Path);
    std::int32_t CheckForDuplicateMRU(const String& Path) const;  ///< Index of the item, or -1.
    void ReorderMRUList(const String& Path, std::int32_t Index);
    void AddMenuElement(const String& Path);

    std::vector<String> ReadStore();
    void FeedMenu(const std::vector<String>& MRUList);
    void NumberItems();
    void LoadItem();     // appends an item to the array
    void UnloadItems();  // all but the first
    void MoveDown(std::int32_t from);
    QAction& Item(std::int32_t Index) const;
    void SetItem(std::int32_t Index, const String& caption, const String& tag);

    QMenu& menu_;
    std::function<void(std::int32_t)> click_;
    std::vector<QAction*> mnuDefRF_;  // of the menu
};

}  // namespace tessarine
