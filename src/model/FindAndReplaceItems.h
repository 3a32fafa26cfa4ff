#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "model/FindAndReplaceItem.h"
#include "model/KeyedCollection.h"

namespace tessarine
{

/// The find/replace pairs of a job, in the order a run tries them. Positions count from 1.
///
/// A failing operation writes one line to the error log and gives its empty result.
class FindAndReplaceItems
{
public:
    /// When true, an import adds to the list instead of starting from an empty one.
    bool KeepExistingItems = false;

    /// Appends a pair and returns it. `OptionSetting` is shared, not copied: two pairs given the same one change together.
    /// `sKey` may be empty. A key already in use adds nothing and gives null.
    std::shared_ptr<FindAndReplaceItem> Add(const String& FindWhat, const String& ReplaceWith,
                                            const std::shared_ptr<tessarine::OptionSetting>& OptionSetting,
                                            const std::shared_ptr<tessarine::Project>& Project, const String& sKey = {});

    /// The pair at a position, or under a key; null for a bad one.
    std::shared_ptr<FindAndReplaceItem> Item(const IndexKey& vntIndexKey) const;

    std::int32_t Count() const;
    void Remove(const IndexKey& vntIndexKey);  ///< Later pairs close up. A bad position or key changes nothing.

    /// The pairs in list order, for a for-each loop.
    std::vector<std::shared_ptr<FindAndReplaceItem>> NewEnum() const;

private:
    KeyedCollection<FindAndReplaceItem> items_;
};

}  // namespace tessarine
