#pragma once

#include <string_view>

#include "platform/String.h"

namespace tessarine::builtin
{

/// Appends the text that an element's content stands for, case folded: FoldCaseWidely of what AppendContent gives, at a
/// fraction of the cost for ordinary text. The content holds no markup, so that it ends at the next "<".
///
/// Gives false, and appends something that is of no use, where single characters may not be what they seem: escapes
/// ("_x000B_", also with parts of it written as references) and line ends that are read as others.
bool AppendFoldedContent(std::string_view content, String& text);

}  // namespace tessarine::builtin
