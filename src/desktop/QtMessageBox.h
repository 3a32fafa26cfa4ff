#pragma once

#include "platform/Messages.h"

namespace tessarine
{

/// Shows a message above the active window and waits for the answer. Its text is plain, whatever it looks like; without
/// a title it has the program's. Its help button opens the help and leaves the message open. A box that is closed
/// without a button gives Cancel or No, whichever it has, and Ok otherwise.
MessageAnswer ShowQtMessageBox(const Message& message);

}  // namespace tessarine
