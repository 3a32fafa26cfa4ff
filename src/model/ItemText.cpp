#include "model/ItemText.h"

#include "model/PairOptions.h"
#include "model/SearchLocations.h"
#include "platform/Failure.h"

namespace tessarine
{

namespace
{

/// Appends the text of a switch that is on.
template <class Row>
void AppendWhenOn(String& text, const Row& row, const OptionSetting& setting)
{
    if (setting.*row.isOn)
        text.append(text.empty() ? u"" : u",").append(row.inGrid);
}

}  // namespace

String CreateLocationString(const FindAndReplaceItem& item)
{
    const OptionSetting& setting = *NotNull(item.OptionSetting);
    String text;
    for (const SearchLocation& row : SearchLocations) {
        AppendWhenOn(text, row, setting);
        // "Header" once more: users know the column with it at both places.
        if (row.location == Location::Footer)
            AppendWhenOn(text, RowOf(Location::Header), setting);
    }
    return text;
}

String CreateOptionStrin(const FindAndReplaceItem& item)
{
    const OptionSetting& setting = *NotNull(item.OptionSetting);
    String text;
    for (const PairOption& row : PairOptions)
        AppendWhenOn(text, row, setting);
    return text;
}

String CreateSearchType(const FindAndReplaceItem& item)
{
    return SearchMethodText(NotNull(item.OptionSetting)->SearchMethod);
}

}  // namespace tessarine
