#pragma once

#include <sys/types.h>

#include <map>
#include <optional>
#include <string>

#include "Files.h"

namespace tessarine::torture
{

/// Who may do what with a file, with its access control list taken in. Rights are the bits 4 read, 2 write, 1 execute.
struct Access {
    uid_t user = 0;
    gid_t group = 0;
    unsigned ofUser = 0;
    unsigned ofGroup = 0;
    unsigned ofOthers = 0;
    std::map<uid_t, unsigned> ofUsers;  ///< Named in the list.
    std::map<gid_t, unsigned> ofGroups;

    bool operator==(const Access&) const = default;
};

/// Nothing when the file is missing.
std::optional<Access> AccessOf(const Path& path);

/// What somebody may do with `now` that they might not with `before`; "" when nothing. The user that owns `before`, and
/// `writer`, who knows the content already, may have gained rights.
std::string Gained(const Access& before, const Access& now, uid_t writer);

/// The extended attribute of a file, "" when it has none. Setting one gives false where the file system can't keep it.
std::string AttributeOf(const Path& path, const std::string& name);
bool SetAttribute(const Path& path, const std::string& name, const std::string& value);

/// Gives the file an access control list that names one user; its own group keeps `ofGroup`, others nothing. False
/// where the file system can't keep it.
bool SetAccessList(const Path& path, uid_t named, unsigned ofNamed, unsigned ofGroup);

}  // namespace tessarine::torture
