// to-code-page FILE CODE-PAGE OUTPUT: writes a UTF-8 text file in an 8-bit code page, its lines ending in CR LF.
// A character that the code page lacks is an error, told with its line.
#include <iconv.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <exception>
#include <fstream>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>

namespace
{

class CodePage
{
public:
    explicit CodePage(const std::string& name) : converter_(iconv_open(name.c_str(), "UTF-8"))
    {
        if (converter_ == iconv_t(-1))
            throw std::runtime_error("unknown code page " + name);
    }
    ~CodePage() { iconv_close(converter_); }
    CodePage(const CodePage&) = delete;
    CodePage& operator=(const CodePage&) = delete;

    std::string Encoded(std::string text, const std::string& what)
    {
        std::string result(text.size(), '\0');  // no character is shorter in UTF-8
        char* source = text.data();
        char* target = result.data();
        std::size_t left = text.size();
        std::size_t room = result.size();
        // What the code page lacks is refused: no look-alikes, no question marks.
        if (iconv(converter_, &source, &left, &target, &room) != 0)
            throw std::runtime_error(what + ": " + std::strerror(errno));
        result.resize(result.size() - room);
        return result;
    }

private:
    iconv_t converter_;
};

std::string ContentOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::string text(std::istreambuf_iterator<char>(file), {});
    if (text.empty())
        throw std::runtime_error(path + ": missing or empty");
    return text;
}

void Convert(const std::string& input, const std::string& codePageName, const std::string& output)
{
    CodePage codePage(codePageName);
    const std::string text = ContentOf(input);
    std::string converted;
    std::size_t number = 1;
    for (std::size_t at = 0; at < text.size(); ++number) {
        const std::size_t end = std::min(text.find('\n', at), text.size());
        const std::string what = input + ":" + std::to_string(number) + ": not in " + codePageName;
        converted += codePage.Encoded(text.substr(at, end - at), what) + "\r\n";
        at = end + 1;
    }

    std::ofstream file(output, std::ios::binary);
    file.exceptions(std::ios::failbit | std::ios::badbit);
    file << converted << std::flush;
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 4) {
        std::cerr << "usage: to-code-page FILE CODE-PAGE OUTPUT\n";
        return 2;
    }
    try {
        Convert(argv[1], argv[2], argv[3]);
    } catch (const std::exception& error) {
        std::cerr << "to-code-page: " << error.what() << '\n';
        return 1;
    }
    return 0;
}
