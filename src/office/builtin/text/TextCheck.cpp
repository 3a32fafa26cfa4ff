#include "office/builtin/text/TextCheck.h"

#include <algorithm>
#include <cstring>
#include <optional>
#include <string>
#include <utility>

#include "office/builtin/text/LinkElement.h"
#include "office/builtin/text/TextMarkup.h"
#include "office/builtin/xml/EditedPart.h"
#include "office/builtin/xml/XmlText.h"
#include "platform/Failure.h"

namespace tessarine::builtin
{

namespace
{

constexpr std::size_t mostBytes = 1u << 20;  // of all texts; what is read takes several times its memory
constexpr std::size_t deepest = 32;          // elements around a body; the shapes of ordinary parts have three or four

bool IsMarkupAtBothEnds(std::string_view text)
{
    return text.starts_with('<') && text.ends_with('>');
}

/// What the name at the start of a text has in front of its colon. It has one.
std::string_view PrefixOf(std::string_view name)
{
    return name.substr(0, std::min(name.find_first_of(": />"), name.size()));
}

/// The elements around all texts, and around what has changed in one of them.
constexpr std::string_view endOfAll = "</w>";
constexpr std::string_view beginOfOne = "<w>";
constexpr std::string_view endOfOne = "</w>";

/// Whether all elements but the root and its children have a prefix, their attributes have none, and nothing is
/// declared in any but the root.
bool HasOnePrefix(const XmlDocument& document, std::string_view prefix)
{
    if (!document.DeclaresInRootAlone())
        return false;
    std::size_t around = document.RangeOf(document.Root()).contentBegin;  // where the root's next child begins
    for (std::size_t number = 1; number < document.ElementCount(); ++number) {
        const ElementRange range = document.RangeOf(number);
        if (range.begin == around) {
            around = range.end;
            continue;
        }
        if (range.name.size() <= prefix.size() || range.name[prefix.size()] != ':' || !range.name.starts_with(prefix) ||
            document.AttributesOf(range).find(':') != std::string_view::npos)
            return false;
    }
    return true;
}

/// What two pieces of markup have in common at their beginnings and at their ends, in bytes that don't overlap.
struct CommonBytes {
    std::size_t front;
    std::size_t back;
};

CommonBytes CommonBytesOf(std::string_view before, std::string_view after)
{
    const std::size_t most = std::min(before.size(), after.size());
    // Most of an edited text is as before, and many bytes are compared at once.
    constexpr std::size_t block = 64;
    const auto isSame = [&](std::size_t inBefore, std::size_t inAfter, std::size_t size) {
        return std::memcmp(before.data() + inBefore, after.data() + inAfter, size) == 0;
    };
    CommonBytes common{0, 0};
    while (most - common.front >= block && isSame(common.front, common.front, block))
        common.front += block;
    while (common.front < most && before[common.front] == after[common.front])
        ++common.front;
    const auto endsAlike = [&](std::size_t size) {
        const std::size_t back = common.back + size;
        return most - common.front >= back && isSame(before.size() - back, after.size() - back, size);
    };
    while (endsAlike(block))
        common.back += block;
    while (endsAlike(1))
        ++common.back;
    return common;
}

/// Elements side by side, at least one, of which an edit has changed some in the middle.
class Siblings
{
public:
    /// The bytes of the part up to `front` and from `back` on stay as they are.
    Siblings(const XmlDocument& document, std::vector<Node> nodes, std::size_t front, std::size_t back)
        : nodes_(std::move(nodes)), last_(nodes_.size() - 1)
    {
        while (first_ < last_ && document.OffsetOf(nodes_[first_ + 1]) <= front)
            ++first_;
        while (last_ > first_ && document.RangeOf(nodes_[last_ - 1]).end >= back)
            --last_;
    }

    Node FirstChanged() const { return nodes_[first_]; }
    Node LastChanged() const { return nodes_[last_]; }

