#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "model/FindAndReplaceItems.h"

namespace tessarine
{

/// What a step writes to a pair.
struct PairContent {
    String FindWhat;
    String ReplaceWith;
    OptionSetting setting;
};

/// The steps that have changed the list of pairs, to be undone and done again. A step keeps what it changed and no
/// more: references to the pairs that came, went or moved, and the texts and options of those that were rewritten.
class ListHistory
{
public:
    using Item = std::shared_ptr<FindAndReplaceItem>;
    using ListReference = std::shared_ptr<FindAndReplaceItems>;  ///< May be another list after a step than before.

    /// Does `change` as one step: whatever it does to the order of the list, and to the pairs of these rows (from 1),
    /// is kept, also when it raises. Within a step, further ones are part of it. True when the list has changed.
    bool Do(const ListReference& list, const std::vector<std::int32_t>& rows, const std::function<void()>& change);

    /// Keeps a step that was done: a pair has been rewritten and had this content before.
    void Rewritten(const Item& item, PairContent before);

    bool CanUndo() const { return !done_.empty(); }
    bool CanRedo() const { return !undone_.empty(); }

    /// Takes the last step back, or does it again. Gives the rows that it has brought or rewritten, ascending; where it
    /// has only taken some away, the row that is in their place; none in a list without rows. Nothing comes back, and
    /// nothing is done, when there is no such step, or the list is not the one that the steps have left.
    std::optional<std::vector<std::int32_t>> Undo(FindAndReplaceItems& list);
    std::optional<std::vector<std::int32_t>> Redo(FindAndReplaceItems& list);

    void Clear();            ///< There is nothing to undo in another job; its list is as it was saved.
    void SetSaved();         ///< The list as it is now is the one of the file.
    bool IsAsSaved() const;  ///< Whether it is the one of the file again.

private:
    struct Placed {
        std::size_t position;  // from 0, in the list that has the pair
        Item item;
    };
    struct Rewriting {
        Item item;
        PairContent before;
        PairContent after;
    };
    struct Step {
        std::vector<Placed> removed;  // ascending, as those added
        std::vector<Placed> added;    // a pair that has moved is removed and added
        std::vector<Rewriting> rewritten;
    };
    using Items = std::vector<Item>;

    static Step Difference(const Items& before, const Items& after);
    static std::optional<Items> Changed(const Items& items, const std::vector<Placed>& removed,
                                        const std::vector<Placed>& added);
    static std::vector<std::int32_t> RowsToShow(const Items& items, const std::vector<Placed>& removed,
                                                const std::vector<Placed>& added, const Step& step);
    void Keep(Step step);

    std::vector<Step> done_;
    std::vector<Step> undone_;              // the next one to do again is the last
    std::optional<std::size_t> saved_ = 0;  // how many steps were done then; nothing when no way leads back there
    bool isInStep_ = false;
};

PairContent ContentOf(const FindAndReplaceItem& item);  ///< As it is now.

}  // namespace tessarine
