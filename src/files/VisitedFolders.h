#pragma once

#include <set>
#include <utility>

#include "files/FileState.h"
#include "platform/String.h"

namespace tessarine
{

/// The folders that a walk has seen, by what they are and not by their paths: links lead to one folder by many paths,
/// and may lead back to one that the walk is in.
class VisitedFolders
{
public:
    /// True for a folder that is met for the first time. Also for one that isn't there, as reading it tells why.
    bool Enter(StringView folder)
    {
        const auto state = FileStateOf(folder);
        return !state || seen_.insert({state->identity.device, state->identity.file}).second;
    }

private:
    std::set<std::pair<std::uint64_t, std::uint64_t>> seen_;
};

}  // namespace tessarine
