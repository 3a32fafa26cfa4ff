#pragma once

#include <string>

#include "platform/String.h"

namespace tessarine
{

/// A text as one field of comma-separated values (RFC 4180), in quotes and on one line, with control characters as in
/// every report (CleanCharacter), as UTF-8.
///
/// A spreadsheet takes a cell that begins with `=`, `+`, `-` or `@` (or the wide forms of East Asian keyboards) for a
/// formula, also after blanks, and also when it is quoted. An apostrophe in front, which spreadsheets use for the same,
/// makes it a text. So it does inside of a text after a semicolon, where a spreadsheet of a country with that separator
/// begins a cell of its own.
std::string CsvField(StringView text);

}  // namespace tessarine
