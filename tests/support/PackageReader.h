#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "platform/String.h"
#include "support/Deck.h"

/// An independent look into packages, for tests: built on libraries of others and on nothing of the presentation
/// engine. Everything raises std::runtime_error when the package is damaged or does not hold what was asked for.
namespace tessarine::test
{

/// One entry as it lies in the package.
struct PackageEntry {
    std::string name;    ///< As written, backslashes included.
    std::string packed;  ///< The bytes in the file.
    std::string bytes;   ///< Inflated; its CRC has been checked.
    std::uint16_t method = 0;
    std::uint16_t flags = 0;
    std::uint32_t crc = 0;
    DosDateTime modified;
    std::uint32_t externalAttributes = 0;
    std::string extraField;  ///< Of the central directory, without the zip64 field.
    std::string comment;
};

struct PackageRelationship {
    std::string id;
    std::string type;  ///< The whole URI.
    String target;     ///< As written.
    bool external = false;
};

/// A package in memory, unpacked as a whole.
class PackageReader
{
public:
    PackageReader(std::string bytes);  // NOLINT(google-explicit-constructor)
    PackageReader(const Deck& deck);   // NOLINT(google-explicit-constructor)
    static PackageReader FromFile(const std::filesystem::path& path);

    const std::vector<PackageEntry>& Entries() const { return entries_; }  ///< In the order of the directory.
    std::vector<std::string> Names() const;
    bool Has(const std::string& name) const { return Find(name) != nullptr; }

    /// By name, "/" and "\" alike; of several the last.
    const PackageEntry& Entry(const std::string& name) const;

    const std::string& Bytes() const { return bytes_; }  ///< The whole package.

    std::vector<PackageRelationship> Relationships(const std::string& part) const;  ///< "" for the package's own.

    /// The part that a relationship leads to, in normal form and without a leading "/".
    std::string Target(const std::string& part, const std::string& id) const;

    /// The part of the first internal relationship whose type ends in "/" and `type`; "" when there is none.
    std::string TargetOfType(const std::string& part, const std::string& type) const;

    std::vector<std::string> SlideParts() const;  ///< In the order that the presentation shows them.

private:
    const PackageEntry* Find(const std::string& name) const;

    std::string bytes_;
    std::vector<PackageEntry> entries_;
};

/// The texts of a part as a person reads them: one for each text body, in document order, members of groups and cells
/// of tables included. Paragraphs are joined by CR, line breaks are VT. Of alternatives the first choice is read.
std::vector<String> TextsOfPart(const PackageReader& package, const std::string& part);

/// The same of a slide (from 1), and of its notes page (empty without one).
std::vector<String> TextsOf(const PackageReader& package, int slide);
std::vector<String> NotesOf(const PackageReader& package, int slide);

/// The text of one shape (from 1, in z-order; a group counts once); "" when it has no text body of its own.
String TextOf(const PackageReader& package, int slide, int shape);

/// Every a:r of a slide in document order.
std::vector<TextRun> RunsOf(const PackageReader& package, int slide);
std::vector<TextRun> RunsOfPart(const PackageReader& package, const std::string& part);

/// Targets of all hyperlink elements of a slide in document order, as the relationships hold them.
std::vector<String> LinksOf(const PackageReader& package, int slide);

/// Targets of the slide's relationships of type oleObject that lead outside.
std::vector<String> OleLinksOf(const PackageReader& package, int slide);

/// Text of an element ("dc:title", "Company") of core.xml or app.xml. Raises when the element is missing.
String CoreProperty(const PackageReader& package, const std::string& element);
String AppProperty(const PackageReader& package, const std::string& element);

/// Kind ("lpwstr") and text of a custom property.
struct CustomValue {
    std::string kind;
    String text;

    bool operator==(const CustomValue&) const = default;
};
CustomValue CustomProperty(const PackageReader& package, const String& name);
void PrintTo(const CustomValue& value, std::ostream* out);

/// What is wrong with the package: parts that are no well-formed XML, relationships that lead nowhere, parts without a
/// content type, entries twice, [Content_Types].xml not first. Empty when nothing is.
std::vector<std::string> ValidityFaults(const PackageReader& package);

}  // namespace tessarine::test
