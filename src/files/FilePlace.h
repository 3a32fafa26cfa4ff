#pragma once

#include <functional>
#include <string>

#include "files/FileFailure.h"
#include "files/HeldFolder.h"
#include "platform/Failure.h"
#include "platform/NativePath.h"

namespace tessarine
{

/// Where a file lies: a name in a folder that is held open, so that nothing that happens to the folders above, or to
/// links on the way, leads elsewhere later.
struct FilePlace {
    /// What to do with a path that is itself a link (the folders in it may always be reached by links).
    enum class Links {
        Refused,
        /// Followed when the link is this user's or the superuser's, and the file and its folder are this user's: a
        /// link that somebody else has put there must not lead a save to a file that nobody named.
        FollowedIfOwn
    };

    /// The failure for a kind of trouble in a given place, in the words of whoever looks for the place.
    using MakeFailure =
        std::function<Failure(FileTrouble trouble, const NativeString& path, const std::string& reason)>;

    /// Raises what `failure` makes. A missing file is none, but a missing folder and a link that leads nowhere are.
    FilePlace(const NativeString& path, Links links, const MakeFailure& failure);

    NativeString path;  ///< What the links at the end led to, for people.
    HeldFolder folder;
    NativeString name;  ///< In that folder.
};

}  // namespace tessarine
