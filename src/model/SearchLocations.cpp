#include "model/SearchLocations.h"

#include <algorithm>

#include "model/ProjectKeys.h"
#include "platform/FieldCount.h"

namespace tessarine
{

namespace
{

/// A row may end early without a complaint of the compiler; its pointers are null then.
constexpr bool IsComplete(const SearchLocation& row)
{
    return row.isOn && row.key && row.name && row.caption && row.inGrid && row.inResults && row.found && row.notFound;
}

constexpr bool RowsStandUnderTheirNumbers()
{
    for (std::size_t row = 0; row < SearchLocations.size(); ++row)
        if (static_cast<std::size_t>(SearchLocations[row].location) != row)
            return false;
    return true;
}

static_assert(std::ranges::all_of(SearchLocations, IsComplete), "a location lacks one of its texts or its switch");
static_assert(RowsStandUnderTheirNumbers(), "Location and SearchLocations differ in their order");
static_assert(FieldCount<OptionSetting>() == OptionKeys.size() + 1,
              "a switch of OptionSetting stands in neither SearchLocations nor PairOptions; only SearchMethod may");

}  // namespace

String SearchMethodText(std::int32_t searchMethod)
{
    return searchMethod == 0 ? u"Normal Search" : u"";
}

}  // namespace tessarine
