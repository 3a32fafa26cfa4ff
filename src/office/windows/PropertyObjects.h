#pragma once

#include "model/PowerPoint.h"
#include "office/windows/AutomationObject.h"

namespace tessarine::windows
{

/// The document properties of a presentation, built-in or custom. They exist by name alone in the object model.
class DocumentPropertiesObject final : public powerpoint::DocumentProperties
{
public:
    static constexpr const char16_t* Kind = u"DocumentProperties";

    explicit DocumentPropertiesObject(AutomationObject object) : object_(std::move(object)) {}

    std::int32_t Count() override { return object_.Integer(u"Count"); }
    std::shared_ptr<powerpoint::DocumentProperty> Item(std::int32_t index) override;

private:
    const AutomationObject object_;
};

}  // namespace tessarine::windows
