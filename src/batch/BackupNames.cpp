#include "batch/BackupNames.h"

#include <charconv>

#include "platform/PathKey.h"

namespace tessarine::batch
{

String NumberedBackup(const String& first, std::int64_t number)
{
    return number == 1 ? first : first + u"." + FromUtf8(std::to_string(number));
}

std::optional<std::int64_t> NumberOfBackup(const String& firstName, StringView anyName)
{
    const String first = PathKey(firstName);
    const String name = PathKey(anyName);
    if (name == first)
        return 1;
    if (!name.starts_with(first + u"."))
        return std::nullopt;
    const std::string digits = ToUtf8(name.substr(first.size() + 1));
    std::int64_t number = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), number);
    // Also refuses what only reads as a number, such as "+2", "02" and "2x".
    return number > 1 && NumberedBackup(first, number) == name ? std::optional(number) : std::nullopt;
}

}  // namespace tessarine::batch
