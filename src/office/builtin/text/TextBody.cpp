#include "office/builtin/text/TextBody.h"

#include <algorithm>

#include "office/builtin/limits/Damage.h"
#include "platform/CaseFolding.h"

namespace tessarine::builtin
{

namespace
{

bool IsHigh(char16_t unit)
{
    return unit >= 0xD800 && unit <= 0xDBFF;
}

bool IsLow(char16_t unit)
{
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

/// The text in the form in which a body holds it.
String Normalised(StringView text)
{
    String result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t unit = text[i];
        if (unit == u'\r' || unit == u'\n') {
            result += u'\r';
            if (unit == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n')
                ++i;
        } else if (IsHigh(unit) && i + 1 < text.size() && IsLow(text[i + 1])) {
            result += unit;
            result += text[++i];
        } else if (IsHigh(unit) || IsLow(unit) || unit == 0xFFFE || unit == 0xFFFF) {
            result += u'\xFFFD';
        } else {
            result += unit;
        }
    }
    return result;
}

}  // namespace

TextBody::TextBody(std::size_t offset, String text, std::vector<ProtectedRange> protectedRanges)
    : offset_(offset), text_(std::move(text)), protectedRanges_(std::move(protectedRanges))
{
}

std::optional<std::size_t> TextBody::Find(const TextPattern& pattern, std::size_t from)
{
    if (pattern.Units().size() > text_.size() || from > text_.size() - pattern.Units().size())
        return std::nullopt;
    if (pattern.MatchCase())
        return FindText(text_, text_, pattern, from, protectedRanges_);
    if (folded_.size() != text_.size())
        folded_ = FoldCase(StringView(text_));
    return FindText(folded_, text_, pattern, from, protectedRanges_);
}

std::size_t TextBody::Replace(std::size_t begin, std::size_t length, StringView with, std::string_view xml)
{
    const String inserted = Normalised(with);
    if (StringView(text_).substr(begin, length) == inserted)
        return inserted.size();
    if (!tree_) {
        auto tree = std::make_unique<TextTree>(xml, offset_);
        if (tree->Text() != text_)
            throw Damage({}, "the text of a shape can't be edited, as its markup is not regular", offset_);
        tree_ = std::move(tree);
    }
    tree_->Replace(begin, length, inserted);

    text_.replace(begin, length, inserted);
    if (!folded_.empty())
        folded_.replace(begin, length, FoldCase(StringView(inserted)));
    if (!protectedRanges_.empty())
        protectedRanges_ = tree_->ProtectedRanges();
    return inserted.size();
}

void TextBody::PutText(StringView text, std::string_view xml)
{
    const String wanted = Normalised(text);
    const StringView old = text_;
    const std::size_t shorter = std::min(old.size(), wanted.size());
    std::size_t front = 0;
    while (front < shorter && old[front] == wanted[front])
        ++front;
    if (front > 0 && IsHigh(old[front - 1]))
        --front;  // never half a surrogate pair
    std::size_t back = 0;
    while (back < shorter - front && old[old.size() - 1 - back] == wanted[wanted.size() - 1 - back])
        ++back;
    if (back > 0 && IsLow(old[old.size() - back]))
        --back;
    Replace(front, old.size() - front - back, StringView(wanted).substr(front, wanted.size() - front - back), xml);
}

}  // namespace tessarine::builtin
