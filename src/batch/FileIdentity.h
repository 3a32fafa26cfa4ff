#pragma once

#include <string>
#include <unordered_map>

#include "platform/String.h"

namespace tessarine::batch
{

/// Tells by which names a file is known to be the same one: relative and full paths, ".." and links on the way.
/// Two hard links are two files, because saving one leaves the other as it is.
class FileIdentity
{
public:
    /// Equal for two paths of one file. The file itself may be missing, its folder too.
    std::string Of(StringView path);

private:
    std::unordered_map<std::string, std::string> folders_;  // as named → resolved
};

}  // namespace tessarine::batch
