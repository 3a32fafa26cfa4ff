#include "report/ReportWords.h"

#include <string>

namespace tessarine
{

namespace
{

void PutNumber(String& text, StringView mark, std::int64_t number)
{
    const std::size_t at = text.find(mark);
    // A translation may lack it.
    if (at != String::npos)
        text.replace(at, mark.size(), FromUtf8(std::to_string(number)));
}

}  // namespace

String ReportWords::NameOnCommandLine(Location location)
{
    return FromUtf8(RowOf(location).name);
}

String WithNumbers(String text, std::int64_t d, std::int64_t i)
{
    PutNumber(text, u"%d", d);
    PutNumber(text, u"%i", i);
    return text;
}

}  // namespace tessarine
