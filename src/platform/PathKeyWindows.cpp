#include <algorithm>
#include <string>

#include "platform/PathKey.h"
#include "platform/PathSeparator.h"
#include "platform/WindowsHeaders.h"

namespace tessarine
{

String PathKey(StringView path)
{
    std::wstring units(path.begin(), path.end());
    std::ranges::replace(units, L'/', static_cast<wchar_t>(PathSeparator));
    // Without a flag for linguistic casing these are the rules of file names, one unit for one.
    const int size = static_cast<int>(units.size());
    std::wstring capitals(units.size(), L'\0');
    const int written = LCMapStringEx(LOCALE_NAME_INVARIANT, LCMAP_UPPERCASE, units.data(), size, capitals.data(), size,
                                      nullptr, nullptr, 0);
    const std::wstring& key = written == size ? capitals : units;
    return {key.begin(), key.end()};
}

}  // namespace tessarine
