#include "support/OrdinaryUser.h"

namespace tessarine
{

// The tests run as an ordinary user here, since Wine gives a superuser every file to write.
OrdinaryUser::OrdinaryUser() = default;

OrdinaryUser::~OrdinaryUser() = default;

void OrdinaryUser::TakeOver(StringView) const {}

bool OrdinaryUser::IsAnotherUser() const
{
    return false;
}

}  // namespace tessarine
