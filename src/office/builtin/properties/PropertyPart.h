#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "office/builtin/package/Package.h"
#include "office/builtin/reader/ListedTitles.h"
#include "office/builtin/xml/XmlDocument.h"
#include "office/builtin/xml/XmlEdits.h"
#include "office/builtin/xml/XmlNamespaces.h"

namespace tessarine::builtin
{

/// A part whose root holds one element per property: docProps/core.xml (ECMA-376 part 2, 11) or docProps/app.xml (part
/// 1, 22.2). In a package without the part every property reads as absent, and the part is made when something is put.
/// Properties are named by namespace and local name; the prefixes are the part's own.
class PropertyPart
{
public:
    enum class Which {
        Core,     ///< docProps/core.xml: what all kinds of documents have.
        Extended  ///< docProps/app.xml: what the program says of the document.
    };

    /// Reads the part. The package must outlive this object. Raises `FileCorrupt` when the part is damaged.
    PropertyPart(Package& package, Which which);

    /// The text of a property, with "_x000d_" and its like decoded; nothing when its element is absent.
    std::optional<String> Text(Ns ns, std::string_view localName) const;

    /// Sets the text, making the element when it is absent. An empty text for an absent element is no change.
    void Put(Ns ns, std::string_view localName, const String& text);

    /// Lets the list of titles (`TitlesOfParts`) follow the slides, see FollowListedTitles.
    void FollowTitles(const std::vector<ChangedTitle>& changed, std::size_t slideCount);

    /// Hands the edits to the package, which writes them when it is saved. Raises `FileCorrupt` when they would not
    /// read as they were put.
    void Flush();

private:
    /// A child of the root, or one that is to become one.
    struct Element {
        Ns ns;
        std::string localName;
        String text;             // as it is to be written, without escapes
        std::size_t offset = 0;  // of its "<" in bytes_
        bool isNew = false;      // stands nowhere in bytes_
        bool changed = false;
    };

    /// An entry of the list of titles, for which Element's namespace and name don't matter.
    static std::vector<Element> TitlesOf(const XmlDocument& document);
    static ByteEdit EditOf(const Element& element, std::string_view bytes);

    /// The elements of a part, which know their places in its bytes.
    static std::vector<Element> ElementsOf(const XmlDocument& document);
    /// Raises `FileCorrupt` unless the edited part reads as elements_.
    void CheckReadAgain(const XmlDocument& document, std::string_view part) const;

    /// The first element of that name; null when absent.
    const Element* Find(Ns ns, std::string_view localName) const;
    /// Markup of an element that is not in the part, with a declaration where the part has no prefix for it.
    std::string NewElement(const Element& element) const;
    std::string EditedBytes() const;  // of a part that the package has
    void AddPart();                   // for a package without one

    Package& package_;
    Which which_;
    std::optional<Package::Entry> entry_;  // nothing while the package has no such part
    std::string bytes_;                    // UTF-8
    std::vector<Element> elements_;
    std::vector<Element> titles_;         // as elements_; of the extended part
    std::map<Ns, std::string> prefixes_;  // bound by the root, with their colon
    bool changed_ = false;
    bool added_ = false;  // the package has a type and a relationship for the new part
};

}  // namespace tessarine::builtin
