#include "office/builtin/properties/CustomPropertyPart.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include "office/builtin/properties/PropertyDate.h"
#include "office/builtin/reader/Refusals.h"
#include "office/builtin/xml/XmlDocument.h"
#include "office/builtin/xml/XmlEdits.h"
#include "office/builtin/xml/XmlScanner.h"
#include "office/builtin/xml/XmlText.h"

namespace tessarine::builtin
{

namespace
{

using powerpoint::Value;

struct IntegerKind {
    std::string_view name;
    double least;
    double largest;
};

/// The bounds are doubles, because a number is put as one. They are exact but for 64 bits, where the nearest double
/// below the bound is taken.
constexpr std::array integerKinds{
    IntegerKind{"i1", -128, 127},
    IntegerKind{"i2", -32768, 32767},
    IntegerKind{"i4", -2147483648.0, 2147483647.0},
    IntegerKind{"int", -2147483648.0, 2147483647.0},
    IntegerKind{"i8", -9223372036854774784.0, 9223372036854774784.0},
    IntegerKind{"ui1", 0, 255},
    IntegerKind{"ui2", 0, 65535},
    IntegerKind{"ui4", 0, 4294967295.0},
    IntegerKind{"uint", 0, 4294967295.0},
    IntegerKind{"ui8", 0, 18446744073709549568.0},
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

/// Numbers in files don't follow a locale.
std::string FileText(double number)
{
    std::array<char, 32> buffer;
    const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
    return {buffer.data(), end};
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
        if (const auto result = std::from_chars(begin, end, number); result.ec == std::errc() && result.ptr == end)
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

/// The number in a value that is one.
std::optional<double> NumberOf(const Value& value)
{
    if (const auto* number = std::get_if<double>(&value))
        return *number;
    if (const auto* number = std::get_if<std::int64_t>(&value))
        return static_cast<double>(*number);
    return std::nullopt;
}

}  // namespace

CustomPropertyPart::CustomPropertyPart(Package& package) : package_(package)
{
    const Relationship* relationship = package.RelationshipsOf(std::nullopt).FirstOf("custom-properties");
    entry_ = package.Follow(std::nullopt, relationship);
    if (!entry_)
        return;
    bytes_ = package.ReadXml(*entry_);
    const XmlDocument document(bytes_, package.NameOf(*entry_), package.limits());
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
        properties_.push_back(std::move(property));
    }
}

void CustomPropertyPart::Put(std::size_t index, const Value& value)
{
    Property& property = properties_[index];
    if (IsOpaque(property.kind))
        throw UnspecifiedError();

    const auto number = NumberOf(value);
    const IntegerKind* integer = IntegerKindOf(property.kind);
    if (IsText(property.kind) || !number) {
        if (!IsText(property.kind))
            property.kind = "lpwstr";
        property.value = powerpoint::TextOf(value);
    } else if (integer != nullptr && std::trunc(*number) == *number && *number >= integer->least &&
               *number <= integer->largest) {
        property.value = *number;
    } else {
        if (!IsFloat(property.kind))
            property.kind = "r8";
        property.value = *number;
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
    if (const auto number = NumberOf(property.value)) {
        const bool isInteger = IntegerKindOf(property.kind) != nullptr;
        // Beyond that the number would not fit into 64 bits with a sign.
        content = isInteger && std::abs(*number) < 9e18 ? std::to_string(static_cast<std::int64_t>(*number))
                                                        : FileText(*number);
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
    if (!edits.empty())
        package_.ReplaceXml(*entry_, ApplyEdits(bytes_, std::move(edits)));
}

}  // namespace tessarine::builtin
