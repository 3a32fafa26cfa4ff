#include "model/CustomProperties.h"

#include "log/Treatments.h"
#include "model/LogPlaces.h"

namespace tessarine
{

std::shared_ptr<CustomProperty> CustomProperties::Add(const String& ProperyName, const String& PropertyValue,
                                                      const String& sKey)
{
    return LogAndReturn({u"Add", CustomPropertiesPlace}, [&] {
        auto property = std::make_shared<CustomProperty>();
        property->ProperyName = ProperyName;
        property->PropertyValue = PropertyValue;
        items_.Add(property, sKey);
        return property;
    });
}

std::shared_ptr<CustomProperty> CustomProperties::Item(const IndexKey& vntIndexKey) const
{
    return LogAndReturn({u"Item", CustomPropertiesPlace}, [&] { return items_.Item(vntIndexKey); });
}

std::int32_t CustomProperties::Count() const
{
    return LogAndReturn({u"Count", CustomPropertiesPlace}, [&] { return items_.Count(); });
}

void CustomProperties::Remove(const IndexKey& vntIndexKey)
{
    LogAndReturn({u"Remove", CustomPropertiesPlace}, [&] { items_.Remove(vntIndexKey); });
}

std::vector<std::shared_ptr<CustomProperty>> CustomProperties::NewEnum() const
{
    return LogAndReturn({u"NewEnum", CustomPropertiesPlace}, [&] { return items_.NewEnum(); });
}

}  // namespace tessarine
