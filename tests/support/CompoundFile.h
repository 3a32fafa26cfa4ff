#pragma once

#include <string>
#include <utility>
#include <vector>

namespace tessarine::test
{

/// The bytes of an OLE2 compound file with these streams, names and contents. A name with "/" lies in storages, which
/// are made: "\x06" "DataSpaces/Version". Raises std::runtime_error when the library refuses.
std::string CompoundFile(const std::vector<std::pair<std::string, std::string>>& streams);

}  // namespace tessarine::test
