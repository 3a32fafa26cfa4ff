#pragma once

#include <QPalette>

/// A light and a dark desktop.
namespace tessarine
{

QPalette LightTheme();
QPalette DarkTheme();

}  // namespace tessarine
