#include "office/lists/ListFiles.h"

#include <algorithm>
#include <cctype>

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using ImportedList = ListFiles;

/// A line of a file with one switch given as it is written, in column 15.
std::string LineWithSlides(const std::string& value)
{
    return "cat,dog,,,,,,,,,,,,," + value + ",,,\n";
}

TEST_F(ImportedList, TakesOnlyTrueInAnyCaseAsOn)
{
    const std::vector<std::pair<std::string, bool>> values{
        {"TRUE", true}, {"true", true}, {"True", true},  {"-1", true}, {"\"TRUE\"", true},   {"FALSE", false},
        {"1", false},   {"yes", false}, {"WAHR", false}, {"", false},  {"=\"TRUE\"", false}, {" TRUE", false}};
    std::string lines;
    for (const auto& [value, isOn] : values)
        lines += LineWithSlides(value);
    FindAndReplaceItems list;

    ASSERT_TRUE(list.ImportList(Write(u"list.csv", lines)));

    ASSERT_EQ(list.Count(), static_cast<std::int32_t>(values.size()));
    std::int32_t n = 0;
    for (const auto& [value, isOn] : values)
        EXPECT_EQ(list.Item(++n)->OptionSetting->InSlides, isOn) << value;
}

TEST_F(ImportedList, TakesNumbersAsTheirTexts)
{
    FindAndReplaceItems list;

    ASSERT_TRUE(list.ImportList(Write(u"list.csv", "2024,1.50\n007,\"0.1\"\n")));

    EXPECT_THAT(FindsOf(list), ElementsAre(u"2024", u"7"));
    EXPECT_EQ(list.Item(1)->ReplaceWith, u"1.5");
}

TEST_F(ImportedList, TakesShortAndBlankRows)
{
    FindAndReplaceItems list;

    ASSERT_TRUE(list.ImportList(Write(u"list.tab", "cat\n\nlast\tdog\t\t\t\t\t\t\t\t\t\t\t\t\ttrue\n")));

    EXPECT_THAT(FindsOf(list), ElementsAre(u"cat", u"", u"last"));
    EXPECT_FALSE(list.Item(1)->OptionSetting->InSlides);
    EXPECT_TRUE(list.Item(3)->OptionSetting->InSlides);
}

TEST_F(ImportedList, OfHeadersAloneIsEmpty)
{
    FindAndReplaceItems list;

    EXPECT_TRUE(list.ImportList(Write(u"list.csv", "")));

    EXPECT_EQ(list.Count(), 0);
}

TEST_F(ImportedList, TakesHeadersInSmallLetters)
{
    std::string text = ContentOf(Write(u"list.csv", "cat,dog\n"));
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    FindAndReplaceItems list;

    EXPECT_TRUE(list.ImportList(folder_.Write(u"small.csv", text)));

    EXPECT_THAT(FindsOf(list), ElementsAre(u"cat"));
}

TEST_F(ImportedList, IsRefusedForAnotherNumberOfColumns)
{
    FindAndReplaceItems list;
    Add(list, u"before");
    const std::string text = ContentOf(Write(u"list.csv", "cat,dog\n"));
    const std::string header = text.substr(0, text.find('\n'));

    EXPECT_FALSE(list.ImportList(folder_.Write(u"more.csv", header + ",More\ncat,dog\n")));
    EXPECT_EQ(list.ImportRefusal->columns, 19);
    EXPECT_FALSE(list.ImportList(folder_.Write(u"less.csv", header.substr(0, header.rfind(',')) + "\ncat,dog\n")));
    EXPECT_EQ(list.ImportRefusal->columns, 17);
    EXPECT_FALSE(list.ImportList(folder_.Write(u"empty.csv", "")));
    EXPECT_EQ(list.ImportRefusal->columns, 1);

    EXPECT_THAT(FindsOf(list), ElementsAre(u"before"));
    EXPECT_THAT(log_.Lines(), IsEmpty());
    EXPECT_TRUE(list.ImportList(folder_.PathOf(u"list.csv")));
    EXPECT_THAT(FindsOf(list), ElementsAre(u"cat"));
}

TEST_F(ImportedList, IsRefusedForABlankBeforeTheFirstHeader)
{
    FindAndReplaceItems list;
    Add(list, u"before");
    const std::string text = ContentOf(Write(u"list.csv", "cat,dog\n"));

    EXPECT_FALSE(list.ImportList(folder_.Write(u"blank.csv", " " + text)));

    EXPECT_EQ(list.Count(), 0);
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(ImportedList, IsReadInEveryEncodingOfText)
{
    const std::string text = ContentOf(Write(u"utf8.csv", "M\xC3\xBCller,\xF0\x9F\x98\x80\n"));
    folder_.Write(u"mark.csv", "\xEF\xBB\xBF" + text);
    std::string wide = "\xFF\xFE";
    for (const char16_t unit : FromUtf8(text)) {
        wide += static_cast<char>(unit & 0xFF);
        wide += static_cast<char>(unit >> 8);
    }
    folder_.Write(u"utf16.csv", wide);

    for (const StringView name : {u"utf8.csv", u"mark.csv", u"utf16.csv"}) {
        FindAndReplaceItems list;
        ASSERT_TRUE(list.ImportList(folder_.PathOf(name))) << ToUtf8(name);
        EXPECT_EQ(list.Item(1)->FindWhat, u"M\u00FCller") << ToUtf8(name);
        EXPECT_EQ(list.Item(1)->ReplaceWith, u"\U0001F600") << ToUtf8(name);
    }
    FindAndReplaceItems list;
    ASSERT_TRUE(list.ImportList(Write(u"old.csv", "M\xFCller,x\n")));
    EXPECT_EQ(list.Item(1)->FindWhat, u"M\u00FCller");
}

TEST_F(ImportedList, OfAnotherKindOfFileIsLoggedWithTheReason)
{
    FindAndReplaceItems list;
    Add(list, u"before");

    EXPECT_FALSE(list.ImportList(folder_.Write(u"page.xls", "<html><body><table></table></body></html>")));
    EXPECT_FALSE(list.ImportList(folder_.Write(u"empty.xls", "")));

    EXPECT_THAT(log_.Lines(), ElementsAre(HasSubstr("Error 1004 ("), HasSubstr("The file is empty")));
    EXPECT_THAT(log_.Lines()[0], HasSubstr("web page"));
    EXPECT_THAT(FindsOf(list), ElementsAre(u"before"));
}

}  // namespace
}  // namespace tessarine
