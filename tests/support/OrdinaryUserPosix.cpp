#include "support/OrdinaryUser.h"

#include <linux/capability.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <stdexcept>

namespace tessarine
{

namespace
{

/// The rights that let a superuser pass over the permissions of files.
constexpr std::uint64_t fileRights =
    std::uint64_t{1} << CAP_DAC_OVERRIDE | std::uint64_t{1} << CAP_DAC_READ_SEARCH | std::uint64_t{1} << CAP_FOWNER;

using Capabilities = std::array<__user_cap_data_struct, _LINUX_CAPABILITY_U32S_3>;

__user_cap_header_struct OfThisThread()
{
    return {_LINUX_CAPABILITY_VERSION_3, 0};
}

/// Takes rights away from this thread, or gives them back, and tells which of them it had.
std::uint64_t SetRights(std::uint64_t rights, bool has)
{
    Capabilities capabilities{};
    auto header = OfThisThread();
    if (syscall(SYS_capget, &header, capabilities.data()) != 0)
        throw std::runtime_error("the rights of this process can't be read");
    const std::uint64_t before = capabilities[0].effective & rights;
    if (has)
        capabilities[0].effective |= static_cast<std::uint32_t>(rights);
    else
        capabilities[0].effective &= ~static_cast<std::uint32_t>(rights);
    header = OfThisThread();
    if (syscall(SYS_capset, &header, capabilities.data()) != 0)
        throw std::runtime_error("the rights of this process can't be set");
    return before;
}

}  // namespace

OrdinaryUser::OrdinaryUser() : user_(geteuid())
{
    constexpr uid_t nobody = 65534;
    if (user_ == 0 && seteuid(nobody) != 0)
        rights_ = SetRights(fileRights, false);
}

OrdinaryUser::~OrdinaryUser()
{
    try {
        if (geteuid() != user_ && seteuid(user_) != 0)
            _exit(2);  // The tests that follow would run as somebody else.
        if (rights_ != 0)
            SetRights(rights_, true);
    } catch (const std::runtime_error&) {
        _exit(2);
    }
}

void OrdinaryUser::TakeOver(StringView path) const
{
    const uid_t self = geteuid();
    if (self == user_)
        return;
    // Only the superuser gives files away.
    if (seteuid(user_) != 0 || chown(ToUtf8(path).c_str(), self, static_cast<gid_t>(-1)) != 0 || seteuid(self) != 0)
        throw std::runtime_error("the file can't be given away: " + ToUtf8(path));
}

bool OrdinaryUser::IsAnotherUser() const
{
    return geteuid() != user_;
}

}  // namespace tessarine
