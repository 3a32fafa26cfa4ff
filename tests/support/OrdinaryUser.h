#pragma once

#ifndef _WIN32
#include <sys/types.h>
#endif

#include <cstdint>

#include "platform/String.h"

namespace tessarine
{

/// Lets the rest of a scope run without a superuser's rights, which no permission stops: as another user or, where the
/// system allows no other, without the rights alone. Does nothing for everybody else.
class OrdinaryUser
{
public:
    OrdinaryUser();
    ~OrdinaryUser();
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

    /// True when files that were made before belong to somebody else now.
    bool IsAnotherUser() const;

    /// Makes a file that was made before this user's own.
    void TakeOver(StringView path) const;

private:
#ifndef _WIN32
    uid_t user_;
    std::uint64_t rights_ = 0;  // that were put down; each bit is the number of a capability
#endif
};

}  // namespace tessarine
