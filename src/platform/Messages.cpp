#include "platform/Messages.h"

#include <thread>
#include <utility>

namespace tessarine
{

namespace
{

MessageBoxPort messageBox;
PendingEventsPort pendingEvents;
PendingEventsPort eventsAtOnce;
MousePointerPort mousePointer;
SleepPort sleepPort;

}  // namespace

MessageBoxPort SetMessageBox(MessageBoxPort port)
{
    return std::exchange(messageBox, std::move(port));
}

PendingEventsPort SetDeliverPendingEvents(PendingEventsPort port)
{
    return std::exchange(pendingEvents, std::move(port));
}

PendingEventsPort SetDeliverEventsAtOnce(PendingEventsPort port)
{
    return std::exchange(eventsAtOnce, std::move(port));
}

MousePointerPort SetMousePointerReceiver(MousePointerPort port)
{
    return std::exchange(mousePointer, std::move(port));
}

SleepPort SetSleep(SleepPort port)
{
    return std::exchange(sleepPort, std::move(port));
}

MessageAnswer ShowMessage(const Message& message)
{
    // Nobody there to ask: the answer of a box with one button.
    return messageBox ? messageBox(message) : MessageAnswer::Ok;
}

MessageAnswer ShowMessage(const String& text, MessageIcon icon, MessageButtons buttons)
{
    return ShowMessage(Message{text, icon, buttons});
}

void DeliverPendingEvents(Delivery delivery)
{
    if (delivery == Delivery::AtOnce && eventsAtOnce)
        eventsAtOnce();
    else if (pendingEvents)
        pendingEvents();
}

void SetMousePointer(MousePointer pointer)
{
    if (mousePointer)
        mousePointer(pointer);
}

void YieldWithSleep(Delivery delivery)
{
    // A thread that only yields gets the processor back at once on an idle machine, and the run would still use all of
    // it.
    constexpr std::chrono::milliseconds pause{1};
    if (sleepPort)
        sleepPort(pause);
    else
        std::this_thread::sleep_for(pause);
    DeliverPendingEvents(delivery);
}

}  // namespace tessarine
