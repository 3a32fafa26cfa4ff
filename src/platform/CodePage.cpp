#include "platform/CodePage.h"

#include <unicode/ucnv.h>

#include <array>
#include <memory>

namespace tessarine
{

namespace
{

using Converter = std::unique_ptr<UConverter, decltype(&ucnv_close)>;

Converter Open(const char* name)
{
    UErrorCode error = U_ZERO_ERROR;
    return {ucnv_open(name, &error), &ucnv_close};
}

}  // namespace

String FromCodePage(std::string_view bytes, const std::string& name)
{
    Converter converter = Open(name.c_str());
    // This one is part of the library and always there.
    if (!converter)
        converter = Open("windows-1252");
    String text;
    text.reserve(bytes.size());
    std::array<char16_t, 4096> buffer;
    const char* source = bytes.data();
    const char* const end = source + bytes.size();
    // Each round fills the buffer once. "true" says that all bytes are given, so that a character cut off at the end
    // counts as bytes without a meaning.
    for (;;) {
        UErrorCode error = U_ZERO_ERROR;
        char16_t* target = buffer.data();
        ucnv_toUnicode(converter.get(), &target, target + buffer.size(), &source, end, nullptr, true, &error);
        text.append(buffer.data(), target);
        if (error != U_BUFFER_OVERFLOW_ERROR)
            return text;
    }
}

}  // namespace tessarine
