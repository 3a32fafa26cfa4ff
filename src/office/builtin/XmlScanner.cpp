#include "office/builtin/XmlScanner.h"

#include "office/builtin/Damage.h"

namespace tessarine::builtin
{

namespace
{

bool IsSpace(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

std::size_t Find(std::string_view xml, std::string_view what, std::size_t at)
{
    const std::size_t found = xml.find(what, at);
    if (found == std::string_view::npos)
        throw Damage({}, "markup does not end", at);
    return found;
}

/// Behind a comment, a CDATA section, a processing instruction or a declaration that begins at `at`; `at` for anything
/// else.
std::size_t SkipNonElement(std::string_view xml, std::size_t at)
{
    const std::string_view rest = xml.substr(at);
    if (rest.starts_with("<!--"))
        return Find(xml, "-->", at + 4) + 3;
    if (rest.starts_with("<![CDATA["))
        return Find(xml, "]]>", at + 9) + 3;
    if (rest.starts_with("<?"))
        return Find(xml, "?>", at + 2) + 2;
    if (rest.starts_with("<!"))
        return Find(xml, ">", at) + 1;
    return at;
}

/// The ">" of the tag that begins at `at`; attribute values may hold one.
std::size_t TagEnd(std::string_view xml, std::size_t at)
{
    for (std::size_t i = at + 1; i < xml.size(); ++i) {
        if (xml[i] == '>')
            return i;
        if (xml[i] == '"' || xml[i] == '\'')
            i = Find(xml, xml.substr(i, 1), i + 1);
    }
    throw Damage({}, "a tag does not end", at);
}

std::size_t NameEnd(std::string_view xml, std::size_t at)
{
    while (at < xml.size() && !IsSpace(xml[at]) && xml[at] != '>' && xml[at] != '/' && xml[at] != '=')
        ++at;
    return at;
}

}  // namespace

std::string_view ElementRange::LocalName() const
{
    const std::size_t colon = name.find(':');
    return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

std::string_view ElementRange::Prefix() const
{
    const std::size_t colon = name.find(':');
    return colon == std::string_view::npos ? std::string_view() : name.substr(0, colon + 1);
}

ElementRange ScanElement(std::string_view xml, std::size_t at)
{
    if (at >= xml.size() || xml[at] != '<')
        throw Damage({}, "an element was expected", at);
    const std::size_t tagEnd = TagEnd(xml, at);
    ElementRange range{
        .begin = at, .contentBegin = tagEnd + 1, .name = xml.substr(at + 1, NameEnd(xml, at + 1) - at - 1)};
    if (xml[tagEnd - 1] == '/') {
        range.contentEnd = range.end = tagEnd + 1;
        return range;
    }
    std::size_t depth = 1;
    for (std::size_t i = Find(xml, "<", range.contentBegin);; i = Find(xml, "<", i)) {
        if (const std::size_t behind = SkipNonElement(xml, i); behind != i) {
            i = behind;
            continue;
        }
        const std::size_t end = TagEnd(xml, i);
        if (xml[i + 1] == '/') {
            if (--depth == 0) {
                range.contentEnd = i;
                range.end = end + 1;
                return range;
            }
        } else if (xml[end - 1] != '/') {
            ++depth;
        }
        i = end + 1;
    }
}

std::size_t NextChild(std::string_view xml, std::size_t at, std::size_t end)
{
    while (at < end) {
        at = xml.find('<', at);
        if (at == std::string_view::npos || at >= end)
            return end;
        const std::size_t behind = SkipNonElement(xml, at);
        if (behind == at)
            return at;
        at = behind;
    }
    return end;
}

AttributeRange FindAttribute(std::string_view xml, std::size_t at, std::string_view name)
{
    const std::size_t tagEnd = TagEnd(xml, at);
    std::size_t i = NameEnd(xml, at + 1);
    while (i < tagEnd) {
        if (IsSpace(xml[i]) || xml[i] == '/') {
            ++i;
            continue;
        }
        const std::size_t begin = i;
        const std::size_t nameEnd = NameEnd(xml, i);
        std::size_t quote = nameEnd;
        while (quote < tagEnd && xml[quote] != '"' && xml[quote] != '\'')
            ++quote;
        if (quote >= tagEnd)
            break;
        const std::size_t close = Find(xml, xml.substr(quote, 1), quote + 1);
        if (xml.substr(begin, nameEnd - begin) == name)
            return {begin, quote + 1, close, true};
        i = close + 1;
    }
    return {};
}

}  // namespace tessarine::builtin
