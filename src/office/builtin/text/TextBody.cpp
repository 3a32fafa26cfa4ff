#include "office/builtin/text/TextBody.h"

#include "office/builtin/limits/Damage.h"
#include "platform/CaseFolding.h"
#include "platform/CommonEnds.h"
#include "platform/ParagraphBreaks.h"
#include "platform/Utf16.h"

namespace tessarine::builtin
{

namespace
{

/// The text in the form in which a body holds it.
String Normalised(StringView text)
{
    String result = WithParagraphBreaks(text);
    for (std::size_t i = 0; i < result.size(); ++i) {
        if (IsPairAt(result, i))
            ++i;
        else if (IsSurrogate(result[i]) || result[i] == 0xFFFE || result[i] == 0xFFFF)
            result[i] = u'\xFFFD';
    }
    return result;
}

}  // namespace

TextBody::TextBody(std::size_t offset, String text, std::vector<ProtectedRange> protectedRanges)
    : offset_(offset), text_(std::move(text)), protectedRanges_(std::move(protectedRanges))
{
}

TextBody TextBody::Read(const XmlDocument& document, Node body)
{
    BodyText read = ReadBodyText(document, body);
    return {document.OffsetOf(body), std::move(read.text), std::move(read.protectedRanges)};
}

std::optional<std::size_t> TextBody::Find(const TextPattern& pattern, std::size_t from)
{
    if (pattern.Units().size() > text_.size() || from > text_.size() - pattern.Units().size())
        return std::nullopt;
    if (pattern.MatchCase())
        return FindText(text_, text_, pattern, from, protectedRanges_);
    // Not made yet: folding keeps the length.
    if (folded_.size() != text_.size())
        folded_ = FoldCase(StringView(text_));
    return FindText(folded_, text_, pattern, from, protectedRanges_);
}

std::size_t TextBody::Replace(std::size_t begin, std::size_t length, StringView with, const DocumentSource& document)
{
    const String inserted = Normalised(with);
    if (StringView(text_).substr(begin, length) == inserted)
        return inserted.size();
    TextTree& tree = Open(document);
    tree.Replace(begin, length, inserted);

    text_.replace(begin, length, inserted);
    if (!folded_.empty())
        folded_.replace(begin, length, FoldCase(StringView(inserted)));
    if (!protectedRanges_.empty())
        // Text that comes in or goes moves the ranges after it.
        protectedRanges_ = tree.ProtectedRanges();
    return inserted.size();
}

void TextBody::PutText(StringView text, const DocumentSource& document)
{
    const String wanted = Normalised(text);
    const auto [front, back] = CommonEndsOf(text_, wanted);
    Replace(front, text_.size() - front - back, StringView(wanted).substr(front, wanted.size() - front - back),
            document);
}

TextTree& TextBody::Open(const DocumentSource& document)
{
    if (!tree_) {
        const XmlDocument& part = document();
        const Node body = part.ElementAt(offset_);
        auto tree = body ? std::make_unique<TextTree>(part, body) : nullptr;
        if (!tree || tree->Text() != text_)
            throw Damage({}, "a shape's text is not what it was when it was read", offset_);
        tree_ = std::move(tree);
    }
    return *tree_;
}

}  // namespace tessarine::builtin
