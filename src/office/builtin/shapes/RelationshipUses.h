#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>

#include "office/builtin/shapes/ShapeTreeEdits.h"

namespace tessarine::builtin
{

/// How often the elements of a part use each of its relationships. One that several use is left as it is when one of
/// them gets another target.
class RelationshipUses
{
public:
    /// Borrows the edits. Counts when it is first asked, over the part as it is then.
    explicit RelationshipUses(ShapeTreeEdits& edits) : edits_(edits) {}

    /// Points a relationship to a new target when nothing of the part uses it but the `ownUses` elements that get the
    /// target; otherwise makes another one like it. Gives the id that those elements have to name.
    std::string PutTarget(const std::string& id, std::size_t ownUses, std::string target);

    /// Elements that named a relationship are gone: one that nothing uses any more goes too.
    void Release(const std::string& id, std::size_t ownUses);

    /// To be told when elements came or went otherwise, as by an edit of a text.
    void CountAgain() { counts_.reset(); }
    std::size_t KeptBytes() const;  ///< About what the counts take of memory.

private:
    /// The count for an id; 0 for one that nothing names.
    std::size_t& Of(const std::string& id);

    ShapeTreeEdits& edits_;
    std::optional<std::map<std::string, std::size_t, std::less<>>> counts_;  // by id; nothing: count again
};

}  // namespace tessarine::builtin
