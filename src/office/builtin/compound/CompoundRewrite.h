#pragma once

#include <cstddef>
#include <map>
#include <set>
#include <string>

#include "office/builtin/compound/CompoundFile.h"
#include "saving/ReplacementFile.h"

namespace tessarine::builtin
{

/// What a save changes in a compound file. Entries are named by their positions in CompoundFile::Entries().
struct CompoundChanges {
    std::map<std::size_t, std::string> streams{};  ///< The new bytes of a stream.
    std::set<std::size_t> removed{};               ///< A storage goes with all that is in it. The root can't go.

    /// True when the new file would hold what the old one does.
    bool Empty() const { return streams.empty() && removed.empty(); }
};

/// Writes a new compound file to `target`, which the caller commits: the old one's entries with their names, class ids,
/// state bits and times, in the same records and the same trees (only a storage that loses an entry gets a new one), in
/// sectors of the same size. Streams that aren't changed are copied in blocks. Nothing else of the old bytes stays:
/// free sectors and records are dropped, and what fills up sectors is zero.
///
/// Raises `FileCorrupt` before the first byte when a stream that stays lacks sectors, `BadFormat` when the new file
/// would pass 2 GiB, where the format has a gap that not all readers know, and what reading and writing raise.
void WriteCompoundFile(const CompoundFile& old, const CompoundChanges& changes, ReplacementFile& target);

/// The same in memory, for the small compound files inside of others.
std::string RewrittenCompoundFile(const CompoundFile& old, const CompoundChanges& changes);

}  // namespace tessarine::builtin
