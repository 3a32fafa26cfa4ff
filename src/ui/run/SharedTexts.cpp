#include "ui/run/SharedTexts.h"

#include "platform/CheckedInteger.h"

namespace tessarine
{

namespace
{

std::uint32_t NumberFor(std::size_t size)
{
    return Checked<std::uint32_t>(static_cast<std::int64_t>(size));
}

}  // namespace

SharedTexts::Number SharedTexts::Add(const String& text)
{
    const auto [entry, isNew] = numbers_.try_emplace(text, NumberFor(texts_.size()));
    if (isNew)
        // A pointer to the map's own key, which stays in its place while the map grows.
        texts_.push_back(&entry->first);
    return entry->second;
}

SharedLists::Number SharedLists::Append(Number list, SharedTexts::Number text)
{
    // A list is a shorter list and one text more: files with the same results share all of it.
    const std::uint64_t key = std::uint64_t{list} << 32 | text;
    const auto [entry, isNew] = longer_.try_emplace(key, NumberFor(lists_.size()));
    if (isNew)
        lists_.push_back({list, text, lists_[list].count + 1});
    return entry->second;
}

SharedTexts::Number SharedLists::At(Number list, std::uint32_t position) const
{
    // Back along the beginnings, to the list that ends with the text wanted.
    while (lists_[list].count > position + 1)
        list = lists_[list].beginning;
    return lists_[list].last;
}

}  // namespace tessarine
