#pragma once

#include <optional>
#include <vector>

#include "office/builtin/matching/PartFilter.h"
#include "office/builtin/package/Package.h"
#include "office/builtin/reader/PageReader.h"
#include "office/builtin/shapes/Hyperlinks.h"
#include "office/builtin/shapes/RelationshipUses.h"
#include "office/builtin/shapes/ShapeTree.h"
#include "office/builtin/shapes/ShapeTreeEdits.h"

namespace tessarine::builtin
{

/// A part with a shape tree (slide, notes page, master, layout): its shapes with their texts, its hyperlinks and linked
/// objects. Read when first walked, and kept; where the package keeps too much already, only until another part is read
/// (KeptParts). Edits are kept, and handed to the package by Flush or when the part is let go. Indices of shapes stay
/// the same all the while; those of links are described at Hyperlinks.
class ShapeTreePart final : public PageReader, public KeptParts::Part
{
public:
    /// Reads nothing yet. The package must outlive this object.
    ShapeTreePart(Package& package, Package::Entry entry);
    ShapeTreePart(const ShapeTreePart&) = delete;
    ShapeTreePart& operator=(const ShapeTreePart&) = delete;

    Package::Entry entry() const { return entry_; }  ///< Names the part in the package.
    /// The part's own relationships.
    Relationships& Links() { return edits_.Links(); }

    std::size_t ShapeCount() override { return Shapes().size(); }
    ShapeFacts Shape(std::size_t shape) override;
    /// `p:cNvPr` has it. Takes a copy of the part, as edits do, unless names are kept.
    String ShapeName(std::size_t shape) override;
    void KeepShapeNames() { edits_.KeepShapeNames(); }  ///< From the next time on that the tree is read.
    String Title() override;                            ///< Of the first title placeholder; no more than its beginning.
    String TextAt(std::size_t shape, std::size_t begin, std::size_t length) override;
    /// Shapes, Read and Body are good until Flush or until another part is read, after which the tree is read again.
    const std::vector<ShapeRecord>& Shapes() { return edits_.Tree().shapes; }
    /// All that is kept of the part. Raises `FileCorrupt` when it is first read and damaged.
    const ShapeTree& Read() { return edits_.Tree(); }

    bool MayHold(const SoughtText& sought) override { return filter_.MayHold(sought); }
    PartFilter& Filter() { return filter_; }  ///< What MayHold asks, for a filter in front of many parts.

    TextBody& Body(std::size_t index) { return edits_.Tree().bodies[index]; }
    TextBody* TextOf(std::size_t shape);  ///< Null for a shape without a text to edit.

    std::optional<std::size_t> FindText(std::size_t shape, const TextPattern& pattern, std::size_t from) override;

    /// Replaces text of a shape that has one, and of its twin in the other branch of alternate content as long as both
    /// say the same. Returns the units put in.
    std::size_t ReplaceText(std::size_t shape, std::size_t begin, std::size_t length, StringView with) override;

    /// The first placeholder of that kind, by its own text alone: what a layout or master shows there doesn't count.
    std::optional<String> HeaderFooter(HeaderFooterKind kind) override;
    /// Raises `InvalidRequest` for a placeholder without `p:txBody`, too.
    void PutHeaderFooter(HeaderFooterKind kind, StringView text) override;

    /// The hyperlinks that belong to the object model's collection (see Hyperlinks).
    std::vector<std::size_t> HyperlinkIndices() override { return hyperlinks_.Members(); }
    /// Both raise as Hyperlinks does.
    String HyperlinkAddress(std::size_t link) override { return hyperlinks_.Address(link); }
    void PutHyperlinkAddress(std::size_t link, const String& address) override;

    /// The source of a linked object (see LinkedObjects.h).
    String LinkSource(std::size_t shape) override;
    void PutLinkSource(std::size_t shape, const String& source) override;

    /// What becomes of a page when its edits are saved.
    struct Flushed {
        std::optional<TextChange> title;  ///< How the title's text has changed, if it has.
        bool leavesOtherText = false;     ///< See ShapeTreeEdits::LeavesOtherText.
    };
    /// Hands the edits to the package, and tells of all that were handed over since the last call. Raises `FileCorrupt`
    /// when the edited part would not read as it was meant; see ShapeTreeEdits::Flush.
    Flushed Flush();

private:
    std::size_t KeptBytes() const override;
    /// Edits are handed to the package, which keeps the new bytes alone. Where that fails, saving it will.
    void LetGo() override;

    void HandOver();  ///< The edits, to the package.
    /// Index of the placeholder; nothing when the page has none of that kind.
    std::optional<std::size_t> FirstHeaderFooter(HeaderFooterKind kind);
    /// Tells the filter, the counts of uses and the hyperlinks that a text was edited.
    void TextChanged(std::size_t body);

    Package::Entry entry_;
    Flushed flushed_;       // what Flush has not told yet
    ShapeTreeEdits edits_;  // in front of those that borrow it
    RelationshipUses uses_{edits_};
    Hyperlinks hyperlinks_{edits_, uses_};
    PartFilter filter_;
    std::optional<std::size_t> titleShape_;  // the first title placeholder, or the number of shapes; see Title
};

}  // namespace tessarine::builtin
