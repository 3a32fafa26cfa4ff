#include "Access.h"

#include <sys/xattr.h>

#include <array>
#include <cstdint>
#include <cstring>

namespace tessarine::torture
{

namespace
{

constexpr const char* listName = "system.posix_acl_access";

/// An entry of the list as the system hands it out, after four bytes with the version.
struct ListEntry {
    std::uint16_t tag;
    std::uint16_t rights;
    std::uint32_t who;
};
enum Tag : std::uint16_t { OwnUser = 1, NamedUser = 2, OwnGroup = 4, NamedGroup = 8, Mask = 16, Others = 32 };

/// What a member of the group may do with the file, unless the user is named.
unsigned RightsOfGroup(const Access& access, gid_t group)
{
    unsigned rights = 0;
    bool isNamed = false;
    if (group == access.group) {
        rights |= access.ofGroup;
        isNamed = true;
    }
    if (const auto found = access.ofGroups.find(group); found != access.ofGroups.end()) {
        rights |= found->second;
        isNamed = true;
    }
    return isNamed ? rights : access.ofOthers;
}

unsigned RightsOfUser(const Access& access, uid_t user)
{
    if (user == access.user)
        return access.ofUser;
    const auto found = access.ofUsers.find(user);
    return found == access.ofUsers.end() ? access.ofOthers : found->second;
}

}  // namespace

std::optional<Access> AccessOf(const Path& path)
{
    const auto status = StatusOf(path);
    if (!status)
        return std::nullopt;
    Access access;
    access.user = status->st_uid;
    access.group = status->st_gid;
    access.ofUser = status->st_mode >> 6 & 7;
    access.ofGroup = status->st_mode >> 3 & 7;
    access.ofOthers = status->st_mode & 7;
    const std::string list = AttributeOf(path, listName);
    unsigned mask = 7;
    for (std::size_t at = 4; at + sizeof(ListEntry) <= list.size(); at += sizeof(ListEntry)) {
        ListEntry entry;
        std::memcpy(&entry, list.data() + at, sizeof entry);
        switch (entry.tag) {
            case NamedUser:
                access.ofUsers[entry.who] = entry.rights;
                break;
            case OwnGroup:
                access.ofGroup = entry.rights;
                break;
            case NamedGroup:
                access.ofGroups[entry.who] = entry.rights;
                break;
            case Mask:
                mask = entry.rights;
                break;
            default:
                break;
        }
    }
    access.ofGroup &= mask;
    for (auto& [user, rights] : access.ofUsers)
        rights &= mask;
    for (auto& [group, rights] : access.ofGroups)
        rights &= mask;
    return access;
}

std::string Gained(const Access& before, const Access& now, uid_t writer)
{
    if ((now.ofOthers & ~before.ofOthers) != 0)
        return "others gained rights";
    if (now.user != before.user && now.user != writer && (now.ofUser & ~RightsOfUser(before, now.user)) != 0)
        return "the new owner gained rights";
    if ((now.ofGroup & ~RightsOfGroup(before, now.group)) != 0)
        return "group " + std::to_string(now.group) + " gained rights";
    for (const auto& [user, rights] : now.ofUsers)
        if (user != before.user && user != writer && (rights & ~RightsOfUser(before, user)) != 0)
            return "user " + std::to_string(user) + " gained rights";
    for (const auto& [group, rights] : now.ofGroups)
        if ((rights & ~RightsOfGroup(before, group)) != 0)
            return "group " + std::to_string(group) + " gained rights";
    // An entry that takes rights away protects only while it is there.
    for (const auto& [user, rights] : before.ofUsers)
        if (user != writer && (RightsOfUser(now, user) & ~rights) != 0)
            return "user " + std::to_string(user) + " gained rights";
    if ((RightsOfGroup(now, before.group) & ~before.ofGroup) != 0)
        return "group " + std::to_string(before.group) + " gained rights";
    for (const auto& [group, rights] : before.ofGroups)
        if ((RightsOfGroup(now, group) & ~rights) != 0)
            return "group " + std::to_string(group) + " gained rights";
    return "";
}

std::string AttributeOf(const Path& path, const std::string& name)
{
    std::array<char, 4096> value{};
    const ssize_t size = lgetxattr(path.c_str(), name.c_str(), value.data(), value.size());
    return size < 0 ? std::string() : std::string(value.data(), static_cast<std::size_t>(size));
}

bool SetAttribute(const Path& path, const std::string& name, const std::string& value)
{
    return lsetxattr(path.c_str(), name.c_str(), value.data(), value.size(), 0) == 0;
}

bool SetAccessList(const Path& path, uid_t named, unsigned ofNamed, unsigned ofGroup)
{
    const auto nobody = static_cast<std::uint32_t>(-1);
    const std::array<ListEntry, 5> entries{{{OwnUser, 6, nobody},
                                            {NamedUser, static_cast<std::uint16_t>(ofNamed), named},
                                            {OwnGroup, static_cast<std::uint16_t>(ofGroup), nobody},
                                            {Mask, static_cast<std::uint16_t>(ofNamed | ofGroup), nobody},
                                            {Others, 0, nobody}}};
    std::string value("\x02\0\0\0", 4);
    value.append(reinterpret_cast<const char*>(entries.data()), sizeof entries);
    return SetAttribute(path, listName, value);
}

}  // namespace tessarine::torture
