#include "files/FileOwner.h"

#include <cstddef>
#include <vector>

#include "files/FileDescriptor.h"
#include "files/WindowsFiles.h"
#include "platform/WindowsHeaders.h"

namespace tessarine
{

namespace
{

/// A piece of what the system knows of this process's rights.
std::vector<std::byte> OfToken(TOKEN_INFORMATION_CLASS what)
{
    HANDLE handle = nullptr;
    if (!OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &handle))
        return {};
    const FileDescriptor token(handle);
    std::vector<std::byte> information(1024);
    DWORD length = 0;
    if (!GetTokenInformation(token.get(), what, information.data(), static_cast<DWORD>(information.size()), &length))
        return {};
    return information;
}

std::string FindUser()
{
    const auto user = OfToken(TokenUser);
    return user.empty() ? std::string() : TextOfIdentifier(reinterpret_cast<const TOKEN_USER*>(user.data())->User.Sid);
}

std::string FindOwner()
{
    const auto owner = OfToken(TokenOwner);
    return owner.empty() ? FindUser() : TextOfIdentifier(reinterpret_cast<const TOKEN_OWNER*>(owner.data())->Owner);
}

}  // namespace

std::string OwnerOfNewFiles()
{
    static const std::string owner = FindOwner();
    return owner;
}

bool IsThisUser(const std::string& owner)
{
    static const std::string user = FindUser();
    return !owner.empty() && (owner == user || owner == OwnerOfNewFiles());
}

std::string OwnerOfSuperuser()
{
    return "S-1-5-32-544";
}

bool IsSuperuser(const std::string& owner)
{
    constexpr const char* system = "S-1-5-18";
    return owner == OwnerOfSuperuser() || owner == system;
}

}  // namespace tessarine
