#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "office/builtin/zip/ZipDirectory.h"
#include "saving/ReplacementFile.h"

namespace tessarine::builtin
{

/// What a save changes in a zip file. Everything that is not named here is handed on byte by byte: local headers,
/// packed data, data descriptors, gaps, central records, the archive comment, and the order of all of them.
struct ZipChanges {
    std::map<std::size_t, std::string> replaced;  ///< Entry number to new content, uncompressed.
    std::set<std::size_t> removed;                ///< Entry numbers.
    std::map<std::string, std::string> added;     ///< Name to content of new entries, put at the end.

    /// True when the new file would be the old one.
    bool Empty() const { return replaced.empty() && removed.empty() && added.empty(); }
};

/// Writes the changed zip file to `target`, which the caller commits. `directory` is that of `source`. Raises
/// `FileCorrupt` when the old file's entries overlap, `BadFormat` when the new file would pass 4 GiB, and what reading
/// and writing raise.
void WriteZip(const RandomAccessBytes& source, const ZipDirectory& directory, const ZipChanges& changes,
              ReplacementFile& target);

}  // namespace tessarine::builtin
