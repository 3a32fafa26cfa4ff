#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "office/builtin/limits/Limits.h"
#include "office/builtin/xml/XmlNamespaces.h"
#include "office/builtin/xml/XmlScanner.h"
#include "platform/String.h"

namespace tessarine::builtin
{

class XmlDocument;

/// An element of a document, or none. Cheap to copy; lives no longer than its document.
class Node
{
public:
    class Children;

    Node() = default;
    /// False for none.
    explicit operator bool() const { return document_ != nullptr; }
    bool operator==(const Node&) const = default;

    std::string_view Name() const;  ///< Qualified, as written; "" for none.
    /// In document order; none have no children.
    Children ChildElements() const;

private:
    friend class XmlDocument;
    Node(const XmlDocument* document, std::uint32_t index) : document_(document), index_(index) {}

    /// Null for none.
    const XmlDocument* document_ = nullptr;
    std::uint32_t index_ = 0;
};

/// A part as an index of its elements: where each begins and ends, and which holds which. Names are matched by
/// namespace, whatever the prefixes. Reading only; edits are made to the bytes.
///
/// Made for walking a few elements of many large parts: one pass finds the tags and proves that they are balanced;
/// attributes and text stay bytes until they are asked for, and nothing is copied.
class XmlDocument
{
public:
    /// `bytes` is UTF-8 and must outlive the document. Raises `FileCorrupt` for markup that is not well-formed by XML
    /// 1.0 (also for characters that XML can't hold, an "&" without a reference, attributes without quotes or of the
    /// same name), for a DTD (nothing is ever expanded) and for more or deeper elements than the limits allow. Names
    /// are looked at where they begin, and namespaces not at all (see NamespaceFault). `part` names the part in
    /// failures.
    XmlDocument(std::string_view bytes, std::string_view part, const Limits& limits);

    /// The same document over a copy of its bytes, which must outlive it. The index is copied and not made again.
    XmlDocument(const XmlDocument& other, std::string_view bytes);

    ~XmlDocument();
    XmlDocument(const XmlDocument&) = delete;
    XmlDocument& operator=(const XmlDocument&) = delete;

    /// What the document was made of.
    std::string_view Bytes() const { return bytes_; }
    /// What stands in a start tag of the document after the name, up to and including its ">".
    std::string_view AttributesOf(const ElementRange& element) const
    {
        const std::size_t nameEnd = element.begin + 1 + element.name.size();
        return bytes_.substr(nameEnd, element.contentBegin - nameEnd);
    }
    /// The root element, which every document has.
    Node Root() const { return {this, 0}; }

    /// True when the node is an element of this name; false for none.
    bool Is(Node node, Ns ns, std::string_view localName) const;

    /// First child element of that name, or none. None has no children.
    Node Child(Node parent, Ns ns, std::string_view localName) const;

    /// The value of an attribute that has no namespace; "" when absent. References are decoded. Like all texts that the
    /// document gives, it lives no longer than the document.
    std::string_view Attribute(Node node, std::string_view name) const;

    /// The value of an attribute in a namespace, such as r:id; nothing when absent.
    std::optional<std::string_view> Attribute(Node node, Ns ns, std::string_view localName) const;

    /// The qualified name of such an attribute, as written ("r:id"); "" when absent.
    std::string_view AttributeName(Node node, Ns ns, std::string_view localName) const;

    /// Calls `visit` with the qualified name and the decoded value of each attribute of an element, declarations of
    /// namespaces included.
    using AttributeVisitor = std::function<void(std::string_view name, std::string_view value)>;
    void ForEachAttribute(Node node, const AttributeVisitor& visit) const;
    void ForEachAttribute(const AttributeVisitor& visit) const;  ///< Of all elements, in document order.

    /// ECMA-376 22.9.2.7: "1", "true" and "on" are true; an absent attribute has its default.
    bool BooleanAttribute(Node node, std::string_view name, bool absent) const;

    /// The namespace that a prefix (without its colon, "" for the default) stands for at a node; `None` when it is not
    /// declared there.
    Ns ResolvePrefix(Node node, std::string_view prefix) const;

    /// What the node or the nearest element around it declares by an attribute "xmlns" or "xmlns:x": the namespace as
    /// it reads, or nothing.
    std::optional<std::string_view> DeclarationAt(Node node, std::string_view attribute) const;

    /// The elements by their number in document order, from 0 for the root: where each stands in the bytes.
    std::size_t ElementCount() const { return elements_.size(); }
    ElementRange RangeOf(std::size_t number) const { return RangeOf(NodeAt(number)); }
    Node NodeAt(std::size_t number) const { return {this, static_cast<std::uint32_t>(number)}; }

