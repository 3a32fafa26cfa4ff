#include "office/windows/ExcelProvider.h"

#include "office/windows/AutomationObject.h"
#include "office/windows/CollectionObject.h"
#include "office/windows/DocumentValues.h"
#include "platform/Failure.h"
#include "platform/Locale.h"

namespace tessarine::windows
{

namespace
{

/// What Excel adds to the number of an error to make it the code in a value (2042 for #N/A).
constexpr std::int32_t errorBase = 2000;

excel::Value CellValueOf(const Variant& variant)
{
    switch (variant.Type()) {
        case VT_EMPTY:
        case VT_NULL:
            return std::monostate();
        case VT_BOOL:
            return variant.Raw().boolVal != VARIANT_FALSE;
        case VT_BSTR:
            return variant.ToText();
        case VT_DATE:
            return DisplayDateTime(CalendarOf(variant.Raw().date));
        case VT_ERROR:
            return excel::CellError{HRESULT_CODE(variant.Raw().scode) - errorBase};
        default:
            return variant.ToNumber();
    }
}

struct ToCellVariant {
    Variant operator()(std::monostate) const { return {}; }
    Variant operator()(bool value) const { return Variant(value); }
    Variant operator()(double value) const { return Variant(value); }
    Variant operator()(const String& value) const { return value.empty() ? Variant() : Variant(u'\'' + value); }
    Variant operator()(excel::CellError) const
    {
        throw Failure(FailureNumber::TypeMismatch, u"Type mismatch: an error can't be put into a cell");
    }
};

class RangeObject final : public AutomatedObject<excel::Range>
{
public:
    static constexpr const char16_t* Kind = u"Range";

    using AutomatedObject::AutomatedObject;

    std::int32_t Count() override { return object_.Integer(u"Count"); }
    std::shared_ptr<excel::Range> Columns() override { return Fetch<RangeObject>(object_, u"Columns"); }
    std::shared_ptr<excel::Range> Rows() override { return Fetch<RangeObject>(object_, u"Rows"); }
    std::shared_ptr<excel::Range> Item(std::int32_t row, std::int32_t column) override
    {
        return Fetch<RangeObject>(object_, u"Item", row, column);
    }
    excel::Value Value() override { return object_.Get(u"Value", CellValueOf); }
    void PutValue(const excel::Value& value) override { object_.Put(u"Value", std::visit(ToCellVariant(), value)); }
};

class WorksheetObject final : public AutomatedObject<excel::Worksheet>
{
public:
    static constexpr const char16_t* Kind = u"Worksheet";

    using AutomatedObject::AutomatedObject;

    std::shared_ptr<excel::Range> UsedRange() override { return Fetch<RangeObject>(object_, u"UsedRange"); }
    std::shared_ptr<excel::Range> Cells() override { return Fetch<RangeObject>(object_, u"Cells"); }
};

class SheetsObject final : public AutomatedObject<excel::Sheets>
{
public:
    static constexpr const char16_t* Kind = u"Sheets";

    using AutomatedObject::AutomatedObject;

    std::shared_ptr<excel::Worksheet> Item(std::int32_t index) override
    {
        return Fetch<WorksheetObject>(object_, u"Item", index);
    }
};

class WorkbookObject final : public AutomatedObject<excel::Workbook>
{
public:
    static constexpr const char16_t* Kind = u"Workbook";

    using AutomatedObject::AutomatedObject;

    std::shared_ptr<excel::Sheets> Sheets() override { return Fetch<SheetsObject>(object_, u"Sheets"); }
    std::shared_ptr<excel::Worksheet> ActiveSheet() override { return Fetch<WorksheetObject>(object_, u"ActiveSheet"); }
    void SaveAs(const String& Filename) override { object_.Call(u"SaveAs", Filename); }
    void Save() override { object_.Call(u"Save"); }
    void Close(std::int32_t SaveChanges) override { object_.Call(u"Close", SaveChanges); }
};

class WorkbooksObject final : public AutomatedObject<excel::Workbooks>
{
public:
    static constexpr const char16_t* Kind = u"Workbooks";

    using AutomatedObject::AutomatedObject;

    std::shared_ptr<excel::Workbook> Open(const String& Filename) override
    {
        return Fetch<WorkbookObject>(object_, u"Open", Filename);
    }
    std::shared_ptr<excel::Workbook> Add() override { return Fetch<WorkbookObject>(object_, u"Add"); }
};

class ApplicationObject final : public AutomatedObject<excel::Application>
{
public:
    static constexpr const char16_t* Kind = u"Application";

    using AutomatedObject::AutomatedObject;

    std::shared_ptr<excel::Workbooks> Workbooks() override { return Fetch<WorkbooksObject>(object_, u"Workbooks"); }
    void PutDisplayAlerts(bool value) override { object_.Put(u"DisplayAlerts", Variant(value)); }
    void Quit() override { object_.Call(u"Quit"); }
};

class ProviderObject final : public excel::Provider
{
public:
    std::shared_ptr<excel::Application> CreateApplication() override
    {
        return Wrap<ApplicationObject>(
            AutomationObject::Create(session_, L"Excel.Application", ApplicationObject::Kind));
    }

private:
    const std::shared_ptr<Session> session_ = std::make_shared<Session>();
};

}  // namespace

std::shared_ptr<excel::Provider> CreateExcelProvider()
{
    return std::make_shared<ProviderObject>();
}

}  // namespace tessarine::windows
