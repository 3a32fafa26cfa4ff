#include "office/sheets/ExcelProvider.h"

#include "files/Files.h"
#include "office/sheets/BiffWriter.h"
#include "office/sheets/Refusal.h"
#include "office/sheets/SheetFile.h"
#include "platform/CheckedInteger.h"

namespace tessarine::sheets
{

namespace
{

struct RunningApplication {
    bool isRunning = true;
    bool displaysAlerts = true;
};

void MustRun(bool is)
{
    if (!is)
        throw Failure(excel::Disconnected, u"The workbook or its application has been closed");
}

/// A workbook's sheet and where it comes from. Each member raises `excel::Disconnected` when it is closed.
class OpenWorkbook
{
public:
    OpenWorkbook(std::shared_ptr<RunningApplication> application, sheets::Sheet sheet, String path)
        : application_(std::move(application)), sheet_(std::move(sheet)), path_(std::move(path))
    {
    }

    const Sheet& Contents() const
    {
        MustRun(isOpen_ && application_->isRunning);
        return sheet_;
    }

    void Put(std::uint32_t row, std::uint32_t column, const Cell& cell)
    {
        // For its failure when the workbook is closed; here and below.
        Contents();
        sheet_.Put(row, column, cell);
        isChanged_ = true;
    }

    void SaveAs(const String& path)
    {
        Contents();
        // Excel would ask here whether to replace the file.
        if (application_->displaysAlerts && FileExists(path))
            throw Failure(FailureNumber::ApplicationDefined, path + u": There is a file of this name already");
        SaveSheet(path, sheet_);
        path_ = path;
        isChanged_ = false;
    }

    void Save()
    {
        Contents();
        if (!isChanged_)
            return;
        if (path_.empty())
            throw Refusal("The workbook has no name yet");
        SaveSheet(path_, sheet_);
        isChanged_ = false;
    }

    void Close(std::int32_t saveChanges)
    {
        Contents();
        if (saveChanges == excel::xlSaveChanges)
            Save();
        isOpen_ = false;
        // Objects that somebody still holds keep the workbook, and need not keep its cells.
        sheet_ = Sheet();
    }

private:
    std::shared_ptr<RunningApplication> application_;
    Sheet sheet_;
    String path_;  // empty for a new one
    bool isOpen_ = true;
    bool isChanged_ = false;
};

excel::Value ValueOf(const Cell& cell)
{
    struct ToValue {
        excel::Value operator()(std::monostate) const { return {}; }
        excel::Value operator()(bool value) const { return value; }
        excel::Value operator()(double value) const { return value; }
        excel::Value operator()(StringView value) const { return String(value); }
        excel::Value operator()(CellError value) const { return excel::CellError{value.code}; }
    };
    return std::visit(ToValue(), cell);
}

/// Borrows the value's text.
Cell CellOf(const excel::Value& value)
{
    struct ToCell {
        Cell operator()(std::monostate) const { return {}; }
        Cell operator()(bool boolean) const { return boolean; }
        Cell operator()(double number) const { return number; }
        // Excel, too, empties a cell that is given an empty text.
        Cell operator()(const String& text) const { return text.empty() ? Cell() : Cell(StringView(text)); }
        Cell operator()(excel::CellError error) const { return CellError{static_cast<std::uint8_t>(error.number)}; }
    };
    return std::visit(ToCell(), value);
}

class RangeObject final : public excel::Range
{
public:
    enum class Parts { Cells, Columns, Rows };

    RangeObject(std::shared_ptr<OpenWorkbook> workbook, Sheet::Extent extent, Parts parts = Parts::Cells)
        : workbook_(std::move(workbook)), extent_(extent), parts_(parts)
    {
    }

    std::int32_t Count() override
    {
        const std::int64_t rows = extent_.rows, columns = extent_.columns;
        const std::int64_t count = parts_ == Parts::Rows ? rows : parts_ == Parts::Columns ? columns : rows * columns;
        return Checked<std::int32_t>(count);
    }

    std::shared_ptr<Range> Columns() override
    {
        return std::make_shared<RangeObject>(workbook_, extent_, Parts::Columns);
    }

    std::shared_ptr<Range> Rows() override { return std::make_shared<RangeObject>(workbook_, extent_, Parts::Rows); }

    std::shared_ptr<Range> Item(std::int32_t row, std::int32_t column) override
    {
        // As in Excel, the cell may lie outside of the range that it is counted from.
        const Sheet::Extent cell{Place(extent_.firstRow, row, Sheet::maxRows), 1,
                                 Place(extent_.firstColumn, column, Sheet::maxColumns), 1};
        return std::make_shared<RangeObject>(workbook_, cell);
    }

