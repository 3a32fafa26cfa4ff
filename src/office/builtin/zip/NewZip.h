#pragma once

#include <string>
#include <utility>
#include <vector>

namespace tessarine::builtin
{

/// A whole zip file with these entries, each a name (UTF-8, up to 65535 bytes) and its content, in their order. There
/// are fewer than 65535, and all together stay below 4 GiB.
std::string NewZip(const std::vector<std::pair<std::string, std::string>>& entries);

}  // namespace tessarine::builtin
