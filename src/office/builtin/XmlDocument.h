#pragma once

#include <array>
#include <pugixml.hpp>
#include <string>
#include <string_view>

#include "office/builtin/Limits.h"
#include "office/builtin/XmlNamespaces.h"

namespace tessarine::builtin
{

using Node = pugi::xml_node;

/// A parsed part with byte offsets: names are matched by namespace, whatever the prefixes, and every element tells
/// where it stands in the bytes. Reading only; edits are made to the bytes.
class XmlDocument
{
public:
    /// Parses UTF-8 bytes in place: afterwards `bytes` is the document's memory and no longer the text. It must outlive
    /// the document. Raises -2147023504 for markup that is not well-formed, for a DTD (nothing is ever expanded) and
    /// when the nodes would need more memory than the limits allow. `part` names the part in failures.
    XmlDocument(std::string& bytes, std::string_view part, const Limits& limits);

    Node Root() const { return root_; }

    /// True when the node is an element of this name.
    bool Is(Node node, Ns ns, const char* localName) const;

    /// First child element of that name, or an empty node.
    Node Child(Node parent, Ns ns, const char* localName) const;

    /// An attribute in a namespace, such as r:id; null text when there is none.
    const char* Attribute(Node node, Ns ns, const char* localName) const;

    /// The namespace that a prefix stands for at a node.
    Ns ResolvePrefix(Node node, std::string_view prefix) const;

    /// Offset of the element's "<" in the bytes that were parsed.
    std::size_t OffsetOf(Node element) const { return skipped_ + static_cast<std::size_t>(element.offset_debug()) - 1; }

    /// The text of an element: all its character data, CDATA included, comments left out.
    static std::string TextOf(Node element);

private:
    pugi::xml_document document_;
    std::size_t skipped_ = 0;  // bytes of a byte order mark in front
    Node root_;
    /// The prefix (with its colon) that the root element binds to a namespace; empty when it binds none, or the default
    /// one, which inner elements often bind anew.
    std::array<std::string, static_cast<std::size_t>(Ns::Count)> prefixes_;
};

/// The value of an attribute that has no namespace, as text; "" when absent.
inline std::string_view Attribute(Node node, const char* name)
{
    return node.attribute(name).value();
}

/// ECMA-376 22.9.2.7: "1", "true" and "on" are true; an absent attribute has its default.
bool BooleanAttribute(Node node, const char* name, bool absent);

}  // namespace tessarine::builtin
