#include "ui/run/ResultNodes.h"

#include <algorithm>

#include "platform/CheckedInteger.h"

namespace tessarine
{

namespace
{

/// A text's number with some bits below it.
std::uint32_t WithBits(SharedTexts::Number text, int bits, std::uint32_t value)
{
    return Checked<std::uint32_t>((std::int64_t{text} << bits) + value);
}

}  // namespace

void ResultTotals::AddPair(std::int32_t pair)
{
    const auto position = static_cast<std::size_t>(pair);
    if (position >= isPairAdded_.size())
        isPairAdded_.resize(position + 1);
    if (isPairAdded_[position])
        return;
    isPairAdded_[position] = true;
    ++pairs_;
}

ResultNodes::Position ResultNodes::AddFile(const String& text)
{
    const Position file = FileCount();
    files_.push_back({text, {}, {}});
    // The first file of a name keeps it as its key; a result without a name can't be looked up.
    if (!text.empty())
        keys_.try_emplace(files_.back().text, file);
    additions_.push_back({file, 0, 0, true});
    totals_.AddFile();
    return file;
}

std::optional<ResultNodes::Position> ResultNodes::FindFile(const String& key) const
{
    const auto found = keys_.find(key);
    return found == keys_.end() ? std::nullopt : std::optional(found->second);
}

void ResultNodes::AddReport(Position file, std::uint32_t number, std::int64_t hits)
{
    files_[file].reports.push_back({number, ItemCount(file), 0});
    files_[file].hits += hits;
    totals_.AddHits(hits);
}

ResultNodes::Position ResultNodes::AddItem(Position file, const String& text, ItemKind kind)
{
    const Position item = ItemCount(file);
    files_[file].items.push_back(
        {WithBits(texts_.Add(text), kindBits, static_cast<std::uint32_t>(kind)), SharedLists::Empty});
    if (kind == ItemKind::Line && !files_[file].reports.empty())
        ++files_[file].reports.back().lines;
    if (const auto pair = PairOf(file, item); pair && kind == ItemKind::PairWithHits)
        totals_.AddPair(pair->pair);
    // Items that follow each other in one file share an entry: a file has as many items as the job has pairs.
    if (additions_.back().file == file)
        additions_.back().itemsEnd = item + 1;
    else
        additions_.push_back({file, item, item + 1, false});
    return item;
}

void ResultNodes::AddLocation(Position file, Position item, const String& text, Location location, bool hasHits)
{
    static_assert(SearchLocations.size() <= 1 << (locationBits - 1));
    SharedLists::Number& locations = files_[file].items[item].locations;
    const auto what = static_cast<std::uint32_t>(location) << 1 | std::uint32_t{hasHits};
    locations = lists_.Append(locations, WithBits(texts_.Add(text), locationBits, what));
}

void ResultNodes::AddTo(ResultTotals& totals, Position file) const
{
    totals.AddFile();
    totals.AddHits(files_[file].hits);
    for (Position item = 0; item < ItemCount(file); ++item)
        if (KindOf(file, item) == ItemKind::PairWithHits)
            if (const auto pair = PairOf(file, item))
                totals.AddPair(pair->pair);
}

std::vector<std::uint32_t> ResultNodes::ReportsOf(Position file) const
{
    // A run may hand over the same result twice.
    std::vector<std::uint32_t> numbers;
    for (const Report& report : files_[file].reports)
        if (report.number != NotStored && std::ranges::find(numbers, report.number) == numbers.end())
            numbers.push_back(report.number);
    return numbers;
}

ItemKind ResultNodes::KindOf(Position file, Position item) const
{
    return static_cast<ItemKind>(ItemAt(file, item).text & ((1U << kindBits) - 1));
}

std::optional<PairOfReport> ResultNodes::PairOf(Position file, Position item) const
{
    // The last report that begins at the item or before it.
    const auto& reports = files_[file].reports;
    const auto after = std::ranges::upper_bound(reports, item, {}, &Report::firstItem);
    if (KindOf(file, item) == ItemKind::Line || after == reports.begin())
        return std::nullopt;
    const Report& report = *(after - 1);
    return PairOfReport{report.number, static_cast<std::int32_t>(item - report.firstItem - report.lines) + 1};
}

Location ResultNodes::LocationOf(Position file, Position item, Position location) const
{
    const std::uint32_t number = lists_.At(ItemAt(file, item).locations, location);
    return static_cast<Location>(number >> 1 & ((1U << (locationBits - 1)) - 1));
}

bool ResultNodes::LocationHasHits(Position file, Position item, Position location) const
{
    return (lists_.At(ItemAt(file, item).locations, location) & 1) != 0;
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
