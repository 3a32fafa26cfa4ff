#include "shell/Help.h"

#include <utility>

#include "log/Treatments.h"
#include "shell/HelpViewer.h"

namespace tessarine
{

namespace
{

HelpViewerPort helpViewer;

}  // namespace

void ShowHelp()
{
    LogAndReturn({u"ShowHelp", u"Module modShell"}, [] { (helpViewer ? helpViewer : ShowHelpFile)(HelpPath()); });
}

HelpViewerPort SetHelpViewer(HelpViewerPort port)
{
    return std::exchange(helpViewer, std::move(port));
}

}  // namespace tessarine
