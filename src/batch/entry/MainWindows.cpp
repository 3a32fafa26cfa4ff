#include "platform/NativePath.h"
#include "platform/String.h"
#include "Program.h"

// Not main: its arguments would have gone through the system's code page.
int wmain(int argumentCount, wchar_t** arguments)
{
    std::vector<std::string> texts;
    for (int i = 1; i < argumentCount; ++i)
        texts.push_back(tessarine::ToUtf8(tessarine::PathText(arguments[i])));
    return tessarine::batch::RunProgram(texts);
}
