#include "office/builtin/text/TextTree.h"

#include <algorithm>
#include <optional>

#include "office/builtin/reader/Refusals.h"

/// The links of a text: reading them, leading them elsewhere.
namespace tessarine::builtin
{

std::vector<LinkRecord> TextTree::Links(std::size_t body)
{
    std::vector<LinkRecord> links;
    LinkJoiner joiner(links, body);
    std::size_t element = 0;
    linkCursor_ = {};
    for (std::size_t i = 0; i < items_.Size(); ++i) {
        Item& item = items_[i];
        if (item.isParagraph) {
            joiner.BeginParagraph();
            continue;
        }
        if (!IsRun(item.kind))
            continue;
        std::optional<LinkJoiner::Found> click;
        std::optional<LinkJoiner::Found> hover;
        if (item.piece) {
            std::erase_if(item.piece->links, &PieceLink::isRemoved);
            for (const PieceLink& link : item.piece->links)
                (link.isHover ? hover : click).emplace(LinkJoiner::Found{link.target, element++});
        } else {
            const Node properties = PropertiesOf(document_, NodeOf(item));
            for (const bool isHover : {false, true})
                if (const Node link = LinkOf(document_, properties, isHover))
                    (isHover ? hover : click).emplace(LinkJoiner::Found{ReadLinkTarget(document_, link), element++});
        }
        joiner.AddRun(item.kind == PieceKind::Break, click, hover);
    }
    return links;
}

void TextTree::Retarget(std::size_t element, const LinkTarget& target)
{
    const auto [piece, link] = FindLink(element);
    if (piece->links[link].isRemoved)
        throw NoHyperlink();
    piece->Retarget(piece->links[link], target);
}

void TextTree::RemoveLink(std::size_t element)
{
    const auto [piece, link] = FindLink(element);
    piece->RemoveLink(piece->links[link]);
}

std::size_t TextTree::CountLinks(const Item& item) const
{
    if (item.isParagraph || !IsRun(item.kind))
        return 0;
    if (item.piece)
        return item.piece->links.size();
    const Node properties = PropertiesOf(document_, NodeOf(item));
    std::size_t count = 0;
    for (const bool isHover : {false, true})
        count += LinkOf(document_, properties, isHover) ? 1 : 0;
    return count;
}

std::pair<TextPiece*, std::size_t> TextTree::FindLink(std::size_t element)
{
    // Links are edited front to back, too.
    if (element < linkCursor_.units)
        linkCursor_ = {};
    for (; linkCursor_.item < items_.Size(); ++linkCursor_.item) {
        const std::size_t count = CountLinks(items_[linkCursor_.item]);
        if (element < linkCursor_.units + count)
            return {&TouchPiece(linkCursor_.item), element - linkCursor_.units};
        linkCursor_.units += count;
    }
    throw NoHyperlink();
}

}  // namespace tessarine::builtin
