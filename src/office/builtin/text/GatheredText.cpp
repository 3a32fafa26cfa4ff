#include "office/builtin/text/GatheredText.h"

#include <algorithm>
#include <string>

#include "office/builtin/text/FoldedContent.h"
#include "office/builtin/text/TagScan.h"
#include "office/builtin/xml/ByteBlock.h"
#include "office/builtin/xml/XmlCharacters.h"
#include "office/builtin/xml/XmlScanner.h"

namespace tessarine::builtin
{

namespace
{

constexpr std::size_t none = std::string_view::npos;

bool EndsName(char c)
{
    return c == '>' || c == '/' || IsSpace(c);
}

/// A ">" inside an attribute would end the tag too early.
bool HasWholeAttributes(std::string_view tag)
{
    return std::ranges::count(tag, '"') % 2 == 0 && std::ranges::count(tag, '\'') % 2 == 0;
}

/// The tag of a text element.
struct TextTag {
    enum class Kind { None, Start, Empty, NeedsReading } kind = Kind::None;
    std::size_t open = 0;   // of its "<"
    std::string_view name;  // qualified
    std::size_t end = 0;    // after its ">"
};

/// The tag whose name's last part begins after `at` ("<" or ":").
TextTag ReadTextTag(std::string_view xml, std::size_t at)
{
    if (at + 2 >= xml.size() || !EndsName(xml[at + 2]))
        return {};
    std::size_t open = at;
    while (open > 0 && xml[open] != '<' && !EndsName(xml[open]) && xml[open] != '"' && xml[open] != '\'')
        --open;
    if (xml[open] != '<')
        return {};  // an end tag, an attribute, text
    const std::string_view name = xml.substr(open + 1, at + 1 - open);
    if (xml[at + 2] == '>')
        return {TextTag::Kind::Start, open, name, at + 3};
    const std::size_t close = xml.find('>', at + 2);
    if (close == none || !HasWholeAttributes(xml.substr(open, close - open)))
        return {TextTag::Kind::NeedsReading, open, {}, 0};
    return {xml[close - 1] == '/' ? TextTag::Kind::Empty : TextTag::Kind::Start, open, name, close + 1};
}

/// Whether the element that is two above the tag at `open` (of a text element, its paragraph) begins at or after
/// `from`. False as well when that can't be told.
bool ParagraphBeginsAfter(std::string_view xml, std::size_t from, std::size_t open)
{
    int ends = 0;  // of elements whose start tags are yet to come
    int above = 0;
    for (std::size_t tag = open; tag > from;) {
        tag = xml.rfind('<', tag - 1);
        if (tag == none || tag < from)
            return false;
        const std::size_t close = xml.find('>', tag);
        if (!HasWholeAttributes(xml.substr(tag, close - tag)))
            return false;
        if (xml[tag + 1] == '/')
            ++ends;
        else if (xml[close - 1] != '/' && ends-- == 0) {
            ends = 0;
            if (++above == 2)
                return true;
        }
    }
    return false;
}

/// Puts a part's texts together, front to back.
///
/// Without the structure, a text element could be taken for text of the paragraph around it where it isn't that: as the
/// second one of a run, or inside the properties of a run or paragraph, between two texts that do belong to it. Two
/// checks rule this out. Each text must be the last thing in its run. And of two texts in a row, the second may have
/// fewer elements around it than the first only when a paragraph begins between them: a text inside properties has more
/// elements around it than the next text of the paragraph.
class Gatherer
{
public:
    explicit Gatherer(std::string_view xml) : xml_(xml) {}

    std::optional<String> Gather()
    {
        // Found faster one by one than by the pass over all bytes, as most parts have few.
        // In comments and the like they would be allowed, but with these the part is read anyway.
        for (std::size_t at = xml_.find('&'); at != none && !needsReading_; at = xml_.find('&', at + 1))
            needsReading_ = CheckCharacter(xml_, at, Ampersands::BeginReferences).fault != nullptr;
        const TagTotals totals = ScanTags(
            xml_,
            [&](std::size_t at, const auto& depth) {
                if (at > lastText_ + usualName_.size() && !needsReading_)  // no look at the end tag of the last text
                    needsReading_ = !Take(ReadTextTag(xml_, at), depth);
            },
            [&](std::size_t from, std::size_t to) { Check(from, to); });
        const bool hasDeclaration = xml_.starts_with("<?xml");
        if (needsReading_ || !totals.AreBalanced() || totals.others > (hasDeclaration ? 1u : 0u))
            return std::nullopt;
        return std::move(text_);
    }

private:
    /// What makes a part no XML must not go unseen where nobody reads it. The "&" were looked at before.
    void Check(std::size_t from, std::size_t to)
    {
        const CharacterCheck checked = CheckCharacters(xml_, std::max(from, checkedTo_), to, Ampersands::AreText);
        checkedTo_ = checked.end;
        needsReading_ = needsReading_ || checked.fault != nullptr;
    }

    /// False when the part needs reading.
    template <class Depth>
    bool Take(const TextTag& tag, const Depth& depth)
    {
        if (tag.kind == TextTag::Kind::None)
            return true;
        if (tag.kind == TextTag::Kind::NeedsReading)
            return false;
        if (usualName_.empty())
            Expect(tag.name);
        if (tag.name != usualName_)
            return false;
        if (tag.kind == TextTag::Kind::Empty)
            return EndsRun(tag.end);
        const std::size_t end = xml_.find('<', tag.end);
        if (end == none || !EndsTextAndRun(end) || !IsInOrder(tag.open, depth()))
            return false;
        lastText_ = end;
        return AppendFoldedContent(xml_.substr(tag.end, end - tag.end), text_);
    }

    void Expect(std::string_view nameOfText)
    {
        usualName_ = nameOfText;
        prefix_ = nameOfText.substr(0, nameOfText.size() - 1);
        usualEnd_ = "</" + std::string(usualName_) + "></" + std::string(prefix_) + "r>";
    }

    /// Whether the tag at `end`, the first one after a text, ends the text element, and the next one the run.
    bool EndsTextAndRun(std::size_t end) const
    {
        if (xml_.substr(end, usualEnd_.size()) == usualEnd_)
            return true;
        return end + 1 < xml_.size() && xml_[end + 1] == '/' && EndsRun(end + 1);
    }

    /// Whether the next tag from `at` on ends a run or a field.
    bool EndsRun(std::size_t at) const
    {
        std::string_view rest = xml_.substr(std::min(xml_.find('<', at), xml_.size()));
        if (!rest.starts_with("</") || !rest.substr(2).starts_with(prefix_))
            return false;
        rest.remove_prefix(2 + prefix_.size());
        const std::string_view localName = rest.substr(0, rest.find('>'));
        return localName == "r" || localName == "fld";
    }

    bool IsInOrder(std::size_t open, std::ptrdiff_t depth)
    {
        const bool hasFewerAround = depth < lastDepth_;
        lastDepth_ = depth;
        return !hasFewerAround || ParagraphBeginsAfter(xml_, lastText_, open);
    }

    std::string_view xml_;
    String text_;
    std::string_view usualName_;  // of text elements
    std::string_view prefix_;     // of all names, with its colon
    std::string usualEnd_;        // the tags after a text
    std::size_t lastText_ = 0;    // where the last text ended
    std::size_t checkedTo_ =
        0;  // after the last character that was checked, which may lie after what is looked at next
    std::ptrdiff_t lastDepth_ = 0;
    bool needsReading_ = false;
};

}  // namespace

std::optional<String> GatherText(std::string_view xml)
{
    return Gatherer(xml).Gather();
}

}  // namespace tessarine::builtin
