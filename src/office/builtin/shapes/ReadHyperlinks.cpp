#include "office/builtin/shapes/ReadHyperlinks.h"

#include <map>
#include <optional>

#include "office/builtin/limits/Damage.h"
#include "office/builtin/shapes/ShapeKind.h"

namespace tessarine::builtin
{

namespace
{

using enum Ns;

class LinkReader
{
public:
    LinkReader(const XmlDocument& document, const std::vector<TextBody>& bodies, std::string_view part,
               const Limits& limits)
        : document_(document), part_(part), limits_(limits)
    {
        for (std::size_t i = 0; i < bodies.size(); ++i)
            bodyAt_[bodies[i].Offset()] = i;
    }

    std::vector<LinkRecord> Read(Node shapeTree)
    {
        ReadShapes(shapeTree, 0);
        return std::move(links_);
    }

private:
    void ReadShapes(Node parent, std::uint32_t depth)
    {
        if (depth > limits_.nesting)
            throw Damage(part_, "groups are nested too deeply");
        for (const Node element : parent.ChildElements()) {
            if (document_.Is(element, Compatibility, "AlternateContent"))
                ReadShapes(ChosenBranch(document_, element), depth + 1);
            else if (IsShape(document_, element))
                ReadShape(element, depth);
        }
    }

    void ReadShape(Node shape, std::uint32_t depth)
    {
        const Node drawing = NonVisualOf(document_, shape).drawing;
        if (const Node click = document_.Child(drawing, Drawing, "hlinkClick"))
            Add(click);
        // In shapes the element is called hlinkHover, in runs hlinkMouseOver.
        if (const Node hover = document_.Child(drawing, Drawing, "hlinkHover"))
            Add(hover);

        if (document_.Is(shape, Presentation, "grpSp")) {
            ReadShapes(shape, depth + 1);
        } else if (document_.Is(shape, Presentation, "graphicFrame")) {
            ReadTable(shape);
        } else {
            ReadText(document_.Child(shape, Presentation, "txBody"));
        }
    }

    void ReadTable(Node frame)
    {
        const Node data = document_.Child(document_.Child(frame, Drawing, "graphic"), Drawing, "graphicData");
        for (const Node row : document_.Child(data, Drawing, "tbl").ChildElements())
            if (document_.Is(row, Drawing, "tr"))
                for (const Node cell : row.ChildElements())
                    if (document_.Is(cell, Drawing, "tc"))
                        // No TextBody has been read of a cell: its links are edited by their own tags.
                        ReadText(document_.Child(cell, Drawing, "txBody"));
    }

    void ReadText(Node node)
    {
        if (!node)
            return;
        const auto known = bodyAt_.find(document_.OffsetOf(node));
        const std::optional<std::size_t> body =
            known == bodyAt_.end() ? std::nullopt : std::optional<std::size_t>(known->second);
        LinkJoiner joiner(links_, body);
        // Counts as TextTree::Links does, click before hover: edits name the elements of a body so.
        std::size_t number = 0;
        const auto find = [&](Node properties, const char* name) -> std::optional<LinkJoiner::Found> {
            const Node element = document_.Child(properties, Drawing, name);
            if (!element)
                return std::nullopt;
            return LinkJoiner::Found{ReadLinkTarget(document_, element), body ? number++ : document_.OffsetOf(element)};
        };
        // By the rules of TextMarkup, so that no link is read which an edit would not find.
        for (const Node paragraph : node.ChildElements()) {
            if (!IsParagraph(document_, paragraph))
                continue;
            joiner.BeginParagraph();
            for (const Node run : paragraph.ChildElements()) {
                const PieceKind kind = KindOf(document_, run);
                if (!IsRun(kind))
                    continue;
                const Node properties = PropertiesOf(document_, run);
                const auto click = find(properties, "hlinkClick");
                const auto hover = find(properties, "hlinkMouseOver");
                joiner.AddRun(kind == PieceKind::Break, click, hover);
                CheckCount();
            }
        }
    }

    void Add(Node element)
    {
        links_.push_back({ReadLinkTarget(document_, element), {}, {document_.OffsetOf(element)}});
        CheckCount();
    }

    void CheckCount() const
    {
        if (links_.size() > limits_.links)
            throw Damage(part_, "it has too many links");
    }

    const XmlDocument& document_;
    std::string_view part_;
    const Limits& limits_;
    std::map<std::size_t, std::size_t> bodyAt_;  // index by offset
    std::vector<LinkRecord> links_;
};

}  // namespace

std::vector<LinkRecord> ReadHyperlinks(const XmlDocument& document, Node shapeTree, const std::vector<TextBody>& bodies,
                                       std::string_view part, const Limits& limits)
{
    return LinkReader(document, bodies, part, limits).Read(shapeTree);
}

}  // namespace tessarine::builtin
