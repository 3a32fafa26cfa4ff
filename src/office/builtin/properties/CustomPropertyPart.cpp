#include "office/builtin/properties/CustomPropertyPart.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include "office/builtin/limits/Damage.h"
#include "office/builtin/properties/PropertyDate.h"
#include "office/builtin/reader/PropertyNumbers.h"
#include "office/builtin/reader/Refusals.h"
#include "office/builtin/xml/EditedPart.h"
#include "office/builtin/xml/XmlScanner.h"
#include "office/builtin/xml/XmlText.h"

namespace tessarine::builtin
{

namespace
{

using powerpoint::Value;

/// What a number may be to be put into an element of that kind.
struct IntegerKind {
    std::string_view name;
    IntegerRange range;
};

constexpr std::int64_t least64 = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t largest64 = std::numeric_limits<std::int64_t>::max();

/// The upper half of ui8 reads as a text and can't be put as a number.
constexpr std::array integerKinds{
    IntegerKind{"i1", {-128, 127}},
    IntegerKind{"i2", {-32768, 32767}},
    IntegerKind{"i4", {-2147483648, 2147483647}},
    IntegerKind{"int", {-2147483648, 2147483647}},
    IntegerKind{"i8", {least64, largest64}},
    IntegerKind{"ui1", {0, 255}},
    IntegerKind{"ui2", {0, 65535}},
    IntegerKind{"ui4", {0, 4294967295}},
    IntegerKind{"uint", {0, 4294967295}},
    IntegerKind{"ui8", {0, largest64}},
};

bool IsOneOf(std::string_view kind, std::initializer_list<std::string_view> kinds)
{
    return std::ranges::find(kinds, kind) != kinds.end();
}

bool IsText(std::string_view kind)
{
    return IsOneOf(kind, {"lpwstr", "lpstr", "bstr"});
}

bool IsFloat(std::string_view kind)
{
    return IsOneOf(kind, {"r4", "r8", "decimal", "cy"});
}

const IntegerKind* IntegerKindOf(std::string_view kind)
{
    const auto found = std::ranges::find(integerKinds, kind, &IntegerKind::name);
    return found == integerKinds.end() ? nullptr : &*found;
}

/// What reads as "" and can't be put.
bool IsOpaque(std::string_view kind)
{
    return !IsText(kind) && !IsFloat(kind) && IntegerKindOf(kind) == nullptr &&
           !IsOneOf(kind, {"bool", "filetime", "date", "empty", "null"});
}

/// Numbers in files don't follow a locale. Sums of money have four decimals (ECMA-376 part 1, 22.4.2.7), decimals no
/// exponent.
std::string FileText(double number, std::string_view kind)
{
    std::array<char, 512> buffer;  // the largest double has 309 digits
    char* const begin = buffer.data();
    char* const end = begin + buffer.size();
    const auto written = kind == "cy"        ? std::to_chars(begin, end, number, std::chars_format::fixed, 4)
                         : kind == "decimal" ? std::to_chars(begin, end, number, std::chars_format::fixed)
                                             : std::to_chars(begin, end, number);
    return {begin, written.ptr};
}

Value ValueOf(std::string_view kind, const String& text)
{
    const std::string utf8 = ToUtf8(text);
    const char* begin = utf8.data();
    const char* end = begin + utf8.size();
    if (IntegerKindOf(kind) != nullptr) {
        std::int64_t number = 0;
        if (const auto result = std::from_chars(begin, end, number); result.ec == std::errc() && result.ptr == end)
            return number;
    } else if (IsFloat(kind)) {
        double number = 0;
        const auto result = std::from_chars(begin, end, number);
        if (result.ec == std::errc() && result.ptr == end && std::isfinite(number))
            return number;
    } else if (kind == "bool") {
        return utf8 == "true" || utf8 == "1" || utf8 == "True" || utf8 == "TRUE";
    } else if (kind == "filetime" || kind == "date") {
        if (const auto date = ReadPropertyDate(text))
            return *date;
    } else if (IsOpaque(kind) || kind == "empty" || kind == "null") {
        return String();
    }
    return text;
}

}  // namespace

CustomPropertyPart::CustomPropertyPart(Package& package) : package_(package)
{
    const Relationship* relationship = package.RelationshipsOf(std::nullopt).FirstOf("custom-properties");
    entry_ = package.Follow(std::nullopt, relationship);
    if (!entry_)
        return;
    bytes_ = package.ReadXml(*entry_);
    properties_ = PropertiesOf(XmlDocument(bytes_, package.NameOf(*entry_), package.limits()));
    for (const Property& property : properties_)
        if (const auto* const text = std::get_if<String>(&property.value);
            text != nullptr && text->size() > package.limits().textUnits)
            throw Damage(package.NameOf(*entry_), "a property is too long", property.offset);
}

std::vector<CustomPropertyPart::Property> CustomPropertyPart::PropertiesOf(const XmlDocument& document)
{
    std::vector<Property> properties;
    for (const Node node : document.Root().ChildElements()) {
        if (!document.Is(node, Ns::CustomProperties, "property"))
            continue;
        Property property;
        property.name = FromUtf8(document.Attribute(node, "name"));
        for (const Node variant : node.ChildElements()) {
            const std::string_view name = variant.Name();
            property.kind = name.substr(name.find(':') + 1);  // npos + 1 is 0: a name without a prefix
            property.offset = document.OffsetOf(variant);
            property.value = ValueOf(property.kind, document.TextOf(variant));
            break;
        }
        properties.push_back(std::move(property));
    }
    return properties;
}

void CustomPropertyPart::Put(std::size_t index, const Value& value)
{
    Property& property = properties_[index];
    if (IsOpaque(property.kind))
        throw PropertyCannotChange(property.name);

    const auto number = NumberOf(value);
    if (number && !std::isfinite(*number))
        throw TooLargeFor(property.name);
    const IntegerKind* const integer = IntegerKindOf(property.kind);
    if (IsText(property.kind) || !number) {
        property.value = TextToPut(value);
        if (!IsText(property.kind))
            property.kind = "lpwstr";
    } else if (const auto whole =
                   integer == nullptr ? std::nullopt : WholeNumberFor(property.name, integer->range, value)) {
        property.value = *whole;
    } else if (property.kind == "cy") {
        property.value = AsMoney(property.name, *number);
    } else {
        property.value = *number;
        if (!IsFloat(property.kind))
            property.kind = "r8";
    }
    property.changed = true;
}

/// The variant element for a changed value. A text that stays one keeps the bytes of what it has in common with the
/// old.
std::string CustomPropertyPart::ElementOf(const Property& property) const
{
    const ElementRange range = ScanElement(bytes_, property.offset);
    const std::string name = std::string(range.Prefix()) + property.kind;
    std::string content;
    if (const auto* const whole = std::get_if<std::int64_t>(&property.value)) {
        content = std::to_string(*whole);
    } else if (const auto* const number = std::get_if<double>(&property.value)) {
        content = FileText(*number, property.kind);
    } else {
        const std::string_view old =
            std::string_view(bytes_).substr(range.contentBegin, range.contentEnd - range.contentBegin);
        content = ReplaceContent(IsText(LocalName(range.name)) ? old : std::string_view(),
                                 powerpoint::TextOf(property.value), EscapePropertyText);
    }
    // The start tag may declare the prefix itself: everything after its name stays.
    const std::size_t afterName = range.begin + 1 + range.name.size();
    std::string_view rest = std::string_view(bytes_).substr(afterName, range.contentBegin - afterName);
    rest.remove_suffix(range.IsEmptyTag() ? 2 : 1);
    return "<" + name + std::string(rest) + ">" + content + "</" + name + ">";
}

void CustomPropertyPart::Flush()
{
    std::vector<ByteEdit> edits;
    for (const Property& property : properties_) {
        if (!property.changed)
            continue;
        const ElementRange range = ScanElement(bytes_, property.offset);
        edits.push_back({range.begin, range.end, ElementOf(property)});
    }
    if (edits.empty())
        return;
    const std::string_view part = package_.NameOf(*entry_);
    const EditedPart edited(XmlDocument(bytes_, part, package_.limits()), std::move(edits), part, package_.limits());
    CheckReadAgain(edited.Document(), part);
    package_.ReplaceXml(*entry_, edited.Bytes());
}

void CustomPropertyPart::CheckReadAgain(const XmlDocument& document, std::string_view part) const
{
    const auto isSame = [](const Property& property, const Property& readAgain) {
        return property.name == readAgain.name && property.kind == readAgain.kind &&
               ReadsAs(powerpoint::TextOf(readAgain.value), powerpoint::TextOf(property.value));
    };
    if (!std::ranges::equal(properties_, PropertiesOf(document), isSame))
        throw FailedEdit(part, "a property would not have the value that was put");
}

}  // namespace tessarine::builtin
