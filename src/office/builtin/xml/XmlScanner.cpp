#include "office/builtin/xml/XmlScanner.h"

#include "office/builtin/limits/Damage.h"

namespace tessarine::builtin
{

namespace
{

using std::string_view_literals::operator""sv;

template <class What>
std::size_t Find(std::string_view xml, What what, std::size_t at)
{
    const std::size_t found = xml.find(what, at);
    if (found == std::string_view::npos)
        throw Damage({}, "markup does not end", at);
    return found;
}

/// The offset after a comment, a CDATA section, a processing instruction or a declaration that begins at `at`; `at` for
/// anything else.
std::size_t SkipNonElement(std::string_view xml, std::size_t at)
{
    const char next = at + 1 < xml.size() ? xml[at + 1] : '\0';
    if (next != '!' && next != '?')
        return at;
    if (next == '?')
        return Find(xml, "?>"sv, at + 2) + 2;
    const std::string_view rest = xml.substr(at);
    if (rest.starts_with("<!--"))
        return Find(xml, "-->"sv, at + 4) + 3;
    if (rest.starts_with("<![CDATA["))
        return Find(xml, "]]>"sv, at + 9) + 3;
    return Find(xml, '>', at) + 1;
}

std::size_t NameEnd(std::string_view xml, std::size_t at)
{
    while (at < xml.size() && !IsSpace(xml[at]) && xml[at] != '>' && xml[at] != '/' && xml[at] != '=')
        ++at;
    return at;
}

/// The offset after the ">" of the tag that begins at `at`; attribute values may hold one.
std::size_t TagEnd(std::string_view xml, std::size_t at)
{
    for (std::size_t i = at + 1; i < xml.size(); ++i) {
        if (xml[i] == '>')
            return i + 1;
        if (xml[i] == '"' || xml[i] == '\'')
            i = Find(xml, xml[i], i + 1);
    }
    throw Damage({}, "a tag does not end", at);
}

/// The next "<" of a start or end tag at or after `at`.
std::size_t NextTag(std::string_view xml, std::size_t at)
{
    while (true) {
        const std::size_t tag = Find(xml, '<', at);
        at = SkipNonElement(xml, tag);
        if (at == tag)
            return tag;
    }
}

bool IsEndTag(std::string_view xml, std::size_t at)
{
    return at + 1 < xml.size() && xml[at + 1] == '/';
}

}  // namespace

std::string_view ElementName(std::string_view tag)
{
    return tag.substr(1, NameEnd(tag, 1) - 1);
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
    ElementRange range{.begin = at, .contentBegin = tagEnd, .name = xml.substr(at + 1, NameEnd(xml, at + 1) - at - 1)};
    if (xml[tagEnd - 2] == '/') {
        range.contentEnd = range.end = tagEnd;
        return range;
    }
    // Counting is enough: XmlDocument has compared the names of the tags.
    std::size_t depth = 1;
    for (std::size_t i = NextTag(xml, tagEnd);; i = NextTag(xml, i)) {
        const std::size_t end = TagEnd(xml, i);
        if (IsEndTag(xml, i)) {
            if (--depth == 0) {
                range.contentEnd = i;
                range.end = end;
                return range;
            }
        } else if (xml[end - 2] != '/') {
            ++depth;
        }
        i = end;
    }
}

std::size_t NextChild(std::string_view xml, std::size_t at, std::size_t end)
{
    while (at < end) {
        at = xml.find('<', at);
        if (at == std::string_view::npos || at >= end)
            return end;
        const std::size_t after = SkipNonElement(xml, at);
        if (after == at)
            return at;
        at = after;
    }
    return end;
}

AttributeRange FindAttribute(std::string_view xml, std::size_t at, std::string_view name)
{
    const std::size_t tagEnd = TagEnd(xml, at) - 1;
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
        const std::size_t close = Find(xml, xml[quote], quote + 1);
        if (xml.substr(begin, nameEnd - begin) == name)
            return {begin, quote + 1, close, true};
        i = close + 1;
    }
    return {};
}

}  // namespace tessarine::builtin
