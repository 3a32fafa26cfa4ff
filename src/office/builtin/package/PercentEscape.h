#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace tessarine::builtin
{

/// How many bytes an escape takes.
constexpr std::size_t percentEscapeLength = 3;

/// The byte that an escape ("%41", digits of either case) at this place stands for; none where there is no whole one.
/// ECMA-376 part 2, 9.1.1.1.2, and RFC 3986, 2.1.
constexpr std::optional<char> PercentEscapeAt(std::string_view text, std::size_t at)
{
    const auto value = [](char c) {
        if (c >= '0' && c <= '9')
            return c - '0';
        if (c >= 'A' && c <= 'F')
            return c - 'A' + 10;
        return c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
    };
    if (text.size() < percentEscapeLength || at > text.size() - percentEscapeLength || text[at] != '%')
        return {};
    const int high = value(text[at + 1]);
    const int low = value(text[at + 2]);
    if (high < 0 || low < 0)
        return {};
    return static_cast<char>(high * 16 + low);
}

}  // namespace tessarine::builtin
