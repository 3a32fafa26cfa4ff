#include "platform/Messages.h"

#include <gmock/gmock.h>
#include <gtest/gtest-spi.h>

#include <chrono>
#include <string>
#include <vector>

#include "support/MessageRecorder.h"

namespace tessarine
{

using testing::ElementsAre;

TEST(Messages, AnswerOkWithoutAWindowSystem)
{
    const MessageBoxPort before = SetMessageBox({});

    EXPECT_EQ(ShowMessage(u"?", MessageIcon::Question, MessageButtons::YesNo), MessageAnswer::Ok);

    SetMessageBox(before);
}

TEST(Messages, ReachTheReceiverWithIconAndButtons)
{
    MessageRecorder recorder;
    recorder.Next(MessageAnswer::No);

    EXPECT_EQ(ShowMessage(u"Sure?", MessageIcon::Question, MessageButtons::YesNo), MessageAnswer::No);

    EXPECT_THAT(recorder.Messages(),
                ElementsAre(MessageRecorder::Message{u"Sure?", MessageIcon::Question, MessageButtons::YesNo}));
}

TEST(Messages, FailATestThatPreparedNoAnswer)
{
    MessageRecorder recorder;

    EXPECT_NONFATAL_FAILURE(ShowMessage(u"Overwrite?", MessageIcon::Question, MessageButtons::YesNo), "Overwrite?");
}

TEST(Messages, ReachTheEarlierReceiverOnceItIsBack)
{
    const MessageRecorder outer;

    {
        const MessageRecorder inner;
        ShowMessage(u"inner", MessageIcon::None);
        SetMousePointer(MousePointer::Hourglass);
    }
    ShowMessage(u"outer", MessageIcon::None);
    SetMousePointer(MousePointer::Default);

    EXPECT_THAT(outer.Messages(),
                ElementsAre(MessageRecorder::Message{u"outer", MessageIcon::None, MessageButtons::Ok}));
    EXPECT_THAT(outer.Pointers(), ElementsAre(MousePointer::Default));
}

TEST(PendingEvents, AreDeliveredWhenAskedFor)
{
    int delivered = 0;
    const PendingEventsPort before = SetDeliverPendingEvents([&] { ++delivered; });

    DeliverPendingEvents();
    const auto begin = std::chrono::steady_clock::now();
    YieldWithSleep();
    const auto slept = std::chrono::steady_clock::now() - begin;

    EXPECT_EQ(delivered, 2);
    EXPECT_GE(slept, std::chrono::milliseconds(1));
    SetDeliverPendingEvents(before);
}

TEST(PendingEvents, FollowASleepOfOneMillisecondThatTestsMayReplace)
{
    std::vector<std::string> calls;
    const PendingEventsPort events = SetDeliverPendingEvents([&] { calls.emplace_back("deliver"); });
    const SleepPort sleep =
        SetSleep([&](std::chrono::milliseconds time) { calls.push_back("sleep " + std::to_string(time.count())); });

    DeliverPendingEvents();
    YieldWithSleep();

    SetSleep(sleep);
    SetDeliverPendingEvents(events);
    EXPECT_THAT(calls, ElementsAre("deliver", "sleep 1", "deliver"));
}

TEST(PendingEvents, AndThePointerNeedNoReceiver)
{
    const PendingEventsPort before = SetDeliverPendingEvents({});

    EXPECT_NO_THROW(DeliverPendingEvents());
    EXPECT_NO_THROW(SetMousePointer(MousePointer::Hourglass));

    SetDeliverPendingEvents(before);
}

}  // namespace tessarine
