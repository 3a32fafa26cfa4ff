#include "batch/FilePair.h"

#include <algorithm>
#include <array>

#include "batch/LineText.h"
#include "batch/Locations.h"
#include "batch/Refusal.h"
#include "model/ListColumns.h"
#include "platform/CaseFolding.h"
#include "platform/Utf16.h"

namespace tessarine::batch
{

namespace
{

String Trimmed(const String& text)
{
    return FoldCase(Trim(text));
}

/// Whether an option's field is on.
bool IsOn(const String& field, const char* column, const std::string& place)
{
    const String word = Trimmed(field);
    for (const StringView on : {u"true", u"yes", u"1", u"x"})
        if (word == on)
            return true;
    for (const StringView off : {u"", u"false", u"no", u"0"})
        if (word == off)
            return false;
    Refuse(place + ": " + Quoted(field) + " in the column " + column + " is neither TRUE nor FALSE");
}

}  // namespace

void CheckPairText(StringView text, const std::string& place)
{
    for (std::size_t at = 0; at < text.size(); at += IsPairAt(text, at) ? 2 : 1) {
        const char32_t codePoint = CodePointAt(text, at);
        if (IsSurrogate(codePoint))
            Refuse(place + ": the text holds half a character (a lone surrogate)");
        if (codePoint == 0)
            Refuse(place + ": the text holds a NUL character");
        if (codePoint == 0xFFFE || codePoint == 0xFFFF)
            Refuse(place + ": the text holds U+FFFE or U+FFFF, which are no characters");
    }
}

std::optional<PairTable::Column> PairTable::ColumnNamed(const String& name)
{
    struct Named {
        StringView name;
        Column column;
    };
    // The headers of lists with 18 columns, too: people take columns out of them.
    static constexpr std::array<Named, 11> names{{{u"find", Column::Find},
                                                  {u"find what", Column::Find},
                                                  {u"with", Column::With},
                                                  {u"replace", Column::With},
                                                  {u"replace with", Column::With},
                                                  {u"case", Column::Case},
                                                  {u"match-case", Column::Case},
                                                  {u"matchcase", Column::Case},
                                                  {u"word", Column::Word},
                                                  {u"whole-word", Column::Word},
                                                  {u"matchwholeword", Column::Word}}};
    const String folded = Trimmed(name);
    if (folded == u"in")
        return Column::In;
    const auto found = std::ranges::find(names, StringView(folded), &Named::name);
    return found == names.end() ? std::nullopt : std::optional(found->column);
}

bool PairTable::TakeHeader(const PairRow& row)
{
    const auto isFind = [](const String& field) { return ColumnNamed(field) == Column::Find; };
    if (std::ranges::none_of(row.fields, isFind)) {
        // "find;with" in a file whose separator is the comma would be a text to look for.
        const String first = row.fields.empty() ? String() : Trimmed(row.fields.front());
        if (row.fields.size() == 1 && (first.starts_with(u"find;") || first.starts_with(u"find what;")))
            Refuse(row.place + ": the separator is a comma; a first line \"sep=;\" names another one");
        return false;
    }
    // Of a table for --list; the first column that is unknown here would be no help.
    if (row.fields.size() == static_cast<std::size_t>(ListColumnCount))
        Refuse(row.place + ": this is a list of 18 columns, which --list takes");
    for (const String& field : row.fields) {
        const auto column = ColumnNamed(field);
        if (!column)
            Refuse(row.place + ": there is no column " + Quoted(field) +
                   "; the columns are find, with, case, word and in");
        if (std::ranges::find(columns_, *column) != columns_.end())
            Refuse(row.place + ": the column " + Quoted(field) + " is there twice");
        columns_.push_back(*column);
    }
    return true;
}

void PairTable::TakeField(FilePair& pair, Column column, const String& field) const
{
    switch (column) {
        case Column::Find:
            CheckPairText(field, pair.place);
            pair.find = field;
            break;
        case Column::With:
            CheckPairText(field, pair.place);
            pair.with = field;
            break;
        case Column::Case:
            pair.setting.MatchCase = IsOn(field, "case", pair.place);
            break;
        case Column::Word:
            pair.setting.MatchWholeWord = IsOn(field, "word", pair.place);
            break;
        case Column::In:
            SwitchOnPlaces(pair.setting, ToUtf8(field), pair.place);
            pair.hasPlaces = HasLocation(pair.setting);
            break;
    }
}

void PairTable::Add(const PairRow& row)
{
    if (columns_.empty()) {
        if (TakeHeader(row))
            return;
        columns_ = {Column::Find, Column::With};
    }
    if (row.fields.size() > columns_.size())
        Refuse(row.place + ": there are " + Counted(static_cast<std::int64_t>(row.fields.size()), "field") + " for " +
               Counted(static_cast<std::int64_t>(columns_.size()), "column") +
               " (a text with a separator in it wants quotes around it)");
    if (pairs_.size() == mostFilePairs)
        Refuse(row.place + ": there are more than " + std::to_string(mostFilePairs) + " pairs");
    FilePair pair;
    pair.place = row.place;
    for (std::size_t at = 0; at < row.fields.size(); ++at)
        TakeField(pair, columns_[at], row.fields[at]);
    pairs_.push_back(std::move(pair));
}

void SwitchOnPlaces(OptionSetting& setting, std::string_view names, const std::string& place)
{
    constexpr std::string_view separators = ",; \t";
    while (!names.empty()) {
        const std::string_view name = names.substr(0, names.find_first_of(separators));
        if (!name.empty() && !SwitchOnPlace(setting, name))
            Refuse(place + ": there is no location " + Quoted(FromUtf8(name)) + "; the names are " + LocationNames() +
                   ", or all");
        names.remove_prefix(std::min(names.size(), name.size() + 1));
    }
}

}  // namespace tessarine::batch
