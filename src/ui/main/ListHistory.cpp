#include "ui/main/ListHistory.h"

#include <algorithm>
#include <exception>
#include <unordered_set>
#include <utility>

#include "log/Treatments.h"

namespace tessarine
{

namespace
{

using Items = std::vector<ListHistory::Item>;

void PutContent(FindAndReplaceItem& item, const PairContent& content)
{
    item.FindWhat = content.FindWhat;
    item.ReplaceWith = content.ReplaceWith;
    if (item.OptionSetting)
        *item.OptionSetting = content.setting;
}

bool IsSame(const PairContent& one, const PairContent& other)
{
    return one.FindWhat == other.FindWhat && one.ReplaceWith == other.ReplaceWith && one.setting == other.setting;
}

std::unordered_set<const FindAndReplaceItem*> SetOf(Items::const_iterator from, Items::const_iterator to)
{
    std::unordered_set<const FindAndReplaceItem*> set;
    for (; from != to; ++from)
        set.insert(from->get());
    return set;
}

}  // namespace

PairContent ContentOf(const FindAndReplaceItem& item)
{
    return {item.FindWhat, item.ReplaceWith, item.OptionSetting ? *item.OptionSetting : OptionSetting()};
}

bool ListHistory::Do(const ListReference& list, const std::vector<std::int32_t>& rows,
                     const std::function<void()>& change)
{
    if (isInStep_) {
        change();
        return false;
    }
    const Items before = NotNull(list)->NewEnum();
    std::vector<Rewriting> rewritten;
    for (const std::int32_t row : rows)
        if (const Item& item = before.at(static_cast<std::size_t>(row) - 1))
            rewritten.push_back({item, ContentOf(*item), {}});

    std::exception_ptr failure;
    isInStep_ = true;
    try {
        change();
    } catch (...) {
        failure = std::current_exception();
    }
    isInStep_ = false;

    Step step = list ? Difference(before, list->NewEnum()) : Step();
    for (Rewriting& pair : rewritten) {
        pair.after = ContentOf(*pair.item);
        if (!IsSame(pair.before, pair.after))
            step.rewritten.push_back(std::move(pair));
    }
    const bool hasChanged = !step.removed.empty() || !step.added.empty() || !step.rewritten.empty();
    if (hasChanged)
        Keep(std::move(step));
    if (failure)
        std::rethrow_exception(failure);
    return hasChanged;
}

void ListHistory::Rewritten(const Item& item, PairContent before)
{
    Step step;
    step.rewritten.push_back({item, std::move(before), ContentOf(*item)});
    Keep(std::move(step));
}

void ListHistory::Keep(Step step)
{
    undone_.clear();
    if (saved_ && *saved_ > done_.size())
        saved_.reset();
    done_.push_back(std::move(step));
}

/// Between the equal starts and ends of two lists, a pair of the one that is not in the other has gone or come, and so
/// has one that others have passed.
ListHistory::Step ListHistory::Difference(const Items& before, const Items& after)
{
    const auto [from, to] = std::mismatch(before.begin(), before.end(), after.begin(), after.end());
    const auto [fromBack, toBack] = std::mismatch(before.rbegin(), std::make_reverse_iterator(from), after.rbegin(),
                                                  std::make_reverse_iterator(to));
    const auto fromEnd = fromBack.base();
    const auto toEnd = toBack.base();
    auto old = SetOf(from, fromEnd);
    const auto current = SetOf(to, toEnd);

    Step step;
    auto left = from;
    auto right = to;
    const auto removeLeft = [&] {
        step.removed.push_back({static_cast<std::size_t>(left - before.begin()), *left});
        old.erase(left->get());
        ++left;
    };
    while (left != fromEnd || right != toEnd) {
        if (right != toEnd && !old.contains(right->get())) {
            step.added.push_back({static_cast<std::size_t>(right - after.begin()), *right});
            ++right;
        } else if (left != fromEnd && (right == toEnd || !current.contains(left->get()) || *left != *right)) {
            removeLeft();
        } else {
            ++left;
            ++right;
        }
    }
    return step;
}

/// The list after a change; nothing when it was not the one that the change is for.
std::optional<Items> ListHistory::Changed(const Items& items, const std::vector<Placed>& removed,
                                          const std::vector<Placed>& added)
{
    Items kept;
    kept.reserve(items.size());
    auto gone = removed.begin();
    for (std::size_t position = 0; position < items.size(); ++position) {
        if (gone == removed.end() || gone->position != position)
            kept.push_back(items[position]);
        else if ((gone++)->item != items[position])
            return std::nullopt;
    }
    if (gone != removed.end())
        return std::nullopt;

    Items changed;
    changed.reserve(kept.size() + added.size());
    auto next = kept.begin();
    for (const auto& [position, item] : added) {
        while (changed.size() < position) {
            if (next == kept.end())
                return std::nullopt;
            changed.push_back(*next++);
        }
        changed.push_back(item);
    }
    changed.insert(changed.end(), next, kept.end());
    return changed;
}

std::vector<std::int32_t> ListHistory::RowsToShow(const Items& items, const std::vector<Placed>& removed,
                                                  const std::vector<Placed>& added, const Step& step)
{
    std::unordered_set<const FindAndReplaceItem*> touched;
    for (const Placed& pair : added)
        touched.insert(pair.item.get());
    for (const Rewriting& pair : step.rewritten)
        touched.insert(pair.item.get());
    std::vector<std::int32_t> rows;
    for (std::size_t position = 0; position < items.size(); ++position)
        if (touched.contains(items[position].get()))
            rows.push_back(static_cast<std::int32_t>(position) + 1);
    if (rows.empty() && !items.empty() && !removed.empty())
        rows.push_back(static_cast<std::int32_t>(std::min(removed.front().position + 1, items.size())));
    return rows;
}

std::optional<std::vector<std::int32_t>> ListHistory::Undo(FindAndReplaceItems& list)
{
    if (done_.empty())
        return std::nullopt;
    const Step& step = done_.back();
    const auto items = Changed(list.NewEnum(), step.added, step.removed);
    if (!items)
        return std::nullopt;
    for (auto pair = step.rewritten.rbegin(); pair != step.rewritten.rend(); ++pair)
        PutContent(*pair->item, pair->before);
    list.Assign(*items);
    auto rows = RowsToShow(*items, step.added, step.removed, step);
    undone_.push_back(std::move(done_.back()));
    done_.pop_back();
    return rows;
}

std::optional<std::vector<std::int32_t>> ListHistory::Redo(FindAndReplaceItems& list)
{
    if (undone_.empty())
        return std::nullopt;
    const Step& step = undone_.back();
    const auto items = Changed(list.NewEnum(), step.removed, step.added);
    if (!items)
        return std::nullopt;
    for (const Rewriting& pair : step.rewritten)
        PutContent(*pair.item, pair.after);
    list.Assign(*items);
    auto rows = RowsToShow(*items, step.removed, step.added, step);
    done_.push_back(std::move(undone_.back()));
    undone_.pop_back();
    return rows;
}

void ListHistory::Clear()
{
    done_.clear();
    undone_.clear();
    saved_ = 0;
}

void ListHistory::SetSaved()
{
    saved_ = done_.size();
}

bool ListHistory::IsAsSaved() const
{
    return saved_ == done_.size();
}

}  // namespace tessarine
