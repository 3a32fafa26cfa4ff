#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "office/builtin/Limits.h"
#include "office/builtin/XmlEdits.h"

namespace tessarine::builtin
{

/// "[Content_Types].xml" (ECMA-376 part 2, 10.1.2): what kind of content each part holds. Looked up in the bytes each
/// time: a file is asked for one part's type, its main part's.
class ContentTypes
{
public:
    /// `bytes` is the part as UTF-8.
    ContentTypes(std::string bytes, const Limits& limits) : bytes_(std::move(bytes)), limits_(limits) {}

    /// The type of a part, in lower case, without parameters: its override, else the default of its extension, else "".
    /// Raises -2147023504 when the part is damaged.
    std::string TypeOf(std::string_view partName) const;

    void AddOverride(std::string_view partName, std::string_view type);
    void RemoveOverride(std::string_view partName);

    bool IsEdited() const { return !edits_.empty(); }
    std::string Bytes() const { return ApplyEdits(bytes_, edits_); }

private:
    std::string bytes_;
    Limits limits_;
    std::vector<ByteEdit> edits_;
};

}  // namespace tessarine::builtin