    /// Takes the texts of those that have not changed off both ends of a text, as `append` reads them. False when it
    /// has other ones there.
    template <class Append>
    bool TakeUnchanged(StringView& text, StringView separator, Append&& append) const
    {
        BodyText read;
        for (std::size_t i = 0; i < first_; ++i) {
            read.text.clear();
            append(nodes_[i], read);
            read.text += separator;
            if (!text.starts_with(read.text))
                return false;
            text.remove_prefix(read.text.size());
        }
        for (std::size_t i = nodes_.size() - 1; i > last_; --i) {
            read.text = separator;
            append(nodes_[i], read);
            if (!text.ends_with(read.text))
                return false;
            text.remove_suffix(read.text.size());
        }
        return true;
    }

private:
    std::vector<Node> nodes_;
    std::size_t first_ = 0;
    std::size_t last_;
};

}  // namespace

TextCheck::TextCheck(const XmlDocument& before, const Limits& limits)
    : before_(before), limits_(limits), mostBytes_(std::min(before.Bytes().size(), mostBytes))
{
    markup_ = "<w" + std::string(before.AttributesOf(before.RangeOf(before.Root())));
    limits_.depth -= std::min<std::uint32_t>(limits_.depth, deepest);
}

bool TextCheck::Take(Node body, const ByteEdit& paragraphs, StringView text)
{
    const std::string_view old = before_.Bytes().substr(paragraphs.begin, paragraphs.end - paragraphs.begin);
    if (!HasUsualPlace(body) || old.size() > mostBytes || text.size() > limits_.textUnits || MayHoldLinks(old))
        return false;
    const std::optional<Middle> middle = MiddleOf(body, paragraphs, text);
    // Next to characters an edit could make something of them that neither is alone, such as "]]>".
    if (!middle || !IsMarkupAtBothEnds(middle->after) || MayHoldLinks(middle->after))
        return false;
    if (changes_.empty())
        prefix_ = PrefixOf(middle->before.substr(1));
    const std::string name(middle->paragraph);
    const std::size_t begin = markup_.size();
    markup_ += beginOfOne;
    if (!name.empty())
        markup_ += "<" + name + ">";
    markup_ += middle->after;
    if (!name.empty())
        markup_ += "</" + name + ">";
    markup_ += endOfOne;
    changes_.push_back({begin, markup_.size(), String(middle->text)});
    return markup_.size() + endOfAll.size() <= mostBytes_;
}

bool TextCheck::AllReadAsTheyShould()
{
    markup_ += endOfAll;
    try {
        const XmlDocument document(markup_, {}, limits_);
        if (!HasOnePrefix(document, prefix_) && NamespaceFault(document))
            return false;
        const std::size_t elements = before_.ElementCount() + document.ElementCount() - changes_.size();
        if (elements >= std::min(limits_.elements, limits_.denseElements))
            return false;
        // With each element where it was put, none of the texts has done anything to another one.
        const auto readsAsItShould = [&](Node one, const Change& change) {
            const ElementRange range = document.RangeOf(one);
            return range.begin == change.begin && range.end == change.end &&
                   ReadsAs(ReadBodyText(document, one).text, change.text);
        };
        auto change = changes_.begin();
        for (const Node one : document.Root().ChildElements())
            if (change == changes_.end() || !readsAsItShould(one, *change++))
                return false;
        return change == changes_.end();
    } catch (const Failure&) {
        // Reading the whole part tells what is wrong.
        return false;
    }
}

/// Whether a body is not deep in other elements, and only the root declares what its prefixes mean.
bool TextCheck::HasUsualPlace(Node body) const
{
    Node around = body;
    for (std::size_t depth = 1; around != before_.Root(); ++depth) {
        const ElementRange range = before_.RangeOf(around);
        const std::string_view tag = before_.Bytes().substr(range.begin, range.contentBegin - range.begin);
        if (depth >= deepest || tag.find("xmlns") != std::string_view::npos)
            return false;
        around = before_.ParentOf(around);
    }
    return true;
}

/// What an edit has changed of all paragraphs of a body. Nothing when it edits anything else, or when the text is
/// another one than that of what has not changed.
std::optional<TextCheck::Middle> TextCheck::MiddleOf(Node body, const ByteEdit& edit, StringView text) const
{
    std::vector<Node> paragraphs;
    for (const Node child : body.ChildElements())
        if (IsParagraph(before_, child))
            paragraphs.push_back(child);
    if (paragraphs.empty() || before_.OffsetOf(paragraphs.front()) != edit.begin ||
        before_.RangeOf(paragraphs.back()).end != edit.end)
        return std::nullopt;

    const std::string_view bytes = before_.Bytes();
    const CommonBytes common = CommonBytesOf(bytes.substr(edit.begin, edit.end - edit.begin), edit.text);
    const std::size_t front = edit.begin + common.front;
    const std::size_t back = edit.end - common.back;
    const auto middleOf = [&](const Siblings& siblings, std::string_view paragraph) {
        const std::size_t begin = before_.OffsetOf(siblings.FirstChanged());
        const std::size_t end = before_.RangeOf(siblings.LastChanged()).end;
        const std::size_t after = edit.end - end;
        return Middle{
            bytes.substr(begin, end - begin),
            std::string_view(edit.text).substr(begin - edit.begin, edit.text.size() - after - (begin - edit.begin)),
            {},
            paragraph};
    };
    const Siblings all(before_, std::move(paragraphs), front, back);
    if (!all.TakeUnchanged(text, u"\r",
                           [&](Node paragraph, BodyText& read) { AppendParagraph(before_, paragraph, read); }))
        return std::nullopt;
    Middle middle = middleOf(all, {});

    const Node paragraph = all.FirstChanged();
    const ElementRange range = before_.RangeOf(paragraph);
    std::vector<Node> pieces;
    for (const Node child : paragraph.ChildElements())
        pieces.push_back(child);
    const bool isInPieces =
        paragraph == all.LastChanged() && !pieces.empty() && before_.OffsetOf(pieces.front()) <= front &&
        before_.RangeOf(pieces.back()).end >= back &&
        bytes.substr(range.begin, range.contentBegin - range.begin).find("xmlns") == std::string_view::npos;
    if (isInPieces) {
        const Siblings own(before_, std::move(pieces), front, back);
        const Middle inner = middleOf(own, range.name);
        if (IsMarkupAtBothEnds(inner.after)) {
            if (!own.TakeUnchanged(text, {}, [&](Node piece, BodyText& read) { AppendPiece(before_, piece, read); }))
                return std::nullopt;
            middle = inner;
        }
    }
    middle.text = text;
    return middle;
}

}  // namespace tessarine::builtin
