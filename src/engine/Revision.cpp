#include "engine/SearchFunctions.h"

#include <optional>

#include "engine/SearchPlace.h"
#include "platform/CaseFolding.h"
#include "platform/CheckedInteger.h"
#include "platform/Locale.h"
#include "platform/Treatments.h"

namespace tessarine
{

namespace
{

/// The number that a property's value stands for. A boolean is -1 or 0; a date or no value at all isn't a number.
struct ToNumber {
    std::optional<double> operator()(std::monostate) const { return {}; }
    std::optional<double> operator()(bool value) const { return value ? -1.0 : 0.0; }
    std::optional<double> operator()(std::int64_t value) const { return static_cast<double>(value); }
    std::optional<double> operator()(double value) const { return value; }
    std::optional<double> operator()(const powerpoint::Date&) const { return {}; }
    std::optional<double> operator()(const String& value) const { return NumberFromText(value); }
};

}  // namespace

void SearchFunctions::UpdateISO9001Version(const String& vRevisionProperty,
                                           const String& vRevisionDocumentPropertyIncrimentedBy)
{
    LogAndReturn({u"UpdateISO9001Version", SearchPlace}, [&] {
        const String name = ToUpper(vRevisionProperty);
        const std::optional<double> increment = NumberFromText(vRevisionDocumentPropertyIncrimentedBy);
        const auto bound = Checked<std::int16_t>(NotNull(NotNull(xPresentation)->CustomDocumentProperties())->Count());
        const auto property = [&](std::int32_t index) {
            return NotNull(NotNull(xPresentation->CustomDocumentProperties())->Item(index));
        };
        // No early exit: every property of that name is updated.
        for (std::int32_t index = 1; index <= bound; ++index) {
            if (ToUpper(property(index)->Name()) != name)
                continue;
            powerpoint::Value value = property(index)->Value();
            const std::optional<double> number = std::visit(ToNumber(), value);
            if (increment && number)
                value = *number + *increment;
            // Also written back when one of the two isn't a number: the property then keeps its value, and one that
            // can't be written ends the update here as it would with a number.
            property(index)->PutValue(value);
        }
    });
}

}  // namespace tessarine
