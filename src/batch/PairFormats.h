#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "batch/FilePair.h"

/// What the texts of pair files mean. All of it refuses (Refusal.h) with the line, or the number of the pair, in front.
namespace tessarine::batch
{

/// The text of a file of pairs: UTF-8, with or without a byte order mark, or UTF-16 with one. Refuses other bytes, and
/// a NUL, of which UTF-16 without a mark is full.
String DecodePairFile(std::string_view bytes);

/// Pairs of separated text (RFC 4180), one a line. Lines end with CR, LF or both. A field that begins with a quote ends
/// at the next single one, so it may hold separators, line ends and doubled quotes; nothing but a separator or the
/// line's end may follow. A quote elsewhere is a character. Fields are texts: "007" and "TRUE" stay what they are.
/// Empty lines are passed over. A first line such as "sep=;" names the separator.
std::vector<FilePair> ReadSeparatedPairs(StringView text, char16_t separator);

/// Pairs of JSON: an array whose elements are arrays of one or two texts, or objects with "find", "with", "case",
/// "word" and "in", which is a text as --in takes it or an array of names.
std::vector<FilePair> ReadJsonPairs(StringView text);

/// What is written, read back by the above as the same pairs; UTF-8 without a mark. Tab separated text has no way to
/// say that a pair is looked for nowhere.
std::string WriteTabSeparatedPairs(const std::vector<FilePair>& pairs);
std::string WriteJsonPairs(const std::vector<FilePair>& pairs);

}  // namespace tessarine::batch
