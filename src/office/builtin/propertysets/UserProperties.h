#pragma once

#include <optional>
#include <vector>

#include "office/builtin/limits/Limits.h"
#include "office/builtin/propertysets/PropertySetStream.h"
#include "office/builtin/reader/PropertiesReader.h"

namespace tessarine::builtin
{

/// The custom document properties of a binary presentation: the set of user-defined properties in its document summary
/// ([MS-OSHARED] 2.3.3.2.3), in the order of its table. What has no name there, or a hidden one, is none of them.
class UserProperties final : public CustomPropertiesReader
{
public:
    /// Nothing stands for a stream that the file doesn't have. It must outlive this object, which puts into it.
    UserProperties(std::optional<PropertySetStream>& documentSummary, const Limits& limits);

    std::size_t Count() const override { return properties_.size(); }
    const String& NameOf(std::size_t index) const override { return properties_[index].name; }

    /// Raises `FileCorrupt` for a text beyond the limits.
    powerpoint::Value Read(std::size_t index) const override;

    /// A text that stays one keeps its type, unless the code page can't hold it. A number that fits nothing else
    /// becomes an R8. A number that is put into a text has the digits that a person would write. Raises `Unspecified`
    /// for a kind that can't be put, and `Overflow` for a number that is infinite or whose last digits the kind would
    /// have to invent.
    void Put(std::size_t index, const powerpoint::Value& value) override;

private:
    struct Property {
        std::uint32_t id;
        String name;
    };

    std::optional<PropertySetStream>& stream_;
    const PropertySetStream::Section* section_ = nullptr;  // null when the file has no such set
    const Limits limits_;
    std::vector<Property> properties_;
};

}  // namespace tessarine::builtin
