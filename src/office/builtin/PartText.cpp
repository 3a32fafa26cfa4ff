#include "office/builtin/PartText.h"

#include <algorithm>
#include <cstdint>

#include "office/builtin/MarkupMarks.h"
#include "office/builtin/XmlText.h"
#include "platform/CaseFolding.h"

namespace tessarine::builtin
{

namespace
{

bool EndsName(char c)
{
    return c == '>' || c == '/' || c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

/// True for the tag of an element with the local name "t". `tag` is what stands between the brackets. Prefixes are
/// short, so that this looks at two or three characters of nearly every tag.
bool IsTextTag(std::string_view tag)
{
    std::size_t name = 0;
    for (std::size_t i = 0; i < tag.size() && !EndsName(tag[i]); ++i) {
        if (tag[i] == ':') {
            name = i + 1;
            break;
        }
    }
    return name < tag.size() && tag[name] == 't' && (name + 1 == tag.size() || EndsName(tag[name + 1]));
}

/// A ">" inside an attribute would end the tag too early.
bool HasWholeAttributes(std::string_view tag)
{
    return std::ranges::count(tag, '"') % 2 == 0 && std::ranges::count(tag, '\'') % 2 == 0;
}

std::uint64_t lastSerial = 0;

constexpr std::size_t tripleLength = 3;
constexpr std::size_t tripleCount = 1u << 15;

std::size_t HashOfTriple(const char16_t* units)
{
    const std::uint32_t mixed = units[0] * 0x9E3779B1u ^ units[1] * 0x85EBCA77u ^ units[2] * 0xC2B2AE3Du;
    return (mixed ^ mixed >> 15) % tripleCount;
}

}  // namespace

std::optional<PartText> PartText::Gather(std::string_view xml)
{
    String text;
    BracketMarks marks(xml);
    std::ptrdiff_t depth = 0;
    for (std::size_t open = marks.Next(); open < xml.size();) {
        if (xml[open] == '>') {  // an ordinary character of a text
            open = marks.Next();
            continue;
        }
        const std::size_t close = marks.Next();
        if (close >= xml.size() || xml[close] != '>')
            return std::nullopt;
        const char first = xml[open + 1];
        const std::size_t next = marks.Next();
        if (first == '/') {
            --depth;
        } else if (first == '!' || (first == '?' && depth > 0)) {
            return std::nullopt;
        } else if (first != '?' && xml[close - 1] != '/') {
            ++depth;
            const std::string_view tag = xml.substr(open + 1, close - open - 1);
            if (IsTextTag(tag)) {
                const std::string_view content = xml.substr(close + 1, next - close - 1);
                if (!HasWholeAttributes(tag) || content.find("_x00") != std::string_view::npos ||
                    content.find('\r') != std::string_view::npos || (next < xml.size() && xml[next] == '>'))
                    return std::nullopt;
                AppendContent(content, text);
            }
        }
        open = next;
    }
    if (depth != 0)
        return std::nullopt;
    return PartText(FoldCase(StringView(text)));
}

SoughtText::SoughtText(const String& findWhat)
    : serial(++lastSerial),
      text(findWhat),
      folded(FoldCase(StringView(findWhat))),
      hasBreaks(std::ranges::any_of(findWhat, [](char16_t unit) { return unit < 0x20; }))
{
    for (std::size_t i = 0; i + tripleLength <= folded.size(); ++i)
        triples.push_back(HashOfTriple(folded.data() + i));
}

bool PartText::MayHold(const SoughtText& sought)
{
    // Paragraph and line breaks are no characters of the runs; what holds them needs the structure.
    if (sought.hasBreaks)
        return true;
    // The locations of one pair ask one after the other, each of them for the same text.
    if (lastSerial_ != sought.serial) {
        const bool isFirst = lastSerial_ == 0;
        lastAnswer_ = (isFirst || HoldsTriples(sought)) && folded_.find(sought.folded) != String::npos;
        lastSerial_ = sought.serial;
    }
    return lastAnswer_;
}

/// A run with many pairs asks again and again: three hashed units in a row are a quick way to a no.
bool PartText::HoldsTriples(const SoughtText& sought)
{
    if (triples_.empty()) {
        triples_.resize(tripleCount);
        for (std::size_t i = 0; i + tripleLength <= folded_.size(); ++i)
            triples_[HashOfTriple(folded_.data() + i)] = true;
    }
    return std::ranges::all_of(sought.triples, [&](std::size_t triple) { return triples_[triple]; });
}

}  // namespace tessarine::builtin
