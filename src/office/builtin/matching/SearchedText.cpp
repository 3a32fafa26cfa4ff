#include "office/builtin/matching/SearchedText.h"

#include <algorithm>

#include "platform/CaseFolding.h"
#include "platform/ParagraphBreaks.h"
#include "platform/Utf16.h"

namespace tessarine::builtin
{

String SearchedText::Text(std::size_t begin, std::size_t length) const
{
    const std::size_t from = std::min(begin, text_.Size());
    const std::size_t size = std::min(length, text_.Size() - from);
    String text;
    text.reserve(size);
    text_.CopyTo(text, from, from + size);
    return text;
}

std::optional<std::size_t> SearchedText::Find(const TextPattern& pattern, std::size_t from)
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

bool SearchedText::Reads(std::size_t begin, std::size_t length, StringView text)
{
    const std::size_t size = std::min(length, text_.Size() - begin);
    return size == text.size() && StringView(text_.From(begin), size) == text;
}

bool SearchedText::Replace(std::size_t begin, std::size_t length, StringView with)
{
    const std::size_t size = std::min(length, text_.Size() - begin);
    text_.Replace(begin, size, with);
    if (folded_)
        folded_->Replace(begin, size, FoldCaseLocally(with));
    return protectedRanges_.Move(begin, length, with.size());
}

std::size_t SearchedText::KeptBytes() const
{
    // The folded text may still be made: nobody tells when.
    const std::size_t folded = folded_ ? folded_->KeptBytes() : text_.KeptBytes();
    return text_.KeptBytes() + folded + protectedRanges_.KeptBytes();
}

String HeldText(StringView text)
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

}  // namespace tessarine::builtin
