#include "files/CompoundFile.h"

#include <algorithm>

namespace tessarine
{

namespace
{

char LowerCase(char letter)
{
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

}  // namespace

bool IsCompoundFile(std::string_view head)
{
    return head.starts_with("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1");
}

std::size_t CompoundFile::EntryOf(std::string_view name) const
{
    // Case doesn't matter to names in a compound file (MS-CFB 2.6.4).
    const auto entry = std::ranges::find_if(
        names_, [&](const std::string& known) { return std::ranges::equal(known, name, {}, LowerCase, LowerCase); });
    return static_cast<std::size_t>(entry - names_.begin());
}

}  // namespace tessarine
