#include "support/Surroundings.h"

#include <sys/stat.h>
#include <time.h>
#include <initializer_list>

#include <cstdlib>

namespace tessarine
{

void PinSurroundings()
{
    umask(022);

    setenv("LC_ALL", "C.UTF-8", 1);
    unsetenv("LANGUAGE");
    setenv("TZ", "UTC", 1);
    tzset();

    for (const char* name :
         {"QT_SCALE_FACTOR", "QT_SCREEN_SCALE_FACTORS", "QT_FONT_DPI", "QT_STYLE_OVERRIDE", "QT_QPA_PLATFORMTHEME"})
        unsetenv(name);
}

}  // namespace tessarine
