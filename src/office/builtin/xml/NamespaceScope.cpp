#include "office/builtin/xml/NamespaceScope.h"

#include <algorithm>

#include "office/builtin/xml/XmlText.h"

namespace tessarine::builtin
{

namespace
{

bool IsDeclaration(std::string_view attribute)
{
    return attribute == "xmlns" || attribute.starts_with("xmlns:");
}

std::string AsAttribute(std::string_view name, std::string_view uri)
{
    return " " + std::string(name) + "=\"" + EscapeAttribute(FromUtf8(uri)) + "\"";
}

}  // namespace

void NamespaceScope::Enter(const XmlDocument& document, Node element)
{
    document.ForEachAttribute(element, [&](std::string_view name, std::string_view value) {
        if (IsDeclaration(name))
            Put(name, value);
    });
}

void NamespaceScope::Enter(const NamespaceScope& inner)
{
    for (const Declaration& declaration : inner.declarations_)
        Put(declaration.name, declaration.uri);
}

void NamespaceScope::AddMeanings(const NamespaceScope& names, const XmlDocument& document, Node element)
{
    for (const Declaration& declaration : names.declarations_)
        if (const auto uri = document.DeclarationAt(element, declaration.name))
            Put(declaration.name, *uri);
}

std::string NamespaceScope::Attributes() const
{
    std::string attributes;
    for (const Declaration& declaration : declarations_)
        attributes += AsAttribute(declaration.name, declaration.uri);
    return attributes;
}

NamespaceScope NamespaceScope::NeededIn(const NamespaceScope& other, const NamespaceScope& shared,
                                        std::string_view element) const
{
    NamespaceScope needed;
    // The usual case: neither scope declares anything.
    if (*this == other)
        return needed;
    NamespaceScope names = *this;
    names.Enter(other);
    for (const Declaration& declaration : names.declarations_) {
        const std::string& name = declaration.name;
        const auto meaningIn = [&](const NamespaceScope& scope) {
            const Declaration* const own = scope.Find(name);
            // The inner declaration hides the one around both.
            const Declaration* const found = own != nullptr ? own : shared.Find(name);
            return found == nullptr ? std::string_view() : std::string_view(found->uri);
        };
        const std::string_view wanted = meaningIn(*this);
        // A prefix can't be bound to nothing; one that was bound to nothing can't have been used.
        const bool canDeclare = !wanted.empty() || name == "xmlns";
        if (wanted != meaningIn(other) && canDeclare && !FindAttribute(element, 0, name).found)
            needed.Put(name, wanted);
    }
    return needed;
}

const NamespaceScope::Declaration* NamespaceScope::Find(std::string_view name) const
{
    const auto found = std::ranges::find(declarations_, name, &Declaration::name);
    return found == declarations_.end() ? nullptr : &*found;
}

void NamespaceScope::Put(std::string_view name, std::string_view uri)
{
    const auto found = std::ranges::find(declarations_, name, &Declaration::name);
    if (found != declarations_.end())
        found->uri = uri;
    else
        declarations_.push_back({std::string(name), std::string(uri)});
}

}  // namespace tessarine::builtin
