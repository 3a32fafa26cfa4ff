#pragma once

#include <cstdint>
#include <string>

#include "support/LittleEndian.h"

/// Binary presentations, PowerPoint 97 to 2003 [MS-PPT], made in code. What stands here and in the files named Binary…
/// uses nothing of the engine: it is a second statement of the format.
namespace tessarine::test::ppt
{

using namespace little;

/// A record: version and instance, type, length, then its data.
std::string Record(std::uint32_t version, std::uint32_t instance, std::uint32_t type, const std::string& data);

/// A record that holds other records.
std::string Container(std::uint32_t type, const std::string& records, std::uint32_t instance = 0);
std::string Atom(std::uint32_t type, const std::string& data, std::uint32_t instance = 0);

/// A text of UTF-16 units, whose meaning its instance tells.
std::string CString(std::u16string_view text, std::uint32_t instance = 0);

}  // namespace tessarine::test::ppt
