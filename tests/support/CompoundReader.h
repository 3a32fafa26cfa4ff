#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/String.h"
#include "support/CompoundBuilder.h"

namespace tessarine::test
{

/// An entry of a compound file as its directory has it.
struct ReadEntry {
    std::string path;  ///< UTF-8, storages in front: "Storage/Stream"; "" is the root.
    int kind = 0;      ///< 1 storage, 2 stream, 5 root
    CompoundMarks marks{};
    std::string bytes{};  ///< Of a stream.

    bool operator==(const ReadEntry& other) const = default;
};

/// What a whole compound file holds, in the order of its directory, read with no library. std::runtime_error tells what
/// is wrong with a file: it has to be without fault, each sector of one chain, siblings in order.
std::vector<ReadEntry> EntriesOf(const std::string& file);

/// One stream of it; std::runtime_error when there is none.
std::string StreamOf(const std::string& file, const std::string& path);

}  // namespace tessarine::test
