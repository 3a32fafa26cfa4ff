// Sectioned text files. The first line of the input is a section, the second a key, the rest a file.
#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

#include "files/ProfileText.h"
#include "Require.h"

namespace tessarine::fuzz
{

namespace
{

constexpr std::size_t unlimited = ~std::size_t{0};
constexpr std::size_t few = 5;

/// Names that a file can hold without a sign or a blank being taken for something else.
bool IsPlain(std::string_view name)
{
    return !name.empty() && name.find_first_of("[]=; \t\r\n") == std::string_view::npos && !name.starts_with('\xEF');
}

std::string WithCrLf(std::string_view text)
{
    std::string result;
    for (const char letter : text)
        result += letter == '\n' ? std::string("\r\n") : std::string(1, letter);
    return result;
}

void ReadAndWrite(const std::string& section, const std::string& key, const std::string& content)
{
    const auto valueIn = [&](const std::string& file, std::size_t longest) {
        return ProfileValue(file, FromUtf8(section), FromUtf8(key), longest);
    };
    const String value = valueIn(content, unlimited);
    Require(value.find_first_of(StringView(u"\r\n\0", 3)) == String::npos, "a value is part of one line");

    const String start = valueIn(content, few);
    Require(value.starts_with(start) && start.size() <= 2 * few, "a limit leaves the start of the value");
    Require(start.size() >= std::min(value.size(), few), "a limit takes no more than it must");

    Require(valueIn(WithCrLf(content), unlimited) == value, "CR LF ends a line like LF");
    const std::string lines = "[" + section + "]\n" + key + "=";
    if (!value.empty())
        Require(valueIn(content + "\n" + lines + "later", unlimited) == value, "the first value counts");
    if (IsPlain(section) && IsPlain(key))
        Require(valueIn(lines + '"' + ToUtf8(value) + '"', unlimited) == value, "a value in quotes reads back");
}

}  // namespace

}  // namespace tessarine::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::string_view input(reinterpret_cast<const char*>(data), size);
    const auto takeLine = [&] {
        const std::size_t end = std::min(input.find('\n'), input.size());
        const std::string line(input.substr(0, end));
        input.remove_prefix(std::min(end + 1, input.size()));
        return line;
    };
    const std::string section = takeLine();
    const std::string key = takeLine();
    tessarine::fuzz::ReadAndWrite(section, key, std::string(input));
    return 0;
}
