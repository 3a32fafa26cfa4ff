#include "office/builtin/properties/PropertyPart.h"

#include <algorithm>

#include "office/builtin/limits/Damage.h"
#include "office/builtin/xml/EditedPart.h"
#include "office/builtin/xml/RootElement.h"
#include "office/builtin/xml/XmlEdits.h"
#include "office/builtin/xml/XmlScanner.h"
#include "office/builtin/xml/XmlText.h"

namespace tessarine::builtin
{

namespace
{

constexpr std::string_view declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";

/// What one of the two parts is made of when a file has none.
struct PartKind {
    std::string_view relationship;  // its kind, by which the part is found
    std::string_view relationshipType;
    std::string_view contentType;
    std::string_view partName;
    std::string_view emptyRoot;
};

constexpr PartKind coreKind{
    "core-properties", "http://schemas.openxmlformats.org/package/2006/relationships/metadata/core-properties",
    "application/vnd.openxmlformats-package.core-properties+xml", "docProps/core.xml",
    "<cp:coreProperties xmlns:cp=\"http://schemas.openxmlformats.org/package/2006/metadata/core-properties\" "
    "xmlns:dc=\"http://purl.org/dc/elements/1.1/\" xmlns:dcterms=\"http://purl.org/dc/terms/\" "
    "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\"></cp:coreProperties>"};

constexpr PartKind extendedKind{
    "extended-properties", "http://schemas.openxmlformats.org/officeDocument/2006/relationships/extended-properties",
    "application/vnd.openxmlformats-officedocument.extended-properties+xml", "docProps/app.xml",
    "<Properties xmlns=\"http://schemas.openxmlformats.org/officeDocument/2006/extended-properties\"></Properties>"};

constexpr PartKind strictExtendedKind{
    extendedKind.relationship, "http://purl.oclc.org/ooxml/officeDocument/relationships/extendedProperties",
    extendedKind.contentType, extendedKind.partName,
    "<Properties xmlns=\"http://purl.oclc.org/ooxml/officeDocument/extendedProperties\"></Properties>"};

const PartKind& KindOf(PropertyPart::Which which)
{
    return which == PropertyPart::Which::Core ? coreKind : extendedKind;
}

/// The two families of names don't mix in one package.
bool IsStrict(Package& package)
{
    const Relationship* main = package.RelationshipsOf(std::nullopt).FirstOf("officeDocument");
    return main != nullptr && main->type.starts_with("http://purl.oclc.org/");
}

std::string_view DefaultPrefix(Ns ns)
{
    return ns == Ns::DublinCore ? "dc:" : ns == Ns::CoreProperties ? "cp:" : "";
}

std::string_view UriOf(Ns ns)
{
    return ns == Ns::DublinCore       ? "http://purl.org/dc/elements/1.1/"
           : ns == Ns::CoreProperties ? "http://schemas.openxmlformats.org/package/2006/metadata/core-properties"
                                      : "http://schemas.openxmlformats.org/officeDocument/2006/extended-properties";
}

}  // namespace

PropertyPart::PropertyPart(Package& package, Which which) : package_(package), which_(which)
{
    const Relationship* relationship = package.RelationshipsOf(std::nullopt).FirstOf(KindOf(which).relationship);
    entry_ = package.Follow(std::nullopt, relationship);
    if (!entry_)
        return;
    bytes_ = package.ReadXml(*entry_);
    const XmlDocument document(bytes_, package.NameOf(*entry_), package.limits());
    document.ForEachAttribute(document.Root(), [&](std::string_view name, std::string_view value) {
        if (name == "xmlns")
            prefixes_.emplace(NamespaceOf(value), "");
        else if (name.starts_with("xmlns:"))
            prefixes_.emplace(NamespaceOf(value), std::string(name.substr(6)) + ":");
    });
    elements_ = ElementsOf(document);
    titles_ = TitlesOf(document);
    for (const auto* const texts : {&elements_, &titles_})
        for (const Element& element : *texts)
            if (element.text.size() > package.limits().textUnits)
                throw Damage(package.NameOf(*entry_), "a property is too long", element.offset);
}

std::vector<PropertyPart::Element> PropertyPart::TitlesOf(const XmlDocument& document)
{
    std::vector<Element> titles;
    const Node list = document.Child(document.Root(), Ns::ExtendedProperties, "TitlesOfParts");
    for (const Node entry : document.Child(list, Ns::VariantTypes, "vector").ChildElements())
        if (document.Is(entry, Ns::VariantTypes, "lpstr") || document.Is(entry, Ns::VariantTypes, "lpwstr"))
            titles.push_back({.ns = Ns::VariantTypes,
                              .localName = {},
                              .text = document.TextOf(entry),
                              .offset = document.OffsetOf(entry)});
    return titles;
}

std::vector<PropertyPart::Element> PropertyPart::ElementsOf(const XmlDocument& document)
{
    std::vector<Element> elements;
    for (const Node node : document.Root().ChildElements()) {
        const std::string_view name = node.Name();
        const std::size_t colon = name.find(':');
        Element element{};
        element.ns =
            document.ResolvePrefix(node, colon == std::string_view::npos ? std::string_view() : name.substr(0, colon));
        element.localName = colon == std::string_view::npos ? name : name.substr(colon + 1);
        element.text = document.TextOf(node);
        element.offset = document.OffsetOf(node);
        elements.push_back(std::move(element));
    }
    return elements;
}

void PropertyPart::CheckReadAgain(const XmlDocument& document, std::string_view part) const
{
    const auto isSame = [](const Element& element, const Element& readAgain) {
        return element.ns == readAgain.ns && element.localName == readAgain.localName &&
               ReadsAs(readAgain.text, element.text);
    };
    // What is new stands at the end, in both.
    if (!std::ranges::equal(elements_, ElementsOf(document), isSame) ||
        !std::ranges::equal(titles_, TitlesOf(document), isSame))
        throw FailedEdit(part, "a property would not have the value that was put");
}

const PropertyPart::Element* PropertyPart::Find(Ns ns, std::string_view localName) const
{
    const auto found = std::ranges::find_if(
        elements_, [&](const Element& element) { return element.ns == ns && element.localName == localName; });
    return found == elements_.end() ? nullptr : &*found;
}

std::optional<String> PropertyPart::Text(Ns ns, std::string_view localName) const
{
    const Element* element = Find(ns, localName);
    return element == nullptr ? std::nullopt : std::optional(element->text);
}

void PropertyPart::Put(Ns ns, std::string_view localName, const String& text)
{
    auto* element = const_cast<Element*>(Find(ns, localName));
    if (element == nullptr) {
        if (text.empty())
            return;
        elements_.push_back({ns, std::string(localName), text, 0, true, true});
    } else {
        if (element->text == text)
            return;
        element->text = text;
        element->changed = true;
    }
    changed_ = true;
}

void PropertyPart::FollowTitles(const std::vector<ChangedTitle>& changed, std::size_t slideCount)
{
    std::vector<String> list;
    for (const Element& title : titles_)
        list.push_back(title.text);
    for (const std::size_t followed : FollowListedTitles(list, changed, slideCount)) {
        titles_[followed].text = list[followed];
        titles_[followed].changed = changed_ = true;
    }
}

void PropertyPart::Flush()
{
    if (!changed_)
        return;
    if (entry_)
        package_.ReplaceXml(*entry_, EditedBytes());
    else
        AddPart();
}

ByteEdit PropertyPart::EditOf(const Element& element, std::string_view bytes)
{
    const ElementRange range = ScanElement(bytes, element.offset);
    if (range.IsEmptyTag()) {
        const std::size_t slash = bytes.rfind('/', range.end);
        return {slash, range.end, ">" + EscapePropertyText(element.text) + "</" + std::string(range.name) + ">"};
    }
    const std::string_view content = bytes.substr(range.contentBegin, range.contentEnd - range.contentBegin);
    return {range.contentBegin, range.contentEnd, ReplaceContent(content, element.text, EscapePropertyText)};
}

std::string PropertyPart::EditedBytes() const
{
    std::vector<ByteEdit> edits;
    std::string added;
    for (const Element& element : elements_) {
        if (element.isNew) {
            added += NewElement(element);
            continue;
        }
        if (!element.changed)
            continue;
        edits.push_back(EditOf(element, bytes_));
    }
    for (const Element& title : titles_)
        if (title.changed)
            edits.push_back(EditOf(title, bytes_));
    if (!added.empty())
        edits.push_back(AppendToRoot(bytes_, std::move(added)));
    const std::string_view part = package_.NameOf(*entry_);
    const EditedPart edited(XmlDocument(bytes_, part, package_.limits()), std::move(edits), part, package_.limits());
    CheckReadAgain(edited.Document(), part);
    return edited.Bytes();
}

std::string PropertyPart::NewElement(const Element& element) const
{
    std::string prefix(DefaultPrefix(element.ns));
    std::string binding;
    if (const auto bound = prefixes_.find(element.ns); bound != prefixes_.end())
        prefix = bound->second;
    else if (entry_)
        binding = (prefix.empty() ? " xmlns" : " xmlns:" + prefix.substr(0, prefix.size() - 1)) + "=\"" +
                  std::string(UriOf(element.ns)) + "\"";
    const std::string name = prefix + element.localName;
    return "<" + name + binding + ">" + EscapePropertyText(element.text) + "</" + name + ">";
}

/// A file without the part gets one, with its content type and the package's relationship to it.
void PropertyPart::AddPart()
{
    const PartKind& kind = which_ == Which::Extended && IsStrict(package_) ? strictExtendedKind : KindOf(which_);
    std::string content;
    for (const Element& element : elements_)
        content += NewElement(element);
    const std::string empty = std::string(declaration) + std::string(kind.emptyRoot);
    const EditedPart filled(XmlDocument(empty, kind.partName, package_.limits()),
                            {AppendToRoot(empty, std::move(content))}, kind.partName, package_.limits());
    CheckReadAgain(filled.Document(), kind.partName);
    std::string name(kind.partName);
    // The usual name may be that of an entry which nothing points to.
    for (int number = 1; package_.Find(name); ++number)
        name = std::string(kind.partName.substr(0, kind.partName.rfind('.'))) + std::to_string(number) + ".xml";
    if (!added_) {
        if (package_.Types().TypeOf(name) != kind.contentType) {
            package_.Types().RemoveOverrides({name});
            package_.Types().AddOverride(name, kind.contentType);
        }
        // A package may name one such part only, so that a relationship that leads nowhere is led to the new one.
        Relationships& root = package_.RelationshipsOf(std::nullopt);
        const Relationship* dangling = root.FirstOf(kind.relationship);
        if (dangling != nullptr && !dangling->external)
            root.PutTarget(dangling->id, name);
        else
            root.Add(kind.relationshipType, name);
        added_ = true;
    }
    package_.Add(name, filled.Bytes());
}

}  // namespace tessarine::builtin
