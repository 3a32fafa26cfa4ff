#include "office/builtin/text/FoldedContent.h"

#include <algorithm>

#include "office/builtin/xml/ByteBlock.h"
#include "office/builtin/xml/XmlText.h"
#include "platform/CaseFolding.h"

namespace tessarine::builtin
{

namespace
{

constexpr std::string_view escapeStart = "_x00";  // of control characters
constexpr StringView charactersOfEscapes = u"_x0";

/// Folds the characters of [from, to) as long as each stands for itself: no markup, no reference, no surrogate pair.
/// Gives the offset after the last one; a character may reach beyond `to`.
std::size_t FoldPlainCharacters(std::string_view content, std::size_t from, std::size_t to, char16_t*& target)
{
    const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(at < content.size() ? content[at] : 0); };
    const auto isTrail = [&](std::size_t at) { return (byte(at) & 0xC0) == 0x80; };
    while (from < to) {
        const unsigned char lead = byte(from);
        if (lead < 0x80) {
            if (lead == '&' || lead == '<')
                return from;
            *target++ = static_cast<char16_t>(lead >= 'A' && lead <= 'Z' ? lead + ('a' - 'A') : lead);
            ++from;
        } else if (lead >= 0xC2 && lead < 0xE0 && isTrail(from + 1)) {
            *target++ = FoldCaseWidely(static_cast<char16_t>((lead & 0x1F) << 6 | (byte(from + 1) & 0x3F)));
            from += 2;
        } else if (lead >= 0xE1 && lead < 0xF0 && lead != 0xED && isTrail(from + 1) && isTrail(from + 2)) {
            // Lead bytes 0xE0 and 0xED may begin what is not valid UTF-8.
            *target++ = FoldCaseWidely(
                static_cast<char16_t>((lead & 0x0F) << 12 | (byte(from + 1) & 0x3F) << 6 | (byte(from + 2) & 0x3F)));
            from += 3;
        } else {
            return from;
        }
    }
    return from;
}

/// Folds what stands for other characters than itself: a reference, or all that is left. Moves `at` and `target` after
/// it; the folded text is never longer than the content. False when an escape may begin with it.
bool FoldNext(std::string_view content, std::size_t& at, char16_t*& target)
{
    const std::size_t semicolon = content[at] == '&' ? content.find(';', at) : std::string_view::npos;
    const std::size_t end = semicolon == std::string_view::npos ? content.size() : semicolon + 1;
    String decoded;
    AppendContent(content.substr(at, end - at), decoded);
    at = end;
    target = std::ranges::copy(FoldCaseWidely(StringView(decoded)), target).out;
    return decoded.find_first_of(charactersOfEscapes) == String::npos;
}

}  // namespace

bool AppendFoldedContent(std::string_view content, String& text)
{
    if (content.find('\r') != std::string_view::npos || content.find(escapeStart) != std::string_view::npos)
        return false;
    const std::size_t start = text.size();
    text.resize(start + content.size());
    char16_t* target = text.data() + start;
    bool mayHoldEscape = false;
    for (std::size_t at = 0; at < content.size();) {
        if (at + ByteBlock::size <= content.size()) {
            const ByteBlock bytes(content.data() + at);
            if ((bytes | bytes.Matches('&') | bytes.Matches('<')).TopBits() == 0) {
                bytes.WriteInLowerCase(target);
                target += ByteBlock::size;
                at += ByteBlock::size;
                continue;
            }
        }
        const std::size_t to = std::min(at + ByteBlock::size, content.size());
        at = FoldPlainCharacters(content, at, to, target);
        if (at < to && !FoldNext(content, at, target))
            mayHoldEscape = true;
    }
    text.resize(static_cast<std::size_t>(target - text.data()));
    // Of an escape whose first characters are not written plainly, one is a reference.
    return !mayHoldEscape || StringView(text).find(u"_x00", start) == StringView::npos;
}

}  // namespace tessarine::builtin
