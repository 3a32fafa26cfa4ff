#pragma once

#include <optional>
#include <string>
#include <vector>

#include "model/PowerPoint.h"
#include "office/builtin/package/Package.h"

namespace tessarine::builtin
{

/// The custom document properties, docProps/custom.xml (ECMA-376 part 1, 22.3), in document order. An absent part holds
/// none.
class CustomPropertyPart
{
public:
    explicit CustomPropertyPart(Package& package);

    std::int32_t Count() const { return static_cast<std::int32_t>(properties_.size()); }
    const String& NameOf(std::int32_t index) const { return At(index).name; }  ///< `index` from 1.
    powerpoint::Value Read(std::int32_t index) const { return At(index).value; }

    /// Puts a value. What is there already, as text, is no change. A text makes the property a text (vt:lpwstr); a
    /// number keeps an integer or float kind where it fits, becomes the text of a text, and otherwise a vt:r8. Raises
    /// -2147467259 for vectors, blobs and the like, which read as "".
    void Put(std::int32_t index, const powerpoint::Value& value);

    void Flush();

private:
    struct Property {
        String name;
        std::string kind;  // local name of the variant element; "" when there is none
        powerpoint::Value value;
        std::size_t offset = 0;  // of the variant element's "<"
        bool changed = false;
    };

    const Property& At(std::int32_t index) const;
    std::string ElementOf(const Property& property) const;

    Package& package_;
    std::optional<Package::Entry> entry_;
    std::string bytes_;  // UTF-8
    std::vector<Property> properties_;
};

}  // namespace tessarine::builtin