    /// Offset of the element's "<" in the bytes. Here and in RangeOf the node must not be none.
    std::size_t OffsetOf(Node node) const { return elements_[node.index_].begin; }

    /// Where the element stands in the bytes. Its name is a view into them.
    ElementRange RangeOf(Node node) const;

    /// The element whose "<" stands at an offset, or none. Found by halving, not by a walk.
    Node ElementAt(std::size_t offset) const;

    /// The element around one; none for the root.
    Node ParentOf(Node node) const;

    /// True when no element but the root declares a namespace.
    bool DeclaresInRootAlone() const { return declaresInRootAlone_; }

    /// The text of an element: its own characters as ContentUnits reads them, without those of elements in it.
    String TextOf(Node node) const;
    /// The same at the end of `text`. Both add nothing for none.
    void AppendTextOf(Node node, String& text) const;

private:
    friend class Node;
    friend class Node::Children;

    /// Offsets in the bytes, in 32 bits: a part may have millions of elements, and their index is what it costs in
    /// memory.
    struct Element {
        std::uint32_t begin;         // its "<"
        std::uint32_t nameEnd;       // after its qualified name
        std::uint32_t contentBegin;  // after the ">" of its start tag
        std::uint32_t contentEnd;    // the "<" of its end tag
        std::uint32_t end;           // after its last ">"
        std::uint32_t parent;        // index of the element around it; the largest number for the root
        std::uint32_t subtreeEnd;    // index after its last descendant
    };

    /// Fills elements_ and declaring_, by the one pass over the bytes.
    void MakeIndex(std::string_view part, const Limits& limits);

    /// Qualified, as written.
    std::string_view NameOf(std::uint32_t index) const
    {
        const Element& element = elements_[index];
        return bytes_.substr(element.begin + 1, element.nameEnd - element.begin - 1);
    }
    void ForgetReboundPrefixes();  // takes back from prefixes_ what holds for the root alone
    struct Declaration;
    class Declarations;
    const Declaration* FindDeclaration(Node node, std::string_view attribute) const;
    std::string_view Decoded(std::string_view value) const;
    bool IsAttribute(Node node, std::string_view name, Ns ns, std::string_view localName) const;
    template <class Visit>
    void VisitAttributes(std::uint32_t index, Visit&& visit) const;

    std::string_view bytes_;                // UTF-8, borrowed
    std::vector<Element> elements_;         // in document order: descendants right after their ancestor
    std::vector<std::uint32_t> declaring_;  // indices of the elements that declare namespaces, in document order
    /// The prefix that the root element binds to a namespace and no other element binds to another one: names with it
    /// need no resolving. Empty when there is none.
    std::array<std::string_view, static_cast<std::size_t>(Ns::Count)> prefixes_;
    Ns default_ = Ns::None;  // bound by the root element to names without a prefix
    bool declaresInRootAlone_ = true;
    bool bindsDefaultOnce_ = true;                        // no other element binds names without a prefix
    mutable std::unique_ptr<Declarations> declarations_;  // of all elements, made when a name needs them
    mutable std::deque<std::string> decoded_;             // attribute values that are not in the bytes as they read
};

/// The child elements of a node, for a range loop.
class Node::Children
{
public:
    class Iterator
    {
    public:
        Iterator(const XmlDocument* document, std::uint32_t index) : document_(document), index_(index) {}

        Node operator*() const { return {document_, index_}; }
        /// To the next sibling, past everything inside of the element.
        Iterator& operator++()
        {
            index_ = document_->elements_[index_].subtreeEnd;
            return *this;
        }
        bool operator==(const Iterator& other) const { return index_ == other.index_; }

    private:
        const XmlDocument* document_;
        std::uint32_t index_;
    };

    Children(const XmlDocument* document, std::uint32_t first, std::uint32_t end)
        : begin_(document, first), end_(document, end)
    {
    }

    Iterator begin() const { return begin_; }
    Iterator end() const { return end_; }
    bool IsEmpty() const { return begin_ == end_; }

private:
    Iterator begin_;
    Iterator end_;
};

inline std::string_view Node::Name() const
{
    return document_ == nullptr ? std::string_view() : document_->NameOf(index_);
}

inline Node::Children Node::ChildElements() const
{
    if (document_ == nullptr)
        return {nullptr, 0, 0};
    return {document_, index_ + 1, document_->elements_[index_].subtreeEnd};
}

}  // namespace tessarine::builtin
