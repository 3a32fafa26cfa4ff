#include "shell/BrowserObject.h"

namespace tessarine
{

bool ShowInBrowserObject(StringView, const String&)
{
    return false;
}

}  // namespace tessarine
