#include "office/builtin/text/LinkElement.h"

#include "office/builtin/xml/StartTag.h"

namespace tessarine::builtin
{

bool MayHoldLinks(std::string_view markup)
{
    constexpr std::string_view start = "hlink";
    // Looked for by its last letter, which markup holds more rarely than the others.
    for (std::size_t at = markup.find('k'); at != std::string_view::npos; at = markup.find('k', at + 1))
        if (markup.substr(0, at + 1).ends_with(start))
            return true;
    return false;
}

LinkTarget ReadLinkTarget(const XmlDocument& document, Node element)
{
    return {.relationshipId = std::string(document.Attribute(element, Ns::DocumentRelationships, "id").value_or("")),
            .action = std::string(document.Attribute(element, "action")),
            .invalidUrl = std::string(document.Attribute(element, "invalidUrl")),
            .tooltip = std::string(document.Attribute(element, "tooltip"))};
}

void Retarget(std::string& startTag, std::string_view idName, const LinkTarget& before, const LinkTarget& after)
{
    // The tooltip is never changed. It counts only in telling one link from the next.
    if (after.relationshipId != before.relationshipId)
        PutAttribute(startTag, idName, after.relationshipId);
    if (after.invalidUrl != before.invalidUrl)
        PutAttribute(startTag, "invalidUrl", after.invalidUrl);
    if (after.action != before.action)
        PutAttribute(startTag, "action", after.action);
}

void LinkJoiner::BeginParagraph()
{
    click_.reset();
    hover_.reset();
}

void LinkJoiner::AddRun(bool isBreak, const std::optional<Found>& click, const std::optional<Found>& hover)
{
    Follow(click_, isBreak, click);
    Follow(hover_, isBreak, hover);
}

void LinkJoiner::Follow(std::optional<std::size_t>& current, bool isBreak, const std::optional<Found>& found)
{
    if (!found) {
        // A line break without a link doesn't end the link around it.
        if (!isBreak)
            current.reset();
    } else if (current && links_[*current].target == found->target) {
        links_[*current].elements.push_back(found->element);
    } else {
        current = links_.size();
        links_.push_back({found->target, body_, {found->element}});
    }
}

}  // namespace tessarine::builtin
