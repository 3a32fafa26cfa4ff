#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The text of a journal: lines of fields, each line with a checksum of its own, so that one which a crash cut short or
/// which was damaged since is never taken for another. docs/formats/journal.md describes it.
namespace tessarine
{

/// The fields of a line: what kind of line it is, then its values. Values may hold any bytes.
using JournalFields = std::vector<std::string>;

/// One line, with its checksum and its line end.
std::string JournalLine(const JournalFields& fields);

/// The fields of a line without its line end. Nothing for one that is damaged, cut or isn't one.
std::optional<JournalFields> JournalFieldsIn(std::string_view line);

/// The lines of a journal up to the first one that is damaged, cut or isn't one. Text of no journal gives none.
std::vector<JournalFields> ReadJournal(std::string_view text);

}  // namespace tessarine
