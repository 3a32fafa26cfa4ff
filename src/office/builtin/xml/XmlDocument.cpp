#include "office/builtin/xml/XmlDocument.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "office/builtin/limits/Damage.h"
#include "office/builtin/xml/XmlScanner.h"
#include "office/builtin/xml/XmlText.h"

namespace tessarine::builtin
{

namespace
{

/// Memory of the last document on this thread, for the next one: a run reads one part after the other.
template <class Element>
std::vector<Element>& SpareIndex()
{
    static thread_local std::vector<Element> spare;
    return spare;
}

// In bytes. The index of a huge part is given back and not held for the rest of a run.
constexpr std::size_t keptIndexBytes = 1u << 20;

}  // namespace

XmlDocument::XmlDocument(std::string_view bytes, std::string_view part, const Limits& limits) : bytes_(bytes)
{
    // Offsets in the index have 32 bits.
    if (bytes.size() >= std::numeric_limits<std::uint32_t>::max())
        throw Damage(part, "it is too large");
    elements_ = std::exchange(SpareIndex<Element>(), {});
    elements_.clear();
    MakeIndex(part, limits);

    VisitAttributes(0, [&](std::string_view name, std::string_view value) {
        if (name == "xmlns")
            default_ = NamespaceOf(Decoded(value));
        else if (name.starts_with("xmlns:"))
            prefixes_[static_cast<std::size_t>(NamespaceOf(Decoded(value)))] = name.substr(6);
        return false;
    });
    ForgetReboundPrefixes();
}

XmlDocument::XmlDocument(const XmlDocument& other, std::string_view bytes)
    : bytes_(bytes),
      elements_(other.elements_),
      declaring_(other.declaring_),
      default_(other.default_),
      declaresInRootAlone_(other.declaresInRootAlone_),
      bindsDefaultOnce_(other.bindsDefaultOnce_)
{
    // Prefixes are views of the root's start tag. Decoded attribute values are made again when they are asked for.
    for (std::size_t ns = 0; ns < prefixes_.size(); ++ns)
        if (const std::string_view prefix = other.prefixes_[ns]; !prefix.empty())
            prefixes_[ns] = bytes.substr(static_cast<std::size_t>(prefix.data() - other.bytes_.data()), prefix.size());
}

XmlDocument::~XmlDocument()
{
    if (elements_.capacity() * sizeof(Element) <= keptIndexBytes)
        SpareIndex<Element>() = std::move(elements_);
}

/// Calls `visit` with name and raw value of each attribute until it gives true.
template <class Visit>
void XmlDocument::VisitAttributes(std::uint32_t index, Visit&& visit) const
{
    const Element& element = elements_[index];
    std::size_t at = element.nameEnd;
    const std::size_t end = element.contentBegin - 1;  // its ">"
    while (at < end) {
        while (at < end && (IsSpace(bytes_[at]) || bytes_[at] == '/'))
            ++at;
        const std::size_t nameBegin = at;
        while (at < end && !EndsName(bytes_[at]))
            ++at;
        const std::size_t nameEnd = at;
        while (at < end && bytes_[at] != '"' && bytes_[at] != '\'')
            ++at;
        if (at >= end)
            return;
        const std::size_t valueEnd = bytes_.find(bytes_[at], at + 1);
        if (visit(bytes_.substr(nameBegin, nameEnd - nameBegin), bytes_.substr(at + 1, valueEnd - at - 1)))
            return;
        at = valueEnd + 1;
    }
}

/// An element below the root may bind one of the root's prefixes to another namespace. Then that prefix tells nothing,
/// and each name with it is resolved.
void XmlDocument::ForgetReboundPrefixes()
{
    for (const std::uint32_t index : declaring_) {
        if (index == 0)
            continue;
        VisitAttributes(index, [&](std::string_view name, std::string_view value) {
            bindsDefaultOnce_ = bindsDefaultOnce_ && name != "xmlns";
            declaresInRootAlone_ = declaresInRootAlone_ && !name.starts_with("xmlns");
            if (!name.starts_with("xmlns:"))
                return false;
            const auto usual = std::ranges::find(prefixes_, name.substr(6));
            if (usual != prefixes_.end() && NamespaceOf(value) != static_cast<Ns>(usual - prefixes_.begin()))
                *usual = {};
            return false;
        });
    }
}

/// A declaration of a namespace, and the elements that it holds for.
struct XmlDocument::Declaration {
    std::string_view name;   // "xmlns" or "xmlns:x"
    std::string_view value;  // decoded
    std::uint32_t element;   // index; it holds for this one
    std::uint32_t end;       // and up to this one
};

/// What each name means where: for each name the places in the document at which its meaning changes, so that no
/// question costs a walk over the elements around.
class XmlDocument::Declarations
{
public:
    explicit Declarations(const XmlDocument& document)
    {
        for (const std::uint32_t index : document.declaring_)
            document.VisitAttributes(index, [&](std::string_view name, std::string_view value) {
                if (name == "xmlns" || name.starts_with("xmlns:"))
                    declarations_.push_back(
                        {name, document.Decoded(value), index, document.elements_[index].subtreeEnd});
                return false;
            });
        std::ranges::stable_sort(declarations_, {}, &Declaration::name);
        changes_.reserve(declarations_.size() * 2);
        std::vector<std::uint32_t> around;  // declarations of one name that hold at a place, the innermost last
        for (std::uint32_t i = 0; i < declarations_.size(); ++i) {
            const Declaration& declaration = declarations_[i];
            const bool isNewName = i == 0 || declarations_[i - 1].name != declaration.name;
            CloseUpTo(isNewName ? atEnd : declaration.element, around);
            // Of two in one element the first counts.
            if (!isNewName && declarations_[i - 1].element == declaration.element)
                continue;
            around.push_back(i);
            Put({declaration.element, i, declaration.name});
        }
        CloseUpTo(atEnd, around);
    }

