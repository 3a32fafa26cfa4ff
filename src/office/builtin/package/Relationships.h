#pragma once

#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "office/builtin/limits/Limits.h"
#include "office/builtin/xml/XmlEdits.h"

namespace tessarine::builtin
{

/// One relationship (ECMA-376 part 2, 9.3): how a part points to another part of the package or to a place outside. Its
/// texts live as long as the Relationships that it belongs to.
struct Relationship {
    std::string_view id;      ///< What the part's markup names it by (r:id).
    std::string_view type;    ///< The URI, as written.
    std::string_view target;  ///< Decoded from XML only.
    bool external = false;    ///< The target is a web address or a file, not a part.
    bool removed = false;     ///< By Remove; it is still in All.
    std::size_t offset = 0;   ///< Of the element's "<"; unused for an added one.

    /// True for a relationship of that kind, given as the last segment of its type: "slide", "hyperlink",
    /// "core-properties". Transitional and Strict spell some kinds differently; ask for the Transitional one.
    bool Is(std::string_view kind) const;
};

/// The relationships of one part, or of the package. Edits show at once in the answers, and in Bytes; what they don't
/// touch keeps its bytes.
class Relationships
{
public:
    Relationships() = default;  ///< None, for a part without a relationship part.

    /// Parses a relationship part (UTF-8), whose name `part` is for failures. Raises `FileCorrupt`.
    Relationships(std::string bytes, std::string_view part, const Limits& limits);
    Relationships(const Relationships&) = delete;
    Relationships& operator=(const Relationships&) = delete;

    /// The first relationship of an id; null when there is none or it was removed. The pointer is good until one is
    /// added.
    const Relationship* Find(std::string_view id) const;
    const Relationship* FirstOf(std::string_view kind) const;  ///< In the same way, by the kind (see Relationship::Is).
    const std::vector<Relationship>& All() const { return relationships_; }

    /// Points a relationship to another target; the id must exist. Raises `FileCorrupt` for one that the file gives no
    /// target, and for an id that the file gives to more than one: nobody knows which of them is meant. So do AddLike
    /// and Remove.
    void PutTarget(std::string_view id, std::string target);

    /// Adds an external relationship of the same type as another one and returns its id, "rId" and the next free
    /// number.
    std::string_view AddLike(std::string_view id, std::string target);

    /// Adds an internal relationship and returns its id.
    std::string_view Add(std::string_view type, std::string target);
    void Remove(std::string_view id);  ///< The id must exist.

    /// Keeps an id from added relationships: one that the part's markup names though there is no such relationship
    /// would come to mean the new one.
    void Reserve(std::string_view id);

    bool IsEdited() const { return edited_; }
    std::string Bytes() const;  ///< With the edits made.

    /// True when another part, which was read from those bytes, holds the same relationships in the same order.
    bool ReadAgainAs(const Relationships& other) const;

private:
    void Index(std::string_view part, const Limits& limits);
    std::optional<std::size_t> IndexOf(std::string_view id) const;
    std::size_t IndexForEdit(std::string_view id);
    std::string NewId();
    std::string_view Keep(std::string text) { return texts_.emplace_back(std::move(text)); }

    std::string bytes_;
    std::size_t parsed_ = 0;  // how many of relationships_ stand in the bytes
    std::vector<Relationship> relationships_;
    mutable std::unordered_map<std::string_view, std::size_t> byId_;  // made when many are asked for one
    std::deque<std::string> texts_;                                   // that do not stand in the bytes as they read
    std::optional<std::unordered_set<std::string_view>> repeated_;    // ids, from the first edit on
    std::vector<bool> retargeted_;
    std::size_t numbered_ = 0;   // how many of relationships_ largestId_ knows of
    std::size_t largestId_ = 0;  // of ids "rId" with a number
    std::unordered_set<std::string> reserved_;
    bool edited_ = false;
};

}  // namespace tessarine::builtin
