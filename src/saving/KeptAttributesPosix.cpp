#include <endian.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <map>
#include <utility>
#include <vector>

#include "saving/KeptAttributes.h"

namespace tessarine
{

namespace
{

constexpr const char* accessListName = "system.posix_acl_access";
constexpr const char* defaultListName = "system.posix_acl_default";
constexpr std::size_t longestAttribute = 1 << 16;  // by the system's own rule

/// A path to the file of a descriptor that is open for its name alone, which the calls on descriptors refuse.
std::string PathOfDescriptor(int descriptor)
{
    return "/proc/self/fd/" + std::to_string(descriptor);
}

bool IsUnsupported(int error)
{
    return error == ENOTSUP || error == ENOSYS;
}

ssize_t List(int descriptor, char* buffer, std::size_t size)
{
    const ssize_t length = flistxattr(descriptor, buffer, size);
    return length < 0 && errno == EBADF ? listxattr(PathOfDescriptor(descriptor).c_str(), buffer, size) : length;
}

/// The names of a file's extended attributes; empty where there are none. Nothing on failure.
std::optional<std::vector<std::string>> NamesOf(int descriptor)
{
    std::array<char, 512> few;
    std::string all;
    ssize_t length = List(descriptor, few.data(), few.size());
    const char* begin = few.data();
    if (length < 0 && errno == ERANGE) {
        all.resize(longestAttribute);
        length = List(descriptor, all.data(), all.size());
        begin = all.data();
    }
    if (length < 0)
        return IsUnsupported(errno) ? std::optional(std::vector<std::string>()) : std::nullopt;
    std::vector<std::string> names;
    for (const char* name = begin; name < begin + length; name += names.back().size() + 1)
        names.emplace_back(name);
    return names;
}

/// An attribute's value; nothing when there is none or it can't be read, with the reason in errno.
std::optional<std::string> ValueOf(int descriptor, const char* name)
{
    std::string value(longestAttribute, '\0');
    ssize_t length = fgetxattr(descriptor, name, value.data(), value.size());
    if (length < 0 && errno == EBADF)
        length = getxattr(PathOfDescriptor(descriptor).c_str(), name, value.data(), value.size());
    if (length < 0)
        return std::nullopt;
    value.resize(static_cast<std::size_t>(length));
    return value;
}

/// Made by the system from the content, which is new.
bool IsOfTheContent(const std::string& name)
{
    return name == "security.ima" || name == "security.evm";
}

/// An access list as the system stores it, less the right to execute, which new files don't have.
std::string WithoutExecution(std::string list)
{
    struct Entry {
        std::uint16_t tag;
        std::uint16_t rights;
        std::uint32_t id;
    };
    constexpr std::size_t header = sizeof(std::uint32_t);
    for (std::size_t at = header; at + sizeof(Entry) <= list.size(); at += sizeof(Entry)) {
        Entry entry;
        std::memcpy(&entry, list.data() + at, sizeof entry);
        entry.rights = htole16(static_cast<std::uint16_t>(le16toh(entry.rights) & 6));
        std::memcpy(list.data() + at, &entry, sizeof entry);
    }
    return list;
}

/// The mask of this process can only be read by setting it.
mode_t ModeOfNewFiles()
{
    const mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

}  // namespace

struct KeptAttributes::Parts {
    std::optional<std::uint32_t> user;  // nothing: whatever the new file has
    std::optional<std::uint32_t> group;
    std::uint32_t mode = 0;
    std::string accessList;  // as the system has it; empty for none
    std::map<std::string, std::string> attributes;

