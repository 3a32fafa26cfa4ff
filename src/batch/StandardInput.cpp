#include "batch/StandardInput.h"

#include <cstdio>

#include "batch/Refusal.h"
#include "platform/Failure.h"

namespace tessarine::batch
{

std::string ReadStandardInput(std::size_t most)
{
    std::string bytes;
    char piece[65536];
    while (const std::size_t count = std::fread(piece, 1, sizeof piece, stdin)) {
        if (count > most - bytes.size())
            Refuse("standard input holds too much");
        bytes.append(piece, count);
    }
    if (std::ferror(stdin))
        throw Failure(FailureNumber::DeviceIO, u"standard input can't be read");
    return bytes;
}

}  // namespace tessarine::batch
