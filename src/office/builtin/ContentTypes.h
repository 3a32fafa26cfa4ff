#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "office/builtin/Limits.h"
#include "office/builtin/XmlEdits.h"

namespace tessarine::builtin
{

/// "[Content_Types].xml" (ECMA-376 part 2, 10.1.2): what kind of content each part holds.
class ContentTypes
{
public:
    ContentTypes() = default;

    /// Parses the part (UTF-8). Raises -2147023504.
    ContentTypes(std::string bytes, const Limits& limits);

    /// The type of a part, in lower case, without parameters: its override, else the default of its extension, else "".
    std::string_view TypeOf(std::string_view partName) const;

    void AddOverride(std::string_view partName, std::string_view type);
    void RemoveOverride(std::string_view partName);

    bool IsEdited() const { return !edits_.empty(); }
    std::string Bytes() const { return ApplyEdits(bytes_, edits_); }

private:
    struct Entry {
        std::string type;
        std::size_t offset = 0;
    };

    std::string bytes_;
    std::unordered_map<std::string, Entry> overrides_;       // by comparable part name
    std::unordered_map<std::string, std::string> defaults_;  // by extension in lower case
    std::vector<ByteEdit> edits_;
};

}  // namespace tessarine::builtin
