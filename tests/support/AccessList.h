#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>

#include "platform/String.h"

namespace tessarine
{

/// One line of an access list: "group::r--" is {0x04, 4}, "user:12345:rw-" is {0x02, 6, 12345}.
struct AccessEntry {
    static constexpr std::uint16_t Owner = 0x01, User = 0x02, OwningGroup = 0x04, Group = 0x08, Mask = 0x10,
                                   Others = 0x20;

    std::uint16_t tag;
    std::uint16_t rights;  ///< 4 to read, 2 to write, 1 to execute.
    std::uint32_t id = 0xFFFFFFFF;
};

/// A POSIX access list in the form in which Linux stores it.
std::string AccessList(std::initializer_list<AccessEntry> entries);

/// Sets an extended attribute. False where the file system has none.
bool SetAttribute(StringView path, const char* name, const std::string& value);

/// An extended attribute's value, "<missing>" when there is none.
std::string AttributeOf(StringView path, const char* name);

inline constexpr const char* AccessListAttribute = "system.posix_acl_access";
inline constexpr const char* DefaultListAttribute = "system.posix_acl_default";  ///< Of a folder, for new files in it.

}  // namespace tessarine
