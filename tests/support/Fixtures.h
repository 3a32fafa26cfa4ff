#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "support/Deck.h"

/// The decks that many tests share. "Fabrikam" is the text that jobs look for.
namespace tessarine::test::fixtures
{

/// The part of the first slide of each.
inline const std::string fixtureSlide = "ppt/slides/slide1.xml";

Deck Runs();    ///< "Fabrikam" in one run and over three of different sizes, speller's marks, a run of one blank.
Deck Breaks();  ///< Line breaks, empty paragraphs, tabs, fields, `_x000B_`, CDATA, references, surrogate pairs,
                ///< comments.
Deck Shapes();  ///< Every kind of shape, a hidden shape, a hidden slide, AlternateContent, p:sp without p:txBody.
Deck Notes();   ///< Notes with copies of header and footer and a shape of the user's; a slide without notes.

Deck Footers();                ///< Slide 1 without footer, 2 and 3 with; headers and footers on both page masters.
Deck FootersWithoutMasters();  ///< The same slides, no notes and no handout master.
Deck FootersWithoutHeader();   ///< Both page masters have lost their header placeholder.

Deck Links();  ///< Every kind of target and action; click and hover; shared; in a group, a table; without relationship.
Deck Masters();  ///< "Office Theme" twice (the second has no title layout), and an unused preserved master named "".

Deck AllProperties();     ///< Every core and app value.
Deck NoProperties();      ///< No property part at all.
Deck CustomProperties();  ///< Every vt kind, a linked value, `_MarkAsFinal`, a name twice.
Deck Ole();  ///< Two linked ranges (blanks in the path), both forms, a link in a placeholder, an embedded one.

Deck NullRelationships();  ///< Relationships to parts that were never there.
Deck BackslashNames();
Deck DuplicateSlide();  ///< The slide's entry twice; the last one says "Fabrikam".
Deck Utf16Slide();
Deck ByteOrderMarks();
Deck OddPrefixes();      ///< p is the default namespace, a is "ns0", r is "rel".
Deck RenamedMainPart();  ///< And absolute targets, slides out of the order of their names.
Deck StrictNames();
Deck StreamedPackage();  ///< Data descriptors on every entry.
Deck Zip64Package();
Deck PrefixedPackage();  ///< Bytes in front of the first entry, a comment at the end.
Deck StoredAndDated();   ///< Stored entries, dates, attributes, extra fields.
Deck PrettyPrinted();    ///< White space between elements, single quotes, attributes over several lines.
Deck WithMedia();        ///< 300,000 bytes of media.

Deck ModifyPassword();
Deck Signed();
Deck MacroEnabled();
Deck ReadOnlyRecommended();
Deck MarkedAsFinal();

/// Files that no reader of presentations opens, and why.
std::string EncryptedAgile();
std::string EncryptedStandard();
std::string LegacyPresentation();  ///< A compound file with the streams of PowerPoint 97 to 2003.
std::string OtherCompoundFile();   ///< A compound file of something else.
std::string TruncatedPackage();    ///< Ends in the middle of an entry.
std::string PackageWithMissingSlide();
std::string PackageWithBrokenXml();
std::string PackageWithEntityDeclaration();  ///< A slide with a DTD whose entities grow.
std::string PackageWithoutContentTypes();
std::string PackageWithoutMainPart();
std::string PackageWithWrongCrc();
std::string EmptyFile();
std::string Workbook();  ///< A spreadsheet under a presentation's name.
std::string TextFile();

struct NamedDeck {
    std::string name;  ///< The function's.
    Deck deck;
};
struct NamedFile {
    std::string name;
    std::string bytes;
};

/// The name alone, so that lists of tests stay readable.
void PrintTo(const NamedDeck& deck, std::ostream* out);
void PrintTo(const NamedFile& file, std::ostream* out);

/// All of the above, for tests and seeds that run over every one.
std::vector<NamedDeck> ReadableDecks();
std::vector<NamedFile> UnreadableFiles();

}  // namespace tessarine::test::fixtures
