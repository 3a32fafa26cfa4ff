#pragma once

#include <optional>

#include "office/builtin/properties/PropertyPart.h"
#include "office/builtin/reader/PropertiesReader.h"

namespace tessarine::builtin
{

/// The built-in document properties of a package: elements of its core and its extended property part.
class BuiltInProperties final : public BuiltInPropertiesReader
{
public:
    /// Reads both parts. The package must outlive this object. Raises `FileCorrupt` when one of them is damaged.
    explicit BuiltInProperties(Package& package);

    /// Numbers and dates are read from the element's text. A number that isn't one reads as 0.
    std::optional<powerpoint::Value> Read(BuiltInProperty property) const override;

    /// Makes the element, and the part around it, where there is none. Raises `Unspecified` for the one property that
    /// packages have no place for.
    void Put(BuiltInProperty property, const String& text) override;

    /// See PropertyPart; nothing for a package without an extended part.
    void FollowTitles(const std::vector<ChangedTitle>& changed, std::size_t slideCount)
    {
        extended_.FollowTitles(changed, slideCount);
    }

    /// Hands the edits to the package, which writes them when it is saved. May be called again after further edits.
    void Flush();

private:
    /// Properties in any other namespace than the extended one stand in the core part.
    const PropertyPart& PartOf(Ns ns) const { return ns == Ns::ExtendedProperties ? extended_ : core_; }

    PropertyPart core_;      // docProps/core.xml
    PropertyPart extended_;  // docProps/app.xml
};

}  // namespace tessarine::builtin
