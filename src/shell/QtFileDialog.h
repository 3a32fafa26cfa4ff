#pragma once

#include <optional>

#include <QString>
#include <QStringList>

#include "shell/CommonDialog.h"

namespace tessarine
{

/// The desktop's own file dialog, above the active window, with the properties of `dialog`. Gives the full path that
/// was chosen, with the default extension added to a name without one; nothing when cancelled.
///
/// - AskBeforeOverwriting: a file to save to that exists is asked about.
/// - FileMustExist: a file to open is taken only when it exists. Without the flag any name is.
/// - A proposed file (FileName) is selected, and its folder opened.
std::optional<QString> ShowQtFileDialog(const CommonDialog& dialog, bool isSave);

/// A filter of CommonDialog as Qt writes them, "CSV Files (*.csv)". Empty for an empty filter.
QStringList QtNameFilters(const String& filter);

}  // namespace tessarine
