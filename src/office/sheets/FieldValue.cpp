#include "office/sheets/FieldValue.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>

namespace tessarine::sheets
{

namespace
{

constexpr std::size_t significantDigits = 15;

bool EqualsWithoutCase(StringView text, StringView upper)
{
    const auto toUpper = [](char16_t unit) { return unit >= u'a' && unit <= u'z' ? char16_t(unit - 32) : unit; };
    return std::ranges::equal(text, upper, {}, toUpper);
}

bool IsDigit(char character)
{
    return character >= '0' && character <= '9';
}

std::size_t CountDigits(std::string_view text)
{
    return static_cast<std::size_t>(std::ranges::find_if_not(text, IsDigit) - text.begin());
}

/// Whether the text is sign, digits, point, digits, exponent, and no digit gets lost.
bool IsPlainNumber(std::string_view text)
{
    const std::size_t whole = CountDigits(text);
    std::string digits(text.substr(0, whole));
    text.remove_prefix(whole);
    if (text.starts_with('.')) {
        const std::size_t fraction = CountDigits(text.substr(1));
        digits += text.substr(1, fraction);
        text.remove_prefix(1 + fraction);
    }
    if (digits.empty() || digits.size() - std::min(digits.find_first_not_of('0'), digits.size()) > significantDigits)
        return false;
    if (text.empty())
        return true;
    if (text.front() != 'e' && text.front() != 'E')
        return false;
    text.remove_prefix(1);
    if (text.starts_with('+') || text.starts_with('-'))
        text.remove_prefix(1);
    return !text.empty() && CountDigits(text) == text.size();
}

std::optional<double> PlainNumber(StringView field)
{
    // No number has a letter after "e", so that each unit of one fits into a char.
    std::array<char, 64> buffer;
    if (field.empty() || field.size() > buffer.size() || std::ranges::any_of(field, [](char16_t c) { return c > 'e'; }))
        return std::nullopt;
    std::ranges::transform(field, buffer.begin(), [](char16_t unit) { return static_cast<char>(unit); });
    std::string_view text(buffer.data(), field.size());
    const bool isNegative = text.front() == '-';
    if (isNegative || text.front() == '+')
        text.remove_prefix(1);
    double number = 0;
    // from_chars doesn't follow the locale, in which a point may separate thousands.
    if (!IsPlainNumber(text) || std::from_chars(text.data(), text.data() + text.size(), number).ec != std::errc())
        return std::nullopt;
    return isNegative ? -number : number;
}

/// Whether a word is part of a number, a date or a time in English, the language of such files.
bool IsOfNumbersAndDates(const std::string& lowerWord)
{
    // Of exponents and of times of the day.
    static constexpr std::array<std::string_view, 5> parts{"e", "a", "p", "am", "pm"};
    static constexpr std::array<std::string_view, 12> months{"january",   "february", "march",    "april",
                                                             "may",       "june",     "july",     "august",
                                                             "september", "october",  "november", "december"};
    constexpr std::size_t shortest = 3;
    return std::ranges::find(parts, lowerWord) != parts.end() ||
           (lowerWord.size() >= shortest &&
            std::ranges::any_of(months, [&](std::string_view month) { return month.starts_with(lowerWord); }));
}

/// Whether a text has digits and else nothing but signs, blanks and words of dates.
bool MayBeNumberOrDate(StringView text)
{
    // Spreadsheets take these as parts of a number: no-break spaces, pound, yen, euro.
    constexpr StringView foreignSigns = u"\u00A0\u00A3\u00A5\u202F\u20AC";
    bool hasDigit = false;
    std::string word;
    for (const char16_t unit : text) {
        const bool isAscii = unit >= u' ' && unit < 0x7F;
        if (!isAscii && foreignSigns.find(unit) == StringView::npos)
            return false;
        const char16_t lower = unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 32) : unit;
        if (lower >= u'a' && lower <= u'z') {
            word += static_cast<char>(lower);
            continue;
        }
        hasDigit = hasDigit || (unit >= u'0' && unit <= u'9');
        if (!word.empty() && !IsOfNumbersAndDates(word))
            return false;
        word.clear();
    }
    return hasDigit && (word.empty() || IsOfNumbersAndDates(word));
}

StringView WithoutBlanks(StringView text)
{
    const std::size_t first = text.find_first_not_of(u' ');
    return first == StringView::npos ? StringView() : text.substr(first, text.find_last_not_of(u' ') - first + 1);
}

/// Whether this reader, Excel or LibreOffice would make something else of the text.
bool IsTakenForSomethingElse(StringView text)
{
    const StringView core = WithoutBlanks(text);
    return EqualsWithoutCase(core, u"TRUE") || EqualsWithoutCase(core, u"FALSE") || core.starts_with(u'=') ||
           MayBeNumberOrDate(core);
}

}  // namespace

bool ReadTextFormula(StringView formula, String& text)
{
    if (formula.size() < 3 || !formula.starts_with(u"=\"") || formula.back() != u'"')
        return false;
    formula = formula.substr(2, formula.size() - 3);
    text.clear();
    for (std::size_t i = 0; i < formula.size(); ++i) {
        text += formula[i];
        if (formula[i] == u'"' && (++i == formula.size() || formula[i] != u'"'))
            return false;
    }
    return true;
}

Cell ValueOfField(StringView field, bool isQuoted, String& scratch)
{
    if (field.empty())
        return {};
    if (EqualsWithoutCase(field, u"TRUE"))
        return true;
    if (EqualsWithoutCase(field, u"FALSE"))
        return false;
    if (!isQuoted)
        if (const auto number = PlainNumber(field))
            return *number;
    if (ReadTextFormula(field, scratch))
        return StringView(scratch);
    return field;
}

String FieldOfText(StringView text)
{
    if (!IsTakenForSomethingElse(text))
        return String(text);
    String field = u"=\"";
    for (const char16_t unit : text)
        field.append(unit == u'"' ? 2 : 1, unit);
    return field + u'"';
}

std::string FieldOfNumber(double number)
{
    const double shown = ShownNumber(number);
    std::array<char, 32> buffer;
    // With all its zeros, a large number would seem to have more digits than a number can.
    const auto end = std::fabs(shown) < 1e15
                         ? std::to_chars(buffer.begin(), buffer.end(), shown).ptr
                         : std::to_chars(buffer.begin(), buffer.end(), shown, std::chars_format::scientific).ptr;
    return {buffer.data(), end};
}

double ShownNumber(double number)
{
    if (!std::isfinite(number) || (std::trunc(number) == number && std::fabs(number) < 1e15))
        return number;
    std::array<char, 32> buffer;
    const auto end = std::to_chars(buffer.begin(), buffer.end(), number, std::chars_format::scientific,
                                   static_cast<int>(significantDigits) - 1)
                         .ptr;
    double shown = number;
    std::from_chars(buffer.data(), end, shown);
    return shown;
}

}  // namespace tessarine::sheets
