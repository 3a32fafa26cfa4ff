#pragma once

#include <cstdint>
#include <variant>

#include "platform/String.h"
#include "platform/WindowsHeaders.h"

/// How a file type gets into the registry; for files that end in "Windows.cpp". No result of the system's calls is
/// looked at: without the right to write nothing is written, and the caller goes on.
///
/// Texts are written in the system's code page; one with a letter that the code page lacks, such as the path of a
/// folder, is written in Unicode, as it would be another path otherwise. Names of keys and values are ASCII.
namespace tessarine
{

/// Makes a key that lasts, with those on the way, below another one. One that is there stays as it is.
void CreateNewKey(const String& SubKey, HKEY Root);

/// What a key can hold.
using KeyValue = std::variant<String, std::int32_t>;

/// Gives a key below HKEY_CLASSES_ROOT, which must be there, a value; an empty name means the key's default value.
void SetKeyValue(const String& SubKey, const String& ValueName, const KeyValue& Value, std::int32_t ValueType);

/// Gives an open key a value. `ValueType` is 1 for a text, written with a NUL that counts in its length, or 4 for a
/// number, four bytes. Gives the system's code, 0 for success; for any other type, and for a value of another type than
/// `ValueType` says, nothing is written and the result is 0.
std::int32_t SetValueEx(HKEY Key, const String& ValueName, std::int32_t ValueType, const KeyValue& Value);

}  // namespace tessarine
