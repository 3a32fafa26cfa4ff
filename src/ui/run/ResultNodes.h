#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <limits>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "model/SearchLocations.h"
#include "ui/run/SharedTexts.h"

namespace tessarine
{

/// What an item of a result tree is.
enum class ItemKind : std::uint8_t {
    Line,             ///< Says something of the file: a warning, the reason of a failure.
    PairWithoutHits,  ///< A pair of the run's list that was not found in the file.
    PairWithHits,     ///< One that was, counted or not.
};

/// What some files of a tree add up to.
class ResultTotals
{
public:
    std::int64_t Files() const { return files_; }
    std::int64_t Pairs() const { return pairs_; }  ///< Pairs of the run's list with hits in any of the files.
    std::int64_t Hits() const { return hits_; }    ///< Those that were counted.

    void AddFile() { ++files_; }
    void AddHits(std::int64_t hits) { hits_ += hits; }
    void AddPair(std::int32_t pair);  ///< A pair with hits, by its position in the run's list, from 1.

private:
    std::int64_t files_ = 0;
    std::int64_t pairs_ = 0;
    std::int64_t hits_ = 0;
    std::vector<bool> isPairAdded_;
};

/// A pair in one report of a file.
struct PairOfReport {
    std::uint32_t report;  ///< The number that AddReport gave it.
    std::int32_t pair;     ///< Position in the run's list, from 1.
};

/// The nodes of a result tree: files, their items, and the items' locations. Only a file has a key, its text. Built for
/// tens of thousands of files with dozens of items each: an item takes eight bytes, a location mostly none.
///
/// All positions count from 0, in the order of addition.
class ResultNodes
{
public:
    using Position = std::uint32_t;

    /// The number of a report that nothing but the nodes is kept of.
    static constexpr std::uint32_t NotStored = std::numeric_limits<std::uint32_t>::max();

    /// Appends a file with its text as its key. A file whose text is empty, or the key of another file already, is
    /// appended without a key.
    Position AddFile(const String& text);

    /// The file with a key, if there is one; never one for an empty key.
    std::optional<Position> FindFile(const String& key) const;

    /// A file is reported, mostly for the first time: its lines follow, then its pairs in the order of the run's list.
    /// `number` is what ReportsOf and PairOf give back, `hits` what its counts add up to.
    void AddReport(Position file, std::uint32_t number, std::int64_t hits);

    Position AddItem(Position file, const String& text, ItemKind kind);  ///< Appends an item to a file.

    /// Appends a location, the third level, to an item. `hasHits` tells whether the pair was found there.
    void AddLocation(Position file, Position item, const String& text, Location location, bool hasHits);

    // Counts and texts. A position beyond the count must not be asked for.

    Position FileCount() const { return static_cast<Position>(files_.size()); }
    Position ItemCount(Position file) const { return static_cast<Position>(files_[file].items.size()); }
    Position LocationCount(Position file, Position item) const { return lists_.Count(ItemAt(file, item).locations); }

    const String& FileText(Position file) const { return files_[file].text; }
    const String& ItemText(Position file, Position item) const { return texts_[ItemAt(file, item).text >> kindBits]; }
    const String& LocationText(Position file, Position item, Position location) const
    {
        return texts_[lists_.At(ItemAt(file, item).locations, location) >> locationBits];
    }

    // What the nodes stand for, by positions as above.

    const ResultTotals& Totals() const { return totals_; }      ///< Of all files.
    void AddTo(ResultTotals& totals, Position file) const;      ///< Adds what one file holds.
    std::vector<std::uint32_t> ReportsOf(Position file) const;  ///< The stored ones, each once.
    ItemKind KindOf(Position file, Position item) const;

    /// The pair of an item; nothing for a line, and without a report.
    std::optional<PairOfReport> PairOf(Position file, Position item) const;

    Location LocationOf(Position file, Position item, Position location) const;
    bool LocationHasHits(Position file, Position item, Position location) const;

    /// Visits the files and items in the order in which they were added. That is not the order of the tree when a file
    /// was reported a second time and got more items then. `item` is absent in the visit of a file itself.
    void ForEach(const std::function<void(Position file, std::optional<Position> item)>& visit) const;

private:
    /// Eight bytes, whatever its text and locations are.
    struct Item {
        SharedTexts::Number text;  // its number and, in the lowest bits, an ItemKind
        SharedLists::Number locations;
    };

    struct Report {
        std::uint32_t number;
        Position firstItem;
        Position lines;  // items in front of the pairs
    };

    struct File {
        String text;
        std::vector<Item> items;
        std::vector<Report> reports;
        std::int64_t hits = 0;
    };

    /// A file, or items added to one without anything in between.
    struct Addition {
        Position file;
        Position firstItem;
        Position itemsEnd;
        bool isWithFile;
    };

    static constexpr int kindBits = 2;
    // Of a location's number in lists_: its text's number, its Location in four bits, and whether it has hits.
    static constexpr int locationBits = 5;

    const Item& ItemAt(Position file, Position item) const { return files_[file].items[item]; }

    std::deque<File> files_;                                  // never moved: keys_ points to the texts
    std::unordered_map<std::u16string_view, Position> keys_;  // the file of each key
    std::vector<Addition> additions_;                         // in the order of the log
    SharedTexts texts_;
    SharedLists lists_;
    ResultTotals totals_;
};

}  // namespace tessarine
