#include "office/builtin/propertysets/TypedValue.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <limits>

#include "office/builtin/limits/Damage.h"
#include "office/builtin/propertysets/PropertyMoments.h"
#include "office/builtin/propertysets/SetBytes.h"
#include "office/builtin/reader/PropertyNumbers.h"
#include "office/builtin/reader/Refusals.h"
#include "platform/CodePage.h"

namespace tessarine::builtin
{

namespace
{

using enum ValueType;
using powerpoint::Value;

constexpr std::uint16_t utf16 = 1200;
constexpr std::uint16_t utf8 = 65001;

constexpr std::size_t typeBytes = 4;
constexpr std::size_t sizeBytes = 4;  // of the size in front of a text or a blob

/// An integer type: how many bytes it has, and what fits.
struct IntegerType {
    ValueType type;
    std::size_t bytes;
    IntegerRange range;
};

constexpr std::int64_t least64 = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t largest64 = std::numeric_limits<std::int64_t>::max();

/// The upper half of Ui8 reads as a text and can't be put as a number.
constexpr std::array integerTypes{
    IntegerType{I1, 1, {-128, 127}},
    IntegerType{I2, 2, {-32768, 32767}},
    IntegerType{I4, 4, {-2147483648, 2147483647}},
    IntegerType{Int, 4, {-2147483648, 2147483647}},
    IntegerType{I8, 8, {least64, largest64}},
    IntegerType{Ui1, 1, {0, 255}},
    IntegerType{Ui2, 2, {0, 65535}},
    IntegerType{Ui4, 4, {0, 4294967295}},
    IntegerType{Uint, 4, {0, 4294967295}},
    IntegerType{Ui8, 8, {0, largest64}},
};

const IntegerType* IntegerTypeOf(ValueType type)
{
    const auto found = std::ranges::find(integerTypes, type, &IntegerType::type);
    return found == integerTypes.end() ? nullptr : &*found;
}

bool IsOneOf(ValueType type, std::initializer_list<ValueType> types)
{
    return std::ranges::find(types, type) != types.end();
}

std::string Typed(ValueType type, std::string_view value)
{
    std::string typed;
    AppendNumber(typed, static_cast<std::uint16_t>(type), typeBytes);
    return typed.append(value);
}

std::string TypedNumber(ValueType type, std::uint64_t number, std::size_t bytes)
{
    std::string value;
    AppendNumber(value, number, bytes);
    value.resize(std::max(bytes, sizeof(std::uint32_t)));  // small ones are padded
    return Typed(type, value);
}

// Decimals: a scale, a sign, 32 high bits and 64 low bits of a whole number ([MS-OAUT] 2.2.26).
constexpr std::size_t decimalScale = 2;
constexpr std::size_t decimalSign = 3;
constexpr std::size_t decimalHigh = 4;
constexpr std::size_t decimalLow = 8;
constexpr std::size_t decimalBytes = 16;
constexpr std::uint64_t decimalNegative = 0x80;
constexpr std::uint64_t largestScale = 28;

double ReadDecimal(std::string_view value)
{
    constexpr double lowBits = 18446744073709551616.0;  // 2 to the power of 64
    const double whole =
        static_cast<double>(LongAt(value, decimalHigh)) * lowBits + static_cast<double>(QuadAt(value, decimalLow));
    const double scale = std::pow(10.0, static_cast<double>(NumberAt(value, decimalScale, 1)));
    return (NumberAt(value, decimalSign, 1) & decimalNegative) != 0 ? -whole / scale : whole / scale;
}

/// Nothing for a number whose digits don't fit into the low bits.
std::optional<std::string> DecimalBytes(double number)
{
    std::array<char, 512> buffer;  // the longest double has more than 300 digits
    const auto written =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), std::abs(number), std::chars_format::fixed);
    std::string digits(buffer.data(), written.ptr);
    const std::size_t point = digits.find('.');
    const std::size_t scale = point == std::string::npos ? 0 : digits.size() - point - 1;
    if (point != std::string::npos)
        digits.erase(point, 1);
    std::uint64_t whole = 0;
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), whole);
    if (read.ec != std::errc() || scale > largestScale)
        return std::nullopt;
    std::string bytes(decimalScale, '\0');
    AppendNumber(bytes, scale, 1);
    AppendNumber(bytes, std::signbit(number) ? decimalNegative : 0, 1);
    AppendNumber(bytes, 0, 4);
    AppendNumber(bytes, whole, 8);
    return bytes;
}

