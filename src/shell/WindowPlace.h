#pragma once

#include "platform/String.h"

class QPoint;
class QRect;
class QSize;
class QWidget;

/// Where windows stand, from one start of the program to the next. Kept in the settings of the application, in a
/// section for each window.
namespace tessarine
{

/// Gives a window that isn't shown yet the place, size and state that KeepPlace has kept, as far as the screens that
/// are there now have room for them. Does nothing when nothing is kept.
void RestorePlace(QWidget& window, const String& name);

/// Keeps place, size and state for RestorePlace. A place that can't be kept is not worth a word.
void KeepPlace(const QWidget& window, const String& name);

/// What the frame around a window may take of the screen, at most; what the window manager really puts around it is
/// known only once it is shown.
QSize FrameSize(const QWidget& window);

/// A size for the whole of a window that isn't shown yet, with room for its frame on the screen that it is on.
QSize FittingSize(const QWidget& window, const QSize& wanted);

/// The upper left corner of a window of this size in the middle of its owner, moved as far as it must be to stand on
/// the screen; at the screen's own corner when it is larger.
QPoint PlaceOver(const QRect& owner, const QSize& size, const QRect& screen);

}  // namespace tessarine
