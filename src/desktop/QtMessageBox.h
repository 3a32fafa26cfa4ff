#pragma once

#include "platform/Messages.h"

namespace tessarine
{

/// Shows a message above the active window and waits for the answer. Its help button opens the help and leaves it open.
MessageAnswer ShowQtMessageBox(const Message& message);

}  // namespace tessarine
