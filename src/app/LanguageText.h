#pragma once

#include <cstdint>

#include "platform/String.h"

/// The texts that a user reads. They stand in one file per language, "<language>.lng", in the sectioned form that
/// files/ProfileText.h describes: a section per window under its class name, and "Global Msg" for messages.
namespace tessarine
{

/// The language file of a job that names none.
inline constexpr StringView DefaultLanguageFile = u"English.lng";

/// Folder of the language files: "Languages" in the program's DataFolder. Without a trailing separator.
String LanguageFolder();

/// The text of a key in CurrentLanguageFile, at most 4,095 characters. The file is read at every call. Empty when there
/// is no such file, section or key; nothing else takes its place. A file that can't be read is logged and gives the
/// empty text.
///
/// A text that keeps leading spaces (it stands in quotes) loses as many characters at its end.
String GetLngString(const String& section, const String& key);

/// The same with a number in place of every "%d".
String GetLngString(const String& section, const String& key, std::int32_t number);

}  // namespace tessarine
