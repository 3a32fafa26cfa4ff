#pragma once

#include <cstdint>
#include <memory>
#include <variant>

#include "platform/String.h"

/// The automation surface for list files: every object and member of Excel's object model that the system uses, under
/// its names there. Rows and columns count from 1.
///
/// - Each member either succeeds or raises a Failure with a number and a text: CannotCreateObject (no Excel),
///   Disconnected (the workbook or its application has been closed), ApplicationDefined for anything else, with a text
///   that tells the reason.
/// - References are shared. Each member that gives one may give null, whose use is the failure ObjectNotSet.

namespace tessarine::excel
{

/// Failure of a member whose workbook or application has been closed (0x80010108).
inline constexpr std::int32_t Disconnected = -2147417848;

/// An error as a cell's value, such as #N/A, by the number of its code (MS-XLS 2.5.10 BErr, 0x2A for #N/A).
struct CellError {
    std::int32_t number = 0;
    bool operator==(const CellError&) const = default;
};

/// A cell's value, of the type that the cell has: empty, boolean, number, text or error. Boolean true and the number 1
/// are different.
using Value = std::variant<std::monostate, bool, double, String, CellError>;

/// The value as text, as the platform converts it: "" for empty, "True" or "False", a number with 15 significant digits
/// at most under the system's locale. Raises TypeMismatch for an error.
String TextOf(const Value& value);

/// One cell, or any number of them.
class Range
{
public:
    virtual ~Range() = default;

    virtual std::int32_t Count() = 0;              ///< Of columns, of rows, or of cells, as the range was asked for.
    virtual std::shared_ptr<Range> Columns() = 0;  ///< One range element for each column, for Count.
    virtual std::shared_ptr<Range> Rows() = 0;     ///< One for each row, for Count.

    /// The cell at a place, counted from the range's first cell. Beyond the sheet it raises
    /// ApplicationDefined.
    virtual std::shared_ptr<Range> Item(std::int32_t row, std::int32_t column) = 0;

    virtual excel::Value Value() = 0;  ///< Of the range's first cell.

    /// Puts a value into the cell. A text stays the text that it is, whatever it looks like ("007", "=1", "TRUE").
    virtual void PutValue(const excel::Value& value) = 0;
};

/// A sheet with cells.
class Worksheet
{
public:
    virtual ~Worksheet() = default;

    /// The smallest rectangle around all cells with a value; one cell when there are none. Need not begin at the first
    /// row and column.
    virtual std::shared_ptr<Range> UsedRange() = 0;

    virtual std::shared_ptr<Range> Cells() = 0;  ///< All cells of the sheet, so that Item(1, 1) is its first.
};

/// The sheets of a workbook, in the order of their tabs.
class Sheets
{
public:
    virtual ~Sheets() = default;
    virtual std::shared_ptr<Worksheet> Item(std::int32_t index) = 0;  ///< `index` from 1.
};

/// What becomes of changes when a workbook is closed.
enum XlSaveAction : std::int32_t { xlSaveChanges = 1, xlDoNotSaveChanges = 2 };

/// An open workbook, also one that a file of separated text was opened as.
class Workbook
{
public:
    virtual ~Workbook() = default;
    virtual std::shared_ptr<excel::Sheets> Sheets() = 0;
    virtual std::shared_ptr<Worksheet> ActiveSheet() = 0;  ///< Of a new workbook, its only sheet.

    /// Saves under a name; its extension alone tells the format (".xls", ".xlsx", ".csv"). Without alerts an existing
    /// file is replaced.
    virtual void SaveAs(const String& Filename) = 0;

    /// Saves under the name that the workbook has. One that was not changed is left alone.
    virtual void Save() = 0;

    /// `SaveChanges` is an XlSaveAction.
    virtual void Close(std::int32_t SaveChanges) = 0;
};

/// The open workbooks of an application.
class Workbooks
{
public:
    virtual ~Workbooks() = default;

    /// Opens a file. Of comma or tab separated text the fields become cells, and TRUE and FALSE of any case booleans.
    virtual std::shared_ptr<Workbook> Open(const String& Filename) = 0;

    virtual std::shared_ptr<Workbook> Add() = 0;  ///< A new workbook with an empty sheet.
};

/// A running Excel.
class Application
{
public:
    virtual ~Application() = default;
    virtual std::shared_ptr<excel::Workbooks> Workbooks() = 0;  ///< Those open in this instance.
    virtual void PutDisplayAlerts(bool value) = 0;  ///< Off, an existing file is replaced without a question.
    virtual void Quit() = 0;                        ///< Ends the instance.
};

/// Where applications come from.
class Provider
{
public:
    virtual ~Provider() = default;

    /// Starts a new, invisible instance of "Excel.Application". Raises CannotCreateObject when there is none to
    /// start.
    virtual std::shared_ptr<Application> CreateApplication() = 0;
};

/// Replaces the provider of the process and returns the one before. The composition root sets it once, tests to a
/// stand-in; at first there is none.
std::shared_ptr<Provider> SetProvider(std::shared_ptr<Provider> provider);

/// Starts an application by the process's provider; CannotCreateObject without one.
std::shared_ptr<Application> CreateApplication();

}  // namespace tessarine::excel
