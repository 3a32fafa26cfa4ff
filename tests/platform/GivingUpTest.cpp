#include "platform/GivingUp.h"

#include <gmock/gmock.h>

#include "platform/Failure.h"
#include "platform/Messages.h"

namespace tessarine
{

TEST(GivingUp, FailsTheCallsForTheFileUntilItIsForgotten)
{
    EXPECT_NO_THROW(RaiseIfGivenUp());

    GiveUpFile();

    EXPECT_TRUE(IsFileGivenUp());
    for (void (*const call)() : {RaiseIfGivenUp, DeliverEventsInCall}) {
        try {
            call();
            ADD_FAILURE() << "the call has not failed";
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.number, FailureNumber::GivenUp);
        }
    }
    ForgetGivingUp();
    EXPECT_FALSE(IsFileGivenUp());
    EXPECT_NO_THROW(DeliverEventsInCall());
}

TEST(GivingUp, TakesEffectInTheCallThatDeliversTheClick)
{
    const PendingEventsPort before = SetDeliverPendingEvents(GiveUpFile);
    int calls = 0;

    EXPECT_THROW(
        while (calls < 1000) {
            ++calls;
            DeliverEventsInCall();
        },
        Failure);

    EXPECT_LE(calls, 100);
    ForgetGivingUp();
    SetDeliverPendingEvents(before);
}

TEST(EventsInCalls, AreDeliveredAtEveryHundredthCall)
{
    int delivered = 0;
    const PendingEventsPort before = SetDeliverPendingEvents([&] { ++delivered; });

    for (int call = 0; call < 1000; ++call)
        DeliverEventsInCall();

    EXPECT_EQ(delivered, 10);
    SetDeliverPendingEvents(before);
}

}  // namespace tessarine
