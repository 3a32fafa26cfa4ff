// Binary workbooks: a stream of records, or a compound file around one.
#include <cstdint>
#include <string>
#include <string_view>

#include "NoLeakCheck.h"
#include "office/sheets/BiffReader.h"
#include "office/sheets/WorkbookFile.h"
#include "platform/Failure.h"
#include "Require.h"

namespace tessarine::fuzz
{

namespace
{

void ComesBackAsItIs(const sheets::Sheet& sheet)
{
    std::string written;
    try {
        written = sheets::WriteWorkbook(sheet);
    } catch (const Failure&) {
        return;  // it holds more than a workbook of ours does
    }
    const sheets::Sheet back = sheets::ReadWorkbook(written);
    std::size_t cells = 0;
    sheet.ForEach([&](std::uint32_t row, std::uint32_t column, const sheets::Cell& cell) {
        const sheets::Cell other = back.At(row, column);
        const bool isError = std::holds_alternative<sheets::CellError>(other);
        Require(other == cell || (isError && std::holds_alternative<double>(cell)),
                "a written cell reads back, or is an error for a number that is none");
        ++cells;
    });
    back.ForEach([&](auto...) { --cells; });
    Require(cells == 0, "a written workbook has no other cells");
}

}  // namespace

}  // namespace tessarine::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tessarine;
    try {
        fuzz::ComesBackAsItIs(
            sheets::ReadWorkbook({reinterpret_cast<const char*>(data), size}, sheets::Limits::Small()));
    } catch (const Failure& failure) {
        // refusing is a good answer, under the application's one number; all else is a find
        fuzz::Require(failure.number == FailureNumber::ApplicationDefined, "a refusal has the application's number");
    }
    return 0;
}
