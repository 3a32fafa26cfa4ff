#include "office/builtin/text/TextBody.h"

#include "office/builtin/limits/Damage.h"

namespace tessarine::builtin
{

TextBody::TextBody(std::size_t offset, String text, ProtectedRanges protectedRanges)
    : offset_(offset), text_(std::move(text), std::move(protectedRanges))
{
}

TextBody TextBody::Read(const XmlDocument& document, Node body)
{
    BodyText read = ReadBodyText(document, body);
    return {document.OffsetOf(body), std::move(read.text), std::move(read.protectedRanges)};
}

std::size_t TextBody::KeptBytes() const
{
    return sizeof(TextBody) + text_.KeptBytes() + (tree_ ? tree_->KeptBytes() : 0);
}

std::size_t TextBody::Replace(std::size_t begin, std::size_t length, StringView with, const DocumentSource& document)
{
    const String inserted = HeldText(with);
    if (text_.Reads(begin, length, inserted))
        return inserted.size();
    TextTree& tree = Open(document);
    tree.Replace(begin, length, inserted);

    ++edits_;
    // Text that comes in or goes moves the ranges after it.
    if (!text_.Replace(begin, length, inserted))
        text_.Protect(tree.ProtectedRanges());
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
