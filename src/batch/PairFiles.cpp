#include "batch/PairFiles.h"

#include <filesystem>
#include <span>

#include "batch/LineText.h"
#include "batch/Locations.h"
#include "batch/PairFormats.h"
#include "batch/Refusal.h"
#include "batch/StandardInput.h"
#include "files/Files.h"
#include "files/RandomAccessFile.h"
#include "model/Excel.h"
#include "model/ListColumns.h"
#include "model/Project.h"
#include "report/WithoutPath.h"
#include "run/JobInputs.h"
#include "saving/ReplacementFile.h"

namespace tessarine::batch
{

namespace
{

constexpr StringView workbooks = u".XLSX;.XLS";
constexpr std::size_t mostBytes = 64u << 20;

std::string BytesOf(const String& path)
{
    if (path == u"-")
        return ReadStandardInput(mostBytes);
    const RandomAccessFile file(path);
    // Asked before memory of that size is taken.
    if (file.Size() > mostBytes)
        Refuse("it is larger than 64 MiB");
    std::string bytes(file.Size(), '\0');
    file.Read(0, std::as_writable_bytes(std::span(bytes)));
    return bytes;
}

std::vector<FilePair> PairsOfInput(StringView text)
{
    const std::size_t first = text.find_first_not_of(u" \t\r\n");
    if (first != StringView::npos && (text[first] == u'[' || text[first] == u'{'))
        return ReadJsonPairs(text);
    const bool hasTab = text.substr(0, text.find_first_of(u"\r\n")).find(u'\t') != StringView::npos;
    return ReadSeparatedPairs(text, hasTab ? u'\t' : u',');
}

/// The rows of a workbook's first sheet, with the texts that a list would have.
std::vector<FilePair> PairsOfWorkbook(const String& path)
{
    const auto application = NotNull(excel::CreateApplication());
    const auto workbook = NotNull(NotNull(application->Workbooks())->Open(path));
    const auto used = NotNull(NotNull(NotNull(workbook->Sheets())->Item(1))->UsedRange());
    const std::int32_t rowCount = NotNull(used->Rows())->Count();
    const std::int32_t columns = NotNull(used->Columns())->Count();
    // Asked before a row is put together, of which each cell may name the same long text.
    if (columns > mostPairColumns)
        Refuse("it has " + Counted(columns, "column") + ", and a table of pairs has up to " +
               std::to_string(mostPairColumns) + (columns == ListColumnCount ? " (--list takes 18)" : ""));
    PairTable table;
    for (std::int32_t number = 1; number <= rowCount; ++number) {
        PairRow row{"row " + std::to_string(number), {}};
        bool isEmpty = true;
        for (std::int32_t column = 1; column <= columns; ++column) {
            const excel::Value value = NotNull(used->Item(number, column))->Value();
            if (std::holds_alternative<excel::CellError>(value))
                Refuse(row.place + " holds an error (such as #N/A) in place of a text");
            row.fields.push_back(excel::TextOf(value));
            isEmpty = isEmpty && row.fields.back().empty();
        }
        if (!isEmpty)
            table.Add(row);
    }
    workbook->Close(excel::xlDoNotSaveChanges);
    application->Quit();
    return table.Take();
}

std::vector<FilePair> PairsOf(const String& path)
{
    if (HasExtension(path, workbooks))
        return PairsOfWorkbook(path);
    const String text = DecodePairFile(BytesOf(path));
    if (path == u"-")
        return PairsOfInput(text);
    if (HasExtension(path, u".JSON"))
        return ReadJsonPairs(text);
    return ReadSeparatedPairs(text, HasExtension(path, u".CSV") ? u',' : u'\t');
}

std::shared_ptr<FindAndReplaceItems> ListOf(std::vector<FilePair> pairs, Command command)
{
    auto list = std::make_shared<FindAndReplaceItems>();
    list->TakesXlsx = true;
    const auto owner = std::make_shared<Project>();
    for (FilePair& pair : pairs) {
        if (!pair.with && command != Command::Find && !pair.find.empty())
            Refuse(pair.place + ": " + Quoted(pair.find) + " has no text to put in its place");
        if (!pair.hasPlaces)
            SwitchOn(pair.setting, defaultPlaces);
        list->Add(pair.find, pair.with.value_or(String()), std::make_shared<OptionSetting>(pair.setting), owner);
    }
    return list;
}

}  // namespace

bool IsPairFileName(StringView path)
{
    return HasExtension(path, u".CSV;.TSV;.TAB;.JSON") || HasExtension(path, workbooks);
}

bool IsPlainPairsName(StringView path)
{
    return HasExtension(path, u".JSON;.TSV");
}

std::shared_ptr<FindAndReplaceItems> LoadPairs(const String& path, Command command)
{
    const String name = path == u"-" ? String(u"standard input") : InQuotes(path);
    // A pipe would be waited for, maybe without end.
    if (path != u"-" && !FileExists(path))
        Refuse(u"there is no file of pairs " + name + u" (- reads standard input)");
    try {
        return ListOf(PairsOf(path), command);
    } catch (const Failure& failure) {
        Refuse(u"can't take the pairs of " + name + u": " + WithoutPath(failure.Reason(), path));
    }
}

void SavePairs(const String& path, const FindAndReplaceItems& list)
{
    std::vector<FilePair> pairs;
    for (const auto& item : list.NewEnum())
        pairs.push_back({item->FindWhat, item->ReplaceWith, *item->OptionSetting, true, {}});
    const std::string bytes = HasExtension(path, u".JSON") ? WriteJsonPairs(pairs) : WriteTabSeparatedPairs(pairs);
    ReplacementFile file(path, ReplacementFile::Missing::IsMade, {.inPlaceWhereFolderIsClosed = true});
    file.Write(std::as_bytes(std::span(bytes)));
    file.Commit();
}

}  // namespace tessarine::batch
