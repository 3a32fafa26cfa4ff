#include "support/FakeExcel.h"

#include <algorithm>
#include <set>

#include "platform/Failure.h"

namespace tessarine
{

struct FakeExcel::State {
    FakeScript script;
    std::map<String, std::shared_ptr<FakeSheet>> files;
    std::set<std::string> nulls;
    int running = 0;
    int open = 0;
    int held = 0;
};

namespace
{

using StateOf = std::shared_ptr<FakeExcel::State>;

/// A member of each object that counts as held while somebody refers to it.
class Held
{
public:
    explicit Held(StateOf state) : state_(std::move(state)) { ++state_->held; }
    ~Held() { --state_->held; }
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;

private:
    StateOf state_;
};

/// The object that a member hands out, made from the state and the arguments; null when that is what it is told to
/// give.
template <class Object, class... Arguments>
std::shared_ptr<Object> Give(const StateOf& state, const std::string& member, Arguments... arguments)
{
    return state->nulls.contains(member) ? nullptr : std::make_shared<Object>(state, std::move(arguments)...);
}

struct Shown {
    std::string operator()(std::monostate) const { return "(empty)"; }
    std::string operator()(bool value) const { return value ? "true" : "false"; }
    std::string operator()(double value) const { return std::to_string(value); }
    std::string operator()(const String& value) const { return ToUtf8(value); }
    std::string operator()(excel::CellError value) const { return "error " + std::to_string(value.number); }
};

class FakeRange : public excel::Range
{
public:
    enum class Kind { Cells, UsedRange, Columns, Rows };

    FakeRange(StateOf state, std::shared_ptr<FakeSheet> sheet, Kind kind, std::int32_t row = 1, std::int32_t column = 1)
        : state_(std::move(state)), sheet_(std::move(sheet)), kind_(kind), row_(row), column_(column)
    {
    }

    std::int32_t Count() override
    {
        const bool ofColumns = kind_ == Kind::Columns;
        state_->script.Read(ofColumns ? "Columns.Count" : "Rows.Count");
        std::int32_t count = 1;
        for (const auto& [place, value] : sheet_->cells)
            count = std::max(count, ofColumns ? place.second : place.first);
        const std::int32_t answer = ofColumns ? sheet_->columns : sheet_->rows;
        return answer != 0 ? answer : count;
    }
    std::shared_ptr<Range> Columns() override { return Part("Range.Columns", Kind::Columns); }
    std::shared_ptr<Range> Rows() override { return Part("Range.Rows", Kind::Rows); }

    std::shared_ptr<Range> Item(std::int32_t row, std::int32_t column) override
    {
        state_->script.Read("Range.Item");
        return Give<FakeRange>(state_, "Range.Item", sheet_, Kind::Cells, row, column);
    }

    excel::Value Value() override
    {
        state_->script.Read("Range.Value");
        state_->script.Read("Range.Value " + Place());
        return sheet_->At(row_, column_);
    }

    void PutValue(const excel::Value& value) override
    {
        state_->script.Act("Range.Value =", FromUtf8(Place() + " " + std::visit(Shown(), value)));
        sheet_->cells[{row_, column_}] = value;
    }

private:
    std::string Place() const { return std::to_string(row_) + "," + std::to_string(column_); }

    std::shared_ptr<Range> Part(const std::string& member, Kind kind)
    {
        state_->script.Read(member);
        return Give<FakeRange>(state_, member, sheet_, kind);
    }

    StateOf state_;
    std::shared_ptr<FakeSheet> sheet_;
    Kind kind_;
    std::int32_t row_;
    std::int32_t column_;
};

class FakeWorksheet : public excel::Worksheet
{
public:
    FakeWorksheet(StateOf state, std::shared_ptr<FakeSheet> sheet) : state_(std::move(state)), sheet_(std::move(sheet))
    {
    }

    std::shared_ptr<excel::Range> UsedRange() override
    {
        return Part("Worksheet.UsedRange", FakeRange::Kind::UsedRange);
    }
    std::shared_ptr<excel::Range> Cells() override { return Part("Worksheet.Cells", FakeRange::Kind::Cells); }

private:
    std::shared_ptr<excel::Range> Part(const std::string& member, FakeRange::Kind kind)
    {
        state_->script.Read(member);
        return Give<FakeRange>(state_, member, sheet_, kind);
    }

    StateOf state_;
    std::shared_ptr<FakeSheet> sheet_;
    const Held held_{state_};
};

class FakeSheets : public excel::Sheets
{
public:
    FakeSheets(StateOf state, std::shared_ptr<FakeSheet> sheet) : state_(std::move(state)), sheet_(std::move(sheet)) {}

