#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/String.h"

namespace tessarine::sheets
{

/// The table of a workbook's texts (MS-XLS 2.4.265 SST, ECMA-376 part 1, 18.4), each once. Borrows the texts, which
/// must outlive it. Cells name a text by its position, which counts from 0 and never changes.
class SharedTexts
{
public:
    /// The position of a text in the table, for one more cell that has it.
    std::uint32_t Add(StringView text);

    const std::vector<StringView>& Texts() const { return texts_; }  ///< By their positions.
    std::uint32_t Cells() const { return cells_; }                   ///< How many cells have one.

    /// The table's record and the Continue records that it goes on in.
    std::string Records() const;

private:
    std::vector<StringView> texts_;  // in the order in which they came
    std::unordered_map<StringView, std::uint32_t> positions_;
    std::uint32_t cells_ = 0;  // how many cells have texts
};

}  // namespace tessarine::sheets
