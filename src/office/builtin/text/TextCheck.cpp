#include "office/builtin/text/TextCheck.h"

#include <algorithm>
#include <optional>
#include <ranges>
#include <vector>

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

}  // namespace

TextCheck::TextCheck(const XmlDocument& before, const Limits& limits)
    : before_(before),
      limits_(limits),
      bytesLeft_(std::min(before.Bytes().size(), mostBytes)),
      elements_(before.ElementCount())
{
}

bool TextCheck::ReadsAs(Node body, const ByteEdit& paragraphs, StringView text)
{
    const std::string_view old = before_.Bytes().substr(paragraphs.begin, paragraphs.end - paragraphs.begin);
    // Between characters an edit could make something of them that neither is alone, such as "]]>".
    if (!IsOfAllParagraphs(body, paragraphs) || !IsMarkupAtBothEnds(old) || !IsMarkupAtBothEnds(paragraphs.text) ||
        MayHoldLinks(old) || MayHoldLinks(paragraphs.text) || text.size() > limits_.textUnits)
        return false;
    const std::optional<NamespaceScope> scope = ScopeAround(body);
    if (!scope)
        return false;
    const std::string markup = "<w" + scope->Attributes() + ">" + paragraphs.text + "</w>";
    if (markup.size() > bytesLeft_)
        return false;
    bytesLeft_ -= markup.size();
    try {
        Limits limits = limits_;
        limits.depth -= std::min<std::uint32_t>(limits.depth, deepest);
        const XmlDocument document(markup, {}, limits);
        CheckNamespaces(document, {});
        elements_ += document.ElementCount();
        return elements_ < std::min(limits_.elements, limits_.denseElements) &&
               builtin::ReadsAs(ReadBodyText(document, document.Root()).text, text);
    } catch (const Failure&) {
        // Reading the whole part tells what is wrong.
        return false;
    }
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

/// What is declared around the paragraphs of a body; nothing when it has too many elements around it.
std::optional<NamespaceScope> TextCheck::ScopeAround(Node body) const
{
    std::vector<Node> around;
    for (Node node = body; node; node = before_.ParentOf(node))
        around.push_back(node);
    if (around.size() > deepest)
        return std::nullopt;
    // The elements below the root declare nothing most of the time.
    if (before_.DeclaresInRootAlone())
        around.erase(around.begin(), around.end() - 1);
    NamespaceScope scope;
    for (const Node node : around | std::views::reverse)
        scope.Enter(before_, node);
    return scope;
}

}  // namespace tessarine::builtin
