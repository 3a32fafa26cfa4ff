#pragma once

#include <QString>

#include "ui/run/ResultNodes.h"

namespace tessarine
{

/// The log of a run as plain text, in lines that end in CR LF: a block for each file and item of `changed` that has
/// children, which follow it behind a tab, then a line for each file of `notChanged`. Files with errors have no part in
/// it.
QString ResultLog(const ResultNodes& changed, const ResultNodes& notChanged);

}  // namespace tessarine
