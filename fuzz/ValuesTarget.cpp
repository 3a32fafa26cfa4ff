// Texts that stand for values: numbers under the locale and dates of properties.
#include <cmath>
#include <cstdint>
#include <string_view>

#include "office/builtin/properties/PropertyDate.h"
#include "platform/Failure.h"
#include "platform/Locale.h"
#include "Require.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tessarine;
    const String text = FromUtf8({reinterpret_cast<const char*>(data), size});
    try {
        if (const auto number = NumberFromText(text)) {
            fuzz::Require(std::isfinite(*number), "a number is finite");
            fuzz::Require(NumberFromText(TextFromNumber(*number)) == number, "a number's text reads back");
        }
        if (const auto date = builtin::ReadPropertyDate(text)) {
            fuzz::Require(date->local.tm_mon >= 0 && date->local.tm_mon < 12, "a date has one of twelve months");
            DisplayDateTime(date->local);
        }
    } catch (const Failure&) {
    }  // refusing is a good answer; all else is a find
    return 0;
}
