#pragma once

#include <deque>
#include <string>
#include <vector>

#include "platform/Messages.h"

namespace tessarine
{

/// Stands in for the windows while it lives: records messages and pointer shapes, and answers questions ahead. A
/// question without an answer fails the test with its text.
class MessageRecorder
{
public:
    using Message = tessarine::Message;

    MessageRecorder();
    ~MessageRecorder();
    MessageRecorder(const MessageRecorder&) = delete;
    MessageRecorder& operator=(const MessageRecorder&) = delete;

    /// The answer to the next question. A message with an OK button alone needs none.
    void Next(MessageAnswer answer) { answers_.push_back(answer); }

    /// What was shown so far, in order, answered or not.
    const std::vector<Message>& Messages() const { return messages_; }
    /// The shapes that the pointer was given, in order.
    const std::vector<MousePointer>& Pointers() const { return pointers_; }

private:
    MessageAnswer Answer(const Message& message);

    std::deque<MessageAnswer> answers_;
    std::vector<Message> messages_;
    std::vector<MousePointer> pointers_;
    MessageBoxPort previousBox_;
    MousePointerPort previousPointer_;
};

}  // namespace tessarine
