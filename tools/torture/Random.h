#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <span>

namespace tessarine::torture
{

/// Random choices that are the same for the same seed, on every machine.
class Random
{
public:
    explicit Random(std::uint64_t seed) : bits_(seed) {}

    /// From 0, below `bound`, which is at least 1. The standard's distributions differ between libraries.
    std::size_t Below(std::size_t bound) { return static_cast<std::size_t>(bits_() % bound); }
    bool Chance(std::size_t percent) { return Below(100) < percent; }

    template <class Container>
    const auto& OneOf(const Container& choices)
    {
        return *(std::begin(choices) + static_cast<std::ptrdiff_t>(Below(std::size(choices))));
    }

private:
    std::mt19937_64 bits_;
};

/// A place from 0 below `count` for a round: as many rounds as there are places take each once, in an order that
/// spreads the first few over all of them.
std::size_t Spread(std::size_t round, std::size_t count);

}  // namespace tessarine::torture
