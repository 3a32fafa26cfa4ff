#include "office/builtin/objects/BuiltInPropertyRules.h"

#include <array>

namespace tessarine::builtin
{

namespace
{

using enum BuiltInProperty;
using enum UnsetProperty;

// Which ones PowerPoint leaves undefined decides counts: a search repeats the count of the property before when one
// can't be read.
constexpr std::array<BuiltInPropertyRule, builtInPropertyCount> rules{{
    {Title, u"Title", ReadsEmpty, true},
    {Subject, u"Subject", ReadsEmpty, true},
    {Author, u"Author", ReadsEmpty, true},
    {Keywords, u"Keywords", ReadsEmpty, true},
    {Comments, u"Comments", ReadsEmpty, true},
    {Template, u"Template", ReadsEmpty, true},
    {LastAuthor, u"Last author", ReadsEmpty, true},
    {RevisionNumber, u"Revision number", ReadsEmpty, true},
    {ApplicationName, u"Application name", ReadsEmpty, false},
    {LastPrintDate, u"Last print date", Raises, false},
    {CreationDate, u"Creation date", Raises, false},
    {LastSaveTime, u"Last save time", Raises, false},
    {TotalEditingTime, u"Total editing time", ReadsZero, false},
    {NumberOfPages, u"Number of pages", Raises, false},
    {NumberOfWords, u"Number of words", ReadsZero, false},
    {NumberOfCharacters, u"Number of characters", Raises, false},
    {Security, u"Security", ReadsZero, false},
    {Category, u"Category", ReadsEmpty, true},
    {Format, u"Format", ReadsEmpty, true},
    {Manager, u"Manager", ReadsEmpty, true},
    {Company, u"Company", ReadsEmpty, true},
    {NumberOfBytes, u"Number of bytes", Raises, false},
    {NumberOfLines, u"Number of lines", Raises, false},
    {NumberOfParagraphs, u"Number of paragraphs", ReadsZero, false},
    {NumberOfSlides, u"Number of slides", CountsSlides, false},
    {NumberOfNotes, u"Number of notes", ReadsZero, false},
    {NumberOfHiddenSlides, u"Number of hidden Slides", ReadsZero, false},
    {NumberOfMultimediaClips, u"Number of multimedia clips", ReadsZero, false},
    {HyperlinkBase, u"Hyperlink base", ReadsEmpty, true},
    {NumberOfCharactersWithSpaces, u"Number of characters (with spaces)", Raises, false},
    {ContentType, u"Content type", ReadsEmpty, true},
    {ContentStatus, u"Content status", ReadsEmpty, true},
    {Language, u"Language", ReadsEmpty, true},
    {DocumentVersion, u"Document version", ReadsEmpty, true},
}};

// RuleOf uses the property as the index.
static_assert(IsTableOfBuiltInProperties(rules));

}  // namespace

const BuiltInPropertyRule& RuleOf(BuiltInProperty property)
{
    return rules[static_cast<std::size_t>(property)];
}

}  // namespace tessarine::builtin
