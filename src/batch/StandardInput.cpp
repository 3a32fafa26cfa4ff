#include "batch/StandardInput.h"

#include <cstdio>
#include <optional>
#include <utility>

#include "batch/Refusal.h"
#include "platform/Failure.h"

namespace tessarine::batch
{

namespace
{

std::optional<std::string> givenInput;
bool keepsInput = false;
std::string keptInput;

std::string InputToItsEnd(std::size_t most)
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

}  // namespace

std::string ReadStandardInput(std::size_t most)
{
    if (givenInput)
        return *givenInput;
    std::string bytes = InputToItsEnd(most);
    if (keepsInput)
        keptInput = bytes;
    return bytes;
}

void GiveStandardInput(std::string bytes)
{
    givenInput = std::move(bytes);
}

void KeepStandardInput()
{
    keepsInput = true;
}

const std::string& KeptStandardInput()
{
    return keptInput;
}

}  // namespace tessarine::batch
