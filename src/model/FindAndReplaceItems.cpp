#include "model/FindAndReplaceItems.h"

#include "log/Treatments.h"
#include "model/LogPlaces.h"

namespace tessarine
{

std::shared_ptr<FindAndReplaceItem> FindAndReplaceItems::Add(
    const String& FindWhat, const String& ReplaceWith, const std::shared_ptr<tessarine::OptionSetting>& OptionSetting,
    const std::shared_ptr<tessarine::Project>& Project, const String& sKey)
{
    return LogAndReturn({u"Add", FindAndReplaceItemsPlace}, [&] {
        auto item = std::make_shared<FindAndReplaceItem>();
        item->FindWhat = FindWhat;
        item->ReplaceWith = ReplaceWith;
        item->OptionSetting = OptionSetting;
        item->Project = Project;
        items_.Add(item, sKey);
        return item;
    });
}

std::shared_ptr<FindAndReplaceItem> FindAndReplaceItems::Item(const IndexKey& vntIndexKey) const
{
    return LogAndReturn({u"Item", FindAndReplaceItemsPlace}, [&] { return items_.Item(vntIndexKey); });
}

std::int32_t FindAndReplaceItems::Count() const
{
    return LogAndReturn({u"Count", FindAndReplaceItemsPlace}, [&] { return items_.Count(); });
}

void FindAndReplaceItems::Remove(const IndexKey& vntIndexKey)
{
    LogAndReturn({u"Remove", FindAndReplaceItemsPlace}, [&] { items_.Remove(vntIndexKey); });
}

void FindAndReplaceItems::Assign(const std::vector<std::shared_ptr<FindAndReplaceItem>>& items)
{
    LogAndReturn({u"Assign", FindAndReplaceItemsPlace}, [&] {
        KeyedCollection<FindAndReplaceItem> assigned;
        for (const auto& item : items)
            assigned.Add(item);
        items_ = std::move(assigned);
    });
}

std::vector<std::shared_ptr<FindAndReplaceItem>> FindAndReplaceItems::NewEnum() const
{
    return LogAndReturn({u"NewEnum", FindAndReplaceItemsPlace}, [&] { return items_.NewEnum(); });
}

}  // namespace tessarine
