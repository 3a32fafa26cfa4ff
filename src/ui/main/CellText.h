#pragma once

#include <QString>

/// How a text of a pair, which may be long and have line breaks, is shown where there is little room.
namespace tessarine
{

/// The text on one line: a sign stands for each line break, and a long text is cut and ends with an ellipsis.
QString OnOneLine(const QString& text);

/// The text as a tip, with its line breaks: some lines of it, and an ellipsis where there are more. Letters that mean
/// something to HTML are shown as they stand. Empty for an empty text.
QString TipOfText(const QString& text);

}  // namespace tessarine
