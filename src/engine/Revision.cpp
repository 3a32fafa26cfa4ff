#include "engine/SearchFunctions.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>

#include "engine/SearchPlace.h"
#include "log/Treatments.h"
#include "platform/CaseFolding.h"
#include "platform/CheckedInteger.h"
#include "platform/Locale.h"

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

/// A whole number that a double can't hold, plus another one; nothing where a double does.
std::optional<std::int64_t> ExactSum(const powerpoint::Value& value, double increment)
{
    constexpr double largestExact = 9007199254740992.0;
    const auto* const whole = std::get_if<std::int64_t>(&value);
    if (whole == nullptr || std::trunc(increment) != increment || std::abs(increment) > largestExact ||
        std::abs(static_cast<double>(*whole)) < largestExact - std::abs(increment))
        return {};
    const auto step = static_cast<std::int64_t>(increment);
    const bool overflows = step > 0 ? *whole > std::numeric_limits<std::int64_t>::max() - step
                                    : *whole < std::numeric_limits<std::int64_t>::min() - step;
    if (overflows)
        throw Failure(FailureNumber::Overflow, u"Overflow");
    return *whole + step;
}

double FiniteSum(double left, double right)
{
    const double sum = left + right;
    if (!std::isfinite(sum))
        throw Failure(FailureNumber::Overflow, u"Overflow");
    return sum;
}

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
            if (increment && number) {
                if (const auto exact = ExactSum(value, *increment))
                    value = *exact;
                else
                    value = FiniteSum(*number, *increment);
            }
            // Also written back when one of the two isn't a number: the property then keeps its value, and one that
            // can't be written ends the update here as it would with a number.
            property(index)->PutValue(value);
        }
    });
}

}  // namespace tessarine
