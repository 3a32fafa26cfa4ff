#pragma once

#include <cstddef>

namespace tessarine
{

/// While it lives, folders can't be read to their end: as on a damaged disk or a network that goes away, reading fails
/// after this many entries of each.
class FailingFolders
{
public:
    explicit FailingFolders(std::size_t entries);
    ~FailingFolders();
    FailingFolders(const FailingFolders&) = delete;
    FailingFolders& operator=(const FailingFolders&) = delete;
};

}  // namespace tessarine
