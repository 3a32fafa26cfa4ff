#pragma once

#include <QIcon>

namespace tessarine
{

/// One of the program's own icons, by its file name without ".svg": Icon("open"). Drawn sharply at every size and pixel
/// ratio; on Windows at the usual ones, from pictures that the build makes. A name without a file gives a null icon.
QIcon Icon(const char* name);

/// The drawing of an icon, as SVG; empty for a name without a file.
QByteArray IconDrawing(const char* name);

}  // namespace tessarine
