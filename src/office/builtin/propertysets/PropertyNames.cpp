#include "office/builtin/propertysets/PropertyNames.h"

#include <algorithm>

#include "office/builtin/propertysets/SetBytes.h"
#include "office/builtin/propertysets/TypedValue.h"

namespace tessarine::builtin
{

std::map<std::uint32_t, String> ReadPropertyNames(std::string_view dictionary, std::uint16_t codePage)
{
    constexpr std::uint16_t utf16 = 1200;
    constexpr std::size_t headBytes = 8;  // id and length in front of a name
    constexpr std::uint32_t firstId = 2;
    constexpr std::uint32_t lastId = 0x7FFFFFFF;
    constexpr std::size_t mostNames = 65535;  // no section has more properties

    std::map<std::uint32_t, String> names;
    const std::size_t count = std::min<std::size_t>(LongAt(dictionary, 0), mostNames);
    std::size_t at = 4;
    for (std::size_t i = 0; i < count && at < dictionary.size() && dictionary.size() - at >= headBytes; ++i) {
        const std::uint32_t id = LongAt(dictionary, at);
        const std::size_t length = LongAt(dictionary, at + 4);
        at += headBytes;
        // Lengths count units of UTF-16, and such names are padded; else they count bytes.
        const std::size_t bytes = codePage == utf16 ? 2 * length : length;
        if (bytes > dictionary.size() - at)
            break;
        if (id >= firstId && id <= lastId)
            names.emplace(id, TextIn(dictionary.substr(at, bytes), codePage));
        at += codePage == utf16 ? (bytes + 3) & ~std::size_t{3} : bytes;
    }
    return names;
}

std::map<std::uint32_t, String> NamesIn(const PropertySetStream& stream, const PropertySetStream::Section& section)
{
    const auto dictionary = stream.Value(section, dictionaryId);
    return dictionary ? ReadPropertyNames(*dictionary, section.codePage) : std::map<std::uint32_t, String>();
}

}  // namespace tessarine::builtin
