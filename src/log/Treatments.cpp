#include "log/Treatments.h"

#include <string>

#include "log/ErrorLog.h"

namespace tessarine
{

String FailureText(const Failure& failure, StringView procedureName, StringView place)
{
    String text = u"Error ";
    text += FromUtf8(std::to_string(failure.number));
    text += u" (";
    text += failure.description;
    text += u") in procedure ";
    text += procedureName;
    // The line is always 0: the program keeps no line numbers, and the form of the log's lines stays as it was.
    text += u" at Line No. 0 of ";
    text += place;
    return text;
}

void LogFailure(const Procedure& procedure, const Failure& failure) noexcept
{
    try {
        WriteErrorLog(FailureText(failure, procedure.name, procedure.place));
    } catch (...) {
        // Out of memory while building the text: the line is lost, as any line that can't be written.
    }
}

}  // namespace tessarine
