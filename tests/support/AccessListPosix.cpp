#include "AccessList.h"

#include <sys/xattr.h>

#include <array>

namespace tessarine
{

namespace
{

void Append(std::string& bytes, std::uint32_t value, int length)
{
    for (int i = 0; i < length; ++i)
        bytes += static_cast<char>(value >> 8 * i & 0xFF);
}

}  // namespace

std::string AccessList(std::initializer_list<AccessEntry> entries)
{
    std::string bytes;
    Append(bytes, 2, 4);  // the version
    for (const AccessEntry& entry : entries) {
        Append(bytes, entry.tag, 2);
        Append(bytes, entry.rights, 2);
        Append(bytes, entry.id, 4);
    }
    return bytes;
}

bool SetAttribute(StringView path, const char* name, const std::string& value)
{
    return setxattr(ToUtf8(path).c_str(), name, value.data(), value.size(), 0) == 0;
}

std::string AttributeOf(StringView path, const char* name)
{
    std::array<char, 4096> value{};
    const ssize_t length = getxattr(ToUtf8(path).c_str(), name, value.data(), value.size());
    return length < 0 ? "<missing>" : std::string(value.data(), static_cast<std::size_t>(length));
}

}  // namespace tessarine
