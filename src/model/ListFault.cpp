#include "model/ListFault.h"

#include "model/ListColumns.h"

namespace tessarine
{

namespace
{

ListFault FaultOfFailure(const Failure& failure, const FindAndReplaceItems& list)
{
    constexpr std::int32_t firstRow = 2;  // below the headers
    switch (failure.number) {
        case FailureNumber::Overflow:
            return {.kind = ListFault::Kind::TooManyRows};
        case FailureNumber::TypeMismatch:
            return {.kind = ListFault::Kind::ErrorInRow, .row = list.Count() + firstRow};
        default:
            return {.kind = ListFault::Kind::File, .failure = failure};
    }
}

}  // namespace

std::optional<ListFault> FaultOf(const FindAndReplaceItems& list)
{
    if (list.FileFailure)
        return FaultOfFailure(*list.FileFailure, list);
    if (!list.ImportRefusal)
        return std::nullopt;
    const ListRefusal& refusal = *list.ImportRefusal;
    switch (refusal.reason) {
        case ListRefusal::Reason::ColumnCount:
            return ListFault{.kind = ListFault::Kind::ColumnCount, .columns = refusal.columns};
        case ListRefusal::Reason::Header:
            return ListFault{.kind = ListFault::Kind::Header,
                             .column = refusal.column,
                             .found = refusal.header,
                             .wanted = ListHeaders[static_cast<std::size_t>(refusal.column) - 1]};
        case ListRefusal::Reason::OtherExtension:
            return ListFault{.kind = ListFault::Kind::OtherExtension};
        case ListRefusal::Reason::FileMissing:
            break;
    }
    return ListFault{.kind = ListFault::Kind::FileMissing};
}

}  // namespace tessarine
