#include "standin/ServedExcel.h"

#include <utility>

#include "platform/Failure.h"
#include "standin/ServedMembers.h"

namespace tessarine::standin
{

namespace
{

using Watch = std::shared_ptr<CallWatch>;

struct ToCellVariant {
    Variant operator()(std::monostate) const { return {}; }
    Variant operator()(bool value) const { return Variant(value); }
    Variant operator()(double value) const { return Variant(value); }
    Variant operator()(const String& value) const { return Variant(value); }
    Variant operator()(excel::CellError error) const
    {
        Variant value;
        VARIANT* const raw = value.Receive();
        raw->vt = VT_ERROR;
        raw->scode = MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, 2000 + error.number);
        return value;
    }
};

excel::Value CellValueOf(const Variant& variant)
{
    switch (variant.Type()) {
        case VT_EMPTY:
            return std::monostate();
        case VT_BOOL:
            return variant.Raw().boolVal != VARIANT_FALSE;
        case VT_BSTR:
            break;
        default:
            return variant.ToNumber();
    }
    const String text = variant.ToText();
    if (!text.starts_with(u'\''))
        throw Failure(FailureNumber::ApplicationDefined, u"A text without an apostrophe: " + text);
    return text.substr(1);
}

template <class Surface, class Part, class Serve>
Member ObjectMember(const Watch& watch, String name, const std::shared_ptr<Surface>& object,
                    std::shared_ptr<Part> (Surface::*part)(), Serve serve)
{
    return {std::move(name), [=](const Arguments&) { return ObjectValue(serve(watch, ((*object).*part)())); }};
}

Reference<IDispatch> ServeRange(const Watch& watch, const std::shared_ptr<excel::Range>& range)
{
    return Serve(watch, "Range",
                 {IntegerMember(u"Count", range, &excel::Range::Count),
                  ObjectMember(watch, u"Columns", range, &excel::Range::Columns, ServeRange),
                  ObjectMember(watch, u"Rows", range, &excel::Range::Rows, ServeRange),
                  {u"Item",
                   [=](const Arguments& a) {
                       return ObjectValue(ServeRange(watch, range->Item(a[0].ToInteger(), a[1].ToInteger())));
                   },
                   {},
                   2},
                  {u"Value", [=](const Arguments&) { return std::visit(ToCellVariant(), range->Value()); },
                   [=](const Variant& value) { range->PutValue(CellValueOf(value)); }}});
}

Reference<IDispatch> ServeWorksheet(const Watch& watch, const std::shared_ptr<excel::Worksheet>& sheet)
{
    return Serve(watch, "Worksheet",
                 {ObjectMember(watch, u"UsedRange", sheet, &excel::Worksheet::UsedRange, ServeRange),
                  ObjectMember(watch, u"Cells", sheet, &excel::Worksheet::Cells, ServeRange)});
}

Reference<IDispatch> ServeSheets(const Watch& watch, const std::shared_ptr<excel::Sheets>& sheets)
{
    return Serve(
        watch, "Sheets",
        {{u"Item",
          [=](const Arguments& a) { return ObjectValue(ServeWorksheet(watch, sheets->Item(a[0].ToInteger()))); },
          {},
          1}});
}

Reference<IDispatch> ServeWorkbook(const Watch& watch, const std::shared_ptr<excel::Workbook>& book)
{
    return Serve(watch, "Workbook",
                 {ObjectMember(watch, u"Sheets", book, &excel::Workbook::Sheets, ServeSheets),
                  ObjectMember(watch, u"ActiveSheet", book, &excel::Workbook::ActiveSheet, ServeWorksheet),
                  {u"SaveAs",
                   [=](const Arguments& a) {
                       book->SaveAs(a[0].ToText());
                       return Variant();
                   },
                   {},
                   1},
                  Method(u"Save", [=] { book->Save(); }),
                  {u"Close",
                   [=](const Arguments& a) {
                       book->Close(a[0].ToInteger());
                       return Variant();
                   },
                   {},
                   1}});
}

Reference<IDispatch> ServeWorkbooks(const Watch& watch, const std::shared_ptr<excel::Workbooks>& books)
{
    return Serve(watch, "Workbooks",
                 {{u"Open",
                   [=](const Arguments& a) { return ObjectValue(ServeWorkbook(watch, books->Open(a[0].ToText()))); },
                   {},
                   1},
                  {u"Add", [=](const Arguments&) { return ObjectValue(ServeWorkbook(watch, books->Add())); }}});
}

}  // namespace

Reference<IDispatch> ServeExcel(std::shared_ptr<CallWatch> watch, std::shared_ptr<excel::Application> application,
                                std::function<void()> quit)
{
    return Serve(watch, "Application",
                 {ObjectMember(watch, u"Workbooks", application, &excel::Application::Workbooks, ServeWorkbooks),
                  {u"DisplayAlerts",
                   {},
                   [=](const Variant& value) { application->PutDisplayAlerts(value.Raw().boolVal != VARIANT_FALSE); }},
                  Method(u"Quit", [=] {
                      application->Quit();
                      quit();
                  })});
}

}  // namespace tessarine::standin
