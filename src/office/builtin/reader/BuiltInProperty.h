#pragma once

#include <cstddef>
#include <cstdint>

namespace tessarine::builtin
{

/// The built-in document properties, in the order of PowerPoint's object model, which counts them from 1.
enum class BuiltInProperty : std::uint8_t {
    Title,
    Subject,
    Author,
    Keywords,
    Comments,
    Template,
    LastAuthor,
    RevisionNumber,
    ApplicationName,
    LastPrintDate,
    CreationDate,
    LastSaveTime,
    TotalEditingTime,  ///< In minutes.
    NumberOfPages,
    NumberOfWords,
    NumberOfCharacters,
    Security,
    Category,
    Format,
    Manager,
    Company,
    NumberOfBytes,
    NumberOfLines,
    NumberOfParagraphs,
    NumberOfSlides,
    NumberOfNotes,
    NumberOfHiddenSlides,
    NumberOfMultimediaClips,
    HyperlinkBase,
    NumberOfCharactersWithSpaces,
    ContentType,
    ContentStatus,
    Language,
    DocumentVersion,
};

inline constexpr std::size_t builtInPropertyCount = 34;
static_assert(static_cast<std::size_t>(BuiltInProperty::DocumentVersion) + 1 == builtInPropertyCount);

}  // namespace tessarine::builtin
