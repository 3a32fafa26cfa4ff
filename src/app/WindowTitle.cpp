#include "app/WindowTitle.h"

#include "platform/ProgramInfo.h"

namespace tessarine
{

String BuildWindowTitle(const String& title, bool isModified)
{
    return title + (isModified ? u" (Modified)" : u"") + u" - " + String(ApplicationTitle);
}

}  // namespace tessarine
