#include "batch/ProcessGuards.h"

#include <fcntl.h>
#include <io.h>

#include <array>
#include <cstdio>

#include "platform/WindowsHeaders.h"

namespace tessarine::batch
{

void GuardProcess()
{
    // No box for a missing disk: nobody may be there to answer it.
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
    // Each opened for what it is not used for. A stream without a handle would fail in ways of its own.
    constexpr std::array<DWORD, 3> standard{STD_INPUT_HANDLE, STD_OUTPUT_HANDLE, STD_ERROR_HANDLE};
    const std::array<std::FILE*, 3> streams{stdin, stdout, stderr};
    for (std::size_t i = 0; i < standard.size(); ++i) {
        const HANDLE handle = GetStdHandle(standard[i]);
        if (handle == nullptr || handle == INVALID_HANDLE_VALUE)
            static_cast<void>(!std::freopen("NUL", i == 0 ? "wb" : "rb", streams[i]));
        else
            // Bytes as they are: the report has line ends of its own.
            _setmode(_fileno(streams[i]), _O_BINARY);
    }
}

}  // namespace tessarine::batch
