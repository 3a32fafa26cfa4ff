#include "office/builtin/text/TextCheck.h"

#include <algorithm>
#include <optional>
#include <string>

#include "office/builtin/text/TextMarkup.h"
#include "office/builtin/xml/EditedPart.h"
#include "office/builtin/xml/XmlText.h"
#include "platform/Failure.h"

namespace tessarine::builtin
{

namespace
{

constexpr std::size_t mostBytes = 1u << 20;  // of all texts; what is read takes several times its memory
constexpr std::size_t deepest = 32;          // elements around a body; the shapes of ordinary parts have three or four

/// All names of link elements begin so.
bool MayHoldLinks(std::string_view markup)
{
    return markup.find("hlink") != std::string_view::npos;
}

bool IsMarkupAtBothEnds(std::string_view text)
{
    return text.starts_with('<') && text.ends_with('>');
}

/// What the name at the start of a text has in front of its colon. It has one.
std::string_view PrefixOf(std::string_view name)
{
    return name.substr(0, std::min(name.find_first_of(": />"), name.size()));
}

/// Whether all elements but the root have a prefix, their attributes have none, and nothing is declared in them.
bool HasOnePrefix(const XmlDocument& document, std::string_view prefix)
{
    if (!document.DeclaresInRootAlone())
        return false;
    for (std::size_t number = 1; number < document.ElementCount(); ++number) {
        const ElementRange range = document.RangeOf(number);
        const std::size_t nameEnd = range.begin + 1 + range.name.size();
        const std::string_view attributes = document.Bytes().substr(nameEnd, range.contentBegin - nameEnd);
        if (range.name.size() <= prefix.size() || range.name[prefix.size()] != ':' || !range.name.starts_with(prefix) ||
            attributes.find(':') != std::string_view::npos)
            return false;
    }
    return true;
}

}  // namespace

TextCheck::TextCheck(const XmlDocument& before, const Limits& limits)
    : before_(before),
      limits_(limits),
      bytesLeft_(std::min(before.Bytes().size(), mostBytes)),
      elements_(before.ElementCount())
{
    const ElementRange root = before.RangeOf(before.Root());
    const std::size_t nameEnd = root.begin + 1 + root.name.size();
    tag_ = "<w" + std::string(before.Bytes().substr(nameEnd, root.contentBegin - nameEnd));
    limits_.depth -= std::min<std::uint32_t>(limits_.depth, deepest);
}

bool TextCheck::ReadsAs(Node body, const ByteEdit& paragraphs, StringView text)
{
    const std::string_view old = before_.Bytes().substr(paragraphs.begin, paragraphs.end - paragraphs.begin);
    // Between characters an edit could make something of them that neither is alone, such as "]]>".
    if (!HasUsualPlace(body) || !IsOfAllParagraphs(body, paragraphs) || !IsMarkupAtBothEnds(old) ||
        !IsMarkupAtBothEnds(paragraphs.text) || MayHoldLinks(old) || MayHoldLinks(paragraphs.text) ||
        text.size() > limits_.textUnits)
        return false;
    const std::string markup = tag_ + paragraphs.text + "</w>";
    if (markup.size() > bytesLeft_)
        return false;
    bytesLeft_ -= markup.size();
    try {
        const XmlDocument document(markup, {}, limits_);
        if (!HasOnePrefix(document, PrefixOf(old.substr(1))) && NamespaceFault(document))
            return false;
        elements_ += document.ElementCount();
        return elements_ < std::min(limits_.elements, limits_.denseElements) &&
               builtin::ReadsAs(ReadBodyText(document, document.Root()).text, text);
    } catch (const Failure&) {
        // Reading the whole part tells what is wrong.
        return false;
    }
}

/// Whether a body is not deep in other elements, and only the root declares what its prefixes mean.
bool TextCheck::HasUsualPlace(Node body) const
{
    Node around = body;
    for (std::size_t depth = 1; around != before_.Root(); ++depth) {
        const ElementRange range = before_.RangeOf(around);
        const std::string_view tag = before_.Bytes().substr(range.begin, range.contentBegin - range.begin);
        if (depth >= deepest || tag.find("xmlns") != std::string_view::npos)
            return false;
        around = before_.ParentOf(around);
    }
    return true;
}

/// Whether the edit takes the place of all paragraphs of the body, and of nothing else.
bool TextCheck::IsOfAllParagraphs(Node body, const ByteEdit& edit) const
{
    std::optional<std::size_t> begin;
    std::size_t end = 0;
    for (const Node child : body.ChildElements()) {
        if (!IsParagraph(before_, child))
            continue;
        const ElementRange range = before_.RangeOf(child);
        begin = begin.value_or(range.begin);
        end = range.end;
    }
    return begin == edit.begin && end == edit.end;
}

}  // namespace tessarine::builtin