    /// The innermost one of a name at an element, or null.
    const Declaration* Find(std::string_view name, std::uint32_t element) const
    {
        const auto isAfter = [](const std::pair<std::string_view, std::uint32_t>& place, const Change& change) {
            return place.first != change.name ? place.first < change.name : place.second < change.from;
        };
        const auto next = std::upper_bound(changes_.begin(), changes_.end(), std::pair(name, element), isAfter);
        if (next == changes_.begin())
            return nullptr;
        const Change& last = *std::prev(next);
        return last.name == name && last.declaration != nothing ? &declarations_[last.declaration] : nullptr;
    }

private:
    static constexpr std::uint32_t nothing = std::numeric_limits<std::uint32_t>::max();
    static constexpr std::uint32_t atEnd = std::numeric_limits<std::uint32_t>::max();

    struct Change {
        std::uint32_t from;         // element
        std::uint32_t declaration;  // index of what holds from there on
        std::string_view name;
    };

    void Put(const Change& change)
    {
        if (!changes_.empty() && changes_.back().name == change.name && changes_.back().from == change.from)
            changes_.pop_back();
        changes_.push_back(change);
    }

    void CloseUpTo(std::uint32_t element, std::vector<std::uint32_t>& around)
    {
        while (!around.empty() && declarations_[around.back()].end <= element) {
            const Declaration& closed = declarations_[around.back()];
            around.pop_back();
            Put({closed.end, around.empty() ? nothing : around.back(), closed.name});
        }
    }

