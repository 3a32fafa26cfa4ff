#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/String.h"

/// The floor below the deck builder: parts, their relationships and content types. Names of parts have no leading "/".
namespace tessarine::test
{

/// Character data of an element: "&", "<" and ">" escaped, control characters but tab and line feed in the form
/// `_x000B_` that office programs use.
std::string XmlText(StringView text);

/// An attribute's value for double quotes; tab and line feed become character references.
std::string XmlAttribute(StringView text);

/// Namespaces and relationship types, Transitional. PackageDress turns them into Strict ones.
namespace Uri
{
inline constexpr std::string_view Relationships = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
inline constexpr std::string_view Drawing = "http://schemas.openxmlformats.org/drawingml/2006/main";
inline constexpr std::string_view Presentation = "http://schemas.openxmlformats.org/presentationml/2006/main";
inline constexpr std::string_view Compatibility = "http://schemas.openxmlformats.org/markup-compatibility/2006";
inline constexpr std::string_view PackageRelationships = "http://schemas.openxmlformats.org/package/2006/relationships";
}  // namespace Uri

/// The XML declaration that PowerPoint writes, and the three namespace declarations of every PresentationML root.
std::string XmlDeclaration();
std::string RootNamespaces();

/// A package that is being put together: parts in order, content types.
class PackageParts
{
public:
    struct Part {
        std::string name;
        std::string bytes;
        bool written = false;
    };

    /// Keeps a place in the order for a part that is written later.
    void Reserve(const std::string& name);
    void DropEmptyPlaces();  ///< Those that nothing was put into.

    /// Fills a reserved place or appends. An empty content type leaves the part to the default of its extension.
    void Put(const std::string& name, std::string bytes, const std::string& contentType = {});

    /// The content type of all parts with an extension that have none of their own.
    void DefaultType(const std::string& extension, const std::string& contentType)
    {
        defaults_[extension] = contentType;
    }

    /// 1, 2, 3 … for each kind of part ("chart", "notesSlide"), so that names don't collide.
    int NextNumber(const std::string& kind) { return ++numbers_[kind]; }

    const std::vector<Part>& Parts() const { return parts_; }
    std::string ContentTypes() const;  ///< The content of [Content_Types].xml.

private:
    std::vector<Part> parts_;
    std::map<std::string, std::string> defaults_ = {
        {"rels", "application/vnd.openxmlformats-package.relationships+xml"}, {"xml", "application/xml"}};
    std::vector<std::pair<std::string, std::string>> overrides_;
    std::map<std::string, int> numbers_;
};

/// One part while it is written: hands out relationship ids and shape ids.
class PartWriter
{
public:
    /// Reserves the places of the part and its relationships. An empty name stands for the package's own relationships.
    PartWriter(PackageParts& parts, std::string name);

    /// A new relationship to a part; `type` is the last segment ("slide") or a whole URI. Gives the id.
    std::string Relate(std::string_view type, const std::string& targetPart);

    /// A new relationship with a target as it stands. `external` adds TargetMode.
    std::string RelateTo(std::string_view type, StringView target, bool external = true);

    /// The id of an earlier relationship with this target, or a new one.
    std::string RelateShared(std::string_view type, StringView target);

    /// A relationship under an id of the caller's choice.
    void RelateAs(const std::string& id, std::string_view type, StringView target, bool external);

    /// A p:control, which stands after the shape tree of the part.
    void AddControl(const std::string& xml) { controls_ += xml; }
    const std::string& Controls() const { return controls_; }

    int NextShapeId() { return nextShapeId_++; }  ///< From 2; 1 is the tree itself.
    PackageParts& Package() { return parts_; }
    const std::string& Name() const { return name_; }

    /// Puts the part and its relationships into the package.
    void Finish(std::string bytes, const std::string& contentType = {});

private:
    struct Relationship {
        std::string id;
        std::string type;
        String target;
        bool external;
    };
    std::string NextId() const;

    PackageParts& parts_;
    std::string name_;
    std::vector<Relationship> relationships_;
    std::string controls_;
    int nextShapeId_ = 2;  // 1 is the tree itself
};

/// "ppt/slides/_rels/slide1.xml.rels" for "ppt/slides/slide1.xml"; "_rels/.rels" for the package ("").
std::string RelationshipsPartOf(const std::string& part);

/// The way from one part's folder to another part, "../slideLayouts/slideLayout1.xml".
std::string RelativeTarget(const std::string& fromPart, const std::string& toPart);

}  // namespace tessarine::test