    std::shared_ptr<excel::Worksheet> Item(std::int32_t index) override
    {
        state_->script.Act("Sheets.Item", FromUtf8(std::to_string(index)));
        return Give<FakeWorksheet>(state_, "Sheets.Item", sheet_);
    }

private:
    StateOf state_;
    std::shared_ptr<FakeSheet> sheet_;
};

class FakeWorkbook : public excel::Workbook
{
public:
    FakeWorkbook(StateOf state, std::shared_ptr<FakeSheet> sheet, String path)
        : state_(std::move(state)), sheet_(std::move(sheet)), path_(std::move(path))
    {
        ++state_->open;
    }

    std::shared_ptr<excel::Sheets> Sheets() override
    {
        Check("Workbook.Sheets");
        return Give<FakeSheets>(state_, "Workbook.Sheets", sheet_);
    }
    std::shared_ptr<excel::Worksheet> ActiveSheet() override
    {
        Check("Workbook.ActiveSheet");
        return Give<FakeWorksheet>(state_, "Workbook.ActiveSheet", sheet_);
    }
    void SaveAs(const String& Filename) override
    {
        state_->script.Act("Workbook.SaveAs", Filename);
        CheckOpen();
        path_ = Filename;
        state_->files[path_] = std::make_shared<FakeSheet>(*sheet_);
    }
    void Save() override
    {
        state_->script.Act("Workbook.Save", path_);
        CheckOpen();
    }
    void Close(std::int32_t SaveChanges) override
    {
        state_->script.Act("Workbook.Close", FromUtf8(std::to_string(SaveChanges)));
        CheckOpen();
        isOpen_ = false;
        --state_->open;
    }

private:
    void Check(const std::string& member)
    {
        state_->script.Read(member);
        CheckOpen();
    }
    void CheckOpen() const
    {
        if (!isOpen_)
            throw Failure(excel::Disconnected, u"The object invoked has disconnected from its clients");
    }

    StateOf state_;
    std::shared_ptr<FakeSheet> sheet_;
    String path_;
    bool isOpen_ = true;
    const Held held_{state_};
};

class FakeWorkbooks : public excel::Workbooks
{
public:
    explicit FakeWorkbooks(StateOf state) : state_(std::move(state)) {}

    std::shared_ptr<excel::Workbook> Open(const String& Filename) override
    {
        state_->script.Act("Workbooks.Open", Filename);
        const auto file = state_->files.find(Filename);
        if (file == state_->files.end())
            throw Failure(FailureNumber::ApplicationDefined, u"can't be read");
        const auto copy = std::make_shared<FakeSheet>(*file->second);
        return Give<FakeWorkbook>(state_, "Workbooks.Open", copy, Filename);
    }
    std::shared_ptr<excel::Workbook> Add() override
    {
        state_->script.Act("Workbooks.Add");
        const auto sheet = std::make_shared<FakeSheet>();
        return Give<FakeWorkbook>(state_, "Workbooks.Add", sheet, String());
    }

private:
    StateOf state_;
};

class FakeExcelApplication : public excel::Application
{
public:
    explicit FakeExcelApplication(StateOf state) : state_(std::move(state)) { ++state_->running; }

    std::shared_ptr<excel::Workbooks> Workbooks() override
    {
        state_->script.Read("Application.Workbooks");
        return Give<FakeWorkbooks>(state_, "Application.Workbooks");
    }
    void PutDisplayAlerts(bool value) override
    {
        state_->script.Act("Application.DisplayAlerts =", value ? u"true" : u"false");
    }
    void Quit() override
    {
        state_->script.Act("Application.Quit");
        --state_->running;
    }

private:
    StateOf state_;
    const Held held_{state_};
};

class FakeExcelProvider : public excel::Provider
{
public:
    explicit FakeExcelProvider(StateOf state) : state_(std::move(state)) {}

    std::shared_ptr<excel::Application> CreateApplication() override
    {
        state_->script.Act("CreateApplication");
        return Give<FakeExcelApplication>(state_, "CreateApplication");
    }

private:
    StateOf state_;
};

}  // namespace

excel::Value FakeSheet::At(std::int32_t row, std::int32_t column) const
{
    const auto found = cells.find({row, column});
    return found == cells.end() ? excel::Value() : found->second;
}

FakeExcel::FakeExcel()
    : state_(std::make_shared<State>()), previous_(excel::SetProvider(std::make_shared<FakeExcelProvider>(state_)))
{
    state_->script = script;
}

FakeExcel::~FakeExcel()
{
    excel::SetProvider(previous_);
}

void FakeExcel::Put(const String& path, const FakeSheet& sheet)
{
    state_->files[path] = std::make_shared<FakeSheet>(sheet);
}

FakeSheet FakeExcel::Saved(const String& path) const
{
    const auto found = state_->files.find(path);
    return found == state_->files.end() ? FakeSheet() : *found->second;
}

void FakeExcel::GiveNull(const std::string& member)
{
    state_->nulls.insert(member);
}

int FakeExcel::Running() const
{
    return state_->running;
}

int FakeExcel::Open() const
{
    return state_->open;
}

int FakeExcel::Held() const
{
    return state_->held;
}

}  // namespace tessarine
