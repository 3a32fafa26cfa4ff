#include "office/builtin/shapes/ShapeTree.h"

#include "office/builtin/limits/Damage.h"
#include "office/builtin/shapes/ShapeKind.h"
#include "office/builtin/shapes/SlideLinks.h"
#include "office/builtin/xml/XmlDocument.h"
#include "office/builtin/xml/XmlText.h"

namespace tessarine::builtin
{

namespace
{

using enum Ns;

TextBody ReadTextBody(const XmlDocument& document, Node body)
{
    String text;
    std::vector<ProtectedRange> protectedRanges;
    bool first = true;
    for (const Node paragraph : body.ChildElements()) {
        if (!document.Is(paragraph, Drawing, "p"))
            continue;
        if (!first)
            text += u'\r';
        first = false;
        for (const Node child : paragraph.ChildElements()) {
            if (document.Is(child, Drawing, "r")) {
                document.AppendTextOf(document.Child(child, Drawing, "t"), text);
            } else if (document.Is(child, Drawing, "br")) {
                text += u'\v';
            } else if (document.Is(child, Drawing, "fld")) {
                const std::size_t begin = text.size();
                document.AppendTextOf(document.Child(child, Drawing, "t"), text);
                const std::string_view type = document.Attribute(child, "type");
                if ((type == "slidenum" || type.starts_with("datetime")) && text.size() > begin)
                    protectedRanges.push_back({begin, text.size() - begin});
            } else if (!document.Is(child, Drawing, "pPr") && !document.Is(child, Drawing, "endParaRPr")) {
                protectedRanges.push_back({text.size(), 0});
            }
        }
    }
    return {document.OffsetOf(body), std::move(text), std::move(protectedRanges)};
}

class Reader
{
public:
    Reader(const XmlDocument& document, std::string_view part, const Limits& limits)
        : document_(document), part_(part), limits_(limits)
    {
    }

    ShapeTree Read()
    {
        const Node root = document_.Root();
        const Node shapes = document_.Child(document_.Child(root, Presentation, "cSld"), Presentation, "spTree");
        if (!shapes)
            throw Damage(part_, "it has no shape tree");
        tree_.layoutType = document_.Attribute(root, "type");
        for (const Node layout : document_.Child(root, Presentation, "sldLayoutIdLst").ChildElements())
            if (const auto id = document_.Attribute(layout, DocumentRelationships, "id"))
                tree_.layoutIds.emplace_back(*id);
        ReadShapes(shapes, 0);
        if (document_.HasNameBeginning("hlink"))
            tree_.links = ReadLinks(document_, shapes, part_, limits_);
        return std::move(tree_);
    }

private:
    void ReadShapes(Node parent, std::uint32_t depth)
    {
        if (depth > limits_.nesting)
            throw Damage(part_, "alternate content is nested too deeply");
        for (const Node element : parent.ChildElements()) {
            ShapeRecord record;
            if (ClassifyShape(document_, element, record)) {
                record.body = ReadBody(element, record);
                tree_.shapes.push_back(std::move(record));
            } else if (document_.Is(element, Compatibility, "AlternateContent")) {
                ReadAlternateContent(element, depth);
            }
        }
    }

    void ReadAlternateContent(Node element, std::uint32_t depth)
    {
        const Node chosen = ChosenBranch(document_, element);
        const std::size_t before = tree_.shapes.size();
        ReadShapes(chosen, depth + 1);

        // Older readers show the fallback: the same text there is changed alike.
        const Node fallback = document_.Child(element, Compatibility, "Fallback");
        if (fallback == chosen || tree_.shapes.size() != before + 1 || tree_.shapes.back().body < 0)
            return;
        const Node twin = document_.Child(document_.Child(fallback, Presentation, "sp"), Presentation, "txBody");
        if (!twin)
            return;
        TextBody body = ReadTextBody(document_, twin);
        if (body.Text() != tree_.bodies[static_cast<std::size_t>(tree_.shapes.back().body)].Text())
            return;
        tree_.shapes.back().twin = static_cast<std::int32_t>(tree_.bodies.size());
        tree_.bodies.push_back(std::move(body));
    }

    std::int32_t ReadBody(Node element, const ShapeRecord& record)
    {
        const Node body = record.hasTextFrame ? document_.Child(element, Presentation, "txBody") : Node();
        if (!body)
            return -1;
        tree_.bodies.push_back(ReadTextBody(document_, body));
        return static_cast<std::int32_t>(tree_.bodies.size()) - 1;
    }

    const XmlDocument& document_;
    std::string_view part_;
    const Limits& limits_;
    ShapeTree tree_;
};

}  // namespace

ShapeTree ReadShapeTree(const XmlDocument& document, std::string_view part, const Limits& limits)
{
    return Reader(document, part, limits).Read();
}

}  // namespace tessarine::builtin
