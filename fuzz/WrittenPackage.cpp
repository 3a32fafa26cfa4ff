#include "WrittenPackage.h"

#include <algorithm>

#include "support/ZipBuilder.h"

namespace tessarine::fuzz
{

namespace
{

constexpr std::string_view marker = "@@ ";

/// Where the next marker line begins at or after `at`, which is itself where a line begins.
std::size_t NextMarker(std::string_view text, std::size_t at)
{
    while (at < text.size() && !text.substr(at).starts_with(marker)) {
        const std::size_t lineEnd = text.find('\n', at);
        at = lineEnd == std::string_view::npos ? text.size() : lineEnd + 1;
    }
    return at;
}

}  // namespace

WrittenPackage::WrittenPackage(std::string_view text)
{
    std::size_t at = NextMarker(text, 0);
    while (at < text.size()) {
        const std::size_t nameBegin = at + marker.size();
        const std::size_t nameEnd = std::min(text.find('\n', nameBegin), text.size());
        const std::size_t begin = std::min(nameEnd + 1, text.size());
        at = NextMarker(text, begin);
        std::string_view content = text.substr(begin, at - begin);
        if (at < text.size() && content.ends_with('\n'))
            content.remove_suffix(1);
        entries_.emplace_back(text.substr(nameBegin, nameEnd - nameBegin), content);
    }
}

std::string_view WrittenPackage::Entry(std::string_view name) const
{
    const auto found = std::ranges::find(entries_, name, &std::pair<std::string_view, std::string_view>::first);
    return found == entries_.end() ? std::string_view() : found->second;
}

std::string WrittenPackage::ZipBytes() const
{
    constexpr std::size_t longestName = 0xFFFF;
    test::ZipBuilder zip;
    for (const auto& [name, content] : entries_)
        zip.entries.push_back(
            {.name = std::string(name.substr(0, longestName)), .bytes = std::string(content), .stored = true});
    return zip.Bytes();
}

void AppendEntry(std::string& text, std::string_view name, std::string_view content)
{
    text += marker;
    text += name;
    text += '\n';
    text += content;
    text += '\n';
}

}  // namespace tessarine::fuzz