/// The number that a person would read: 1.1 is no float, and the nearest one has other digits from the eighth on.
double ReadFloat(float number)
{
    std::array<char, 64> buffer;
    const auto written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
    double result = 0;
    std::from_chars(buffer.data(), written.ptr, result);
    return result;
}

constexpr double moneyDecimals = 10000;

/// Nothing for what is no finite number.
std::optional<double> ReadFraction(ValueType type, std::string_view value)
{
    double number = 0;
    switch (type) {
        case R4: {
            const auto single = std::bit_cast<float>(LongAt(value, 0));
            number = std::isfinite(single) ? ReadFloat(single) : std::numeric_limits<double>::quiet_NaN();
            break;
        }
        case R8:
            number = std::bit_cast<double>(QuadAt(value, 0));
            break;
        case Currency:
            number = static_cast<double>(static_cast<std::int64_t>(QuadAt(value, 0))) / moneyDecimals;
            break;
        default:
            number = ReadDecimal(value);
    }
    return std::isfinite(number) ? std::optional(number) : std::nullopt;
}

bool IsFraction(ValueType type)
{
    return IsOneOf(type, {R4, R8, Currency, Decimal});
}

/// A number that is no integer, in the same type where it fits to the last digit.
std::string TypedFraction(StringView property, ValueType type, double number)
{
    if (type == Currency) {
        const double money = AsMoney(property, number) * moneyDecimals;
        return TypedNumber(Currency, static_cast<std::uint64_t>(std::llround(money)), 8);
    }
    if (type == Decimal)
        if (const auto bytes = DecimalBytes(number))
            return Typed(Decimal, *bytes);
    if (type == R4 && std::abs(number) <= std::numeric_limits<float>::max())
        if (const auto single = static_cast<float>(number); ReadFloat(single) == number)
            return TypedNumber(R4, std::bit_cast<std::uint32_t>(single), 4);
    return TypedNumber(R8, std::bit_cast<std::uint64_t>(number), 8);
}

Value ReadInteger(const IntegerType& type, std::string_view value)
{
    const std::uint64_t bits = NumberAt(value, 0, type.bytes);
    if (type.range.least == 0) {
        if (bits > static_cast<std::uint64_t>(largest64))
            return FromUtf8(std::to_string(bits));
        return static_cast<std::int64_t>(bits);
    }
    const auto unused = static_cast<int>(64 - 8 * type.bytes);
    return static_cast<std::int64_t>(bits << unused) >> unused;
}

String Utf16In(std::string_view bytes)
{
    String text;
    for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
        const char16_t unit = ShortAt(bytes, at);
        if (unit == 0)
            break;
        text += unit;
    }
    return text;
}

std::string Utf16Bytes(StringView text)
{
    std::string bytes;
    bytes.reserve(2 * text.size());
    for (const char16_t unit : text)
        AppendNumber(bytes, unit, 2);
    return bytes;
}

/// Nothing for a text that the code page can't hold.
std::optional<std::string> BytesIn(StringView text, std::uint16_t codePage)
{
    if (codePage == utf16)
        return Utf16Bytes(text);
    if (codePage != utf8)
        return ToCodePage(text, CodePageName(codePage));
    std::string bytes = ToUtf8(text);
    return FromUtf8(bytes) == text ? std::optional(std::move(bytes)) : std::nullopt;
}

void CheckHasNoEnd(StringView text)
{
    if (text.find(u'\0') != StringView::npos)
        throw FailedEdit("a document property", "its text would end at a character that has the number 0");
}

/// A size and a text with its NUL. Sizes count the bytes of an Lpstr, and the units of an Lpwstr.
std::string SizedText(ValueType type, StringView text, std::uint16_t codePage)
{
    const bool isWide = type == Lpwstr;
    std::string bytes = isWide ? Utf16Bytes(text) : BytesIn(text, codePage).value();
    bytes.append(isWide || codePage == utf16 ? 2 : 1, '\0');
    std::string sized;
    AppendNumber(sized, isWide ? bytes.size() / 2 : bytes.size(), sizeBytes);
    return sized + bytes;
}

