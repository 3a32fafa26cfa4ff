#include "office/builtin/package/PartName.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <vector>

#include "office/builtin/package/PercentEscape.h"

namespace tessarine::builtin
{

namespace
{

std::string_view WithoutLeadingSlashes(std::string_view name)
{
    return name.substr(std::min(name.find_first_not_of("/\\"), name.size()));
}

char Comparable(char c)
{
    if (c == '\\')
        return '/';
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

/// Eight bytes at once, each with the bit that tells small letters from large ones. That makes some other characters
/// alike, too, which does no harm to a hash.
std::size_t HashOf(std::string_view name)
{
    std::uint64_t hash = 14695981039346656037u ^ name.size();
    while (!name.empty()) {
        std::uint64_t bytes = 0;
        const std::size_t length = std::min(name.size(), sizeof bytes);
        std::memcpy(&bytes, name.data(), length);
        hash = (hash ^ (bytes | 0x2020202020202020u)) * 0x9E3779B97F4A7C15u;
        hash ^= hash >> 32;
        name.remove_prefix(length);
    }
    return static_cast<std::size_t>(hash);
}

}  // namespace

std::size_t PartNameHash::operator()(std::string_view name) const
{
    name = WithoutLeadingSlashes(name);
    return name.find('\\') == std::string_view::npos ? HashOf(name) : HashOf(ComparableName(name));
}

bool PartNameEqual::operator()(std::string_view left, std::string_view right) const
{
    left = WithoutLeadingSlashes(left);
    right = WithoutLeadingSlashes(right);
    return left == right || std::ranges::equal(left, right, {}, Comparable, Comparable);
}

std::string ComparableName(std::string_view name)
{
    std::string comparable(WithoutLeadingSlashes(name));
    std::ranges::transform(comparable, comparable.begin(), Comparable);
    return comparable;
}

std::string_view FolderOfPart(std::string_view partName)
{
    const std::size_t slash = partName.rfind('/');
    return slash == std::string_view::npos ? std::string_view() : partName.substr(0, slash + 1);
}

std::string_view ExtensionOf(std::string_view partName)
{
    const std::size_t dot = partName.rfind('.');
    return dot == std::string_view::npos ? std::string_view() : partName.substr(dot + 1);
}

std::string RelationshipPartName(std::string_view partName)
{
    const std::string_view folder = FolderOfPart(partName);
    return std::string(folder) + "_rels/" + std::string(partName.substr(folder.size())) + ".rels";
}

std::string ResolveTarget(std::string_view sourcePart, std::string_view target)
{
    std::string_view folder = target.find_first_of("/\\") == 0 ? std::string_view() : FolderOfPart(sourcePart);
    // From a slide to its notes page or layout.
    constexpr std::string_view up = "../";
    if (folder.size() > 1 && target.starts_with(up) && folder.find("./") == std::string_view::npos &&
        folder.find("//") == std::string_view::npos) {
        folder = FolderOfPart(folder.substr(0, folder.size() - 1));
        target.remove_prefix(up.size());
    }
    std::string whole;
    whole.reserve(folder.size() + target.size());
    whole.append(folder).append(target);
    // Nearly all targets of generated parts go down or are plain; only what has dots or doubled slashes needs work.
    if (whole.find("./") == std::string::npos && whole.find("//") == std::string::npos &&
        whole.find('\\') == std::string::npos && !whole.starts_with('/') && !whole.ends_with('.') &&
        !whole.ends_with('/'))
        return whole;
    std::vector<std::string_view> segments;
    std::string_view rest = whole;
    while (!rest.empty()) {
        const std::size_t slash = std::min(rest.find_first_of("/\\"), rest.size());
        const std::string_view segment = rest.substr(0, slash);
        rest.remove_prefix(std::min(slash + 1, rest.size()));
        if (segment == "..") {
            // What would lead above the root stays there (RFC 3986, 5.2.4).
            if (!segments.empty())
                segments.pop_back();
        } else if (!segment.empty() && segment != ".") {
            segments.push_back(segment);
        }
    }
    std::string name;
    for (const std::string_view segment : segments) {
        if (!name.empty())
            name += '/';
        name += segment;
    }
    return name;
}

std::string DecodePercent(std::string_view text)
{
    std::string decoded;
    decoded.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        const std::optional<char> escaped = PercentEscapeAt(text, i);
        decoded += escaped.value_or(text[i]);
        i += escaped ? percentEscapeLength : 1;
    }
    return decoded;
}

}  // namespace tessarine::builtin
