#pragma once

#include <QString>

#include "ui/run/ResultNodes.h"

namespace tessarine
{

/// The log of a run as plain text, in lines that end in CR LF: for each file and item of `changed` that has children a
/// line of its own and one for each child, which begins with a tab; then a line for each file of `notChanged`. Files
/// and items come in the order in which they were added. Files with errors have no part in it.
QString ResultLog(const ResultNodes& changed, const ResultNodes& notChanged);

}  // namespace tessarine
