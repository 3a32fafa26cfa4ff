#pragma once

#include <chrono>
#include <functional>

#include "platform/String.h"

/// The ports by which logic below the windows reaches the user. The composition root sets them: the desktop to the
/// window system, the batch program to the terminal, tests to a recorder.
namespace tessarine
{

enum class MessageIcon { None, Critical, Question, Exclamation, Information };
enum class MessageButtons { Ok, OkCancel, YesNo, YesNoCancel };
enum class MessageAnswer { Ok, Cancel, Yes, No };

/// When pending events are delivered. A run asks so often that a window system may leave out what comes too soon after
/// the last time; at once is for the places where a click must not come too late.
enum class Delivery { WhenDue, AtOnce };

/// The shape of the pointer over the whole screen, under the window system's own numbers.
enum class MousePointer { Default = 0, Hourglass = 11 };

/// A box with a text, and a question when it has more than one button.
struct Message {
    String text;
    MessageIcon icon = MessageIcon::None;
    MessageButtons buttons = MessageButtons::Ok;
    String title = {};           ///< The application's title when empty.
    bool hasHelpButton = false;  ///< A button that opens the help, and leaves the box open.
    String details = {};         ///< Stands below the text, in lines, for those who want to know more.

    bool operator==(const Message&) const = default;
};

/// Shows a message, waits, and gives the button that was pressed.
using MessageBoxPort = std::function<MessageAnswer(const Message& message)>;
/// Has the windows handle the events that have come in, and returns.
using PendingEventsPort = std::function<void()>;
/// Shows a pointer in place of those of the windows; the default one leaves the windows theirs.
using MousePointerPort = std::function<void(MousePointer pointer)>;
/// Puts the thread to sleep for at least this long.
using SleepPort = std::function<void(std::chrono::milliseconds time)>;

/// Replaces a port and returns the one before. An empty port answers Ok, delivers nothing, shows no pointer, or has the
/// thread itself sleep; an empty one for deliveries at once leaves them to the other one for events.
MessageBoxPort SetMessageBox(MessageBoxPort port);
PendingEventsPort SetDeliverPendingEvents(PendingEventsPort port);
PendingEventsPort SetDeliverEventsAtOnce(PendingEventsPort port);
MousePointerPort SetMousePointerReceiver(MousePointerPort port);
SleepPort SetSleep(SleepPort port);

/// Shows a message and waits for the answer.
MessageAnswer ShowMessage(const Message& message);
MessageAnswer ShowMessage(const String& text, MessageIcon icon, MessageButtons buttons = MessageButtons::Ok);

/// Lets the windows handle the events that have come in. Cheap when there are none.
void DeliverPendingEvents(Delivery delivery = Delivery::WhenDue);

/// Shows a pointer until the next call.
void SetMousePointer(MousePointer pointer);

/// Sleeps 1 millisecond, then delivers pending events.
void YieldWithSleep(Delivery delivery = Delivery::WhenDue);

}  // namespace tessarine
