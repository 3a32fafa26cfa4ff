#include "office/builtin/binary/DesignNames.h"

#include <algorithm>
#include <set>
#include <span>

#include "files/RandomAccessFile.h"
#include "log/Treatments.h"
#include "log/Warnings.h"
#include "office/builtin/package/Package.h"
#include "office/builtin/records/RecordTypes.h"
#include "office/builtin/xml/XmlDocument.h"
#include "platform/Failure.h"

namespace tessarine::builtin
{

namespace
{

/// Kind of CString in a main master ([MS-PPT] 2.5.4).
constexpr std::uint16_t templateName = 2;

constexpr StringView inventedName = u"Default Design";

/// The theme is a package of its own in the record (ECMA-376 14.2.7).
String ThemeName(std::string_view theme, const Limits& limits)
{
    String name;
    // A theme that can't be read names nothing.
    Skip([&] {
        Package package(BytesInMemory(std::as_bytes(std::span(theme))), limits);
        const Relationship* relationship = package.RelationshipsOf(std::nullopt).FirstOf("officeDocument");
        const auto manager = package.Follow(std::nullopt, relationship);
        if (!manager)
            return;
        const auto part = package.Follow(*manager, package.RelationshipsOf(*manager).FirstOf("theme"));
        if (!part)
            return;
        std::string bytes = package.ReadXml(*part);
        const XmlDocument document(bytes, package.NameOf(*part), package.limits());
        name = FromUtf8(document.Attribute(document.Root(), "name"));
    });
    return name;
}

String NameOf(std::string_view bytes, const Record& master, const Limits& limits)
{
    String theme;
    for (const Record& child : Records(bytes, master)) {
        if (child.type == record::CString && child.instance == templateName)
            return Utf16Content(child.Content(bytes));
        if (child.type == record::RoundTripTheme12Atom && theme.empty())
            theme = ThemeName(child.Content(bytes), limits);
    }
    return theme;
}

}  // namespace

std::vector<String> NamesOfDesigns(std::string_view bytes, const std::vector<Record>& masters, const Limits& limits)
{
    std::vector<String> names;
    for (const Record& master : masters)
        names.push_back(NameOf(bytes, master, limits));
    std::set<String> taken(names.begin(), names.end());
    std::size_t number = 0;
    for (String& name : names) {
        // As PowerPoint numbers the designs that have one name.
        for (; name.empty(); ++number) {
            const String invented = (number == 0 ? String() : NumeralOf(number) + u"_") + String(inventedName);
            if (taken.insert(invented).second)
                name = invented;
        }
    }
    return names;
}

}  // namespace tessarine::builtin