/// The bytes of a text in its type, from its size on. Sizes are believed as far as there are bytes.
std::string_view SizedBytes(ValueType type, std::string_view value)
{
    const std::size_t size = LongAt(value, 0);
    const std::size_t most = value.size();  // twice the size could be too much for 32 bits
    return Slice(value, sizeBytes, type == Lpwstr ? 2 * std::min(size, most) : size);
}

String TextOfBytes(ValueType type, std::string_view bytes, std::uint16_t codePage, std::size_t longestText)
{
    // No character has more bytes than these.
    constexpr std::size_t bytesForUnit = 4;
    String text;
    if (bytes.size() / bytesForUnit <= longestText)
        text = type == Lpwstr ? Utf16In(bytes) : TextIn(bytes, codePage);
    if (bytes.size() / bytesForUnit > longestText || text.size() > longestText)
        throw Damage({}, "a document property is too long");
    return text;
}

/// Where the texts of a list lie.
struct ListLayout {
    ValueType textType = Lpstr;
    bool isAligned = false;  // each text begins at a multiple of four bytes
    std::vector<std::string_view> texts;
    std::size_t length = 0;  // of the value, type and all
};

/// Real lists have an entry for each font, design and slide.
constexpr std::size_t mostListed = 1u << 18;

std::optional<ListLayout> LayoutOf(std::string_view typed, bool isAligned)
{
    ListLayout layout;
    layout.textType = TypeOf(typed) == LpwstrList ? Lpwstr : Lpstr;
    layout.isAligned = isAligned;
    const std::size_t count = LongAt(typed, typeBytes);
    if (count > mostListed)
        return std::nullopt;
    std::size_t at = typeBytes + sizeBytes;
    for (std::size_t i = 0; i < count; ++i) {
        if (at > typed.size() || typed.size() - at < sizeBytes)
            return std::nullopt;
        const std::size_t size = std::size_t{LongAt(typed, at)} * (layout.textType == Lpwstr ? 2 : 1);
        at += sizeBytes;
        if (size > typed.size() - at)
            return std::nullopt;
        layout.texts.push_back(typed.substr(at, size));
        at += size;
        if (isAligned)
            at = (at + 3) & ~std::size_t{3};
    }
    layout.length = std::min(at, typed.size());
    return layout;
}

/// PowerPoint writes the texts of lists without padding ([MS-OSHARED] 2.3.3.1.9), other programs with it ([MS-OLEPS]
/// 2.14.1). What lies behind the list tells which it is.
std::optional<ListLayout> LayoutOf(std::string_view typed)
{
    if (TypeOf(typed) != LpstrList && TypeOf(typed) != LpwstrList)
        return std::nullopt;
    auto packed = LayoutOf(typed, false);
    if (packed && typed.size() - packed->length < 4)
        return packed;
    auto aligned = LayoutOf(typed, true);
    return aligned ? aligned : packed;
}

}  // namespace

ValueType TypeOf(std::string_view typed)
{
    return static_cast<ValueType>(ShortAt(typed, 0));
}

std::size_t LengthOf(std::string_view typed)
{
    const ValueType type = TypeOf(typed);
    const std::string_view value = Slice(typed, typeBytes);
    std::size_t length = typed.size();
    if (const IntegerType* const integer = IntegerTypeOf(type))
        length = typeBytes + integer->bytes;
    else if (IsText(type))
        length = typeBytes + sizeBytes + SizedBytes(type, value).size();
    else if (type == Blob)
        length = typeBytes + sizeBytes + std::size_t{LongAt(value, 0)};
    else if (IsOneOf(type, {Empty, Null}))
        length = typeBytes;
    else if (type == R4)
        length = typeBytes + 4;
    else if (type == Bool)
        length = typeBytes + 2;
    else if (IsOneOf(type, {R8, Currency, Date, FileTime}))
        length = typeBytes + 8;
    else if (type == Decimal)
        length = typeBytes + decimalBytes;
    else if (const auto layout = LayoutOf(typed))
        length = layout->length;
    return std::min(length, typed.size());
}

bool IsText(ValueType type)
{
    return IsOneOf(type, {Lpstr, Lpwstr, Bstr});
}

