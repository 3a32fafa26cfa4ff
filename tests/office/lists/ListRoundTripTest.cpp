#include "office/lists/ListFiles.h"

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using ListRoundTrip = ListFiles;

/// Texts that every format keeps.
std::vector<String> OrdinaryTexts()
{
    return {u"cat",
            u"\U0001F600 \U0001F468\u200D\U0001F469\u200D\U0001F467 \U0001F1E9\U0001F1EA",
            u"\u0639\u0631\u0636 \u0627\u0644\u0634\u0631\u0643\u0629",
            u"\u05E9\u05DC\u05D5\u05DD \u200Fabc\u200E",
            u"\u88FD\u54C1\u7D39\u4ECB \U00020BB7",
            u"e\u0301 a\u0308\u0323",
            u"\uFEFFmark",
            u" blanks around ",
            u"\u00A0\u2003",
            u"inner \"quotes\" and 'others'",
            u"a,b;c",
            u"'2024",
            u"50% 1/2 1,000 \u20AC3",
            u"#N/A",
            u"sep=;",
            u"\u001B[1m",
            String(255, u'x'),
            String(256, u'\u00FC'),
            String(32767, u'\u4E2D')};
}

/// Texts that need quotes, or that would read as something else.
std::vector<String> AwkwardTexts()
{
    return {u"a\tb",  u"a\nb", u"a\r\nb", u"a\rb", u"\n",  u"\"", u"\"quoted\"",
            u"\"\"",  u"2024", u"007",    u"-1.5", u"1e5", u".5", u"TRUE",
            u"false", u"=1+1", u"=\"x\"", u"=",    u"-1",  u"1",  u"12345678901234567",
            u"-",     u"+1",   u"00",     u"1.0"};
}

class ListFormats : public ListFiles, public testing::WithParamInterface<const char*>
{
protected:
    String Path() const { return folder_.PathOf(FromUtf8(std::string("list.") + GetParam())); }

    /// The list as it reads back from a file.
    std::shared_ptr<FindAndReplaceItems> ThereAndBack(FindAndReplaceItems& list) const
    {
        list.ExportsList(Path());
        EXPECT_FALSE(list.FileFailure) << ToUtf8(list.FileFailure->description);
        auto back = std::make_shared<FindAndReplaceItems>();
        EXPECT_TRUE(back->ImportList(Path()));
        EXPECT_FALSE(back->FileFailure) << ToUtf8(back->FileFailure->description);
        return back;
    }

    void ExpectKept(const std::vector<String>& texts) const
    {
        FindAndReplaceItems list;
        for (const String& text : texts)
            Add(list, text, text);

        const auto back = ThereAndBack(list);

        ASSERT_EQ(back->Count(), list.Count());
        for (std::int32_t n = 1; n <= list.Count(); ++n) {
            const String& text = list.Item(n)->FindWhat;
            EXPECT_TRUE(back->Item(n)->FindWhat == text) << ToUtf8(text.substr(0, 40));
            EXPECT_TRUE(back->Item(n)->ReplaceWith == text) << ToUtf8(text.substr(0, 40));
        }
    }
};

INSTANTIATE_TEST_SUITE_P(All, ListFormats, testing::Values("xls", "csv", "tab"),
                         [](const auto& format) { return format.param; });

class QuotingFormats : public ListFormats
{
};

INSTANTIATE_TEST_SUITE_P(All, QuotingFormats, testing::Values("xls", "csv"),
                         [](const auto& format) { return format.param; });

TEST_P(ListFormats, KeepOrdinaryTexts)
{
    ExpectKept(OrdinaryTexts());
}

TEST_P(QuotingFormats, KeepAwkwardTexts)
{
    ExpectKept(AwkwardTexts());
}

TEST_P(ListFormats, KeepEachSwitch)
{
    FindAndReplaceItems list;
    for (const OptionKey& key : OptionKeys) {
        OptionSetting setting;
        setting.*key.field = true;
        Add(list, key.name, u"", setting);
    }

    const auto back = ThereAndBack(list);

    ASSERT_EQ(back->Count(), list.Count());
    for (std::int32_t n = 1; n <= list.Count(); ++n)
        for (const OptionKey& key : OptionKeys) {
            const bool isKept = key.field != &OptionSetting::PromptOnReplace;
            EXPECT_EQ((*back->Item(n)->OptionSetting).*key.field, isKept && (*list.Item(n)->OptionSetting).*key.field)
                << n << " " << ToUtf8(key.name);
        }
}

TEST_P(ListFormats, LosePromptAndSearchMethod)
{
    FindAndReplaceItems list;
    Add(list, u"cat", u"dog", {.SearchMethod = 5, .PromptOnReplace = true, .InSlides = true});

    const auto back = ThereAndBack(list);

    EXPECT_FALSE(back->Item(1)->OptionSetting->PromptOnReplace);
    EXPECT_EQ(back->Item(1)->OptionSetting->SearchMethod, 0);
    EXPECT_TRUE(back->Item(1)->OptionSetting->InSlides);
}

