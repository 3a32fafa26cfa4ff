#include "platform/Warnings.h"

#include <utility>

#include "platform/ErrorLog.h"
#include "platform/Treatments.h"

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

void Warn(const String& path, const String& text) noexcept
{
    Skip([&] { receiver ? receiver(path, text) : WriteErrorLog(path + u": " + text); });
}

}  // namespace tessarine
