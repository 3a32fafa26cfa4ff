#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/OptionSetting.h"
#include "platform/String.h"

namespace tessarine::batch
{

/// A pair as a file of pairs holds it (docs/lists.md, "Plain pairs").
struct FilePair {
    String find;                 ///< May be empty.
    std::optional<String> with;  ///< Nothing where the file gives none, which only a find may take.
    OptionSetting setting;       ///< MatchCase, MatchWholeWord and locations.
    bool hasPlaces = false;      ///< The file names its locations, if only to say that there are none.
    std::string place;           ///< Where it stands, for refusals: "line 3".
};

/// More of them are no list that a person has made.
inline constexpr std::size_t mostFilePairs = 100'000;

/// As many columns as there are names for.
inline constexpr std::int32_t mostPairColumns = 5;

/// Refuses (Refusal.h) a text that no presentation can hold: with U+0000, U+FFFE or U+FFFF, or a lone surrogate.
/// `place` begins the refusal.
void CheckPairText(StringView text, const std::string& place);

/// One row of a table of pairs.
struct PairRow {
    std::string place;           ///< As in FilePair.
    std::vector<String> fields;  ///< From the first column on.
};

/// Puts the rows of a table together to pairs. A first row with "find" among its fields holds the names of columns, in
/// any order and case; without it the columns are the find text and the new one.
class PairTable
{
public:
    /// Takes the next row. Refuses (Refusal.h) an unknown or missing column, a row with more fields than there are
    /// columns, an option that is none, and too many pairs.
    void Add(const PairRow& row);

    std::vector<FilePair> Take() { return std::move(pairs_); }  ///< All pairs, in their order.

private:
    enum class Column { Find, With, Case, Word, In };

    static std::optional<Column> ColumnNamed(const String& name);
    bool TakeHeader(const PairRow& row);
    void TakeField(FilePair& pair, Column column, const String& field) const;

    std::vector<Column> columns_;  // by position, once the first row is known
    std::vector<FilePair> pairs_;
};

/// The locations that a text names: names of --in with commas, semicolons or blanks between them, or "all". Refuses
/// (Refusal.h) an unknown one.
void SwitchOnPlaces(OptionSetting& setting, std::string_view names, const std::string& place);

}  // namespace tessarine::batch
