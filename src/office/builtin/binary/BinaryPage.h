#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <set>
#include <vector>

#include "office/builtin/binary/BinaryDocument.h"
#include "office/builtin/binary/Drawing.h"
#include "office/builtin/binary/TextEdits.h"
#include "office/builtin/matching/PartFilter.h"
#include "office/builtin/matching/SearchedText.h"
#include "office/builtin/package/KeptParts.h"
#include "office/builtin/reader/PageReader.h"

namespace tessarine::builtin
{

/// A slide, notes page or master of a binary presentation. Its drawing is read when first asked for, a text when it is
/// first searched; both are let go where too much is kept, but for what was edited.
class BinaryPage final : public PageReader, public KeptParts::Part
{
public:
    /// Whose headers and footers it shows where it has none of its own.
    enum class Kind { Slide, Notes, Master };

    BinaryPage(BinaryDocument& document, PagePlace place, Kind kind);

    std::size_t ShapeCount() override { return Shapes().size(); }
    ShapeFacts Shape(std::size_t shape) override;
    String ShapeName(std::size_t shape) override;
    String Title() override;
    String TextAt(std::size_t shape, std::size_t begin, std::size_t length) override;
    bool MayHold(const SoughtText& sought) override { return filter_.MayHold(sought); }
    PartFilter& Filter() { return filter_; }
    std::optional<std::size_t> FindText(std::size_t shape, const TextPattern& pattern, std::size_t from) override;
    std::size_t ReplaceText(std::size_t shape, std::size_t begin, std::size_t length, StringView with) override;

    /// From the moniker in the object's storage, which can't be written: putting another source raises `Unspecified`.
    String LinkSource(std::size_t shape) override;
    void PutLinkSource(std::size_t shape, const String& source) override;

    /// A placeholder with a text of its own goes before the container of header and footer texts; one that shows what
    /// the container says does not ([MS-PPT] 2.11.24).
    std::optional<String> HeaderFooter(HeaderFooterKind kind) override;
    void PutHeaderFooter(HeaderFooterKind kind, StringView text) override;

    std::vector<std::size_t> HyperlinkIndices() override;
    String HyperlinkAddress(std::size_t link) override;
    void PutHyperlinkAddress(std::size_t link, const String& address) override;

    bool IsEdited() const { return isEdited_; }
    /// Whether another page has the same shapes, texts, links, header and footer.
    bool ReadsAs(BinaryPage& other);

    /// Hands all edits on.
    void Put(RecordEdits& target);

    /// How edits have changed the title, if they have.
    struct TitleChange {
        String before;
        String after;
    };
    std::optional<TitleChange> ChangedTitle();

private:
    struct OpenText {
        SearchedText text;
        std::optional<TextEdits> edits;
    };
    struct HyperlinkState {
        ExternalObjectId target = 0;
        bool isRemoved = false;
    };

    std::size_t KeptBytes() const override;
    void LetGo() override;

    const Drawing& Read();
    const std::vector<DrawnShape>& Shapes() { return Read().shapes; }
    std::optional<std::size_t> TextOf(std::size_t shape) { return Shapes()[shape].text; }
    OpenText& Open(std::size_t text);
    void ReplaceIn(std::size_t text, std::size_t begin, std::size_t length, StringView with);
    std::optional<String> GatherText();
    std::optional<std::size_t> TitleText();
    std::optional<std::size_t> OwnHeaderFooter(HeaderFooterKind kind);
    HeadersFootersText* HeadersFootersOf();
    const std::vector<std::optional<HyperlinkState>>& Hyperlinks();
    bool HasGone(std::size_t link);
    HyperlinkState& KnownHyperlink(std::size_t link);
    void DropUse(HyperlinkState& state);

    BinaryDocument& document_;
    PagePlace place_;
    Kind kind_;
    std::optional<Drawing> drawing_;
    std::vector<std::unique_ptr<OpenText>> texts_;                     // of the drawing; null until asked for
    std::optional<std::vector<std::optional<HyperlinkState>>> links_;  // of the drawing's interactions
    bool isEdited_ = false;
    std::optional<HeadersFootersText> ownHeadersFooters_;  // of the page, or the copy that it gets
    bool looksForOwn_ = true;
    std::optional<Record> copyInFrontOf_;
    PartFilter filter_;
};

}  // namespace tessarine::builtin