    std::vector<Declaration> declarations_;  // by name, those of one name in document order
    std::vector<Change> changes_;            // by name and place
};

const XmlDocument::Declaration* XmlDocument::FindDeclaration(Node node, std::string_view attribute) const
{
    if (!declarations_)
        declarations_ = std::make_unique<Declarations>(*this);
    return declarations_->Find(attribute, node.index_);
}

bool XmlDocument::Is(Node node, Ns ns, std::string_view localName) const
{
    if (!node)
        return false;
    const std::string_view name = NameOf(node.index_);
    if (!name.ends_with(localName))
        return false;
    const std::string_view prefix = name.substr(0, name.size() - localName.size());  // with its colon
    const std::string_view usual = prefixes_[static_cast<std::size_t>(ns)];
    if (!usual.empty() && prefix.size() == usual.size() + 1 && prefix.ends_with(':') && prefix.starts_with(usual))
        return true;
    // Only the end of a longer name, as "Fill" is of "a:blipFill".
    if (!prefix.empty() && prefix.find(':') != prefix.size() - 1)
        return false;
    return ResolvePrefix(node, prefix.substr(0, prefix.empty() ? 0 : prefix.size() - 1)) == ns;
}

Node XmlDocument::Child(Node parent, Ns ns, std::string_view localName) const
{
    for (const Node child : parent.ChildElements())
        if (Is(child, ns, localName))
            return child;
    return {};
}

std::string_view XmlDocument::Attribute(Node node, std::string_view name) const
{
    std::string_view found;
    if (node)
        VisitAttributes(node.index_, [&](std::string_view attribute, std::string_view value) {
            if (attribute != name)
                return false;
            found = Decoded(value);
            return true;
        });
    return found;
}

/// True when the qualified name of a node's attribute is this one. Attributes without a prefix have no namespace.
bool XmlDocument::IsAttribute(Node node, std::string_view name, Ns ns, std::string_view localName) const
{
    const std::size_t colon = name.find(':');
    return colon != std::string_view::npos && name.substr(colon + 1) == localName &&
           ResolvePrefix(node, name.substr(0, colon)) == ns;
}

std::optional<std::string_view> XmlDocument::Attribute(Node node, Ns ns, std::string_view localName) const
{
    std::optional<std::string_view> found;
    if (node)
        VisitAttributes(node.index_, [&](std::string_view attribute, std::string_view value) {
            if (!IsAttribute(node, attribute, ns, localName))
                return false;
            found = Decoded(value);
            return true;
        });
    return found;
}

std::string_view XmlDocument::AttributeName(Node node, Ns ns, std::string_view localName) const
{
    std::string_view found;
    if (node)
        VisitAttributes(node.index_, [&](std::string_view attribute, std::string_view) {
            if (!IsAttribute(node, attribute, ns, localName))
                return false;
            found = attribute;
            return true;
        });
    return found;
}

void XmlDocument::ForEachAttribute(Node node, const AttributeVisitor& visit) const
{
    VisitAttributes(node.index_, [&](std::string_view name, std::string_view value) {
        visit(name, Decoded(value));
        return false;
    });
}

void XmlDocument::ForEachAttribute(const AttributeVisitor& visit) const
{
    for (std::uint32_t index = 0; index < elements_.size(); ++index)
        ForEachAttribute({this, index}, visit);
}

bool XmlDocument::BooleanAttribute(Node node, std::string_view name, bool absent) const
{
    const std::string_view value = Attribute(node, name);
    return value.empty() ? absent : value == "1" || value == "true" || value == "on";
}

Ns XmlDocument::ResolvePrefix(Node node, std::string_view prefix) const
{
    if (!node)
        return Ns::None;
    if (prefix.empty()) {
        if (bindsDefaultOnce_)
            return default_;
        const Declaration* const found = FindDeclaration(node, "xmlns");
        return found == nullptr ? Ns::None : NamespaceOf(found->value);
    }
    // What the root binds once needs no search.
    if (const auto usual = std::ranges::find(prefixes_, prefix); usual != prefixes_.end())
        return static_cast<Ns>(usual - prefixes_.begin());
    const Declaration* const found = FindDeclaration(node, "xmlns:" + std::string(prefix));
    return found == nullptr ? Ns::None : NamespaceOf(found->value);
}

std::optional<std::string_view> XmlDocument::DeclarationAt(Node node, std::string_view attribute) const
{
    const Declaration* const found = FindDeclaration(node, attribute);
    return found == nullptr ? std::nullopt : std::optional(found->value);
}

/// An attribute value as it reads: references decoded, white space as blanks (XML 1.0 3.3.3).
std::string_view XmlDocument::Decoded(std::string_view value) const
{
    // Most values are a few characters; those of declarations, of which each part has some, are long.
    constexpr std::size_t few = 16;
    constexpr std::string_view special = "&\t\n\r";
    const auto isSpecial = [&](char c) { return c == '&' || (c >= '\t' && c <= '\r'); };
    const auto holds = [&](char c) { return value.find(c) != std::string_view::npos; };
    if (value.size() <= few ? std::ranges::none_of(value, isSpecial) : std::ranges::none_of(special, holds))
        return value;
    return decoded_.emplace_back(DecodeAttribute(value));
}

ElementRange XmlDocument::RangeOf(Node node) const
{
    const Element& element = elements_[node.index_];
    return {element.begin, element.contentBegin, element.contentEnd, element.end, NameOf(node.index_)};
}

Node XmlDocument::ParentOf(Node node) const
{
    return node.index_ == 0 ? Node() : NodeAt(elements_[node.index_].parent);
}

Node XmlDocument::ElementAt(std::size_t offset) const
{
    const auto found = std::ranges::lower_bound(elements_, offset, {}, &Element::begin);
    if (found == elements_.end() || found->begin != offset)
        return {};
    return {this, static_cast<std::uint32_t>(found - elements_.begin())};
}

void XmlDocument::AppendTextOf(Node node, String& text) const
{
    if (!node)
        return;
    const Element& element = elements_[node.index_];
    AppendContent(bytes_.substr(element.contentBegin, element.contentEnd - element.contentBegin), text,
                  InnerElements::Skipped);
}

String XmlDocument::TextOf(Node node) const
{
    String text;
    AppendTextOf(node, text);
    return text;
}

}  // namespace tessarine::builtin
