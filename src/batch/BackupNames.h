#pragma once

#include <cstdint>
#include <optional>

#include "platform/String.h"

/// The names of the backups of one file: "a..bak" for the first one, then "a..bak.2", "a..bak.3" and so on.
namespace tessarine::batch
{

/// The name of the backup with a number, from 1; `first` is that of the first one.
String NumberedBackup(const String& first, std::int64_t number);

/// The number of a backup's name, or nothing for a name that isn't one of those of `first`.
std::optional<std::int64_t> NumberOfBackup(const String& first, StringView name);

}  // namespace tessarine::batch
