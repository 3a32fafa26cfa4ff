// What a person reads in a package: texts, runs, links, properties; and whether the package is a valid one.
#include <algorithm>
#include <array>
#include <cstring>
#include <map>
#include <ostream>
#include <pugixml.hpp>
#include <set>
#include <stdexcept>

#include "support/PackageReader.h"

namespace tessarine::test
{
namespace
{

constexpr unsigned ParseEverything = pugi::parse_full | pugi::parse_ws_pcdata;

/// Names are compared without their prefixes, which are free.
std::string_view LocalName(const char* name)
{
    const char* colon = std::strchr(name, ':');
    return colon == nullptr ? name : colon + 1;
}

bool Is(pugi::xml_node node, std::string_view name)
{
    return LocalName(node.name()) == name;
}

pugi::xml_node Child(pugi::xml_node node, std::string_view name)
{
    return node.find_child([&](pugi::xml_node child) { return Is(child, name); });
}

std::string RelationshipId(pugi::xml_node node)
{
    for (const pugi::xml_attribute attribute : node.attributes()) {
        if (std::strchr(attribute.name(), ':') != nullptr && LocalName(attribute.name()) == "id")
            return attribute.value();
    }
    return {};
}

void Load(pugi::xml_document& document, const PackageReader& package, const std::string& part)
{
    const std::string& bytes = package.Entry(part).bytes;
    const pugi::xml_parse_result result = document.load_buffer(bytes.data(), bytes.size(), ParseEverything);
    if (!result)
        throw std::runtime_error(part + ": " + result.description() + " at " + std::to_string(result.offset));
}

/// Elements of a tree in document order; of alternatives the first choice alone.
template <class Visitor>
void Walk(pugi::xml_node node, const Visitor& visit)
{
    visit(node);
    if (Is(node, "AlternateContent")) {
        Walk(node.first_child(), visit);
        return;
    }
    for (const pugi::xml_node child : node)
        Walk(child, visit);
}

int HexDigitOf(char16_t unit)
{
    if (unit >= u'0' && unit <= u'9')
        return unit - u'0';
    if (unit >= u'A' && unit <= u'F')
        return unit - u'A' + 10;
    return unit >= u'a' && unit <= u'f' ? unit - u'a' + 10 : -1;
}

/// `_x000B_` and its like as the control character that they stand for.
String Decoded(const String& text)
{
    String decoded;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isEscape = text.compare(i, 4, u"_x00") == 0 && i + 6 < text.size() && text[i + 6] == u'_';
        const int high = isEscape ? HexDigitOf(text[i + 4]) : -1;
        const int low = isEscape ? HexDigitOf(text[i + 5]) : -1;
        if ((high == 0 || high == 1) && low >= 0) {
            decoded += static_cast<char16_t>(high * 16 + low);
            i += 6;
        } else {
            decoded += text[i];
        }
    }
    return decoded;
}

String Characters(pugi::xml_node node)
{
    std::string text;
    for (const pugi::xml_node child : node) {
        if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata)
            text += child.value();
    }
    return Decoded(FromUtf8(text));
}

String TextOfBody(pugi::xml_node body)
{
    String text;
    bool first = true;
    for (const pugi::xml_node paragraph : body) {
        if (!Is(paragraph, "p"))
            continue;
        if (!first)
            text += u'\r';
        first = false;
        for (const pugi::xml_node piece : paragraph) {
            if (Is(piece, "br"))
                text += u'\v';
            else if (Is(piece, "r") || Is(piece, "fld"))
                text += Characters(Child(piece, "t"));
        }
    }
    return text;
}

TextRun RunOf(pugi::xml_node node)
{
    TextRun run(Characters(Child(node, "t")));
    const pugi::xml_node properties = Child(node, "rPr");
    if (const pugi::xml_attribute bold = properties.attribute("b"))
        run.bold = bold.as_bool();
    if (const pugi::xml_attribute italic = properties.attribute("i"))
        run.italic = italic.as_bool();
    if (const pugi::xml_attribute size = properties.attribute("sz"))
        run.size = size.as_int();
    run.language = properties.attribute("lang").value();
    run.color = Child(Child(properties, "solidFill"), "srgbClr").attribute("val").value();
    return run;
}

std::string SlidePart(const PackageReader& package, int slide)
{
    return package.SlideParts().at(static_cast<std::size_t>(slide - 1));
}

String ElementText(const PackageReader& package, const std::string& relationshipType, const std::string& element)
{
    const std::string part = package.TargetOfType("", relationshipType);
    pugi::xml_document document;
    Load(document, package, part);
    const pugi::xml_node node = Child(document.document_element(), LocalName(element.c_str()));
    if (!node)
        throw std::runtime_error(part + " has no " + element);
    return Characters(node);
}

}  // namespace

std::vector<std::string> PackageReader::SlideParts() const
{
    const std::string main = TargetOfType("", "officeDocument");
    pugi::xml_document document;
    Load(document, *this, main);
    std::vector<std::string> parts;
    for (const pugi::xml_node id : Child(document.document_element(), "sldIdLst"))
        parts.push_back(Target(main, RelationshipId(id)));
    return parts;
}

std::vector<String> TextsOfPart(const PackageReader& package, const std::string& part)
{
    pugi::xml_document document;
    Load(document, package, part);
    std::vector<String> texts;
    Walk(document.document_element(), [&](pugi::xml_node node) {
        if (Is(node, "txBody"))
            texts.push_back(TextOfBody(node));
    });
    return texts;
}

std::vector<String> TextsOf(const PackageReader& package, int slide)
{
    return TextsOfPart(package, SlidePart(package, slide));
}

