#include "support/PackageDress.h"

#include <random>
#include <stdexcept>
#include <utility>

#include "platform/String.h"

namespace tessarine::test
{
namespace
{

bool ReplaceEvery(std::string& text, std::string_view from, std::string_view to)
{
    bool found = false;
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
        text.replace(at, from.size(), to);
        found = true;
    }
    return found;
}

bool EndsName(char c)
{
    return c == ' ' || c == '=' || c == '>' || c == '/' || c == '\t' || c == '\r' || c == '\n';
}

/// A qualified name under the new prefixes; xmlns declarations follow their prefix.
std::string NewName(const std::string& name, const std::map<std::string, std::string>& prefixes)
{
    const std::size_t colon = name.find(':');
    if (colon == std::string::npos)
        return name;
    const bool declares = name.starts_with("xmlns:");
    const std::string prefix = declares ? name.substr(colon + 1) : name.substr(0, colon);
    const auto known = prefixes.find(prefix);
    if (known == prefixes.end())
        return name;
    if (declares)
        return known->second.empty() ? "xmlns" : "xmlns:" + known->second;
    return known->second.empty() ? name.substr(colon + 1) : known->second + name.substr(colon);
}

/// One start or end tag, from "<" to ">".
std::string TagWithPrefixes(std::string_view tag, const std::map<std::string, std::string>& prefixes)
{
    std::string out;
    for (std::size_t at = 0; at < tag.size();) {
        const char c = tag[at];
        if (c == '"' || c == '\'') {
            const std::size_t end = tag.find(c, at + 1) + 1;
            out += tag.substr(at, end - at);
            at = end;
        } else if (c == '<' || EndsName(c)) {
            out += c;
            ++at;
        } else {
            std::size_t end = at;
            while (end < tag.size() && !EndsName(tag[end]))
                ++end;
            out += NewName(std::string(tag.substr(at, end - at)), prefixes);
            at = end;
        }
    }
    return out;
}

/// The end of a piece of markup that starts at `start`: comments and CDATA sections as a whole.
std::size_t EndOfMarkup(std::string_view xml, std::size_t start)
{
    for (const auto& [open, close] :
         {std::pair<std::string_view, std::string_view>{"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<?", "?>"}}) {
        if (xml.substr(start).starts_with(open))
            return xml.find(close, start) + close.size();
    }
    char quote = 0;
    for (std::size_t at = start; at < xml.size(); ++at) {
        if (quote != 0)
            quote = xml[at] == quote ? '\0' : quote;
        else if (xml[at] == '"' || xml[at] == '\'')
            quote = xml[at];
        else if (xml[at] == '>')
            return at + 1;
    }
    throw std::invalid_argument("markup without an end");
}

}  // namespace

std::string ToStrict(std::string xml)
{
    const std::string old = "http://schemas.openxmlformats.org/";
    const std::string strict = "http://purl.oclc.org/ooxml/";
    for (const auto& [from, to] : {
             std::pair<std::string, std::string>{"officeDocument/2006/relationships/extended-properties",
                                                 "officeDocument/relationships/extendedProperties"},
             {"officeDocument/2006/relationships/custom-properties", "officeDocument/relationships/customProperties"},
             {"officeDocument/2006/relationships", "officeDocument/relationships"},
             {"officeDocument/2006/extended-properties", "officeDocument/extendedProperties"},
             {"officeDocument/2006/custom-properties", "officeDocument/customProperties"},
             {"officeDocument/2006/docPropsVTypes", "officeDocument/docPropsVTypes"},
             {"presentationml/2006/", "presentationml/"},
             {"drawingml/2006/", "drawingml/"},
         })
        ReplaceEvery(xml, old + from, strict + to);
    ReplaceEvery(xml, "<p:presentation ", "<p:presentation conformance=\"strict\" ");
    return xml;
}

std::string WithPrefixes(std::string_view xml, const std::map<std::string, std::string>& prefixes)
{
    std::string out;
    for (std::size_t at = 0; at < xml.size();) {
        const std::size_t open = std::min(xml.find('<', at), xml.size());
        out += xml.substr(at, open - at);
        if (open == xml.size())
            break;
        const std::size_t end = EndOfMarkup(xml, open);
        const std::string_view markup = xml.substr(open, end - open);
        out += markup[1] == '!' || markup[1] == '?' ? std::string(markup) : TagWithPrefixes(markup, prefixes);
        at = end;
    }
    return out;
}

std::string ToUtf16Part(std::string_view xml)
{
    std::string declared(xml);
    ReplaceEvery(declared, "encoding=\"UTF-8\"", "encoding=\"UTF-16\"");
    std::string bytes = "\xFF\xFE";
    for (const char16_t unit : FromUtf8(declared)) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
    return bytes;
}

std::string WithByteOrderMark(std::string_view xml)
{
    return "\xEF\xBB\xBF" + std::string(xml);
}

std::string IncompressibleBytes(std::size_t size, unsigned seed)
{
    std::mt19937_64 generator(seed);
    std::string bytes;
    bytes.reserve(size + sizeof(std::uint64_t));
    while (bytes.size() < size) {
        std::uint64_t value = generator();
        for (std::size_t i = 0; i < sizeof value; ++i, value >>= 8)
            bytes += static_cast<char>(value & 0xFF);
    }
    bytes.resize(size);
    return bytes;
}

std::string Replaced(std::string text, std::string_view from, std::string_view to)
{
    if (!ReplaceEvery(text, from, to))
        throw std::invalid_argument("nothing to replace: " + std::string(from));
    return text;
}

}  // namespace tessarine::test
