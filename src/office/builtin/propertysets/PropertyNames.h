#pragma once

#include <cstdint>
#include <map>
#include <string_view>

#include "office/builtin/propertysets/PropertySetStream.h"
#include "platform/String.h"

namespace tessarine::builtin
{

/// The property whose value is the dictionary.
inline constexpr std::uint32_t dictionaryId = 0;

/// Names that begin so belong to the program, and no person sees them.
inline constexpr StringView hiddenPrefix = u"_PID_";

/// The names of those that the engine knows: where relative addresses begin, and the list of all links.
inline constexpr StringView linkBaseName = u"_PID_LINKBASE";
inline constexpr StringView linkListName = u"_PID_HLINKS";

/// The names that a section's dictionary ([MS-OLEPS] 2.17) gives to properties, by their ids. Where an id has two, the
/// first one counts. What lies beyond the given bytes or the first 65535 has no name, nor have the ids that the format
/// keeps for itself, such as those of the dictionary and the code page.
std::map<std::uint32_t, String> ReadPropertyNames(std::string_view dictionary, std::uint16_t codePage);

/// The names that the section's own dictionary gives; none where it has no dictionary.
std::map<std::uint32_t, String> NamesIn(const PropertySetStream& stream, const PropertySetStream::Section& section);

}  // namespace tessarine::builtin
