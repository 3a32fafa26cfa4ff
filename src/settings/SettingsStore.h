#pragma once

#include "platform/String.h"

/// The per-user settings store: texts under an application, a section and a key. Names hold letters and digits alone.
/// On Linux each application has a file of its own, "Tessarine/<application>.ini" in the user's configuration home. On
/// Windows each section is a key of the registry, HKEY_CURRENT_USER\Software\Tessarine\<application>\<section>, whose
/// values are texts with the names of the keys.
namespace tessarine
{

/// The value of a key; empty when there is none, or no store.
String GetSetting(const String& application, const String& section, const String& key);

/// Writes a value to the store, at once, and makes the store where there is none. Raises `PermissionDenied` when it
/// can't be written.
void SaveSetting(const String& application, const String& section, const String& key, const String& value);

}  // namespace tessarine
