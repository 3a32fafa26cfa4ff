#include "office/windows/PropertyObjects.h"

#include "office/windows/CollectionObject.h"
#include "office/windows/DocumentValues.h"

namespace tessarine::windows
{

namespace
{

class DocumentPropertyObject final : public AutomatedObject<powerpoint::DocumentProperty>
{
public:
    static constexpr const char16_t* Kind = u"DocumentProperty";

    using AutomatedObject::AutomatedObject;

    String Name() override { return object_.Text(u"Name"); }
    powerpoint::Value Value() override { return object_.Get(u"Value", ValueOf); }
    void PutValue(const powerpoint::Value& value) override { object_.Put(u"Value", VariantOf(value)); }
};

}  // namespace

std::shared_ptr<powerpoint::DocumentProperty> DocumentPropertiesObject::Item(std::int32_t index)
{
    return Fetch<DocumentPropertyObject>(object_, u"Item", index);
}

}  // namespace tessarine::windows
