#pragma once

#include <memory>
#include <utility>

#include "model/PowerPoint.h"
#include "office/windows/AutomationObject.h"

namespace tessarine::windows
{

/// The surface's object over an automation object, or null for null. `Object` names its kind in the object model.
template <class Object>
std::shared_ptr<Object> Wrap(AutomationObject object)
{
    return object ? std::make_shared<Object>(std::move(object)) : nullptr;
}

/// The object that a property or a method gives, or null.
template <class Object, class... Arguments>
std::shared_ptr<Object> Fetch(const AutomationObject& from, const char16_t* member, const Arguments&... arguments)
{
    return Wrap<Object>(from.Object(member, Object::Kind, arguments...));
}

/// A collection of the object model, walked by its own enumerator.
template <class Surface, class Object>
class CollectionObject final : public powerpoint::Collection<Surface>
{
public:
    static constexpr const char16_t* Kind = Object::KindOfAll;

    explicit CollectionObject(AutomationObject object) : object_(std::move(object)) {}

    std::unique_ptr<powerpoint::Enumerator<Surface>> NewEnum() override
    {
        return std::make_unique<Walk>(object_.NewEnum(Object::Kind));
    }

private:
    class Walk final : public powerpoint::Enumerator<Surface>
    {
    public:
        explicit Walk(AutomationEnumerator walk) : walk_(std::move(walk)) {}
        std::shared_ptr<Surface> Next() override { return Wrap<Object>(walk_.Next()); }

    private:
        const AutomationEnumerator walk_;
    };

    const AutomationObject object_;
};

}  // namespace tessarine::windows
