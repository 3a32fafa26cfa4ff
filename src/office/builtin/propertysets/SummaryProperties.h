#pragma once

#include <optional>

#include "office/builtin/limits/Limits.h"
#include "office/builtin/propertysets/PropertySetStream.h"
#include "office/builtin/reader/PropertiesReader.h"

namespace tessarine::builtin
{

/// The built-in document properties of a binary presentation: values of the set in its summary and of the first one in
/// its document summary ([MS-OSHARED] 2.3.3.2); the hyperlink base is one of the user-defined properties there.
class SummaryProperties final : public BuiltInPropertiesReader
{
public:
    /// Nothing stands for a stream that the file doesn't have. Both must outlive this object, which puts into them.
    SummaryProperties(std::optional<PropertySetStream>& summary, std::optional<PropertySetStream>& documentSummary,
                      const Limits& limits);

    /// A date that was never set reads as nothing, and a number that isn't one as 0. Raises `FileCorrupt` for a text
    /// beyond the limits.
    std::optional<powerpoint::Value> Read(BuiltInProperty property) const override;

    /// Adds the property to its set where it is absent. Raises `Unspecified` for one whose set the file doesn't have.
    void Put(BuiltInProperty property, const String& text) override;

private:
    /// Where a property is, if the file has the set.
    struct Place {
        PropertySetStream& stream;
        const PropertySetStream::Section& section;
        std::uint32_t id;
    };
    std::optional<Place> PlaceOf(BuiltInProperty property) const;
    void FindLinkBase();

    std::optional<PropertySetStream>& summary_;
    std::optional<PropertySetStream>& documentSummary_;
    const Limits limits_;
    std::optional<std::uint32_t> linkBase_;  // the hyperlink base's id among the user-defined properties
};

}  // namespace tessarine::builtin
