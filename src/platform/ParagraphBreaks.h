#pragma once

#include "platform/String.h"

namespace tessarine
{

/// A text as PowerPoint takes it in: each line end (CR LF, LF or CR) is one paragraph break, a CR. Other control
/// characters stay; a VT is a line break. Meant for what is put into a file: a text to look for is taken as it is, so
/// that an LF in it is no paragraph break.
String WithParagraphBreaks(StringView text);

}  // namespace tessarine
