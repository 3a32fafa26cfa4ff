#pragma once

#include <optional>

#include <QString>
#include <QStringList>

#include "shell/CommonDialog.h"

namespace tessarine
{

/// The desktop's own file dialog, above the active window.
std::optional<QString> ShowQtFileDialog(const CommonDialog& dialog, bool isSave);

/// A filter of CommonDialog as Qt writes them, "CSV Files (*.csv)".
QStringList QtNameFilters(const String& filter);

}  // namespace tessarine
