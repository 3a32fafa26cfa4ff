#pragma once

#include <optional>
#include <string>
#include <vector>

#include "office/builtin/package/Package.h"
#include "office/builtin/reader/PropertiesReader.h"

namespace tessarine::builtin
{

/// The custom document properties of a package: docProps/custom.xml (ECMA-376 part 1, 22.3), in document order. A
/// package without the part has none, and gets none: properties are changed, never added.
class CustomPropertyPart final : public CustomPropertiesReader
{
public:
    /// Reads the part. The package must outlive this object. Raises `FileCorrupt` when the part is damaged.
    explicit CustomPropertyPart(Package& package);

    std::size_t Count() const override { return properties_.size(); }
    const String& NameOf(std::size_t index) const override { return properties_[index].name; }
    powerpoint::Value Read(std::size_t index) const override { return properties_[index].value; }

    /// A text becomes a `vt:lpwstr`, a number that fits nothing else a `vt:r8`. A number that is put into a text has
    /// the digits that a person would write. Raises `Unspecified` for a kind that can't be put, and `Overflow` for a
    /// number that is infinite or whose last digits the kind would have to invent.
    void Put(std::size_t index, const powerpoint::Value& value) override;

    /// Hands the edits to the package, which writes them when it is saved. Raises `FileCorrupt` when they would not
    /// read as they were put.
    void Flush();

private:
    /// A `property` element and the variant in it (ECMA-376 part 1, 22.4).
    struct Property {
        String name;
        std::string kind;         // local name of the variant element (vt:i4); "" for a property without one
        powerpoint::Value value;  // as the surface gives it
        std::size_t offset = 0;   // of the variant element's "<" in bytes_
        bool changed = false;     // by Put
    };

    static std::vector<Property> PropertiesOf(const XmlDocument& document);
    /// Raises `FileCorrupt` unless the edited part reads as properties_.
    void CheckReadAgain(const XmlDocument& document, std::string_view part) const;

    /// Its new markup, for a property that has changed.
    std::string ElementOf(const Property& property) const;

    Package& package_;
    std::optional<Package::Entry> entry_;  // nothing when the package has no such part
    std::string bytes_;                    // UTF-8
    std::vector<Property> properties_;
};

}  // namespace tessarine::builtin
