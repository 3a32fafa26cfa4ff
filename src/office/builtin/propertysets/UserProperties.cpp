#include "office/builtin/propertysets/UserProperties.h"

#include "office/builtin/propertysets/PropertyNames.h"
#include "office/builtin/propertysets/TypedValue.h"

namespace tessarine::builtin
{

UserProperties::UserProperties(std::optional<PropertySetStream>& documentSummary, const Limits& limits)
    : stream_(documentSummary), limits_(limits)
{
    section_ = stream_ ? stream_->Find(userDefinedFormat) : nullptr;
    if (section_ == nullptr)
        return;
    auto names = NamesIn(*stream_, *section_);
    for (const PropertySetStream::Property& property : section_->properties)
        if (const auto name = names.find(property.id); name != names.end() && !name->second.starts_with(hiddenPrefix))
            properties_.push_back({property.id, std::move(name->second)});
}

powerpoint::Value UserProperties::Read(std::size_t index) const
{
    return ReadTyped(*stream_->Value(*section_, properties_[index].id), section_->codePage, limits_.textUnits);
}

void UserProperties::Put(std::size_t index, const powerpoint::Value& value)
{
    const Property& property = properties_[index];
    const std::string_view old = *stream_->Value(*section_, property.id);
    stream_->Put(*section_, property.id, TypedPut(property.name, old, value, section_->codePage), LengthOf(old));
}

}  // namespace tessarine::builtin
