#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <utility>
#include <variant>
#include <vector>

#include "platform/CheckedInteger.h"
#include "platform/Failure.h"

namespace tessarine
{

/// A position from 1, or a key. Letters of keys count with their case.
class IndexKey
{
public:
    /// Implicit, so that callers write Item(1) or Item(u"key").
    IndexKey(std::int32_t position) : value_(position) {}   // NOLINT(google-explicit-constructor)
    IndexKey(String key) : value_(std::move(key)) {}        // NOLINT(google-explicit-constructor)
    IndexKey(const char16_t* key) : value_(String(key)) {}  // NOLINT(google-explicit-constructor)

    /// Null when it is a key.
    const std::int32_t* Position() const { return std::get_if<std::int32_t>(&value_); }
    /// Null when it is a position.
    const String* Key() const { return std::get_if<String>(&value_); }

private:
    std::variant<std::int32_t, String> value_;
};

/// Elements in insertion order, positions from 1, an optional unique key per element.
///
/// Failures: SubscriptOutOfRange for a position outside the collection, InvalidProcedureCall for an unknown key,
/// KeyAlreadyUsed for a key already in use. A failing call changes nothing.
template <class Element>
class KeyedCollection
{
public:
    using Reference = std::shared_ptr<Element>;

    /// Appends. An empty key stands for none.
    void Add(Reference element, const String& key = {})
    {
        if (!key.empty() && Find(key) != entries_.end())
            throw Failure(FailureNumber::KeyAlreadyUsed,
                          u"This key is already associated with an element of this collection");
        entries_.push_back({std::move(element), key});
    }

    Reference Item(const IndexKey& index) const { return Locate(index)->element; }  ///< Shared, not copied.
    void Remove(const IndexKey& index) { entries_.erase(Locate(index)); }           ///< Later elements close up.
    /// Overflow beyond 32 bits.
    std::int32_t Count() const { return Checked<std::int32_t>(static_cast<std::int64_t>(entries_.size())); }

    /// The elements as they stand now, in order; changes to the collection don't reach it.
    std::vector<Reference> NewEnum() const
    {
        std::vector<Reference> elements;
        elements.reserve(entries_.size());
        for (const Entry& entry : entries_)
            elements.push_back(entry.element);
        return elements;
    }

private:
    struct Entry {
        Reference element;
        String key;  // empty for none
    };
    using Position = typename std::vector<Entry>::const_iterator;

    /// The entry with a key, or the end. Most elements have no key, so no index is kept for them.
    Position Find(const String& key) const
    {
        return std::find_if(entries_.begin(), entries_.end(), [&](const Entry& entry) { return entry.key == key; });
    }

    /// The entry of an index, or the failure that the class names.
    Position Locate(const IndexKey& index) const
    {
        if (const std::int32_t* position = index.Position()) {
            if (*position < 1 || *position > Count())
                throw Failure(FailureNumber::SubscriptOutOfRange, u"Subscript out of range");
            return entries_.begin() + (*position - 1);
        }
        const Position found = index.Key()->empty() ? entries_.end() : Find(*index.Key());
        if (found == entries_.end())
            throw Failure(FailureNumber::InvalidProcedureCall, u"Invalid procedure call or argument");
        return found;
    }

    std::vector<Entry> entries_;
};

}  // namespace tessarine
