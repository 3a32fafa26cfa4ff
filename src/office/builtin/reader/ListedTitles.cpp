#include "office/builtin/reader/ListedTitles.h"

#include <algorithm>
#include <set>
#include <unordered_map>

namespace tessarine::builtin
{

namespace
{

/// A title as the list has it: in one line, without blanks at its ends.
String InOneLine(StringView title)
{
    String line;
    for (const char16_t unit : title) {
        if (unit > u' ')
            line += unit;
        else if (!line.empty() && line.back() != u' ')
            line += u' ';
    }
    if (line.ends_with(u' '))
        line.pop_back();
    return line;
}

/// Blanks around the title are the producer's, and no part of what was replaced.
void PutTitle(String& entry, StringView title)
{
    const auto isInk = [](char16_t unit) { return unit > u' '; };
    const auto begin = std::find_if(entry.begin(), entry.end(), isInk);
    const auto end = std::find_if(entry.rbegin(), entry.rend(), isInk).base();
    entry.replace(begin, end, InOneLine(title));
}

}  // namespace

std::vector<std::size_t> FollowListedTitles(std::vector<String>& list, const std::vector<ChangedTitle>& changed,
                                            std::size_t slideCount)
{
    // As they were before any of these changes. Each entry follows one title at most.
    std::unordered_map<String, std::set<std::size_t>> entries;
    for (std::size_t entry = 0; entry < list.size(); ++entry)
        entries[InOneLine(list[entry])].insert(entry);
    std::vector<std::size_t> followed;
    for (const ChangedTitle& title : changed) {
        const String before = InOneLine(title.before);
        const auto equal = entries.find(before);
        if (before.empty() || equal == entries.end() || equal->second.empty())
            continue;
        const std::size_t own = list.size() < slideCount ? 0 : list.size() - slideCount + title.slide;
        const auto ownEntry = equal->second.find(own);
        const auto entry = ownEntry == equal->second.end() ? equal->second.begin() : ownEntry;
        PutTitle(list[*entry], title.after);
        followed.push_back(*entry);
        equal->second.erase(entry);
    }
    return followed;
}

}  // namespace tessarine::builtin
