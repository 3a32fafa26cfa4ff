#pragma once

#include <cstdint>
#include <vector>

#include "platform/String.h"

namespace tessarine::builtin
{

/// A text to look for, prepared for asking many parts.
struct SoughtText {
    explicit SoughtText(const String& findWhat);

    std::uint64_t serial;  ///< Tells this text from those prepared before; never 0.
    String text;
    String folded;
    bool hasBreaks = false;              ///< Holds control characters, such as paragraph breaks.
    std::vector<std::uint32_t> triples;  ///< Hashes of every three units in a row of the folded text.
};

/// Which three units in a row a text has, by their hashes: a quick way to a no, for what is asked again and again.
class TripleTable
{
public:
    TripleTable() = default;  ///< Not made: may only be asked for that.
    explicit TripleTable(std::size_t textLength);

    bool IsMade() const { return !bits_.empty(); }
    void Add(StringView folded);
    bool HoldsAll(const SoughtText& sought) const;  ///< False only when one is missing.

private:
    std::vector<bool> bits_;
};

}  // namespace tessarine::builtin
