#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/PowerPoint.h"
#include "platform/String.h"

/// Values of property sets as they stand in the file ([MS-OLEPS] 2.15): a type in 16 bits, 16 bits of padding, and the
/// value. What of it lies beyond the given bytes is cut off, and numbers read as if zeros followed.
namespace tessarine::builtin
{

/// The types that the engine knows.
enum class ValueType : std::uint16_t {
    Empty = 0,
    Null = 1,
    I2 = 2,
    I4 = 3,
    R4 = 4,
    R8 = 5,
    Currency = 6,
    Date = 7,  ///< Days since 30 December 1899, in local time.
    Bstr = 8,  ///< Stored as Lpstr is.
    Bool = 11,
    Decimal = 14,
    I1 = 16,
    Ui1 = 17,
    Ui2 = 18,
    Ui4 = 19,
    I8 = 20,
    Ui8 = 21,
    Int = 22,
    Uint = 23,
    Lpstr = 30,     ///< A text in the section's code page.
    Lpwstr = 31,    ///< A text in UTF-16.
    FileTime = 64,  ///< Tenths of microseconds since 1601, in UTC; or a duration.
    Blob = 65,
    LpstrList = 0x1000 | 30,
    LpwstrList = 0x1000 | 31,
};

ValueType TypeOf(std::string_view typed);

/// How many bytes belong to the value, type and all, without padding. All of them for a type that is unknown.
std::size_t LengthOf(std::string_view typed);

bool IsText(ValueType type);

/// Whether a person can't edit a value of the type. It reads as "".
bool IsOpaque(ValueType type);

/// The value as the surface gives it: a text up to its first NUL, dates in local time. A date that the system can't
/// convert reads as "". Raises `FileCorrupt` for a text of more than `longestText` units.
powerpoint::Value ReadTyped(std::string_view typed, std::uint16_t codePage, std::size_t longestText);

/// A text as a value. It keeps the type where that is one of texts; else it is an Lpstr. One that the code page can't
/// hold is an Lpwstr, which [MS-OSHARED] 2.3.3.1.11 allows in the same places. Raises `FileCorrupt` for a text with a
/// NUL, which would end there.
std::string TypedText(ValueType type, StringView text, std::uint16_t codePage);

/// A value that is put over another one, by the rules of CustomPropertiesReader::Put. `property` is its name, for the
/// failures.
std::string TypedPut(StringView property, std::string_view old, const powerpoint::Value& value, std::uint16_t codePage);

/// A text in the bytes of a code page, up to the first NUL.
String TextIn(std::string_view bytes, std::uint16_t codePage);

/// A text that a Blob holds in UTF-16, and the Blob for a text. Reading raises as ReadTyped does, writing as TypedText.
String TextOfBlob(std::string_view typed, std::size_t longestText);
std::string TypedTextBlob(StringView text);

/// A Blob of some bytes.
std::string TypedBlob(std::string_view bytes);

/// The texts of a list; none for a value that isn't one, and for one that no program would write. Raises `FileCorrupt`
/// for a text of more than `longestText` units.
std::vector<String> ReadTextList(std::string_view typed, std::uint16_t codePage, std::size_t longestText);

/// The list `old` with other texts in it. One with a text that the code page can't hold becomes a list of Lpwstr.
std::string TypedTextList(std::string_view old, const std::vector<String>& texts, std::uint16_t codePage);

}  // namespace tessarine::builtin
