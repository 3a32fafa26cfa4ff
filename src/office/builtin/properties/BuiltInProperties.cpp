#include "office/builtin/properties/BuiltInProperties.h"

#include <array>
#include <charconv>

#include "office/builtin/properties/PropertyDate.h"
#include "office/builtin/reader/Refusals.h"

namespace tessarine::builtin
{

namespace
{

using enum Ns;

enum class Kind { Text, Date, Number };

/// Where a property is stored, and what the element's text stands for.
struct Row {
    BuiltInProperty property;
    Kind kind;
    Ns ns;
    std::string_view element;
};

constexpr std::array<Row, builtInPropertyCount> rows{{
    {BuiltInProperty::Title, Kind::Text, DublinCore, "title"},
    {BuiltInProperty::Subject, Kind::Text, DublinCore, "subject"},
    {BuiltInProperty::Author, Kind::Text, DublinCore, "creator"},
    {BuiltInProperty::Keywords, Kind::Text, CoreProperties, "keywords"},
    {BuiltInProperty::Comments, Kind::Text, DublinCore, "description"},
    {BuiltInProperty::Template, Kind::Text, ExtendedProperties, "Template"},
    {BuiltInProperty::LastAuthor, Kind::Text, CoreProperties, "lastModifiedBy"},
    {BuiltInProperty::RevisionNumber, Kind::Text, CoreProperties, "revision"},
    {BuiltInProperty::ApplicationName, Kind::Text, ExtendedProperties, "Application"},
    {BuiltInProperty::LastPrintDate, Kind::Date, CoreProperties, "lastPrinted"},
    {BuiltInProperty::CreationDate, Kind::Date, DublinCoreTerms, "created"},
    {BuiltInProperty::LastSaveTime, Kind::Date, DublinCoreTerms, "modified"},
    {BuiltInProperty::TotalEditingTime, Kind::Number, ExtendedProperties, "TotalTime"},
    {BuiltInProperty::NumberOfPages, Kind::Number, ExtendedProperties, "Pages"},
    {BuiltInProperty::NumberOfWords, Kind::Number, ExtendedProperties, "Words"},
    {BuiltInProperty::NumberOfCharacters, Kind::Number, ExtendedProperties, "Characters"},
    {BuiltInProperty::Security, Kind::Number, ExtendedProperties, "DocSecurity"},
    {BuiltInProperty::Category, Kind::Text, CoreProperties, "category"},
    {BuiltInProperty::Format, Kind::Text, ExtendedProperties, "PresentationFormat"},
    {BuiltInProperty::Manager, Kind::Text, ExtendedProperties, "Manager"},
    {BuiltInProperty::Company, Kind::Text, ExtendedProperties, "Company"},
    {BuiltInProperty::NumberOfBytes, Kind::Number, None, ""},  // has no place in a package
    {BuiltInProperty::NumberOfLines, Kind::Number, ExtendedProperties, "Lines"},
    {BuiltInProperty::NumberOfParagraphs, Kind::Number, ExtendedProperties, "Paragraphs"},
    {BuiltInProperty::NumberOfSlides, Kind::Number, ExtendedProperties, "Slides"},
    {BuiltInProperty::NumberOfNotes, Kind::Number, ExtendedProperties, "Notes"},
    {BuiltInProperty::NumberOfHiddenSlides, Kind::Number, ExtendedProperties, "HiddenSlides"},
    {BuiltInProperty::NumberOfMultimediaClips, Kind::Number, ExtendedProperties, "MMClips"},
    {BuiltInProperty::HyperlinkBase, Kind::Text, ExtendedProperties, "HyperlinkBase"},
    {BuiltInProperty::NumberOfCharactersWithSpaces, Kind::Number, ExtendedProperties, "CharactersWithSpaces"},
    {BuiltInProperty::ContentType, Kind::Text, CoreProperties, "contentType"},
    {BuiltInProperty::ContentStatus, Kind::Text, CoreProperties, "contentStatus"},
    {BuiltInProperty::Language, Kind::Text, DublinCore, "language"},
    {BuiltInProperty::DocumentVersion, Kind::Text, CoreProperties, "version"},
}};

static_assert(IsTableOfBuiltInProperties(rows));

const Row& RowOf(BuiltInProperty property)
{
    return rows[static_cast<std::size_t>(property)];
}

/// What follows the digits is ignored.
std::int64_t NumberIn(const String& text)
{
    const std::string digits = ToUtf8(text);
    std::int64_t number = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return number;
}

}  // namespace

BuiltInProperties::BuiltInProperties(Package& package)
    : core_(package, PropertyPart::Which::Core), extended_(package, PropertyPart::Which::Extended)
{
}

std::optional<powerpoint::Value> BuiltInProperties::Read(BuiltInProperty property) const
{
    const Row& row = RowOf(property);
    // What has no place in a package is looked up under no name, and never found.
    const auto text = PartOf(row.ns).Text(row.ns, row.element);
    if (!text)
        return std::nullopt;
    switch (row.kind) {
        case Kind::Text:
            return *text;
        case Kind::Number:
            return NumberIn(*text);
        case Kind::Date:
            break;
    }
    return ReadPropertyDate(*text);
}

void BuiltInProperties::Put(BuiltInProperty property, const String& text)
{
    const Row& row = RowOf(property);
    if (row.ns == None)
        throw NoPlaceForProperty();
    (row.ns == ExtendedProperties ? extended_ : core_).Put(row.ns, row.element, text);
}

void BuiltInProperties::Flush()
{
    core_.Flush();
    extended_.Flush();
}

}  // namespace tessarine::builtin
