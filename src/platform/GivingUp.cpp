#include "platform/GivingUp.h"

#include "platform/Failure.h"
#include "platform/Messages.h"

namespace tessarine
{

namespace
{

bool isFileGivenUp = false;

}  // namespace

void GiveUpFile()
{
    isFileGivenUp = true;
}

void ForgetGivingUp()
{
    isFileGivenUp = false;
}

bool IsFileGivenUp()
{
    return isFileGivenUp;
}

void RaiseIfGivenUp()
{
    if (isFileGivenUp)
        throw Failure(FailureNumber::GivenUp, u"The file was given up while it was being processed; it is as it was.");
}

void DeliverEventsInCall()
{
    constexpr unsigned callsBetween = 100;
    static unsigned calls = 0;
    if (++calls >= callsBetween) {
        calls = 0;
        DeliverPendingEvents();
    }
    RaiseIfGivenUp();
}

}  // namespace tessarine
