#pragma once

#include <concepts>
#include <functional>
#include <string>

#include "platform/String.h"

/// What did not go quite as asked while a file was processed all the same: other names of the file that keep the old
/// text, dates that could not be kept. Such a file is no failure, and its user wants to know.
namespace tessarine
{

/// Takes a warning: the file's path as the run knows it, and one sentence without the path.
using WarningPort = std::function<void(const String& path, const String& text)>;

/// Replaces the port and returns the one before. An empty port, as at the start, writes to the error log.
WarningPort SetWarningReceiver(WarningPort port);

/// "12", for the numbers in warnings.
String NumeralOf(std::integral auto number)
{
    return FromUtf8(std::to_string(number));
}

/// A name or an address as a warning quotes it: in double quotes, without its end where it is very long.
String QuotedName(StringView name);

/// Tells of one file. Never raises, so that a warning turns no file into a failed one.
void Warn(const String& path, const String& text) noexcept;

}  // namespace tessarine
