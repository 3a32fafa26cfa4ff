#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tessarine::batch
{

/// A number that stands for texts, the same on every machine (FNV-1a, 64 bits): tells texts apart that nobody has
/// chosen to be taken for each other.
class Digest
{
public:
    /// Adds a text, and that it ends here.
    Digest& Add(std::string_view text);

    std::uint64_t Number() const { return number_; }
    std::string Text() const;  ///< 16 hexadecimal digits.

private:
    std::uint64_t number_ = 14695981039346656037u;
};

}  // namespace tessarine::batch
