#include "office/builtin/propertysets/SummaryProperties.h"

#include <array>

#include "office/builtin/propertysets/PropertyNames.h"
#include "office/builtin/propertysets/SetBytes.h"
#include "office/builtin/propertysets/TypedValue.h"
#include "office/builtin/reader/Refusals.h"

namespace tessarine::builtin
{

namespace
{

enum class Set { Summary, DocumentSummary, UserDefined };
enum class Kind { Text, Date, Number, Minutes };

/// Where a property is stored, and what its value stands for.
struct Row {
    BuiltInProperty property;
    Kind kind;
    Set set;
    std::uint32_t id;
};

constexpr std::array<Row, builtInPropertyCount> rows{{
    {BuiltInProperty::Title, Kind::Text, Set::Summary, 2},
    {BuiltInProperty::Subject, Kind::Text, Set::Summary, 3},
    {BuiltInProperty::Author, Kind::Text, Set::Summary, 4},
    {BuiltInProperty::Keywords, Kind::Text, Set::Summary, 5},
    {BuiltInProperty::Comments, Kind::Text, Set::Summary, 6},
    {BuiltInProperty::Template, Kind::Text, Set::Summary, 7},
    {BuiltInProperty::LastAuthor, Kind::Text, Set::Summary, 8},
    {BuiltInProperty::RevisionNumber, Kind::Text, Set::Summary, 9},
    {BuiltInProperty::ApplicationName, Kind::Text, Set::Summary, 18},
    {BuiltInProperty::LastPrintDate, Kind::Date, Set::Summary, 11},
    {BuiltInProperty::CreationDate, Kind::Date, Set::Summary, 12},
    {BuiltInProperty::LastSaveTime, Kind::Date, Set::Summary, 13},
    {BuiltInProperty::TotalEditingTime, Kind::Minutes, Set::Summary, 10},
    {BuiltInProperty::NumberOfPages, Kind::Number, Set::Summary, 14},
    {BuiltInProperty::NumberOfWords, Kind::Number, Set::Summary, 15},
    {BuiltInProperty::NumberOfCharacters, Kind::Number, Set::Summary, 16},
    {BuiltInProperty::Security, Kind::Number, Set::Summary, 19},
    {BuiltInProperty::Category, Kind::Text, Set::DocumentSummary, 2},
    {BuiltInProperty::Format, Kind::Text, Set::DocumentSummary, 3},
    {BuiltInProperty::Manager, Kind::Text, Set::DocumentSummary, 14},
    {BuiltInProperty::Company, Kind::Text, Set::DocumentSummary, 15},
    {BuiltInProperty::NumberOfBytes, Kind::Number, Set::DocumentSummary, 4},
    {BuiltInProperty::NumberOfLines, Kind::Number, Set::DocumentSummary, 5},
    {BuiltInProperty::NumberOfParagraphs, Kind::Number, Set::DocumentSummary, 6},
    {BuiltInProperty::NumberOfSlides, Kind::Number, Set::DocumentSummary, 7},
    {BuiltInProperty::NumberOfNotes, Kind::Number, Set::DocumentSummary, 8},
    {BuiltInProperty::NumberOfHiddenSlides, Kind::Number, Set::DocumentSummary, 9},
    {BuiltInProperty::NumberOfMultimediaClips, Kind::Number, Set::DocumentSummary, 10},
    {BuiltInProperty::HyperlinkBase, Kind::Text, Set::UserDefined, 0},  // found by its name
    {BuiltInProperty::NumberOfCharactersWithSpaces, Kind::Number, Set::DocumentSummary, 17},
    {BuiltInProperty::ContentType, Kind::Text, Set::DocumentSummary, 26},
    {BuiltInProperty::ContentStatus, Kind::Text, Set::DocumentSummary, 27},
    {BuiltInProperty::Language, Kind::Text, Set::DocumentSummary, 28},
    {BuiltInProperty::DocumentVersion, Kind::Text, Set::DocumentSummary, 29},
}};

static_assert(IsTableOfBuiltInProperties(rows));

const FormatId& FormatOf(Set set)
{
    return set == Set::Summary           ? summaryFormat
           : set == Set::DocumentSummary ? documentSummaryFormat
                                         : userDefinedFormat;
}

/// A number that isn't a whole one is 0.
std::int64_t WholeNumberIn(const powerpoint::Value& value)
{
    const auto* const number = std::get_if<std::int64_t>(&value);
    return number == nullptr ? 0 : *number;
}

/// The tenths of microseconds of a FILETIME; nothing for other types, and for one that was never set.
std::optional<std::uint64_t> FileTimeIn(std::string_view typed)
{
    const std::uint64_t fileTime = QuadAt(typed, 4);
    return TypeOf(typed) == ValueType::FileTime && fileTime != 0 ? std::optional(fileTime) : std::nullopt;
}

}  // namespace

SummaryProperties::SummaryProperties(std::optional<PropertySetStream>& summary,
                                     std::optional<PropertySetStream>& documentSummary, const Limits& limits)
    : summary_(summary), documentSummary_(documentSummary), limits_(limits)
{
    FindLinkBase();
}

void SummaryProperties::FindLinkBase()
{
    const auto* const section = documentSummary_ ? documentSummary_->Find(userDefinedFormat) : nullptr;
    if (section == nullptr)
        return;
    for (const auto& [id, name] : NamesIn(*documentSummary_, *section))
        if (name == linkBaseName && documentSummary_->Value(*section, id))
            linkBase_ = id;
}

std::optional<SummaryProperties::Place> SummaryProperties::PlaceOf(BuiltInProperty property) const
{
    const Row& row = rows[static_cast<std::size_t>(property)];
    if (row.set == Set::UserDefined && !linkBase_)
        return std::nullopt;
    auto& stream = row.set == Set::Summary ? summary_ : documentSummary_;
    const auto* const section = stream ? stream->Find(FormatOf(row.set)) : nullptr;
    if (section == nullptr)
        return std::nullopt;
    return Place{*stream, *section, row.set == Set::UserDefined ? *linkBase_ : row.id};
}

std::optional<powerpoint::Value> SummaryProperties::Read(BuiltInProperty property) const
{
    const auto place = PlaceOf(property);
    const auto typed = place ? place->stream.Value(place->section, place->id) : std::nullopt;
    if (!typed)
        return std::nullopt;
    const ValueType type = TypeOf(*typed);
    const auto value = [&] { return ReadTyped(*typed, place->section.codePage, limits_.textUnits); };
    switch (rows[static_cast<std::size_t>(property)].kind) {
        case Kind::Text:
            if (type == ValueType::Blob)
                return TextOfBlob(*typed, limits_.textUnits);
            return IsOpaque(type) ? std::nullopt : std::optional<powerpoint::Value>(powerpoint::TextOf(value()));
        case Kind::Number:
            return WholeNumberIn(value());
        case Kind::Minutes: {
            constexpr std::uint64_t inAMinute = 600'000'000;
            return static_cast<std::int64_t>(FileTimeIn(*typed).value_or(0) / inAMinute);
        }
        case Kind::Date:
            break;
    }
    const auto date = FileTimeIn(*typed) ? value() : powerpoint::Value();
    return std::holds_alternative<powerpoint::Date>(date) ? std::optional(date) : std::nullopt;
}

void SummaryProperties::Put(BuiltInProperty property, const String& text)
{
    const auto place = PlaceOf(property);
    const auto old = place ? place->stream.Value(place->section, place->id) : std::nullopt;
    if (!old && text.empty())
        return;
    if (!place)
        throw NoPlaceForProperty();
    const ValueType type = old ? TypeOf(*old) : ValueType::Lpstr;
    place->stream.Put(place->section, place->id,
                      type == ValueType::Blob ? TypedTextBlob(text) : TypedText(type, text, place->section.codePage),
                      old ? LengthOf(*old) : 0);
}

}  // namespace tessarine::builtin
