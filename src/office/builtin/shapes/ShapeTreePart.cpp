#include "office/builtin/shapes/ShapeTreePart.h"

#include <algorithm>
#include <utility>

#include "office/builtin/limits/Damage.h"
#include "office/builtin/reader/Refusals.h"
#include "office/builtin/shapes/HyperlinkAddress.h"
#include "office/builtin/text/GatheredText.h"
#include "office/builtin/xml/XmlDocument.h"
#include "office/builtin/xml/XmlScanner.h"
#include "office/builtin/xml/XmlText.h"

namespace tessarine::builtin
{

namespace
{

constexpr std::string_view fileAction = "ppaction://hlinkfile";

/// Which link elements are members of Hyperlinks, by their action: plain links, files, other presentations and jumps to
/// a slide. Programs, macros, shows and the like are action settings.
bool IsHyperlink(const LinkRecord& link)
{
    if (link.elements.empty())
        return false;  // removed
    const std::string_view action = link.action;
    if (action.empty())
        return !link.relationshipId.empty() || !link.invalidUrl.empty();
    return action.starts_with(fileAction) || action.starts_with("ppaction://hlinkpres") ||
           action.starts_with("ppaction://hlinksldjump");
}

std::size_t Occurrences(std::string_view text, std::string_view what)
{
    std::size_t count = 0;
    for (std::size_t at = text.find(what); at != std::string_view::npos; at = text.find(what, at + what.size()))
        ++count;
    return count;
}

/// The qualified name of an element's relationship id (r:id, whatever the prefix).
std::string RelationshipIdName(std::string_view xml, const ElementRange& element)
{
    const std::string_view tag = xml.substr(element.begin, element.contentBegin - element.begin);
    const std::size_t at = tag.find(":id=");
    if (at == std::string_view::npos)
        return "r:id";
    const std::size_t begin = tag.find_last_of(" \t\r\n", at) + 1;
    return std::string(tag.substr(begin, at + 3 - begin));
}

/// Gives an attribute a new value (escaped already), adds it, or removes it for an empty value.
void EditAttribute(std::vector<ByteEdit>& edits, std::string_view xml, const ElementRange& element,
                   const std::string& name, const std::string& value)
{
    const AttributeRange range = FindAttribute(xml, element.begin, name);
    const std::size_t behindName = element.begin + 1 + element.name.size();
    if (range.found && value.empty())
        edits.push_back({range.begin - 1, range.valueEnd + 1, {}});  // with the blank in front
    else if (range.found)
        edits.push_back({range.valueBegin, range.valueEnd, value});
    else if (!value.empty())
        edits.push_back({behindName, behindName, " " + name + "=\"" + value + "\""});
}

}  // namespace

ShapeTreePart::ShapeTreePart(Package& package, Package::Entry entry)
    : package_(package), entry_(entry), filter_([this] { return GatherText(package_.ReadXmlOnce(entry_)); })
{
}

ShapeTree& ShapeTreePart::Tree()
{
    if (!tree_)
        ReadTree();
    return *tree_;
}

void ShapeTreePart::ReadTree()
{
    const std::string_view bytes = package_.ReadXmlOnce(entry_);
    const std::string_view name = package_.NameOf(entry_);
    const XmlDocument document(bytes, name, package_.limits());
    tree_ = ReadShapeTree(document, name, package_.limits());
    for (const std::size_t removed : removedLinks_)
        tree_->links.insert(tree_->links.begin() + static_cast<std::ptrdiff_t>(std::min(removed, tree_->links.size())),
                            LinkRecord());
}

const std::string& ShapeTreePart::Text()
{
    filter_.Decline();  // nothing but an edit asks for the text
    if (text_.empty())
        text_ = package_.ReadXmlOnce(entry_);
    return text_;
}

ShapeFacts ShapeTreePart::Shape(std::size_t shape)
{
    const ShapeRecord& record = Shapes()[shape];
    return {record.type, record.hasTextFrame};
}

std::optional<std::size_t> ShapeTreePart::FindText(std::size_t shape, const TextPattern& pattern, std::size_t from)
{
    const std::int32_t body = Shapes()[shape].body;
    return body < 0 ? std::nullopt : Body(body).Find(pattern, from);
}

std::size_t ShapeTreePart::ReplaceText(std::size_t shapeIndex, std::size_t begin, std::size_t length, StringView with)
{
    FlushLinks();
    const std::int32_t twin = Shapes()[shapeIndex].twin;
    const std::int32_t body = Shapes()[shapeIndex].body;
    const bool twinAgrees = twin >= 0 && Body(twin).Text() == Body(body).Text();
    const std::size_t count = Body(body).Replace(begin, length, with, Text());
    if (twinAgrees)
        Body(twin).Replace(begin, length, with, Text());
    return count;
}

void ShapeTreePart::PutText(std::size_t shapeIndex, StringView text)
{
    FlushLinks();
    Body(Shapes()[shapeIndex].body).PutText(text, Text());
}

/// Null when the page shows none.
const ShapeRecord* ShapeTreePart::FirstHeaderFooter(HeaderFooterKind kind)
{
    const Placeholder placeholder = kind == HeaderFooterKind::Header ? Placeholder::Header : Placeholder::Footer;
    const auto& shapes = Shapes();
    const auto found = std::ranges::find(shapes, placeholder, &ShapeRecord::placeholder);
    return found == shapes.end() ? nullptr : &*found;
}

std::optional<String> ShapeTreePart::HeaderFooter(HeaderFooterKind kind)
{
    const ShapeRecord* const shape = FirstHeaderFooter(kind);
    if (shape == nullptr)
        return std::nullopt;
    return shape->body < 0 ? String() : Body(shape->body).Text();
}

void ShapeTreePart::PutHeaderFooter(HeaderFooterKind kind, StringView text)
{
    const ShapeRecord* const shape = FirstHeaderFooter(kind);
    if (shape == nullptr || shape->body < 0)
        throw NoHeaderFooter();
    PutText(static_cast<std::size_t>(shape - Shapes().data()), text);
}

bool ShapeTreePart::HasEditedBodies() const
{
    return tree_ && std::ranges::any_of(tree_->bodies, [](const TextBody& body) { return body.Edited() != nullptr; });
}

void ShapeTreePart::Flush()
{
    FlushLinks();
    FlushTexts();
}

void ShapeTreePart::FlushTexts()
{
    if (!HasEditedBodies())
        return;
    std::vector<ByteEdit> edits;
    for (const TextBody& body : tree_->bodies)
        if (const TextTree* tree = body.Edited())
            edits.push_back({tree->Begin(), tree->End(), tree->Bytes()});
    PutEdits(std::move(edits));
}

void ShapeTreePart::FlushLinks()
{
    if (linkChanges_.empty())
        return;
    std::vector<ByteEdit> edits;
    for (const auto& [index, change] : linkChanges_) {
        for (const std::size_t element : Tree().links[index].elements) {
            const ElementRange range = ScanElement(Text(), element);
            if (change.removed) {
                edits.push_back({range.begin, range.end, {}});
                continue;
            }
            if (change.relationshipId)
                EditAttribute(edits, Text(), range, RelationshipIdName(Text(), range), *change.relationshipId);
            if (change.invalidUrl)
                EditAttribute(edits, Text(), range, "invalidUrl", EscapeAttribute(FromUtf8(*change.invalidUrl)));
            if (change.action)
                EditAttribute(edits, Text(), range, "action", *change.action);
        }
        if (change.removed)
            removedLinks_.insert(std::ranges::lower_bound(removedLinks_, index), index);
    }
    linkChanges_.clear();
    PutEdits(std::move(edits));
}

void ShapeTreePart::PutEdits(std::vector<ByteEdit> edits)
{
    package_.ReplaceXml(entry_, ApplyEdits(Text(), std::move(edits)));
    text_.clear();  // the part's encoding may have its own way to write what was put in
    tree_.reset();
    idUses_.clear();  // a paragraph break within a linked run makes two of it
}

std::vector<std::size_t> ShapeTreePart::HyperlinkIndices()
{
    FlushTexts();  // an edited text may have lost links
    std::vector<std::size_t> indices;
    const auto& links = Tree().links;
    for (std::size_t i = 0; i < links.size(); ++i)
        if (IsHyperlink(links[i]))
            indices.push_back(i);
    return indices;
}

LinkRecord& ShapeTreePart::LinkAt(std::size_t index)
{
    // An edit of the text may have taken the link with it.
    if (index >= Tree().links.size() || Tree().links[index].elements.empty())
        throw NoHyperlink();
    return Tree().links[index];
}

String ShapeTreePart::HyperlinkAddress(std::size_t index)
{
    FlushTexts();
    const LinkRecord& link = LinkAt(index);
    if (link.relationshipId.empty())
        return FromUtf8(link.invalidUrl);
    const Relationship* relationship = Links().Find(link.relationshipId);
    if (relationship == nullptr || !relationship->external)
        return {};
    return ReadTarget(relationship->target, true).address;
}

void ShapeTreePart::PutHyperlinkAddress(std::size_t index, const String& address)
{
    const String before = HyperlinkAddress(index);
    if (address == before)
        return;
    LinkRecord& link = LinkAt(index);
    if (link.relationshipId.empty()) {
        if (address.empty()) {
            RemoveLink(index);
            return;
        }
        CheckAddressLength(address);
        link.invalidUrl = ToUtf8(address);
        Change(index).invalidUrl = link.invalidUrl;
        return;
    }
    const Relationship* relationship = Links().Find(link.relationshipId);
    if (relationship == nullptr || !relationship->external)
        throw Failure(FailureNumber::InvalidRequest, u"Hyperlink (unknown member) : Invalid request.");
    if (address.empty() && ReadTarget(relationship->target, true).fragment.empty()) {
        RemoveLink(index);
        return;
    }
    std::string id =
        RetargetOrClone(link.relationshipId, link.elements.size(), WriteTarget(relationship->target, address, true));
    if (id != link.relationshipId) {
        link.relationshipId = std::move(id);
        Change(index).relationshipId = link.relationshipId;
    }
    // A link to a file says so by its action; PowerPoint goes by it.
    const bool isFile = !address.empty() && IsFileAddress(address);
    const bool wasFile = !before.empty() && IsFileAddress(before);
    if ((isFile && !wasFile && link.action.empty()) || (!isFile && wasFile && !link.action.empty())) {
        link.action = isFile ? fileAction : "";
        Change(index).action = link.action;
    }
}

ShapeTreePart::LinkChange& ShapeTreePart::Change(std::size_t link)
{
    return linkChanges_[link];
}

void ShapeTreePart::RemoveLink(std::size_t index)
{
    LinkRecord& link = Tree().links[index];
    if (!link.relationshipId.empty()) {
        std::size_t& uses = UsesOf(link.relationshipId);
        uses -= std::min(uses, link.elements.size());
        if (uses == 0)
            Links().Remove(link.relationshipId);
    }
    link.relationshipId.clear();
    link.invalidUrl.clear();
    link.action.clear();
    Change(index) = {.removed = true, .relationshipId = {}, .invalidUrl = {}, .action = {}};
}

/// Points the relationship to a new target when nothing else of the part uses it, otherwise makes a new one. Gives the
/// id to use.
std::string ShapeTreePart::RetargetOrClone(const std::string& relationshipId, std::size_t ownUses, std::string target)
{
    std::size_t& uses = UsesOf(relationshipId);
    if (uses <= ownUses) {
        Links().PutTarget(relationshipId, std::move(target));
        return relationshipId;
    }
    uses -= ownUses;
    std::string id(Links().AddLike(relationshipId, std::move(target)));
    idUses_[id] = ownUses;
    return id;
}

/// How many attributes of the part have the id for their value; counted once between two edits of the bytes, and kept
/// up to date.
std::size_t& ShapeTreePart::UsesOf(const std::string& relationshipId)
{
    const auto [entry, isNew] = idUses_.try_emplace(relationshipId, 0);
    if (isNew) {
        const std::string id = EscapeAttribute(FromUtf8(relationshipId));
        entry->second = Occurrences(Text(), "\"" + id + "\"") + Occurrences(Text(), "'" + id + "'");
    }
    return entry->second;
}

String ShapeTreePart::LinkSource(std::size_t shape)
{
    const Relationship* relationship = Links().Find(Shapes()[shape].linkId);
    if (relationship == nullptr)
        throw Failure(FailureNumber::InvalidRequest, u"LinkFormat (unknown member) : Invalid request.");
    return ReadTarget(relationship->target, false).address;
}

void ShapeTreePart::PutLinkSource(std::size_t index, const String& source)
{
    const ShapeRecord& shape = Shapes()[index];
    if (source == LinkSource(index))
        return;
    const Relationship* relationship = Links().Find(shape.linkId);
    const std::string target = WriteTarget(relationship->target, source, false);
    // The object stands once or, with a branch for older readers, twice in the part.
    std::string id = RetargetOrClone(shape.linkId, shape.linkElements.size(), target);
    if (id == shape.linkId)
        return;
    FlushLinks();
    FlushTexts();
    const auto elements = Tree().shapes[index].linkElements;
    std::vector<ByteEdit> edits;
    for (const std::size_t element : elements) {
        const ElementRange range = ScanElement(Text(), element);
        EditAttribute(edits, Text(), range, RelationshipIdName(Text(), range), id);
    }
    PutEdits(std::move(edits));
}

}  // namespace tessarine::builtin
