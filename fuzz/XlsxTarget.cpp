// Office Open XML workbooks. The input is a written-out package.
#include <cstdint>
#include <string>
#include <string_view>

#include "NoLeakCheck.h"
#include "office/sheets/XlsxReader.h"
#include "office/sheets/XlsxWriter.h"
#include "platform/Failure.h"
#include "Require.h"
#include "WrittenPackage.h"

namespace tessarine::fuzz
{

namespace
{

void ComesBackAsItIs(const sheets::Sheet& sheet)
{
    std::string written;
    try {
        written = sheets::WriteXlsx(sheet);
    } catch (const Failure&) {
        return;  // a text is too long for a cell of ours
    }
    const sheets::Sheet back = sheets::ReadXlsx(written);
    std::size_t cells = 0;
    sheet.ForEach([&](std::uint32_t row, std::uint32_t column, const sheets::Cell& cell) {
        const sheets::Cell other = back.At(row, column);
        const bool isError = std::holds_alternative<sheets::CellError>(other);
        const bool mayBeError = std::holds_alternative<double>(cell) || std::holds_alternative<sheets::CellError>(cell);
        Require(other == cell || (isError && mayBeError),
                "a written cell reads back, or is an error for one without a name and a number that is none");
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
    const fuzz::WrittenPackage package({reinterpret_cast<const char*>(data), size});
    try {
        fuzz::ComesBackAsItIs(sheets::ReadXlsx(package.ZipBytes(), sheets::Limits::Small()));
    } catch (const Failure& failure) {
        // refusing is a good answer, under the application's one number; all else is a find
        fuzz::Require(failure.number == FailureNumber::ApplicationDefined, "a refusal has the application's number");
    }
    return 0;
}
