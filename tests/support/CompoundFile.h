#pragma once

#include <string>
#include <utility>
#include <vector>

namespace tessarine::test
{

/// The bytes of an OLE2 compound file. A name with "/" lies in storages: "\x06" "DataSpaces/Version".
std::string CompoundFile(const std::vector<std::pair<std::string, std::string>>& streams);

}  // namespace tessarine::test
