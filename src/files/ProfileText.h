#pragma once

#include <cstddef>
#include <string_view>

#include "platform/String.h"

/// Values of sectioned text files, read as the Windows profile calls read them:
///
///     ; a comment
///     [section]
///     key=value
///
/// A line ends with LF, CR or both. Blanks (spaces and tabs) at either end of a line and around names and values don't
/// count. A line that begins with ";" is a comment; a ";" elsewhere is text. A section is named between "[" and the
/// next "]", and what follows on that line is passed over; without a "]" the line says nothing. A key ends at the
/// first "=", and a line without one says nothing, nor does what stands above the first section. Names compare without
/// regard to case. Of sections with the same name the first one counts, of keys with the same name in it the first
/// one, whatever its value.
///
/// A value loses one pair of quotes around it, single or double, and then keeps the blanks that stood inside. It ends
/// at a NUL.
///
/// Lengths are in characters (code points), so that a cut never leaves half of one and a text of any language has the
/// same room.
namespace tessarine
{

/// The value of a key, cut to its first `longest` characters, in the content of a file in UTF-8, with or without a byte
/// order mark. A byte that is not part of valid UTF-8 comes out as FromUtf8 has it. Empty when there is no such section
/// or key.
String ProfileValue(std::string_view content, StringView section, StringView key, std::size_t longest);

/// The same in a file, which is read anew each time. One that is not UTF-8 is in a code page of Windows: in the one
/// that a comment in its first line names, "; ... code page 1250 ...", else in the system's (SystemCodePage). Empty
/// when there is no such file. Raises `PermissionDenied` or `DeviceIO` when there is one that can't be read.
String ReadProfileValue(StringView path, StringView section, StringView key, std::size_t longest);

}  // namespace tessarine
