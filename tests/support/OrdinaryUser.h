#pragma once

#include <unistd.h>

#include <stdexcept>

namespace tessarine
{

/// Lets the rest of a scope run without a superuser's rights, which no permission stops. Does nothing for everybody
/// else.
class OrdinaryUser
{
public:
    OrdinaryUser() : user_(geteuid())
    {
        constexpr uid_t nobody = 65534;
        if (user_ == 0 && seteuid(nobody) != 0)
            throw std::runtime_error("the superuser's rights can't be put down");
    }
    ~OrdinaryUser()
    {
        if (geteuid() != user_ && seteuid(user_) != 0)
            _exit(2);  // The tests that follow would run as somebody else.
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

private:
    uid_t user_;
};

}  // namespace tessarine
