// Comma and tab separated text, from bytes in any encoding.
#include <cstdint>
#include <string_view>

#include "office/sheets/DelimitedText.h"
#include "office/sheets/TextEncoding.h"
#include "platform/Failure.h"
#include "Require.h"

namespace tessarine::fuzz
{

namespace
{

/// Whether text survives UTF-8: of surrogate pairs no half stands alone, except one that stands for a byte.
bool IsSound(StringView text)
{
    return FromUtf8(ToUtf8(text)) == text;
}

void ReadsBack(const sheets::Sheet& sheet)
{
    std::string written;
    try {
        written = sheets::WriteCommaSeparated(sheet);
    } catch (const Failure&) {
        return;  // a used range of too many empty cells
    }
    const sheets::Sheet back = sheets::ReadDelimitedText(sheets::DecodeText(written), u',');
    sheet.ForEach([&](std::uint32_t row, std::uint32_t column, const sheets::Cell& cell) {
        const auto* text = std::get_if<StringView>(&cell);
        if (text && (text->empty() || !IsSound(*text)))
            return;
        Require(back.At(row, column) == cell, "a written cell reads back");
    });
}

}  // namespace

}  // namespace tessarine::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tessarine;
    try {
        const String text = sheets::DecodeText({reinterpret_cast<const char*>(data), size});
        for (const char16_t separator : {u',', u'\t'})
            fuzz::ReadsBack(sheets::ReadDelimitedText(text, separator, sheets::Limits::Small()));
    } catch (const Failure& failure) {
        // refusing is a good answer, under the application's one number; all else is a find
        fuzz::Require(failure.number == FailureNumber::ApplicationDefined, "a refusal has the application's number");
    }
    return 0;
}
