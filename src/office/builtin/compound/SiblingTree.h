#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "platform/String.h"

namespace tessarine::builtin
{

/// An entry that is to be found in a storage: its name and the number of its record.
using Sibling = std::pair<String, std::uint32_t>;

/// Makes a new tree of a storage's entries ([MS-CFB] 2.6.4): sorted, and as flat as can be. Puts what links them into
/// their records in `directory`, and gives the number of the topmost, `noRecord` without any.
std::uint32_t LinkSiblings(std::vector<Sibling> siblings, std::string& directory);

}  // namespace tessarine::builtin