    enum class Strictness { All, AsFarAsPossible };
    std::optional<NotKept> GiveTo(NativeFile newFile, Strictness strictness) const;
};

KeptAttributes::KeptAttributes(Parts parts) : parts_(std::make_shared<const Parts>(std::move(parts))) {}

std::optional<KeptAttributes> KeptAttributes::Of(NativeFile descriptor)
{
    struct stat status = {};
    if (fstat(descriptor, &status) != 0)
        return std::nullopt;
    Parts kept;
    kept.user = status.st_uid;
    kept.group = status.st_gid;
    kept.mode = status.st_mode & 07777;
    const auto names = NamesOf(descriptor);
    if (!names)
        return std::nullopt;
    for (const std::string& name : *names) {
        if (IsOfTheContent(name))
            continue;
        auto value = ValueOf(descriptor, name.c_str());
        if (!value) {
            // Gone since it was listed, or one that the system lists and doesn't give.
            if (errno == ENODATA || IsUnsupported(errno))
                continue;
            return std::nullopt;
        }
        (name == accessListName ? kept.accessList : kept.attributes[name]) = std::move(*value);
    }
    return KeptAttributes(std::move(kept));
}

KeptAttributes KeptAttributes::OfNewFileIn(const HeldFolder& folder)
{
    Parts kept;
    kept.mode = ModeOfNewFiles();
    if (const auto list = ValueOf(folder.get(), defaultListName)) {
        // It takes the place of the mask, and the mode follows from it.
        kept.accessList = WithoutExecution(*list);
        kept.mode = 0;
    }
    return KeptAttributes(std::move(kept));
}

std::optional<KeptAttributes::NotKept> KeptAttributes::GiveTo(NativeFile newFile) const
{
    return parts_->GiveTo(newFile, Parts::Strictness::All);
}

std::optional<KeptAttributes::NotKept> KeptAttributes::GiveToCopy(NativeFile newFile) const
{
    return parts_->GiveTo(newFile, Parts::Strictness::AsFarAsPossible);
}

std::optional<KeptAttributes::NotKept> KeptAttributes::Parts::GiveTo(NativeFile newFile, Strictness strictness) const
{
    const bool isStrict = strictness == Strictness::All;
    bool isAccessKept = true;
    struct stat status = {};
    const auto names = NamesOf(newFile);
    if (!names || fstat(newFile, &status) != 0)
        return NotKept{errno, "its attributes"};

    const uid_t newUser = user && *user != status.st_uid ? *user : static_cast<uid_t>(-1);
    const gid_t newGroup = group && *group != status.st_gid ? *group : static_cast<gid_t>(-1);
    const bool isOwnerNew = newUser != static_cast<uid_t>(-1) || newGroup != static_cast<gid_t>(-1);
    if (isOwnerNew && fchown(newFile, newUser, newGroup) != 0) {
        if (isStrict)
            return NotKept{errno, "its owner and group"};
        isAccessKept = false;
    }

    for (const auto& [name, value] : attributes) {
        if (ValueOf(newFile, name.c_str()) == value)
            continue;  // the system gives some by itself, such as security labels
        if (fsetxattr(newFile, name.c_str(), value.data(), value.size(), 0) != 0 && isStrict)
            return NotKept{errno, "its attribute \"" + name + "\""};
    }

    // A folder's default list is inherited by what is made in it; masked so far, by the mode 0600.
    const bool hasList = std::ranges::find(*names, accessListName) != names->end();
    if (hasList && fremovexattr(newFile, accessListName) != 0)
        return NotKept{errno, "its missing access list"};
    if (!accessList.empty() && isAccessKept &&
        fsetxattr(newFile, accessListName, accessList.data(), accessList.size(), 0) != 0) {
        if (isStrict)
            return NotKept{errno, "its access list"};
        isAccessKept = false;
    }

    if (mode == 0 && !accessList.empty())
        return std::nullopt;  // the list of a new file has set it
    const auto newMode = static_cast<mode_t>(isAccessKept ? mode : mode & 0700);
    // Some file systems have one mode for all their files and refuse any other.
    if (fchmod(newFile, newMode) != 0 && (fstat(newFile, &status) != 0 || (status.st_mode & 07777) != newMode))
        return NotKept{errno, "its mode"};
    return std::nullopt;
}

void KeptAttributes::TakeAccessFrom(const KeptAttributes& other)
{
    Parts parts = *parts_;
    const Parts& others = *other.parts_;
    if (parts.user != others.user || parts.group != others.group) {
        parts.mode = (parts.mode & ~std::uint32_t{S_IWUSR}) | (others.mode & S_IWUSR);
    } else {
        parts.mode = others.mode;
        parts.accessList = others.accessList;
    }
    *this = KeptAttributes(std::move(parts));
}

}  // namespace tessarine
