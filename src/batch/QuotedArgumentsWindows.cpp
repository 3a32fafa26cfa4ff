#include "batch/QuotedArguments.h"

#include "platform/String.h"

namespace tessarine::batch
{

namespace
{

/// A backslash is one of the argument's own but before a quote; there it needs another one, as does the quote.
void AppendQuoted(NativeString& line, const String& argument)
{
    line += L'"';
    std::size_t backslashes = 0;
    for (const char16_t unit : argument) {
        if (unit == u'"')
            line.append(backslashes + 1, L'\\');
        backslashes = unit == u'\\' ? backslashes + 1 : 0;
        line += static_cast<wchar_t>(unit);
    }
    line.append(backslashes, L'\\');
    line += L'"';
}

}  // namespace

NativeString QuotedArguments(const std::vector<std::string>& arguments)
{
    NativeString line = L"tessarine-batch";
    for (const std::string& argument : arguments) {
        line += L' ';
        AppendQuoted(line, FromUtf8(argument));
    }
    return line;
}

}  // namespace tessarine::batch
