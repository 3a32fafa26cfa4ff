#include "run/BinaryDigits.h"

#include "platform/CheckedInteger.h"

namespace tessarine
{

String DecimalToBinary(std::int32_t number)
{
    String text;
    do {
        text.insert(text.begin(), number % 2 != 0 ? u'1' : u'0');
        number /= 2;
    } while (number != 0);
    return text;
}

std::int32_t BinaryToDecimal(StringView text)
{
    std::int32_t number = 0;
    for (const char16_t unit : text) {
        if (unit < u'0' || unit > u'9')
            throw Failure(FailureNumber::TypeMismatch, u"Type mismatch");
        // All ten digits are let through, so that a digit above 1 counts as so many ones.
        number = Checked<std::int32_t>(std::int64_t{number} * 2 + (unit - u'0'));
    }
    return number;
}

}  // namespace tessarine
