#include "office/builtin/shapes/SlideLinks.h"

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
    LinkReader(const XmlDocument& document, std::string_view part, const Limits& limits)
        : document_(document), part_(part), limits_(limits)
    {
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
            ShapeRecord kind;
            if (document_.Is(element, Compatibility, "AlternateContent"))
                ReadShapes(ChosenBranch(document_, element), depth + 1);
            else if (ClassifyShape(document_, element, kind))
                ReadShape(element, depth);
        }
    }

    void ReadShape(Node shape, std::uint32_t depth)
    {
        const Node drawing = NonVisualOf(document_, shape).drawing;
        if (const Node click = document_.Child(drawing, Drawing, "hlinkClick"))
            Add(click);
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
                        ReadText(document_.Child(cell, Drawing, "txBody"));
    }

    void ReadText(Node body)
    {
        for (const Node paragraph : body.ChildElements()) {
            if (!document_.Is(paragraph, Drawing, "p"))
                continue;
            constexpr std::size_t none = static_cast<std::size_t>(-1);
            std::size_t click = none;  // the link that the run in front belongs to
            std::size_t hover = none;
            for (const Node run : paragraph.ChildElements()) {
                const bool isBreak = document_.Is(run, Drawing, "br");
                if (!isBreak && !document_.Is(run, Drawing, "r") && !document_.Is(run, Drawing, "fld"))
                    continue;
                const Node properties = document_.Child(run, Drawing, "rPr");
                const auto follow = [&](const char* name, std::size_t& current) {
                    const Node element = document_.Child(properties, Drawing, name);
                    if (!element) {
                        current = isBreak ? current : none;
                    } else if (current != none && SameTarget(links_[current], element)) {
                        links_[current].elements.push_back(document_.OffsetOf(element));
                    } else {
                        Add(element);
                        current = links_.size() - 1;
                    }
                };
                follow("hlinkClick", click);
                follow("hlinkMouseOver", hover);
            }
        }
    }

    std::string IdOf(Node element) const
    {
        return std::string(document_.Attribute(element, DocumentRelationships, "id").value_or(""));
    }

    bool SameTarget(const LinkRecord& link, Node element) const
    {
        return link.relationshipId == IdOf(element) && link.action == document_.Attribute(element, "action") &&
               link.tooltip == document_.Attribute(element, "tooltip") &&
               link.invalidUrl == document_.Attribute(element, "invalidUrl");
    }

    void Add(Node element)
    {
        LinkRecord link;
        link.relationshipId = IdOf(element);
        link.action = document_.Attribute(element, "action");
        link.invalidUrl = document_.Attribute(element, "invalidUrl");
        link.tooltip = document_.Attribute(element, "tooltip");
        link.elements.push_back(document_.OffsetOf(element));
        links_.push_back(std::move(link));
    }

    const XmlDocument& document_;
    std::string_view part_;
    const Limits& limits_;
    std::vector<LinkRecord> links_;
};

}  // namespace

std::vector<LinkRecord> ReadLinks(const XmlDocument& document, Node shapeTree, std::string_view part,
                                  const Limits& limits)
{
    return LinkReader(document, part, limits).Read(shapeTree);
}

}  // namespace tessarine::builtin
