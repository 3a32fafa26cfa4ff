#include "office/builtin/text/TextBody.h"

#include <algorithm>

#include "office/builtin/limits/Damage.h"
#include "platform/CaseFolding.h"
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

TextBody::TextBody(std::size_t offset, String text, ProtectedRanges protectedRanges)
    : offset_(offset), text_(std::move(text)), protectedRanges_(std::move(protectedRanges))
{
}

TextBody TextBody::Read(const XmlDocument& document, Node body)
{
    BodyText read = ReadBodyText(document, body);
    return {document.OffsetOf(body), std::move(read.text), std::move(read.protectedRanges)};
}

String TextBody::Text() const
{
    return Text(0, text_.Size());
}

String TextBody::Text(std::size_t begin, std::size_t length) const
{
    const std::size_t from = std::min(begin, text_.Size());
    const std::size_t size = std::min(length, text_.Size() - from);
    String text;
    text.reserve(size);
    text_.CopyTo(text, from, from + size);
    return text;
}

std::size_t TextBody::KeptBytes() const
{
    // The folded text may still be made: nobody tells when.
    const std::size_t folded = folded_ ? folded_->KeptBytes() : text_.KeptBytes();
    return sizeof(TextBody) + text_.KeptBytes() + folded + protectedRanges_.KeptBytes() +
           (tree_ ? tree_->KeptBytes() : 0);
}

std::optional<std::size_t> TextBody::Find(const TextPattern& pattern, std::size_t from)
{
    const std::size_t size = text_.Size();
    if (pattern.Units().size() > size || from > size - pattern.Units().size())
        return std::nullopt;
    // The character in front, for whole words, may be a pair.
    const std::size_t base = from - std::min<std::size_t>(from, 2);
    const StringView text(text_.From(base), size - base);
    StringView searched = text;
    if (!pattern.MatchCase()) {
        if (!folded_)
            // Folding keeps the length.
            folded_.emplace(FoldCaseLocally(base == 0 ? text : StringView(Text())));
        searched = StringView(folded_->From(base), size - base);
    }
    const auto hit = FindText(searched, text, pattern, from - base, protectedRanges_, base);
    return hit ? std::optional(*hit + base) : std::nullopt;
}

std::size_t TextBody::Replace(std::size_t begin, std::size_t length, StringView with, const DocumentSource& document)
{
    const String inserted = Normalised(with);
    const std::size_t end = begin + std::min(length, text_.Size() - begin);
    if (end - begin == inserted.size() && StringView(text_.From(begin), inserted.size()) == inserted)
        return inserted.size();
    TextTree& tree = Open(document);
    tree.Replace(begin, length, inserted);

    ++edits_;
    text_.Replace(begin, end - begin, inserted);
    if (folded_)
        folded_->Replace(begin, end - begin, FoldCaseLocally(inserted));
    // Text that comes in or goes moves the ranges after it.
    if (!protectedRanges_.Move(begin, length, inserted.size()))
        protectedRanges_ = tree.ProtectedRanges();
    return inserted.size();
}

void TextBody::PutText(StringView text, const DocumentSource& document)
{
    Replace(0, text_.Size(), text, document);
}

TextTree& TextBody::Open(const DocumentSource& document)
{
    if (!tree_) {
        const XmlDocument& part = document();
        const Node body = part.ElementAt(offset_);
        if (!body)
            throw Damage({}, "a shape's text is not what it was when it was read", offset_);
        tree_ = std::make_unique<TextTree>(part, body, Text());
    }
    return *tree_;
}

}  // namespace tessarine::builtin
