#pragma once

#include <cstdint>

/// Indexes of the two start commands, by which the main window tells a replace run from a find run.
namespace tessarine::StartCommand
{
inline constexpr std::int16_t Replacing = 0;  ///< The index of its button.
inline constexpr std::int16_t Searching = 1;  ///< The index of its button.
}  // namespace tessarine::StartCommand
