#pragma once

#include <string>

#include "office/sheets/Sheet.h"

/// What a field of comma or tab separated text stands for, much as Excel reads it.
///
/// - TRUE and FALSE, whatever the case, are booleans, in quotes, too.
/// - A plain number is a number: 2024, 007 (the number 7), -1.5, .5, 1e3. The decimal sign is the point, whatever the
///   locale. A number of more than 15 significant digits stays text, because as a number it would lose some of them. A
///   number in quotes stays text: LibreOffice writes texts that look like numbers so.
/// - ="007" is the text 007: the way to write a text that would otherwise be something else. Excel and LibreOffice
///   understand it, too.
/// - Everything else is text: numbers with blanks around, grouping, percent or currency signs, dates, other formulas,
///   names of errors. Excel would calculate with those; in a list they are words to be found.
namespace tessarine::sheets
{

/// The value of a field, quotes taken off. A text may be borrowed from `field` or from `scratch`.
Cell ValueOfField(StringView field, bool isQuoted, String& scratch);

/// Whether a formula, with its "=", is a text alone; that text then is in `text`, which holds anything otherwise.
bool ReadTextFormula(StringView formula, String& text);

/// The field that stands for a text: the text itself, or ="text" when some program would take it for a boolean, a
/// number, a date or a formula.
String FieldOfText(StringView text);

/// The field that stands for a number, with 15 significant digits at most.
std::string FieldOfNumber(double number);

/// The number as it shows, rounded to 15 significant digits: 0.1 + 0.2 is 0.3.
double ShownNumber(double number);

}  // namespace tessarine::sheets
