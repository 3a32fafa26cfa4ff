#pragma once

#include <QPalette>

namespace tessarine
{

/// The colour of text that matters less than what is around it: a third of the way from the text's colour to its
/// background, so that it can still be read with ease, on a dark desktop as on a light one.
QColor GreyText(const QPalette& palette);

}  // namespace tessarine
