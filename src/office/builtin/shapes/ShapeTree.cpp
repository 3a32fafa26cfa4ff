#include "office/builtin/shapes/ShapeTree.h"

#include "office/builtin/limits/Damage.h"
#include "office/builtin/shapes/ReadHyperlinks.h"
#include "office/builtin/shapes/ShapeKind.h"
#include "office/builtin/xml/XmlDocument.h"

namespace tessarine::builtin
{

namespace
{

using enum Ns;

class Reader
{
public:
    Reader(const XmlDocument& document, std::string_view part, const Limits& limits, ShapeNames names)
        : document_(document), part_(part), limits_(limits), names_(names)
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
        // Most parts have no links; they are spared the second walk.
        if (MayHoldLinks(document_.Bytes()))
            tree_.links = ReadHyperlinks(document_, shapes, tree_.bodies, part_, limits_);
        return std::move(tree_);
    }

private:
    void ReadShapes(Node parent, std::uint32_t depth)
    {
        if (depth > limits_.nesting)
            throw Damage(part_, "alternate content is nested too deeply");
        for (const Node element : parent.ChildElements()) {
            ShapeRecord record;
            if (ClassifyShape(document_, element, controls_, record)) {
                record.offset = document_.OffsetOf(element);
                record.body = ReadBody(element, record);
                if (tree_.shapes.size() >= limits_.shapes)
                    throw Damage(part_, "it has too many shapes");
                tree_.shapes.push_back(std::move(record));
                if (names_ == ShapeNames::Kept)
                    tree_.names.emplace_back(ShapeNameIn(document_, element));
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
        const bool hasTwin = ReadTwin(chosen, fallback, before);
        bool hasOtherText = false;
        for (const Node branch : element.ChildElements())
            if (branch != chosen && !(hasTwin && branch == fallback))
                hasOtherText = hasOtherText || HoldsText(branch);
        for (std::size_t shape = before; shape < tree_.shapes.size(); ++shape)
            tree_.shapes[shape].hasOtherText = tree_.shapes[shape].hasOtherText || hasOtherText;
    }

    /// Whether a shape of a branch has a text.
    bool HoldsText(Node branch) const
    {
        for (const Node shape : branch.ChildElements()) {
            const Node body = document_.Child(shape, Presentation, "txBody");
            if (body && !TextOf(body).Text().empty())
                return true;
        }
        return false;
    }

    /// Reads the text of the fallback when it is that of the one shape read from the chosen branch. `before` is the
    /// number of shapes before that branch.
    bool ReadTwin(Node chosen, Node fallback, std::size_t before)
    {
        // Of several shapes it can't be told which text belongs to which.
        if (fallback == chosen || tree_.shapes.size() != before + 1 || !tree_.shapes.back().body)
            return false;
        const Node twin = document_.Child(document_.Child(fallback, Presentation, "sp"), Presentation, "txBody");
        if (!twin)
            return false;
        TextBody body = TextOf(twin);
        if (body.Text() != tree_.bodies[*tree_.shapes.back().body].Text())
            return false;
        tree_.shapes.back().twin = tree_.bodies.size();
        tree_.bodies.push_back(std::move(body));
        return true;
    }

    std::optional<std::size_t> ReadBody(Node element, const ShapeRecord& record)
    {
        const Node body = record.hasTextFrame ? document_.Child(element, Presentation, "txBody") : Node();
        if (!body)
            return std::nullopt;
        tree_.bodies.push_back(TextOf(body));
        return tree_.bodies.size() - 1;
    }

    TextBody TextOf(Node body) const
    {
        TextBody text = TextBody::Read(document_, body);
        if (text.Size() > limits_.textUnits)
            throw Damage(part_, "a shape's text is too long", text.Offset());
        return text;
    }

    const XmlDocument& document_;
    std::string_view part_;
    const Limits& limits_;
    ShapeNames names_;
    ControlIds controls_;
    ShapeTree tree_;
};

}  // namespace

std::size_t KeptBytesOf(const std::vector<LinkRecord>& links)
{
    std::size_t bytes = 0;
    for (const LinkRecord& link : links)
        bytes += sizeof(LinkRecord) + link.target.relationshipId.size() + link.target.action.size() +
                 link.target.invalidUrl.size() + link.target.tooltip.size() +
                 link.elements.size() * sizeof(std::size_t);
    return bytes;
}

std::size_t KeptBytesOf(const ShapeTree& tree)
{
    std::size_t bytes = tree.shapes.size() * sizeof(ShapeRecord) + tree.layoutIds.size() * sizeof(std::string);
    for (const ShapeRecord& shape : tree.shapes)
        bytes += shape.linkId.size() + shape.linkElements.size() * sizeof(std::size_t);
    for (const std::string& name : tree.names)
        bytes += sizeof(std::string) + name.size();
    for (const TextBody& body : tree.bodies)
        bytes += body.KeptBytes();
    return bytes + KeptBytesOf(tree.links);
}

ShapeTree ReadShapeTree(const XmlDocument& document, std::string_view part, const Limits& limits, ShapeNames names)
{
    return Reader(document, part, limits, names).Read();
}

std::string_view ShapeNameIn(const XmlDocument& document, Node shape)
{
    return document.Attribute(NonVisualOf(document, shape).drawing, "name");
}

}  // namespace tessarine::builtin
