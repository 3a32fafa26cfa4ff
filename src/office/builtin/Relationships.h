#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "office/builtin/Limits.h"
#include "office/builtin/XmlEdits.h"

namespace tessarine::builtin
{

/// One relationship (ECMA-376 part 2, 9.3).
struct Relationship {
    std::string id;
    std::string type;    ///< The URI, as written.
    std::string target;  ///< Decoded from XML only.
    bool external = false;
    bool removed = false;
    std::size_t offset = 0;  ///< Of the element's "<"; unused for an added one.

    /// True for a relationship of that kind, given as the last segment of its type: "slide", "hyperlink",
    /// "core-properties". Transitional and Strict spell some kinds differently; ask for the Transitional one.
    bool Is(std::string_view kind) const;
};

/// The relationships of one part, or of the package. Edits are kept and put into the bytes on demand.
class Relationships
{
public:
    Relationships() = default;  ///< None, for a part without a relationship part.

    /// Parses a relationship part (UTF-8). Raises -2147023504.
    Relationships(std::string bytes, std::string_view part, const Limits& limits);

    const Relationship* Find(std::string_view id) const;
    const Relationship* FirstOf(std::string_view kind) const;
    const std::vector<Relationship>& All() const { return relationships_; }

    void PutTarget(std::string_view id, std::string target);

    /// Adds an external relationship of the same type as another one and returns its id, "rId" and the next free
    /// number.
    std::string AddLike(std::string_view id, std::string target);

    /// Adds an internal relationship and returns its id.
    std::string Add(std::string_view type, std::string target);
    void Remove(std::string_view id);

    bool IsEdited() const { return edited_; }
    std::string Bytes() const;  ///< With the edits made.

private:
    std::string NewId() const;

    std::string bytes_;
    std::size_t parsed_ = 0;  // how many of relationships_ stand in the bytes
    std::vector<Relationship> relationships_;
    std::unordered_map<std::string, std::size_t> byId_;
    std::vector<bool> retargeted_;
    bool edited_ = false;
};

}  // namespace tessarine::builtin
