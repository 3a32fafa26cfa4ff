#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "office/builtin/matching/PartFilter.h"
#include "office/builtin/package/Package.h"
#include "office/builtin/reader/PageReader.h"
#include "office/builtin/shapes/ShapeTree.h"
#include "office/builtin/xml/XmlEdits.h"

namespace tessarine::builtin
{

/// A part with a shape tree. Read when first walked, once for the file's life unless it is edited in two ways: a part
/// holds pending edits of its texts or of its link elements, never of both; beginning the other kind puts the first
/// into the bytes and reads the part again. Indices of shapes, bodies and links stay the same all the while.
class ShapeTreePart final : public PageReader
{
public:
    ShapeTreePart(Package& package, Package::Entry entry);
    ShapeTreePart(const ShapeTreePart&) = delete;  // its filter asks it for the part
    ShapeTreePart& operator=(const ShapeTreePart&) = delete;

    Package::Entry entry() const { return entry_; }
    Relationships& Links() { return package_.RelationshipsOf(entry_); }

    std::size_t ShapeCount() override { return Tree().shapes.size(); }
    ShapeFacts Shape(std::size_t shape) override;
    const std::vector<ShapeRecord>& Shapes() { return Tree().shapes; }
    const ShapeTree& Read() { return Tree(); }

    bool MayHold(const SoughtText& sought) override { return filter_.MayHold(sought); }
    PartFilter& Filter() { return filter_; }  ///< What MayHold asks, for a filter in front of many parts.
    TextBody& Body(std::int32_t index) { return Tree().bodies[static_cast<std::size_t>(index)]; }

    std::optional<std::size_t> FindText(std::size_t shape, const TextPattern& pattern, std::size_t from) override;

    /// Replaces text of a shape, and of its twin in the other branch of alternate content. Returns the units put in.
    std::size_t ReplaceText(std::size_t shapeIndex, std::size_t begin, std::size_t length, StringView with) override;
    void PutText(std::size_t shapeIndex, StringView text);

    /// The first placeholder of that kind, by its own text alone.
    std::optional<String> HeaderFooter(HeaderFooterKind kind) override;
    void PutHeaderFooter(HeaderFooterKind kind, StringView text) override;

    // --- Hyperlinks ---------------------------------------------------------------------------------------------

    /// Hyperlinks that belong to the object model's collection, as indices for the calls below.
    std::vector<std::size_t> HyperlinkIndices() override;
    String HyperlinkAddress(std::size_t link) override;

    /// Equal to what HyperlinkAddress gives: no change. Empty: the link goes, unless it leads to a place by its
    /// fragment.
    void PutHyperlinkAddress(std::size_t link, const String& address) override;

    // --- Linked objects -----------------------------------------------------------------------------------------

    String LinkSource(std::size_t shape) override;
    void PutLinkSource(std::size_t shapeIndex, const String& source) override;

    /// Hands the edits to the package.
    void Flush();

private:
    /// What is to become of a link's elements in the part.
    struct LinkChange {
        bool removed = false;
        std::optional<std::string> relationshipId;
        std::optional<std::string> invalidUrl;
        std::optional<std::string> action;  ///< "" removes the attribute.
    };

    ShapeTree& Tree();
    const ShapeRecord* FirstHeaderFooter(HeaderFooterKind kind);
    void ReadTree();
    const std::string& Text();
    bool HasEditedBodies() const;
    void FlushTexts();
    void FlushLinks();
    void PutEdits(std::vector<ByteEdit> edits);
    LinkRecord& LinkAt(std::size_t link);  ///< Raises -2147188160 when there is none.
    LinkChange& Change(std::size_t link);
    void RemoveLink(std::size_t link);
    std::size_t& UsesOf(const std::string& relationshipId);
    std::string RetargetOrClone(const std::string& relationshipId, std::size_t ownUses, std::string target);

    Package& package_;
    Package::Entry entry_;
    std::optional<ShapeTree> tree_;
    PartFilter filter_;
    std::string text_;                               // UTF-8, kept while there are edits
    std::map<std::size_t, LinkChange> linkChanges_;  // by index
    std::vector<std::size_t> removedLinks_;          // indices of links that are gone from the bytes, ascending
    std::map<std::string, std::size_t> idUses_;      // by relationship id
};

}  // namespace tessarine::builtin
