// The text of an element's content. The first line of the input is a new text, the rest is the content.
#include <cstdint>
#include <string>
#include <string_view>

#include "office/builtin/xml/XmlText.h"
#include "platform/Failure.h"
#include "Require.h"

namespace tessarine::fuzz
{

namespace
{

String Read(std::string_view content)
{
    String text;
    builtin::AppendContent(content, text);
    return text;
}

void ReadAndReplace(std::string_view content, const String& newText)
{
    builtin::DecodeAttribute(content);
    String text;
    std::size_t at = 0;
    for (const builtin::ContentUnit& unit : builtin::ContentUnits(content)) {
        Require(unit.begin < unit.end && unit.end <= content.size() && unit.begin >= at,
                "units stand for bytes of the content, in order");
        at = unit.begin;
        text += unit.unit;
    }
    Require(Read(content) == text, "the text is that of the units");

    const auto escape = builtin::EscapeRunText;
    const bool canStand = Read(escape(text)) == text;  // bytes that are no UTF-8 can't be written again
    Require(!canStand || Read(builtin::ReplaceContent(content, text, escape)) == text,
            "a text put back is the same text");
    const String wanted = Read(escape(newText));
    Require(Read(escape(wanted)) == wanted, "escaped text reads back");
    Require(Read(builtin::ReplaceContent(content, wanted, escape)) == wanted, "content that was replaced reads back");
}

}  // namespace

}  // namespace tessarine::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const std::size_t lineEnd = input.find('\n');
    if (lineEnd == std::string_view::npos)
        return 0;
    try {
        tessarine::fuzz::ReadAndReplace(input.substr(lineEnd + 1), tessarine::FromUtf8(input.substr(0, lineEnd)));
    } catch (const tessarine::Failure&) {
    }  // refusing is a good answer; all else is a find
    return 0;
}
