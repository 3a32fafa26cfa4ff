#include "shell/HelpViewer.h"

#include "platform/ProgramFolder.h"
#include "shell/DesktopOpener.h"

namespace tessarine
{

String HelpPath()
{
    return DataFolder() + u"/Help/index.html";
}

void ShowHelpFile(const String& path)
{
    OpenWithDesktop(path);
}

}  // namespace tessarine
