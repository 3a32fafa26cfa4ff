#pragma once

#include <cstdint>

#include "model/PowerPoint.h"
#include "office/builtin/properties/PropertyPart.h"

namespace tessarine::builtin
{

/// The 34 built-in document properties in the object model's order, stored in the core and the extended property part.
///
/// Reading one that the host leaves undefined raises -2147467259 while its element is absent; so does putting one that
/// is read-only. A text of more than 255 units raises -2147024809. Putting what is there is no change.
class BuiltInProperties
{
public:
    static constexpr std::int32_t count = 34;

    /// `slides` is what "Number of slides" gives when the file does not say.
    BuiltInProperties(Package& package, std::int64_t slides);

    static String NameOf(std::int32_t index);  ///< `index` from 1.
    powerpoint::Value Read(std::int32_t index) const;
    void Put(std::int32_t index, const powerpoint::Value& value);
    void Flush();

private:
    const PropertyPart& PartOf(Ns ns) const { return ns == Ns::ExtendedProperties ? extended_ : core_; }

    PropertyPart core_;
    PropertyPart extended_;
    std::int64_t slides_;
};

}  // namespace tessarine::builtin
