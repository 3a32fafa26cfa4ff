#include "support/Surroundings.h"

#include <fcntl.h>
#include <io.h>
#include <stdlib.h>
#include <time.h>

#include <cstdio>

#include "platform/WindowsHeaders.h"

namespace tessarine
{

void PinSurroundings()
{
    // Nobody is there to close a message of the system about a crash.
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);

    // CTest reads lists of tests as Linux writes them.
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);

    _putenv_s("TZ", "UTC0");
    _tzset();
}

}  // namespace tessarine
