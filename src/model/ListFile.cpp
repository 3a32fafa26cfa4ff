#include "model/FindAndReplaceItems.h"

#include <span>
#include <string>

#include "files/Files.h"
#include "log/ErrorLog.h"
#include "log/Treatments.h"
#include "model/Excel.h"
#include "model/KeepFailure.h"
#include "model/ListColumns.h"
#include "model/LogPlaces.h"
#include "model/Project.h"
#include "platform/CaseFolding.h"
#include "platform/CheckedInteger.h"
#include "platform/FolderOf.h"
#include "platform/LineEnd.h"
#include "platform/Messages.h"
#include "saving/ReplacementFile.h"

namespace tessarine
{

namespace
{

/// What follows the last dot of the whole path, in capital letters; nothing without a dot.
String UpperExtensionOf(StringView path)
{
    const std::size_t dot = path.rfind(u'.');
    return dot == StringView::npos ? String() : ToUpper(path.substr(dot + 1));
}

/// Equal to boolean true: the boolean itself, and the number -1, which is its value as a number. A text never is, nor
/// is the number 1: lists in which somebody typed 1 have always been read as switched off.
bool EqualsTrue(const excel::Value& value)
{
    if (const bool* boolean = std::get_if<bool>(&value))
        return *boolean;
    const double* number = std::get_if<double>(&value);
    return number && *number == -1;
}

excel::Value ValueAt(excel::Range& cells, std::int32_t row, std::int32_t column)
{
    return NotNull(cells.Item(row, column))->Value();
}

void PutAt(excel::Range& cells, std::int32_t row, std::int32_t column, const excel::Value& value)
{
    NotNull(cells.Item(row, column))->PutValue(value);
}

}  // namespace

bool FindAndReplaceItems::ImportList(const String& vFilepath)
{
    const LoggedFile logged(vFilepath);
    bool isAccepted = false;
    LogAndReturn({u"ImportList", FindAndReplaceItemsPlace}, [&] {
        ImportRefusal.reset();
        KeepFailure(FileFailure, [&] { Import(vFilepath, isAccepted); });
    });
    // A file that was refused and then failed to close is told as failed: callers tell one of the two.
    if (FileFailure)
        ImportRefusal.reset();
    return isAccepted;
}

void FindAndReplaceItems::Import(const String& path, bool& isAccepted)
{
    using Reason = ListRefusal::Reason;
    if (!FileExists(path)) {
        ImportRefusal = ListRefusal{.reason = Reason::FileMissing};
        ShowMessage(u"File is Not Present In Directory!", MessageIcon::Information);
        return;
    }
    const String extension = UpperExtensionOf(path);
    if (extension != u"XLS" && extension != u"TAB" && extension != u"CSV" && !(TakesXlsx && extension == u"XLSX")) {
        ImportRefusal = ListRefusal{.reason = Reason::OtherExtension};
        return;
    }

    application_ = excel::CreateApplication();
    workbook_ = NotNull(NotNull(application_)->Workbooks())->Open(path);
    worksheet_ = NotNull(NotNull(workbook_)->Sheets())->Item(1);
    const auto usedRange = NotNull(NotNull(worksheet_)->UsedRange());
    const std::int32_t columns = NotNull(usedRange->Columns())->Count();
    if (columns != ListColumnCount) {
        // The workbook stays open and the application running, until the next import or export lets go of them: a
        // refusal by the headers closes both, this one never has.
        ImportRefusal = ListRefusal{.reason = Reason::ColumnCount, .columns = columns};
        return;
    }

    // Before the header is read, so that a bad one leaves an empty list and not the pairs of another file.
    if (!KeepExistingItems)
        items_ = {};
    // More than 32767 rows are an Overflow. By then the list is empty, and nothing of the file is in it.
    const auto rows = Checked<std::int16_t>(NotNull(usedRange->Rows())->Count());
    const auto cells = NotNull(worksheet_->Cells());
    std::shared_ptr<Project> owner;
    for (std::int32_t row = 1; row <= rows; ++row) {
        if (row == 1) {
            isAccepted = AcceptsHeader(*cells);
            if (!isAccepted)
                break;
            continue;
        }
        // One project for all pairs of the import. A run that is handed the list puts its own in its place.
        if (!owner)
            owner = std::make_shared<Project>();
        AddRow(*cells, row, owner);
    }

    workbook_->Close(excel::xlDoNotSaveChanges);
    application_->Quit();
    workbook_.reset();
    worksheet_.reset();
    application_.reset();
}

bool FindAndReplaceItems::AcceptsHeader(excel::Range& cells)
{
    for (std::int32_t column = 1; column <= ListColumnCount; ++column) {
        const String header = excel::TextOf(ValueAt(cells, 1, column));
        // The first difference is the one reported. The loop goes on, so that a header that can't be read as a text is
        // a failure of the file wherever it stands.
        const bool differs = ToUpper(header) != ToUpper(ListHeaders[static_cast<std::size_t>(column) - 1]);
        if (differs && !ImportRefusal)
            ImportRefusal = ListRefusal{.reason = ListRefusal::Reason::Header, .column = column, .header = header};
    }
    return !ImportRefusal;
}

void FindAndReplaceItems::AddRow(excel::Range& cells, std::int32_t row, const std::shared_ptr<Project>& owner)
{
    const auto setting = std::make_shared<OptionSetting>();
    std::int32_t column = FirstSwitchColumn;
    for (const OptionKey& key : std::span(OptionKeys).first<ListSwitchCount>())
        *setting.*key.field = EqualsTrue(ValueAt(cells, row, column++));
    const String findWhat = excel::TextOf(ValueAt(cells, row, FindWhatColumn));
    const String replaceWith = excel::TextOf(ValueAt(cells, row, ReplaceWithColumn));
    Add(findWhat, replaceWith, setting, owner);
}

void FindAndReplaceItems::ExportsList(const String& vFilepath)
{
    const LoggedFile logged(vFilepath);
    LogAndReturn({u"ExportsList", FindAndReplaceItemsPlace}, [&] {
        const bool isText = KeepFailure(FileFailure, [&] { return Export(vFilepath); });
        if (!isText)
            return;
        // A text has no workbook, so this fails after a complete file; the log line is part of what an export leaves.
        NotNull(workbook_)->Save();
        workbook_->Close(excel::xlDoNotSaveChanges);
        NotNull(application_)->Quit();
    });
}

/// Whether the list was written as text.
bool FindAndReplaceItems::Export(const String& path)
{
    const String folder(FolderOf(path));
    if (!FolderExists(folder)) {
        ShowMessage(folder + u" Directory is not present.", MessageIcon::Information);
        return false;
    }
    const String extension = UpperExtensionOf(path);
    if (extension == u"XLS" || extension == u"CSV" || (TakesXlsx && extension == u"XLSX")) {
        ExportWorkbook(path);
        return false;
    }
    if (extension == u"TAB") {
        ExportText(path);
        return true;
    }
    ShowMessage(u"Only .csv ,.xls ,.tab extension file is allowed for PowerPoint Tessarine project.",
                MessageIcon::Information);
    return false;
}

void FindAndReplaceItems::ExportWorkbook(const String& path)
{
    application_ = excel::CreateApplication();
    // Without questions: the application would ask before it replaces an older file, with nobody there to answer.
    NotNull(application_)->PutDisplayAlerts(false);
    workbook_ = NotNull(application_->Workbooks())->Add();
    worksheet_ = NotNull(workbook_)->ActiveSheet();

    const auto cells = NotNull(NotNull(worksheet_)->Cells());
    std::int32_t column = 1;
    for (const char16_t* header : ListHeaders)
        PutAt(*cells, 1, column++, String(header));
    std::int32_t row = 2;
    for (const auto& item : items_.NewEnum()) {
        PutAt(*cells, row, FindWhatColumn, item->FindWhat);
        PutAt(*cells, row, ReplaceWithColumn, item->ReplaceWith);
        column = FirstSwitchColumn;
        for (const OptionKey& key : std::span(OptionKeys).first<ListSwitchCount>())
            PutAt(*cells, row, column++, *NotNull(item->OptionSetting).*key.field);
        ++row;
    }

    workbook_->SaveAs(path);
    workbook_->Close(excel::xlDoNotSaveChanges);
    application_->Quit();
    application_.reset();
}

void FindAndReplaceItems::ExportText(const String& path) const
{
    // An older file stays until the new one is complete.
    ReplacementFile file(path, ReplacementFile::Missing::IsMade, {.inPlaceWhereFolderIsClosed = true});
    const auto write = [&](const String& line) {
        const std::string bytes = ToUtf8(line);
        file.Write(std::as_bytes(std::span(bytes)));
    };
    String headers;
    for (const char16_t* header : ListHeaders)
        (headers += headers.empty() ? u"" : u"\t") += header;
    write(headers += LineEnd);
    for (const auto& item : items_.NewEnum()) {
        // No quoting, as the format has none: a tab or a line end in a text breaks the row (docs/lists.md).
        String line = item->FindWhat + u"\t" + item->ReplaceWith;
        for (const OptionKey& key : std::span(OptionKeys).first<ListSwitchCount>())
            line += *NotNull(item->OptionSetting).*key.field ? u"\tTrue" : u"\tFalse";
        write(line += LineEnd);
    }
    file.Commit();
}

}  // namespace tessarine