    excel::Value Value() override { return ValueOf(workbook_->Contents().At(extent_.firstRow, extent_.firstColumn)); }

    void PutValue(const excel::Value& value) override
    {
        // At once, and not only when the sheet is saved: the caller then knows which cell it was.
        if (const String* text = std::get_if<String>(&value); text && text->size() > maxCellText)
            throw Refusal("A cell holds no more than 32767 characters");
        workbook_->Put(extent_.firstRow, extent_.firstColumn, CellOf(value));
    }

private:
    static std::uint32_t Place(std::uint32_t first, std::int32_t position, std::uint32_t end)
    {
        // In 64 bits, as any position may be asked for.
        const std::int64_t place = std::int64_t{first} + position - 1;
        if (place < 0 || place >= end)
            throw Refusal("There is no such cell in a sheet");
        return static_cast<std::uint32_t>(place);
    }

    std::shared_ptr<OpenWorkbook> workbook_;
    Sheet::Extent extent_;
    Parts parts_;
};

class WorksheetObject final : public excel::Worksheet
{
public:
    explicit WorksheetObject(std::shared_ptr<OpenWorkbook> workbook) : workbook_(std::move(workbook)) {}

    std::shared_ptr<excel::Range> UsedRange() override
    {
        return std::make_shared<RangeObject>(workbook_, workbook_->Contents().UsedRange());
    }

    std::shared_ptr<excel::Range> Cells() override
    {
        return std::make_shared<RangeObject>(workbook_, Sheet::Extent{0, Sheet::maxRows, 0, Sheet::maxColumns});
    }

private:
    std::shared_ptr<OpenWorkbook> workbook_;
};

class SheetsObject final : public excel::Sheets
{
public:
    explicit SheetsObject(std::shared_ptr<OpenWorkbook> workbook) : workbook_(std::move(workbook)) {}

    std::shared_ptr<excel::Worksheet> Item(std::int32_t index) override
    {
        if (index != 1)
            throw Refusal("The workbook has one sheet only");
        return std::make_shared<WorksheetObject>(workbook_);
    }

private:
    std::shared_ptr<OpenWorkbook> workbook_;
};

class WorkbookObject final : public excel::Workbook
{
public:
    explicit WorkbookObject(std::shared_ptr<OpenWorkbook> workbook) : workbook_(std::move(workbook)) {}

    std::shared_ptr<excel::Sheets> Sheets() override { return std::make_shared<SheetsObject>(workbook_); }
    std::shared_ptr<excel::Worksheet> ActiveSheet() override { return std::make_shared<WorksheetObject>(workbook_); }
    void SaveAs(const String& Filename) override { workbook_->SaveAs(Filename); }
    void Save() override { workbook_->Save(); }
    void Close(std::int32_t SaveChanges) override { workbook_->Close(SaveChanges); }

private:
    std::shared_ptr<OpenWorkbook> workbook_;
};

class WorkbooksObject final : public excel::Workbooks
{
public:
    explicit WorkbooksObject(std::shared_ptr<RunningApplication> application) : application_(std::move(application)) {}

    std::shared_ptr<excel::Workbook> Open(const String& Filename) override
    {
        MustRun(application_->isRunning);
        return Make(OpenSheet(Filename), Filename);
    }

    std::shared_ptr<excel::Workbook> Add() override
    {
        MustRun(application_->isRunning);
        return Make(Sheet(), {});
    }

private:
    std::shared_ptr<excel::Workbook> Make(Sheet sheet, String path)
    {
        return std::make_shared<WorkbookObject>(
            std::make_shared<OpenWorkbook>(application_, std::move(sheet), std::move(path)));
    }

    std::shared_ptr<RunningApplication> application_;
};

class ApplicationObject final : public excel::Application
{
public:
    std::shared_ptr<excel::Workbooks> Workbooks() override { return std::make_shared<WorkbooksObject>(application_); }

    void PutDisplayAlerts(bool value) override
    {
        MustRun(application_->isRunning);
        application_->displaysAlerts = value;
    }

    void Quit() override
    {
        MustRun(application_->isRunning);
        // Its workbooks are closed by this; nothing is saved.
        application_->isRunning = false;
    }

private:
    std::shared_ptr<RunningApplication> application_ = std::make_shared<RunningApplication>();
};

class ProviderObject final : public excel::Provider
{
public:
    std::shared_ptr<excel::Application> CreateApplication() override { return std::make_shared<ApplicationObject>(); }
};

}  // namespace

std::shared_ptr<excel::Provider> CreateProvider()
{
    return std::make_shared<ProviderObject>();
}

}  // namespace tessarine::sheets
