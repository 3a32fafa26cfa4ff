#include <array>
#include <string>
#include <vector>

#include "report/CsvText.h"
#include "report/RunReport.h"

namespace tessarine
{

namespace
{

/// One row, column by column. An unset number is an empty cell.
struct Row {
    String file;
    String state;
    std::int64_t pair = 0;
    String find;
    String replace;
    String place;
    const HitPlace* where = nullptr;  ///< Null for a row that is no hit's.
    const Hit* hit = nullptr;
    std::optional<std::int64_t> occurrences;
    String note;
};

class CsvReport final : public RunReport
{
public:
    CsvReport(const RunFacts& facts, const ReportWords& words) : facts_(facts), words_(words) {}

    std::string OfFile(const FileReport& file) override;
    std::string Head(const RunEnd& end) override;
    std::string Foot(const RunEnd& end) override;

private:
    using Rest = CounterStatus::LocationCounts;

    std::string HitRow(const FileReport& file, const Hit& hit, std::vector<Rest>& rest) const;
    std::string RestRows(const FileReport& file, const std::vector<Rest>& rest) const;
    std::string OtherRow(const FileReport& file, std::int64_t occurrences, const String& note) const;
    std::string LineOf(const Row& row) const;
    String NoteOf(const Hit& hit) const;

    const RunFacts facts_;
    const ReportWords words_;
};

std::string TextCell(StringView text)
{
    return text.empty() ? std::string() : CsvField(text);
}

/// Numbers of places count from 1; 0 stands for none.
std::string NumberCell(std::int64_t number)
{
    return number > 0 ? std::to_string(number) : std::string();
}

std::string Line(const std::vector<std::string>& cells)
{
    std::string line;
    for (const std::string& cell : cells)
        line += (&cell == &cells.front() ? "" : ",") + cell;
    return line + "\r\n";
}

std::string CsvReport::Head(const RunEnd&)
{
    std::vector<std::string> cells;
    for (const auto name :
         {&ReportWords::file,        &ReportWords::state,     &ReportWords::number,    &ReportWords::find,
          &ReportWords::replaceWith, &ReportWords::place,     &ReportWords::slide,     &ReportWords::slideTitle,
          &ReportWords::design,      &ReportWords::property,  &ReportWords::hyperlink, &ReportWords::shape,
          &ReportWords::shapeName,   &ReportWords::paragraph, &ReportWords::position,  &ReportWords::length,
          &ReportWords::before,      &ReportWords::hit,       &ReportWords::after,     &ReportWords::becomes,
          &ReportWords::occurrences, &ReportWords::note})
        cells.push_back(CsvField(words_.*name));
    // The mark by which spreadsheets know UTF-8.
    return "\xEF\xBB\xBF" + Line(cells);
}

std::string CsvReport::LineOf(const Row& row) const
{
    static const HitPlace nowhere;
    static const Hit none;
    const HitPlace& where = row.where != nullptr ? *row.where : nowhere;
    const Hit& hit = row.hit != nullptr ? *row.hit : none;
    // A hit that can't tell its text is one of the pair's.
    const String& text = row.hit != nullptr && hit.text.empty() ? row.find : hit.text;
    return Line({TextCell(row.file),
                 TextCell(row.state),
                 NumberCell(row.pair),
                 TextCell(row.find),
                 TextCell(row.replace),
                 TextCell(row.place),
                 NumberCell(where.slide),
                 TextCell(where.slideTitle),
                 TextCell(where.design),
                 TextCell(where.property),
                 NumberCell(where.hyperlink),
                 NumberCell(where.shape),
                 TextCell(where.shapeName),
                 NumberCell(hit.paragraph),
                 NumberCell(hit.position),
                 NumberCell(hit.length),
                 TextCell((hit.isCutBefore ? u"\u2026" : u"") + hit.before),
                 TextCell(text),
                 TextCell(hit.after + (hit.isCutAfter ? u"\u2026" : u"")),
                 TextCell(hit.becomes.value_or(String())),
                 row.occurrences ? std::to_string(*row.occurrences) : std::string(),
                 TextCell(row.note)});
}

std::string CsvReport::OfFile(const FileReport& file)
{
    // What the counts hold beyond the hits that are told.
    std::vector<Rest> rest;
    for (const PairReport& pair : file.pairs)
        rest.push_back(pair.counts);

    std::string rows;
    for (const Hit& hit : file.hits)
        rows += HitRow(file, hit, rest);
    rows += RestRows(file, rest);
    // A file stands in the table whatever became of it.
    if (rows.empty())
        rows = OtherRow(file, 0, file.error);
    for (const String& warning : file.warnings)
        rows += OtherRow(file, 0, words_.warning + u": " + warning);
    return rows;
}

std::string CsvReport::HitRow(const FileReport& file, const Hit& hit, std::vector<Rest>& rest) const
{
    Row row{file.path,
            StateWord(file, facts_, words_),
            hit.place->pair,
            {},
            {},
            words_.nameOf(hit.place->location),
            hit.place.get(),
            &hit,
            0,
            NoteOf(hit)};
    const auto index = static_cast<std::size_t>(hit.place->pair) - 1;
    if (index < file.pairs.size()) {
        row.find = file.pairs[index].find;
        row.replace = file.pairs[index].replace;
        std::int32_t& left = rest[index][static_cast<std::size_t>(hit.place->location)];
        // More hits than were counted stand in the table without adding to its sum.
        if (hit.isCounted && left > 0) {
            --left;
            row.occurrences = 1;
        }
    }
    return LineOf(row);
}

std::string CsvReport::RestRows(const FileReport& file, const std::vector<Rest>& rest) const
{
    std::string rows;
    for (std::size_t index = 0; index < rest.size(); ++index)
        for (const SearchLocation& place : SearchLocations) {
            const std::int32_t left = rest[index][static_cast<std::size_t>(place.location)];
            const PairReport& pair = file.pairs[index];
            if (left > 0)
                rows += LineOf({file.path, StateWord(file, facts_, words_), static_cast<std::int64_t>(index) + 1,
                                pair.find, pair.replace, words_.nameOf(place.location), nullptr, nullptr, left,
                                file.hits.empty() ? String() : WithNumbers(words_.furtherHits, left)});
        }
    return rows;
}

/// A row about the file itself.
std::string CsvReport::OtherRow(const FileReport& file, std::int64_t occurrences, const String& note) const
{
    return LineOf({file.path, StateWord(file, facts_, words_), 0, {}, {}, {}, nullptr, nullptr, occurrences, note});
}

String CsvReport::NoteOf(const Hit& hit) const
{
    String note;
    const auto add = [&](const String& text) { note += (note.empty() ? u"" : u", ") + text; };
    if (hit.place->headerFooter == HitPlace::HeaderFooter::Header)
        add(words_.header);
    if (hit.place->headerFooter == HitPlace::HeaderFooter::Footer)
        add(words_.footer);
    if (!hit.isCounted)
        add(words_.notCounted);
    if (facts_.replaces && !hit.becomes)
        add(words_.notChanged);
    return note;
}

std::string CsvReport::Foot(const RunEnd& end)
{
    if (end.way == RunEnd::Way::Complete)
        return {};
    Row row;
    row.state = words_.notProcessed;
    row.note = EarlyEndNote(end, words_);
    return LineOf(row);
}

}  // namespace

std::unique_ptr<RunReport> CreateTableReport(const RunFacts& facts, const ReportWords& words)
{
    return std::make_unique<CsvReport>(facts, words);
}

}  // namespace tessarine
