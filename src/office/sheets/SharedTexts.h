#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/String.h"

namespace tessarine::sheets
{

/// The table of a workbook's texts (MS-XLS 2.4.265 SST), each once. Borrows the texts.
class SharedTexts
{
public:
    /// The position of a text in the table, for one more cell that has it.
    std::uint32_t Add(StringView text);

    /// The table's record and the Continue records that it goes on in.
    std::string Records() const;

private:
    std::vector<StringView> texts_;
    std::unordered_map<StringView, std::uint32_t> positions_;
    std::uint32_t cells_ = 0;
};

}  // namespace tessarine::sheets
