#pragma once

#include <cstddef>
#include <cstdint>

namespace tessarine::builtin
{

/// The built-in document properties, in the order of PowerPoint's object model, which counts them from 1. The order
/// matters to counts: a search repeats the count of the property before where one can't be read.
enum class BuiltInProperty : std::uint8_t {
    Title,
    Subject,
    Author,
    Keywords,
    Comments,
    Template,         ///< The name of the template that the presentation was made from.
    LastAuthor,       ///< Who saved the file last.
    RevisionNumber,   ///< A text, for all its name.
    ApplicationName,  ///< The program that wrote the file.
    LastPrintDate,    ///< A date, like the next two.
    CreationDate,
    LastSaveTime,
    TotalEditingTime,  ///< A number, in minutes. The properties called "Number of ..." are numbers, too.
    NumberOfPages,
    NumberOfWords,
    NumberOfCharacters,
    Security,  ///< A number: the protection that the file asks for.
    Category,
    Format,  ///< A text, such as "On-screen Show (4:3)".
    Manager,
    Company,
    NumberOfBytes,  ///< Held by binary presentations only.
    NumberOfLines,
    NumberOfParagraphs,
    NumberOfSlides,
    NumberOfNotes,
    NumberOfHiddenSlides,
    NumberOfMultimediaClips,
    HyperlinkBase,  ///< Where relative addresses begin.
    NumberOfCharactersWithSpaces,
    ContentType,
    ContentStatus,
    Language,
    DocumentVersion,
};

inline constexpr std::size_t builtInPropertyCount = 34;
static_assert(static_cast<std::size_t>(BuiltInProperty::DocumentVersion) + 1 == builtInPropertyCount);

/// Whether a table has one row for each property, in their order. A row names its own in the member `property`.
template <class Table>
consteval bool IsTableOfBuiltInProperties(const Table& rows)
{
    for (std::size_t i = 0; i < builtInPropertyCount; ++i)
        if (rows[i].property != static_cast<BuiltInProperty>(i))
            return false;
    return rows.size() == builtInPropertyCount;
}

}  // namespace tessarine::builtin