std::vector<String> NotesOf(const PackageReader& package, int slide)
{
    const std::string notes = package.TargetOfType(SlidePart(package, slide), "notesSlide");
    return notes.empty() ? std::vector<String>() : TextsOfPart(package, notes);
}

String TextOf(const PackageReader& package, int slide, int shape)
{
    static constexpr std::array<std::string_view, 3> notShapes = {"nvGrpSpPr", "grpSpPr", "extLst"};
    pugi::xml_document document;
    Load(document, package, SlidePart(package, slide));
    int number = 0;
    for (pugi::xml_node node : Child(Child(document.document_element(), "cSld"), "spTree")) {
        if (node.type() != pugi::node_element || std::ranges::count(notShapes, LocalName(node.name())) != 0)
            continue;
        if (++number != shape)
            continue;
        if (Is(node, "AlternateContent"))
            node = node.first_child().first_child();
        return TextOfBody(Child(node, "txBody"));
    }
    throw std::runtime_error("the slide has no shape " + std::to_string(shape));
}

std::vector<TextRun> RunsOfPart(const PackageReader& package, const std::string& part)
{
    pugi::xml_document document;
    Load(document, package, part);
    std::vector<TextRun> runs;
    Walk(document.document_element(), [&](pugi::xml_node node) {
        if (Is(node, "r") && Is(node.parent(), "p"))
            runs.push_back(RunOf(node));
    });
    return runs;
}

std::vector<TextRun> RunsOf(const PackageReader& package, int slide)
{
    return RunsOfPart(package, SlidePart(package, slide));
}

std::vector<String> LinksOf(const PackageReader& package, int slide)
{
    const std::string part = SlidePart(package, slide);
    std::map<std::string, String> targets;
    for (const PackageRelationship& relationship : package.Relationships(part))
        targets[relationship.id] = relationship.target;
    pugi::xml_document document;
    Load(document, package, part);
    std::vector<String> links;
    Walk(document.document_element(), [&](pugi::xml_node node) {
        if (LocalName(node.name()).starts_with("hlink"))
            links.push_back(targets[RelationshipId(node)]);
    });
    return links;
}

std::vector<String> OleLinksOf(const PackageReader& package, int slide)
{
    std::vector<String> targets;
    for (const PackageRelationship& relationship : package.Relationships(SlidePart(package, slide))) {
        if (relationship.external && relationship.type.ends_with("/oleObject"))
            targets.push_back(relationship.target);
    }
    return targets;
}

String CoreProperty(const PackageReader& package, const std::string& element)
{
    return ElementText(package, "core-properties", element);
}

String AppProperty(const PackageReader& package, const std::string& element)
{
    const bool strict = package.TargetOfType("", "extended-properties").empty();
    return ElementText(package, strict ? "extendedProperties" : "extended-properties", element);
}

CustomValue CustomProperty(const PackageReader& package, const String& name)
{
    std::string part = package.TargetOfType("", "custom-properties");
    if (part.empty())
        part = package.TargetOfType("", "customProperties");
    pugi::xml_document document;
    Load(document, package, part);
    for (const pugi::xml_node property : document.document_element()) {
        if (FromUtf8(property.attribute("name").value()) == name) {
            const pugi::xml_node value = property.first_child();
            return {std::string(LocalName(value.name())), Characters(value)};
        }
    }
    throw std::runtime_error("no custom property " + ToUtf8(name));
}

void PrintTo(const CustomValue& value, std::ostream* out)
{
    *out << value.kind << " \"" << ToUtf8(value.text) << "\"";
}

std::vector<std::string> ValidityFaults(const PackageReader& package)
{
    std::vector<std::string> faults;
    const std::vector<std::string> names = package.Names();
    if (names.empty() || names.front() != "[Content_Types].xml")
        faults.push_back("[Content_Types].xml is not the first entry");
    if (std::set<std::string>(names.begin(), names.end()).size() != names.size())
        faults.push_back("a name stands twice in the directory");

    std::set<std::string> typed;
    pugi::xml_document types;
    Load(types, package, "[Content_Types].xml");
    for (const pugi::xml_node node : types.document_element()) {
        const std::string name = node.attribute("PartName").value();
        typed.insert(name.empty() ? "." + std::string(node.attribute("Extension").value()) : name);
        if (!name.empty() && !package.Has(name.substr(1)))
            faults.push_back("a content type for " + name + ", which is not there");
    }
    for (const std::string& name : names) {
        const std::string extension = name.substr(std::min(name.rfind('.'), name.size()));
        if (name != "[Content_Types].xml" && !typed.contains("/" + name) && !typed.contains(extension))
            faults.push_back(name + " has no content type");
        if (extension != ".xml" && extension != ".rels")
            continue;
        pugi::xml_document document;
        const std::string& bytes = package.Entry(name).bytes;
        if (!document.load_buffer(bytes.data(), bytes.size(), ParseEverything))
            faults.push_back(name + " is not well formed");
    }

    std::vector<std::string> sources = names;
    sources.emplace_back();
    for (const std::string& source : sources) {
        std::set<std::string> ids;
        for (const PackageRelationship& relationship : package.Relationships(source)) {
            if (!ids.insert(relationship.id).second)
                faults.push_back(source + " has relationship " + relationship.id + " twice");
            if (!relationship.external && !package.Has(package.Target(source, relationship.id)))
                faults.push_back(source + " leads to " + ToUtf8(relationship.target) + ", which is not there");
        }
    }
    return faults;
}

}  // namespace tessarine::test
