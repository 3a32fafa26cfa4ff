// to-code-page FILE CODE-PAGE OUTPUT: writes a UTF-8 text file in an 8-bit code page, its lines ending in CR LF.
// A character that the code page lacks is an error, told with its line.
#include <unicode/ucnv.h>

#include <algorithm>
#include <exception>
#include <fstream>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

#include "files/Files.h"

namespace tessarine
{

namespace
{

class CodePage
{
public:
    explicit CodePage(const std::string& name)
    {
        UErrorCode status = U_ZERO_ERROR;
        converter_.reset(ucnv_open(name.c_str(), &status));
        Check(status, "unknown code page " + name);
        // Only characters that come back as themselves are written: no look-alikes, no question marks.
        ucnv_setFallback(converter_.get(), false);
        ucnv_setFromUCallBack(converter_.get(), UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
        Check(status, "can't set up " + name);
    }

    std::string Encoded(StringView text, const std::string& what)
    {
        std::string result(text.size() * static_cast<std::size_t>(ucnv_getMaxCharSize(converter_.get())) + 1, '\0');
        UErrorCode status = U_ZERO_ERROR;
        const std::int32_t length =
            ucnv_fromUChars(converter_.get(), result.data(), static_cast<std::int32_t>(result.size()), text.data(),
                            static_cast<std::int32_t>(text.size()), &status);
        Check(status, what);
        result.resize(static_cast<std::size_t>(length));
        return result;
    }

private:
    struct Closer {
        void operator()(UConverter* converter) const { ucnv_close(converter); }
    };

    static void Check(UErrorCode status, const std::string& what)
    {
        if (U_FAILURE(status))
            throw std::runtime_error(what + ": " + u_errorName(status));
    }

    std::unique_ptr<UConverter, Closer> converter_;
};

void Convert(const std::string& input, const std::string& codePageName, const std::string& output)
{
    CodePage codePage(codePageName);
    const std::string text = ReadWholeFile(FromUtf8(input));
    std::string converted;
    std::size_t number = 1;
    for (std::size_t at = 0; at < text.size(); ++number) {
        const std::size_t end = std::min(text.find('\n', at), text.size());
        const std::string what = input + ":" + std::to_string(number) + ": not in " + codePageName;
        converted += codePage.Encoded(FromUtf8(std::string_view(text).substr(at, end - at)), what) + "\r\n";
        at = end + 1;
    }

    std::ofstream file(output, std::ios::binary);
    file.exceptions(std::ios::failbit | std::ios::badbit);
    file << converted << std::flush;
}

}  // namespace

}  // namespace tessarine

int main(int argc, char** argv)
{
    if (argc != 4) {
        std::cerr << "usage: to-code-page FILE CODE-PAGE OUTPUT\n";
        return 2;
    }
    try {
        tessarine::Convert(argv[1], argv[2], argv[3]);
    } catch (const std::exception& error) {
        std::cerr << "to-code-page: " << error.what() << '\n';
        return 1;
    }
    return 0;
}
