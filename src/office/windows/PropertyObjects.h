#pragma once

#include "model/PowerPoint.h"
#include "office/windows/AutomationObject.h"

namespace tessarine::windows
{

/// The document properties of a presentation, built-in or custom. They exist by name alone in the object model.
class DocumentPropertiesObject final : public AutomatedObject<powerpoint::DocumentProperties>
{
public:
    static constexpr const char16_t* Kind = u"DocumentProperties";

    using AutomatedObject::AutomatedObject;

    std::int32_t Count() override { return object_.Integer(u"Count"); }
    std::shared_ptr<powerpoint::DocumentProperty> Item(std::int32_t index) override;
};

}  // namespace tessarine::windows
