#pragma once

#include "platform/String.h"

class QWidget;

namespace tessarine
{

/// Which classes of control beside those with a caption get a tip.
enum class ControlTips { Basic, TextAndListBoxes };

/// Gives the named controls of a window their texts in the active language, by their class. `section` is the window's
/// name. A control's name is its objectName, followed by "(i)" for a member of an array.
///
/// - labels, buttons, option buttons, check boxes: "<name>.caption" and "<name>.ToolTipText"
/// - combo boxes, tables, and text and list boxes when asked for: "<name>.ToolTipText"
/// - frames: "<name>.Caption"
/// - menu items: "<name>.caption"; the caption "-" makes an item a separator. The items of the recent files, mnuDefRF,
///   keep theirs.
/// - tool bars: "<name>.ToolTipText", and "<name>.Buttons(i).ToolTipText" for their buttons, from 1
///
/// Qt's own words, such as those of a text box's menu, follow the language as well (LanguageOfQt.h).
///
/// What the language file says is taken over even when it says nothing: an empty text empties a caption.
void ApplyLanguage(QWidget& window, const String& section, ControlTips tips);

}  // namespace tessarine
