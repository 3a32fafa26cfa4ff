#pragma once

#include <string>
#include <string_view>

#include "platform/String.h"

namespace tessarine
{

/// A text as UTF-8 that is nothing but text wherever it stands in a web page, between tags and in a quoted attribute:
///
/// - `& < > " '` are references;
/// - line ends of any kind (a vertical tab is one in presentations) show as "⏎", a tab as a blank;
/// - other control characters show as their pictures (U+2400 to U+2421);
/// - what no page may hold (lone surrogates, noncharacters, U+0080 to U+009F) is U+FFFD.
std::string HtmlText(StringView text);

/// The same, but that what could turn the order of letters shows as an escape, too (VisibleText): for names and other
/// texts that stand in one line with words of the page.
std::string HtmlName(StringView text);

}  // namespace tessarine
