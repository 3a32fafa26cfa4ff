#include "batch/Digest.h"

#include <fmt/format.h>

namespace tessarine::batch
{

namespace
{

constexpr std::uint64_t prime = 1099511628211u;

}  // namespace

Digest& Digest::Add(std::string_view text)
{
    for (const char byte : text)
        number_ = (number_ ^ static_cast<unsigned char>(byte)) * prime;
    // No byte has this value, so that "ab" and "a", "b" differ.
    number_ = (number_ ^ 0x100) * prime;
    return *this;
}

std::string Digest::Text() const
{
    return fmt::format("{:016x}", number_);
}

}  // namespace tessarine::batch
