#pragma once

#include <cstdint>
#include <optional>

#include "model/FindAndReplaceItems.h"
#include "platform/String.h"

namespace tessarine
{

/// Why a list file was not imported, or not to its end, or not exported: one rule for all who put it into words.
struct ListFault {
    enum class Kind {
        FileMissing,
        OtherExtension,
        ColumnCount,  ///< It has `columns`, and a list has ListColumnCount.
        Header,       ///< `column` is headed `found` in place of `wanted`.
        TooManyRows,  ///< Of which a list has 32,767 at most.
        ErrorInRow,   ///< `row` holds an error, such as #N/A, in place of a text.
        File          ///< The file itself could not be read or written: `failure`.
    };

    Kind kind = Kind::FileMissing;
    std::int32_t columns = 0;
    std::int32_t column = 0;  ///< From 1.
    String found{};
    String wanted{};
    std::int32_t row = 0;  ///< As a spreadsheet counts: 1 is the headers.
    std::optional<Failure> failure{};
};

/// What became of the last import or export of `list`; nothing when it was complete, or when a message has told.
std::optional<ListFault> FaultOf(const FindAndReplaceItems& list);

}  // namespace tessarine
