#include "office/builtin/properties/BuiltInProperties.h"

#include <array>
#include <charconv>

#include "office/builtin/properties/PropertyDate.h"
#include "platform/Failure.h"

namespace tessarine::builtin
{

namespace
{

using enum Ns;

enum class Kind { Text, Date, Number };
enum class Unset { Empty, Zero, Slides, Raises };

struct Row {
    const char16_t* name;
    Kind kind;
    Ns ns;
    std::string_view element;
    Unset unset;
    bool writable;
};

constexpr std::array<Row, BuiltInProperties::count> rows{{
    {u"Title", Kind::Text, DublinCore, "title", Unset::Empty, true},
    {u"Subject", Kind::Text, DublinCore, "subject", Unset::Empty, true},
    {u"Author", Kind::Text, DublinCore, "creator", Unset::Empty, true},
    {u"Keywords", Kind::Text, CoreProperties, "keywords", Unset::Empty, true},
    {u"Comments", Kind::Text, DublinCore, "description", Unset::Empty, true},
    {u"Template", Kind::Text, ExtendedProperties, "Template", Unset::Empty, true},
    {u"Last author", Kind::Text, CoreProperties, "lastModifiedBy", Unset::Empty, true},
    {u"Revision number", Kind::Text, CoreProperties, "revision", Unset::Empty, true},
    {u"Application name", Kind::Text, ExtendedProperties, "Application", Unset::Empty, false},
    {u"Last print date", Kind::Date, CoreProperties, "lastPrinted", Unset::Raises, false},
    {u"Creation date", Kind::Date, DublinCoreTerms, "created", Unset::Raises, false},
    {u"Last save time", Kind::Date, DublinCoreTerms, "modified", Unset::Raises, false},
    {u"Total editing time", Kind::Number, ExtendedProperties, "TotalTime", Unset::Zero, false},
    {u"Number of pages", Kind::Number, ExtendedProperties, "Pages", Unset::Raises, false},
    {u"Number of words", Kind::Number, ExtendedProperties, "Words", Unset::Zero, false},
    {u"Number of characters", Kind::Number, ExtendedProperties, "Characters", Unset::Raises, false},
    {u"Security", Kind::Number, ExtendedProperties, "DocSecurity", Unset::Zero, false},
    {u"Category", Kind::Text, CoreProperties, "category", Unset::Empty, true},
    {u"Format", Kind::Text, ExtendedProperties, "PresentationFormat", Unset::Empty, true},
    {u"Manager", Kind::Text, ExtendedProperties, "Manager", Unset::Empty, true},
    {u"Company", Kind::Text, ExtendedProperties, "Company", Unset::Empty, true},
    {u"Number of bytes", Kind::Number, None, "", Unset::Raises, false},  // has no place in the file
    {u"Number of lines", Kind::Number, ExtendedProperties, "Lines", Unset::Raises, false},
    {u"Number of paragraphs", Kind::Number, ExtendedProperties, "Paragraphs", Unset::Zero, false},
    {u"Number of slides", Kind::Number, ExtendedProperties, "Slides", Unset::Slides, false},
    {u"Number of notes", Kind::Number, ExtendedProperties, "Notes", Unset::Zero, false},
    {u"Number of hidden Slides", Kind::Number, ExtendedProperties, "HiddenSlides", Unset::Zero, false},
    {u"Number of multimedia clips", Kind::Number, ExtendedProperties, "MMClips", Unset::Zero, false},
    {u"Hyperlink base", Kind::Text, ExtendedProperties, "HyperlinkBase", Unset::Empty, true},
    {u"Number of characters (with spaces)", Kind::Number, ExtendedProperties, "CharactersWithSpaces", Unset::Raises,
     false},
    {u"Content type", Kind::Text, CoreProperties, "contentType", Unset::Empty, true},
    {u"Content status", Kind::Text, CoreProperties, "contentStatus", Unset::Empty, true},
    {u"Language", Kind::Text, DublinCore, "language", Unset::Empty, true},
    {u"Document version", Kind::Text, CoreProperties, "version", Unset::Empty, true},
}};

constexpr std::size_t longestText = 255;

const Row& RowAt(std::int32_t index)
{
    return rows[static_cast<std::size_t>(index) - 1];
}

Failure Unspecified()
{
    return {FailureNumber::Unspecified, u"Unspecified error"};
}

}  // namespace

BuiltInProperties::BuiltInProperties(Package& package, std::int64_t slides)
    : core_(package, PropertyPart::Which::Core), extended_(package, PropertyPart::Which::Extended), slides_(slides)
{
}

String BuiltInProperties::NameOf(std::int32_t index)
{
    return RowAt(index).name;
}

powerpoint::Value BuiltInProperties::Read(std::int32_t index) const
{
    const Row& row = RowAt(index);
    const auto text = PartOf(row.ns).Text(row.ns, row.element);
    if (!text) {
        switch (row.unset) {
            case Unset::Empty:
                return String();
            case Unset::Zero:
                return std::int64_t{0};
            case Unset::Slides:
                return slides_;
            case Unset::Raises:
                throw Unspecified();
        }
    }
    if (row.kind == Kind::Date) {
        const auto date = ReadPropertyDate(*text);
        if (!date)
            throw Unspecified();
        return *date;
    }
    if (row.kind == Kind::Number) {
        const std::string digits = ToUtf8(*text);
        std::int64_t number = 0;
        std::from_chars(digits.data(), digits.data() + digits.size(), number);
        return number;
    }
    return *text;
}

void BuiltInProperties::Put(std::int32_t index, const powerpoint::Value& value)
{
    const Row& row = RowAt(index);
    const String text = powerpoint::TextOf(value);
    if (powerpoint::TextOf(Read(index)) == text)
        return;
    if (!row.writable)
        throw Unspecified();
    if (text.size() > longestText)
        throw Failure(FailureNumber::BadArgument, u"DocumentProperty (unknown member) : The text is too long.");
    (row.ns == ExtendedProperties ? extended_ : core_).Put(row.ns, row.element, text);
}

void BuiltInProperties::Flush()
{
    core_.Flush();
    extended_.Flush();
}

}  // namespace tessarine::builtin
