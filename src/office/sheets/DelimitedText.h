#pragma once

#include <string>

#include "office/sheets/Sheet.h"

/// Comma and tab separated text (RFC 4180), as Excel opens and saves it; FieldValue.h tells what a field stands for.
namespace tessarine::sheets
{

/// Splits a text into cells. Lines end with CR, LF or both. A field that begins with a quote ends at the next single
/// one, so it may hold separators, line ends (kept as they are) and doubled quotes; without that quote it ends with the
/// text. A quote elsewhere is a character. A first line such as "sep=;" names the separator and is no row. Raises
/// `ApplicationDefined` beyond the limits.
Sheet ReadDelimitedText(StringView text, char16_t separator, const Limits& limits = Limits::Default());

/// Comma separated text that the above reads back as the same cells, in UTF-8 with a mark (by which Excel knows it) and
/// lines ended by CR LF. Each row has as many fields as the used range reaches to the right. What does not read back:
/// an empty text becomes an empty cell, an error its name as text, a number keeps 15 digits, and of a surrogate pair
/// half alone becomes U+FFFD. Raises `ApplicationDefined` when the used range has more than 16777216 cells, empty ones
/// included.
std::string WriteCommaSeparated(const Sheet& sheet);

}  // namespace tessarine::sheets
