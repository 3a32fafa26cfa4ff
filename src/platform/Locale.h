#pragma once

#include <ctime>
#include <optional>

#include "platform/String.h"

/// Numbers and dates as the user's system shows them. Everything that is meant to look local goes through here;
/// everything else in the program is independent of the locale.
namespace tessarine
{

/// Takes the process's locale from the environment. Called once by a program's entry; without it the "C" locale holds.
void UseSystemLocale();

/// True under a locale whose language is Turkish or Azeri, where "i" and "İ" are one letter and "ı" and "I" another.
/// The locale's name decides, whether the system has its data or not.
bool TellsDottedI();

/// The number that a text stands for under the system's locale (leading and trailing blanks, sign, decimal and
/// grouping signs, exponent), or nothing when it is not numeric.
std::optional<double> NumberFromText(StringView text);

/// The shortest text that reads back as the same number, with the locale's decimal sign: 4 for 4.0, 1.5, 1E+20.
String TextFromNumber(double number);

/// Short date and long time as the system displays them; at midnight the date alone. `local` is local time.
String DisplayDateTime(const std::tm& local);

}  // namespace tessarine
