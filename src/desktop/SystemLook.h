#pragma once

namespace tessarine
{

/// Makes ready what Qt and the system's controls ask for before the first window. To be called before there is a
/// QApplication.
void PrepareSystemLook();

/// Gives the application the style that suits the desktop, and its colours where Qt doesn't have them: on a dark
/// Windows, whose own style knows light ones alone.
void ApplySystemLook();

}  // namespace tessarine
