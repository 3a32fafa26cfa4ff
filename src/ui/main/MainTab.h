#pragma once

/// Indexes of the tabs of the main window.
namespace tessarine::MainTab
{
inline constexpr int Replacement = 0;
inline constexpr int Files = 1;
}  // namespace tessarine::MainTab
