#pragma once

#include <cstddef>
#include <optional>
#include <set>
#include <vector>

#include "office/builtin/shapes/RelationshipUses.h"
#include "office/builtin/shapes/ShapeTreeEdits.h"
#include "platform/String.h"

namespace tessarine::builtin
{

/// The hyperlinks of a part, by their indices: what they lead to, and leading them elsewhere. They are those of the
/// part with all its edits, also those of its texts. A link that is gone keeps its index, whatever took it away; only
/// an edit of a text that divides a link moves the indices after it.
class Hyperlinks
{
public:
    /// Borrows both. Reads nothing yet.
    Hyperlinks(ShapeTreeEdits& edits, RelationshipUses& uses) : edits_(edits), uses_(uses) {}

    /// Those that are members of Hyperlinks in PowerPoint's object model, in document order.
    std::vector<std::size_t> Members();

    /// "" for a link within the presentation. Raises `InvalidRequest` for a link that is gone.
    String Address(std::size_t link);

    /// Equal to Address: no change. Empty: the link goes, unless it leads to a place by its fragment. Raises as Address
    /// and WriteTarget do, and `InvalidRequest` for a link within the presentation.
    void PutAddress(std::size_t link, const String& address);

    void TextChanged(std::size_t body);  ///< To be told of each edit of a text.
    void Update();                       ///< To be told before the edits are flushed.
    void LetGo();                        ///< The tree will be read again, of the part as it is now.
    std::size_t KeptBytes() const;       ///< About what is kept here of memory.

    /// Raises `FileCorrupt` unless the links of the edited part, read again, lead where these do.
    void CheckReadAgain(const std::vector<LinkRecord>& readAgain);

private:
    /// All links, members or not, as the edits so far have left them.
    std::vector<LinkRecord>& All();
    /// Reads those of edited texts again; in the list a text's links come one after the other.
    void ReadChanged();
    /// Raises `InvalidRequest` for a link that is gone.
    LinkRecord& At(std::size_t link);
    /// Writes the target into all elements of the link.
    void Retarget(LinkRecord& link, const LinkTarget& target);
    /// Removes its elements, and the relationship when nothing else uses it. The text stays.
    void Remove(LinkRecord& link);

    ShapeTreeEdits& edits_;
    RelationshipUses& uses_;
    std::optional<std::vector<LinkRecord>> links_;  // without elements: gone
    std::vector<std::size_t> removed_;              // indices of those when they were let go, ascending
    std::set<std::size_t> changed_;                 // texts that were edited since their links were read
};

}  // namespace tessarine::builtin
