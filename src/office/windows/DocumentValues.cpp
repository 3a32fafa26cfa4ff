#include "office/windows/DocumentValues.h"

#include <cmath>
#include <limits>

#include "platform/Failure.h"
#include "platform/SystemTimeFields.h"

namespace tessarine::windows
{

namespace
{

constexpr double secondsPerDay = 86400;

/// Whole seconds: a date in days is rarely an exact number of them, and the system cuts what is short of the next one.
DATE OnTheSecond(DATE days)
{
    // The time of day counts forward from the day, also before day 0.
    const double day = std::trunc(days);
    double seconds = std::round(std::abs(days - day) * secondsPerDay);
    const double next = seconds >= secondsPerDay ? 1 : 0;
    seconds -= next * secondsPerDay;
    // Half a millisecond, so that the conversion does not end a second early.
    const double time = (seconds + 0.0005) / secondsPerDay;
    const double whole = day + next;
    return whole < 0 ? whole - time : whole + time;
}

Variant DateVariantOf(const std::tm& local)
{
    SYSTEMTIME time = SystemTimeOf(local);
    DATE days = 0;
    // The system would take years of two digits for those of this century and the last.
    if (local.tm_year + 1900 < 100 || !SystemTimeToVariantTime(&time, &days))
        throw Failure(FailureNumber::TypeMismatch, u"Type mismatch: the date is out of range");
    return Variant::Date(days);
}

struct ToVariant {
    Variant operator()(std::monostate) const { return {}; }
    Variant operator()(bool value) const { return Variant(value); }
    Variant operator()(std::int64_t value) const
    {
        using Narrow = std::numeric_limits<std::int32_t>;
        return value >= Narrow::min() && value <= Narrow::max() ? Variant(static_cast<std::int32_t>(value))
                                                                : Variant(value);
    }
    Variant operator()(double value) const { return Variant(value); }
    Variant operator()(const powerpoint::Date& value) const { return DateVariantOf(value.local); }
    Variant operator()(const String& value) const { return Variant(value); }
};

}  // namespace

powerpoint::Value ValueOf(const Variant& variant)
{
    const VARIANT& raw = variant.Raw();
    switch (variant.Type()) {
        case VT_EMPTY:
        case VT_NULL:
            return std::monostate();
        case VT_BOOL:
            return raw.boolVal != VARIANT_FALSE;
        case VT_I8:
            return static_cast<std::int64_t>(raw.llVal);
        case VT_UI4:
            return static_cast<std::int64_t>(raw.ulVal);
        case VT_I1:
        case VT_UI1:
        case VT_I2:
        case VT_UI2:
        case VT_I4:
        case VT_INT:
            return static_cast<std::int64_t>(variant.ToInteger());
        case VT_DATE:
            return powerpoint::Date{CalendarOf(raw.date)};
        case VT_BSTR:
            return variant.ToText();
        default:
            return variant.ToNumber();
    }
}

Variant VariantOf(const powerpoint::Value& value)
{
    return std::visit(ToVariant(), value);
}

std::tm CalendarOf(DATE days)
{
    SYSTEMTIME time{};
    if (!VariantTimeToSystemTime(OnTheSecond(days), &time))
        throw Failure(FailureNumber::TypeMismatch, u"Type mismatch: the date is out of range");
    return tessarine::CalendarOf(time);
}

}  // namespace tessarine::windows