bool IsOpaque(ValueType type)
{
    return !IsText(type) && !IsFraction(type) && IntegerTypeOf(type) == nullptr &&
           !IsOneOf(type, {Bool, FileTime, Date, Empty, Null});
}

Value ReadTyped(std::string_view typed, std::uint16_t codePage, std::size_t longestText)
{
    const ValueType type = TypeOf(typed);
    const std::string_view value = Slice(typed, typeBytes);
    if (IsText(type))
        return TextOfBytes(type, SizedBytes(type, value), codePage, longestText);
    if (const IntegerType* const integer = IntegerTypeOf(type))
        return ReadInteger(*integer, value);
    if (IsFraction(type)) {
        if (const auto number = ReadFraction(type, value))
            return *number;
    } else if (type == Bool) {
        return ShortAt(value, 0) != 0;
    } else if (type == FileTime) {
        if (const auto date = DateOfFileTime(QuadAt(value, 0)))
            return *date;
    } else if (type == Date) {
        if (const auto date = DateOfDays(std::bit_cast<double>(QuadAt(value, 0))))
            return *date;
    }
    return String();
}

String TextIn(std::string_view bytes, std::uint16_t codePage)
{
    if (codePage == utf16)
        return Utf16In(bytes);
    bytes = bytes.substr(0, bytes.find('\0'));
    return codePage == utf8 ? FromUtf8(bytes) : FromCodePage(bytes, CodePageName(codePage));
}

std::string TypedText(ValueType type, StringView text, std::uint16_t codePage)
{
    CheckHasNoEnd(text);
    if (!IsText(type))
        type = Lpstr;
    if (type != Lpwstr && !BytesIn(text, codePage))
        type = Lpwstr;
    return Typed(type, SizedText(type, text, codePage));
}

std::string TypedPut(StringView property, std::string_view old, const Value& value, std::uint16_t codePage)
{
    const ValueType type = TypeOf(old);
    if (IsOpaque(type))
        throw PropertyCannotChange(property);
    const auto number = NumberOf(value);
    if (number && !std::isfinite(*number))
        throw TooLargeFor(property);
    if (IsText(type) || !number)
        return TypedText(type, TextToPut(value), codePage);
    if (const IntegerType* const integer = IntegerTypeOf(type))
        if (const auto whole = WholeNumberFor(property, integer->range, value))
            return TypedNumber(type, static_cast<std::uint64_t>(*whole), integer->bytes);
    return TypedFraction(property, type, *number);
}

String TextOfBlob(std::string_view typed, std::size_t longestText)
{
    const std::size_t size = LongAt(typed, typeBytes);
    return TextOfBytes(Lpwstr, Slice(typed, typeBytes + sizeBytes, size), utf16, longestText);
}

std::string TypedTextBlob(StringView text)
{
    CheckHasNoEnd(text);
    return TypedBlob(Utf16Bytes(text) + std::string(2, '\0'));
}

std::string TypedBlob(std::string_view bytes)
{
    std::string sized;
    AppendNumber(sized, bytes.size(), sizeBytes);
    return Typed(Blob, sized.append(bytes));
}

std::vector<String> ReadTextList(std::string_view typed, std::uint16_t codePage, std::size_t longestText)
{
    std::vector<String> texts;
    if (const auto layout = LayoutOf(typed))
        for (const std::string_view bytes : layout->texts)
            texts.push_back(TextOfBytes(layout->textType, bytes, codePage, longestText));
    return texts;
}

std::string TypedTextList(std::string_view old, const std::vector<String>& texts, std::uint16_t codePage)
{
    const bool isHeld =
        std::ranges::all_of(texts, [&](const String& text) { return BytesIn(text, codePage).has_value(); });
    const bool isWide = TypeOf(old) == LpwstrList || !isHeld;
    const auto layout = LayoutOf(old);
    const bool isAligned = isWide != (TypeOf(old) == LpwstrList) || (layout && layout->isAligned);
    std::string value;
    AppendNumber(value, texts.size(), sizeBytes);
    for (const String& text : texts) {
        value += SizedText(isWide ? Lpwstr : Lpstr, text, codePage);
        if (isAligned)
            value.resize((value.size() + 3) & ~std::size_t{3});
    }
    return Typed(isWide ? LpwstrList : LpstrList, value);
}

}  // namespace tessarine::builtin
