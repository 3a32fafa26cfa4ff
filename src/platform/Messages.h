#pragma once

#include <functional>

#include "platform/String.h"

/// The two ports by which logic below the windows reaches the user. The composition root sets them: the desktop to the
/// window system, the batch program to the terminal, tests to a recorder.
namespace tessarine
{

enum class MessageIcon { None, Critical, Question, Exclamation, Information };
enum class MessageButtons { Ok, OkCancel, YesNo, YesNoCancel };
enum class MessageAnswer { Ok, Cancel, Yes, No };

using MessageBoxPort = std::function<MessageAnswer(const String& text, MessageIcon icon, MessageButtons buttons)>;
using PendingEventsPort = std::function<void()>;

/// Replaces a port and returns the one before. An empty port answers Ok, or delivers nothing.
MessageBoxPort SetMessageBox(MessageBoxPort port);
PendingEventsPort SetDeliverPendingEvents(PendingEventsPort port);

/// Shows a message and waits for the answer.
MessageAnswer ShowMessage(const String& text, MessageIcon icon, MessageButtons buttons = MessageButtons::Ok);

/// Lets the windows handle what has come in. Cheap when nothing has.
void DeliverPendingEvents();

/// Sleeps 1 millisecond, then delivers pending events.
void YieldWithSleep();

}  // namespace tessarine
