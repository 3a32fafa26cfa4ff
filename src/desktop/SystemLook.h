#pragma once

#include <QString>

namespace tessarine
{

/// Makes ready what Qt and the system's controls ask for before the first window. To be called before there is a
/// QApplication. On Windows title bars follow the user's choice of a dark desktop.
void PrepareSystemLook();

/// Name of the style that suits the desktop; empty for the one that Qt chooses. On a dark Windows that is Qt's own
/// style, as the one drawn by the system knows light colours alone.
QString StyleOfSystem();

}  // namespace tessarine
