#pragma once

#include <cstddef>
#include <optional>

#include "office/builtin/matching/GapBuffer.h"
#include "office/builtin/matching/ProtectedRanges.h"
#include "office/builtin/matching/TextMatch.h"
#include "platform/String.h"

namespace tessarine::builtin
{

/// A text that is searched and edited from front to back, over and over: a hit costs what it changes, however long the
/// text is. Positions are UTF-16 units from 0.
class SearchedText
{
public:
    explicit SearchedText(String text, ProtectedRanges protectedRanges = {})
        : text_(std::move(text)), protectedRanges_(std::move(protectedRanges))
    {
    }

    String Text() const { return Text(0, Size()); }
    String Text(std::size_t begin, std::size_t length) const;  ///< As much of these units as there is.
    std::size_t Size() const { return text_.Size(); }

    /// As FindText, in the text as it is now.
    std::optional<std::size_t> Find(const TextPattern& pattern, std::size_t from);

    /// Whether those units, as many as there are, are `text` already.
    bool Reads(std::size_t begin, std::size_t length, StringView text);

    /// Puts a text in the place of units, as many as there are. False where the protected ranges must be given anew, as
    /// it can't be told what becomes of them.
    bool Replace(std::size_t begin, std::size_t length, StringView with);
    void Protect(ProtectedRanges ranges) { protectedRanges_ = std::move(ranges); }

    std::size_t KeptBytes() const;  ///< About what it takes of memory.

private:
    GapBuffer<String> text_;
    std::optional<GapBuffer<String>> folded_;  // made when first needed
    ProtectedRanges protectedRanges_;
};

/// A text as a shape can hold it: line ends (CR, LF, CR LF) are paragraph breaks, and what is half a character or none
/// becomes U+FFFD.
String HeldText(StringView text);

}  // namespace tessarine::builtin
