#include <gmock/gmock.h>

#include <fstream>
#include <iterator>
#include <span>
#include <string>

#include "model/ListColumns.h"
#include "model/ProjectKeys.h"

// The pages that describe locations, options and file formats know every row of the tables.

namespace tessarine
{
namespace
{

using testing::HasSubstr;

std::string PageAt(const char* path)
{
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Fails with the key's name unless it stands in back quotes at or after `position`, which moves past it.
void ExpectNext(const std::string& page, const char16_t* key, std::size_t& position)
{
    const std::string quoted = "`" + ToUtf8(key) + "`";
    const std::size_t found = page.find(quoted, position);
    ASSERT_NE(found, std::string::npos) << quoted << " is missing, or stands too early";
    position = found + quoted.size();
}

TEST(ProjectFilePage, DescribesEveryStoredOptionInTheOrderOfTheFile)
{
    const std::string page = PageAt(TESSARINE_DOCS "/formats/tsq.md");
    std::size_t position = 0;

    for (const StoredOption& option : StoredOptions)
        ExpectNext(page, option.key, position);
}

TEST(ProjectFilePage, ListsEverySwitchInTheOrderOfTheFile)
{
    const std::string page = PageAt(TESSARINE_DOCS "/formats/tsq.md");
    std::size_t position = page.find("The " + std::to_string(OptionKeys.size()) + " switches, in order");
    ASSERT_NE(position, std::string::npos);

    for (const OptionKey& key : OptionKeys)
        ExpectNext(page, key.name, position);
}

TEST(ListPage, DescribesEveryColumnUnderItsNumber)
{
    const std::string page = PageAt(TESSARINE_DOCS "/lists.md");

    std::int32_t column = FirstSwitchColumn;
    for (const OptionKey& key : std::span(OptionKeys).first<ListSwitchCount>())
        EXPECT_THAT(page, HasSubstr("| " + std::to_string(column++) + " | `" + ToUtf8(key.name) + "` |"));
}

TEST(HelpPage, TellsWhatEveryLocationSearches)
{
    const std::string page = PageAt(TESSARINE_HELP_PAGES "/where-it-looks.html");

    for (const SearchLocation& row : SearchLocations)
        EXPECT_THAT(page, HasSubstr("<td>" + ToUtf8(row.caption) + "</td>"));
}

}  // namespace
}  // namespace tessarine
