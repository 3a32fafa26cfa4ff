#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "office/builtin/xml/XmlDocument.h"

namespace tessarine::builtin
{

/// The namespaces that elements declare around a piece of markup, below an element that many pieces share. It goes
/// along when a piece is moved or copied, so that its prefixes keep their meaning. Nearly always empty: producers
/// declare namespaces on the root element.
class NamespaceScope
{
public:
    /// Adds what an element declares. Where it declares a name again, the inner declaration counts.
    void Enter(const XmlDocument& document, Node element);
    /// Adds what a scope further in declares, in the same way.
    void Enter(const NamespaceScope& inner);

    /// The declarations as attributes, escaped, each with a blank in front; "" without any.
    std::string Attributes() const;

    /// Gives the meaning that a name ("xmlns:x") has around a text, or nothing.
    using MeaningAround = std::function<std::optional<std::string_view>(std::string_view name)>;

    /// What an element has to declare when it leaves this scope for another one. `around` tells the meanings that hold
    /// around both. `element` is its markup: what its own start tag declares is
    /// not needed. A prefix that means nothing here is left out, since XML has no way to declare that (Namespaces in
    /// XML 1.0, 5).
    NamespaceScope NeededIn(const NamespaceScope& other, const MeaningAround& around, std::string_view element) const;

    /// The same declarations in the same order.
    bool operator==(const NamespaceScope&) const = default;

private:
    struct Declaration {
        std::string name;  // "xmlns" or "xmlns:x"
        std::string uri;   // decoded; "" for xmlns=""

        bool operator==(const Declaration&) const = default;
    };

    /// Null for a name that is not declared here.
    const Declaration* Find(std::string_view name) const;
    /// Declares a name, in place of what it meant before.
    void Put(std::string_view name, std::string_view uri);

    std::vector<Declaration> declarations_;  // one per name, in the order of names
};

}  // namespace tessarine::builtin
