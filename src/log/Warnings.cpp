#include "log/Warnings.h"

#include <utility>

#include "log/ErrorLog.h"
#include "log/Treatments.h"
#include "platform/Utf16.h"

namespace tessarine
{

namespace
{

WarningPort receiver;

}  // namespace

WarningPort SetWarningReceiver(WarningPort port)
{
    return std::exchange(receiver, std::move(port));
}

String QuotedName(StringView name)
{
    // In UTF-16 units.
    constexpr std::size_t longest = 80;
    String quoted(u"\"");
    if (name.size() <= longest)
        return quoted.append(name).append(u"\"");
    const std::size_t end = DividesPair(name, longest) ? longest - 1 : longest;
    return quoted.append(name.substr(0, end)).append(u"...\"");
}

void Warn(const String& path, const String& text) noexcept
{
    Skip([&] { receiver ? receiver(path, text) : WriteErrorLog(path + u": " + text); });
}

}  // namespace tessarine
