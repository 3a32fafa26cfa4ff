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
    const std::size_t known = declarations_.size();
    document.ForEachAttribute(element, [&](std::string_view name, std::string_view value) {
        if (!IsDeclaration(name))
            return;
        // All of one element are put in order once.
        if (known == 0)
            declarations_.push_back({std::string(name), std::string(value)});
        else
            Put(name, value);
    });
    if (known == 0)
        std::ranges::stable_sort(declarations_, {}, &Declaration::name);
}

void NamespaceScope::Enter(const NamespaceScope& inner)
{
    for (const Declaration& declaration : inner.declarations_)
        Put(declaration.name, declaration.uri);
}

std::string NamespaceScope::Attributes() const
{
    std::string attributes;
    for (const Declaration& declaration : declarations_)
        attributes += AsAttribute(declaration.name, declaration.uri);
    return attributes;
}

NamespaceScope NamespaceScope::NeededIn(const NamespaceScope& other, const MeaningAround& around,
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
            // The inner declaration hides the one around both.
            if (const Declaration* const own = scope.Find(name))
                return std::string_view(own->uri);
            return around(name).value_or(std::string_view());
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
    const auto found = std::ranges::lower_bound(declarations_, name, {}, &Declaration::name);
    return found == declarations_.end() || found->name != name ? nullptr : &*found;
}

void NamespaceScope::Put(std::string_view name, std::string_view uri)
{
    const auto place = std::ranges::lower_bound(declarations_, name, {}, &Declaration::name);
    if (place != declarations_.end() && place->name == name)
        place->uri = uri;
    else
        declarations_.insert(place, {std::string(name), std::string(uri)});
}

}  // namespace tessarine::builtin
