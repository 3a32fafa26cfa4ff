#pragma once

#include <QPalette>

namespace tessarine
{

/// Colours for a dark desktop that has none of its own for Qt.
QPalette DarkColours();

}  // namespace tessarine
