#include "support/MessageRecorder.h"

#include <gtest/gtest.h>

namespace tessarine
{

MessageRecorder::MessageRecorder()
{
    previousBox_ = SetMessageBox([this](const Message& message) { return Answer(message); });
    previousPointer_ = SetMousePointerReceiver([this](MousePointer pointer) { pointers_.push_back(pointer); });
}

MessageRecorder::~MessageRecorder()
{
    SetMessageBox(previousBox_);
    SetMousePointerReceiver(previousPointer_);
}

MessageAnswer MessageRecorder::Answer(const Message& message)
{
    messages_.push_back(message);
    if (message.buttons == MessageButtons::Ok)
        return MessageAnswer::Ok;
    if (answers_.empty()) {
        ADD_FAILURE() << "a question without an answer: " << ToUtf8(message.text);
        return MessageAnswer::Cancel;
    }
    const MessageAnswer answer = answers_.front();
    answers_.pop_front();
    return answer;
}

}  // namespace tessarine