TEST_P(ListFormats, KeepAnEmptyList)
{
    FindAndReplaceItems list;

    EXPECT_EQ(ThereAndBack(list)->Count(), 0);
}

TEST_P(ListFormats, KeepEmptyTexts)
{
    FindAndReplaceItems list;
    Add(list, u"", u"");
    Add(list, u"cat", u"");
    Add(list, u"", u"dog");

    const auto back = ThereAndBack(list);

    ASSERT_EQ(back->Count(), 3);
    EXPECT_EQ(back->Item(1)->FindWhat, u"");
    EXPECT_EQ(back->Item(2)->FindWhat, u"cat");
    EXPECT_EQ(back->Item(3)->ReplaceWith, u"dog");
}

TEST_P(ListFormats, ReplaceAnOlderFile)
{
    folder_.Write(FromUtf8(std::string("list.") + GetParam()), std::string(100000, 'x'));
    FindAndReplaceItems list;
    Add(list, u"cat", u"dog");

    EXPECT_THAT(FindsOf(*ThereAndBack(list)), ElementsAre(u"cat"));
}

TEST_P(ListFormats, Take32766PairsAndNoMore)
{
    FindAndReplaceItems list;
    for (int n = 1; n <= 32766; ++n)
        Add(list, u"find " + FromUtf8(std::to_string(n)), u"with", {.InSlides = true});

    EXPECT_EQ(ThereAndBack(list)->Item(32766)->FindWhat, u"find 32766");

    Add(list, u"one more");
    list.ExportsList(Path());
    FindAndReplaceItems back;
    EXPECT_FALSE(back.ImportList(Path()));
    EXPECT_EQ(back.Count(), 0);
    ASSERT_TRUE(back.FileFailure);
    EXPECT_EQ(back.FileFailure->number, 6);
}

TEST_F(ListRoundTrip, ATabFileBreaksAtTabsAndLineEnds)
{
    const String path = folder_.PathOf(u"list.tab");
    FindAndReplaceItems list;
    Add(list, u"a\nb", u"dog", {.InSlides = true});
    list.ExportsList(path);
    FindAndReplaceItems back;

    EXPECT_TRUE(back.ImportList(path));

    EXPECT_THAT(FindsOf(back), ElementsAre(u"a", u"b"));
    EXPECT_FALSE(back.Item(1)->OptionSetting->InSlides);
    EXPECT_EQ(back.Item(2)->ReplaceWith, u"dog");
    EXPECT_TRUE(back.Item(2)->OptionSetting->InSlides);

    Add(list, u"a\tb");
    list.ExportsList(path);
    EXPECT_FALSE(back.ImportList(path));
    EXPECT_EQ(back.ImportRefusal->columns, 19);
}

TEST_F(ListRoundTrip, ATabFileReadsTextsThatLookLikeValuesAsValues)
{
    const String path = folder_.PathOf(u"list.tab");
    FindAndReplaceItems list;
    for (const StringView text : {u"007", u"TRUE", u"1e2", u"\"a\""})
        Add(list, String(text));
    list.ExportsList(path);
    FindAndReplaceItems back;

    ASSERT_TRUE(back.ImportList(path));

    EXPECT_THAT(FindsOf(back), ElementsAre(u"7", u"True", u"100", u"a"));
}

TEST_F(ListRoundTrip, AWorkbookTakes65535PairsAndNoMore)
{
    const String path = folder_.Write(u"list.xls", "old");
    FindAndReplaceItems list;
    for (int n = 1; n <= 65536; ++n)
        Add(list, u"x");

    list.ExportsList(path);
    ASSERT_TRUE(list.FileFailure);
    EXPECT_EQ(list.FileFailure->number, 1004);
    EXPECT_EQ(ContentOf(path), "old");
    EXPECT_THAT(log_.Lines(), ElementsAre(HasSubstr("in procedure ExportsList")));

    list.Remove(1);
    list.ExportsList(path);
    EXPECT_FALSE(list.FileFailure);
    EXPECT_NE(ContentOf(path), "old");
}

TEST_F(ListRoundTrip, ATextTooLongForACellFailsAndLeavesTheOldFile)
{
    FindAndReplaceItems list;
    Add(list, String(32768, u'x'));

    for (const StringView name : {u"list.xls", u"list.csv"}) {
        const String path = folder_.Write(name, "old");
        list.ExportsList(path);
        ASSERT_TRUE(list.FileFailure) << ToUtf8(name);
        EXPECT_EQ(list.FileFailure->number, 1004) << ToUtf8(name);
        EXPECT_EQ(ContentOf(path), "old") << ToUtf8(name);
    }
}

}  // namespace
}  // namespace tessarine
