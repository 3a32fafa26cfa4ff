#include "batch/Refusal.h"

#include "platform/Failure.h"

namespace tessarine::batch
{

void Refuse(const String& text)
{
    throw Failure(FailureNumber::InvalidProcedureCall, text);
}

void Refuse(const std::string& text)
{
    Refuse(FromUtf8(text));
}

}  // namespace tessarine::batch
