#pragma once

#include <cstdint>
#include <vector>

#include "platform/String.h"

namespace tessarine::builtin
{

/// A text to look for, prepared once: for asking filters (TextFilter) and for finding it (TextPattern).
class SoughtText
{
public:
    /// Keeps a copy of the text, which may be empty.
    explicit SoughtText(const String& text);

    const String& Text() const { return text_; }  ///< As it was given.
    /// In the form that case does not matter to, for finding it (FoldCaseLocally).
    const String& Folded() const { return folded_; }
    /// The same for filters (FoldCaseWidely).
    const String& FoldedWidely() const { return foldedWidely_; }

    /// Whether it has control characters, such as paragraph and line breaks: these are between the runs of a text.
    bool HasControls() const { return hasControls_; }

    const std::vector<std::uint32_t>& Triples() const { return triples_; }  ///< Of FoldedWidely, for TripleTable.

private:
    String text_;
    String folded_;
    String foldedWidely_;
    bool hasControls_;
    std::vector<std::uint32_t> triples_;  // hashes
};

}  // namespace tessarine::builtin
