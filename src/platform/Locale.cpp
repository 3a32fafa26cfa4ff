#include "platform/Locale.h"

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <string>
#include <string_view>

#include "platform/LocaleSigns.h"

namespace tessarine
{

namespace
{

bool IsDigit(char character)
{
    return character >= '0' && character <= '9';
}

std::string_view WithoutBlanks(std::string_view text)
{
    constexpr std::string_view blanks = " \t\r\n\v\f";
    const std::size_t first = text.find_first_not_of(blanks);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// Reads a number of the locale's form from the front to the end and writes it down in the form of the C language.
class NumberReader
{
public:
    explicit NumberReader(std::string_view text) : text_(text) {}

    bool Read()
    {
        if (!Take("+") && Take("-"))
            plain_ += '-';
        const bool hasWhole = ReadDigits(GroupingSign());
        bool hasFraction = false;
        if (Take(DecimalSign())) {
            plain_ += '.';
            hasFraction = ReadDigits({});
        }
        return (hasWhole || hasFraction) && ReadExponent() && text_.empty();
    }

    const std::string& plain() const { return plain_; }

private:
    bool Take(std::string_view sign)
    {
        if (sign.empty() || !text_.starts_with(sign))
            return false;
        text_.remove_prefix(sign.size());
        return true;
    }

    /// Grouping signs may stand anywhere after the first digit: "1,2,3" is 123.
    bool ReadDigits(std::string_view grouping)
    {
        bool hasDigit = false;
        for (;;) {
            if (!text_.empty() && IsDigit(text_.front())) {
                plain_ += text_.front();
                text_.remove_prefix(1);
                hasDigit = true;
            } else if (!hasDigit || !Take(grouping)) {
                return hasDigit;
            }
        }
    }

    bool ReadExponent()
    {
        if (!Take("E") && !Take("e"))
            return true;
        plain_ += 'e';
        if (!Take("+") && Take("-"))
            plain_ += '-';
        return ReadDigits({});
    }

    std::string_view text_;
    std::string plain_;
};

/// The significant digits of a number and the power of ten of the first one.
struct Decimal {
    bool isNegative;
    std::string digits;
    int exponent;
};

Decimal DecimalOf(double number)
{
    // Without a precision these are the fewest digits that read back as the same number: "d.ddde+xx" or "de+xx".
    char buffer[64];
    const auto end =
        std::to_chars(buffer, buffer + sizeof buffer, std::fabs(number), std::chars_format::scientific).ptr;
    const std::string_view text(buffer, static_cast<std::size_t>(end - buffer));
    const std::size_t e = text.find('e');
    Decimal decimal{number < 0, std::string(1, text.front()), 0};
    if (e > 2)
        decimal.digits += text.substr(2, e - 2);
    // from_chars takes a minus but no plus.
    const std::size_t exponentAt = text[e + 1] == '+' ? e + 2 : e + 1;
    std::from_chars(text.data() + exponentAt, text.data() + text.size(), decimal.exponent);
    return decimal;
}

std::string Scientific(const Decimal& decimal)
{
    std::string text = decimal.digits.substr(0, 1);
    if (decimal.digits.size() > 1)
        text += DecimalSign() + decimal.digits.substr(1);
    // Two digits of the power at least: 1E+15, 1E-07.
    const std::string power = std::to_string(std::abs(decimal.exponent));
    return text + (decimal.exponent < 0 ? "E-" : "E+") + (power.size() < 2 ? "0" : "") + power;
}

std::string Positional(Decimal decimal)
{
    // 5 with the exponent -3 is 0.005: two zeros between the sign and the digits.
    if (decimal.exponent < 0)
        return "0" + DecimalSign() + std::string(static_cast<std::size_t>(-decimal.exponent - 1), '0') + decimal.digits;
    const std::size_t wholeDigits = static_cast<std::size_t>(decimal.exponent) + 1;
    if (decimal.digits.size() <= wholeDigits)
        return decimal.digits.append(wholeDigits - decimal.digits.size(), '0');
    return decimal.digits.substr(0, wholeDigits) + DecimalSign() + decimal.digits.substr(wholeDigits);
}

}  // namespace

std::optional<double> NumberFromText(StringView text)
{
    const std::string utf8 = ToUtf8(text);
    NumberReader reader(WithoutBlanks(utf8));
    if (!reader.Read())
        return std::nullopt;
    double number = 0;
    const std::string& plain = reader.plain();
    // A number beyond the range of a double is not a number here.
    if (std::from_chars(plain.data(), plain.data() + plain.size(), number).ec != std::errc())
        return std::nullopt;
    return number;
}

String TextFromNumber(double number)
{
    if (number == 0)
        // The negative zero too: nobody wants to read "-0".
        return u"0";
    if (!std::isfinite(number))
        return std::isnan(number) ? u"NaN" : number > 0 ? u"INF" : u"-INF";
    // Numbers of up to 15 places stand in full, larger and very small ones with an exponent.
    constexpr int smallestPositional = -5;
    constexpr int largestPositional = 14;
    const Decimal decimal = DecimalOf(number);
    const bool isPositional = decimal.exponent >= smallestPositional && decimal.exponent <= largestPositional;
    return FromUtf8((decimal.isNegative ? "-" : "") + (isPositional ? Positional(decimal) : Scientific(decimal)));
}

}  // namespace tessarine
