#pragma once

#include "platform/String.h"

namespace tessarine
{

/// A text from a file or a name, on one line and as harmless characters, for terminals and logs. Characters that move
/// the cursor, drive a terminal or turn the order of what follows stand as escapes:
///
/// - "\n", "\r" and "\t"; "\x1B" for every other control character up to U+001F, and for DEL;
/// - "\u009B" for the control characters U+0080 to U+009F; "\x9B" where a name holds such a byte outside of UTF-8;
/// - "\u202E" for the marks and overrides of bidirectional text, and for the separators U+2028 and U+2029.
///
/// A backslash of the text itself stays as it is: the text is for people, and a text that was made visible once is not
/// changed by a second time. Foreign bytes of names (`FromUtf8`) from A0 on stay as well.
String VisibleText(StringView text);

}  // namespace tessarine
