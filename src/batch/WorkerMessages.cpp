#include "batch/WorkerMessages.h"

#include <array>
#include <cstdint>

namespace tessarine::batch
{

namespace
{

/// More is no message, but bytes of something else that was written between two.
constexpr std::uint64_t longestMessage = 1u << 30;
constexpr std::size_t lengthBytes = 8;

}  // namespace

std::string Framed(std::string_view message)
{
    std::string framed;
    framed.reserve(lengthBytes + message.size());
    for (std::size_t at = 0; at < lengthBytes; ++at)
        framed += static_cast<char>(static_cast<std::uint64_t>(message.size()) >> (8 * at) & 0xFF);
    return framed.append(message);
}

std::optional<std::string> ReadMessage(const ReadBytes& read)
{
    std::array<char, lengthBytes> start{};
    if (!read(start))
        return {};
    std::uint64_t length = 0;
    for (std::size_t at = 0; at < lengthBytes; ++at)
        length |= static_cast<std::uint64_t>(static_cast<unsigned char>(start[at])) << (8 * at);
    if (length > longestMessage)
        return {};
    std::string message(length, '\0');
    if (!read(message))
        return {};
    return message;
}

}  // namespace tessarine::batch
