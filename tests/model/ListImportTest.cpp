#include "model/ListFileTest.h"

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

using ListImport = ListFileTest;

TEST_F(ListImport, TakesTextsAndSwitchesOfEachRow)
{
    FakeSheet sheet = SheetWith({{u"cat", u"dog"}, {u"old", u""}});
    sheet.cells[{2, 15}] = true;
    sheet.cells[{2, 17}] = true;
    sheet.cells[{3, 3}] = true;
    FindAndReplaceItems list;

    EXPECT_TRUE(list.ImportList(Put(sheet)));

    EXPECT_THAT(PairsOf(list), ElementsAre("cat -> dog", "old -> "));
    const OptionSetting& first = *list.Item(1)->OptionSetting;
    EXPECT_TRUE(first.InSlides);
    EXPECT_TRUE(first.MatchCase);
    EXPECT_FALSE(first.InBuiltinProperty);
    EXPECT_FALSE(first.MatchWholeWord);
    const OptionSetting& second = *list.Item(2)->OptionSetting;
    EXPECT_TRUE(second.InBuiltinProperty);
    EXPECT_FALSE(second.InSlides);
    EXPECT_THAT(log_.Lines(), IsEmpty());
    EXPECT_THAT(messages_.Messages(), IsEmpty());
    EXPECT_FALSE(list.FileFailure);
    EXPECT_FALSE(list.ImportRefusal);
}

TEST_F(ListImport, KnowsEachSwitchByItsColumn)
{
    const std::vector<std::pair<int, bool OptionSetting::*>> columns{
        {3, &OptionSetting::InBuiltinProperty},
        {4, &OptionSetting::InCustomProperties},
        {5, &OptionSetting::InFooter},
        {6, &OptionSetting::InHandoutMaster},
        {7, &OptionSetting::InHeader},
        {8, &OptionSetting::InHyperlinkAddresses},
        {9, &OptionSetting::InLinks},
        {10, &OptionSetting::InNotes},
        {11, &OptionSetting::InNotesMaster},
        {12, &OptionSetting::InShapesAndTextboxes},
        {13, &OptionSetting::InSlideMasterPerPresentation},
        {14, &OptionSetting::InSlideMasterPerSlide},
        {15, &OptionSetting::InSlides},
        {16, &OptionSetting::InTitleMaster},
        {17, &OptionSetting::MatchCase},
        {18, &OptionSetting::MatchWholeWord},
    };
    FakeSheet sheet = HeaderSheet();
    std::int32_t row = 1;
    for (const auto& [column, field] : columns)
        sheet.cells[{++row, column}] = true;
    FindAndReplaceItems list;

    ASSERT_TRUE(list.ImportList(Put(sheet)));

    ASSERT_EQ(list.Count(), 16);
    for (std::int32_t n = 0; n < 16; ++n)
        for (std::int32_t other = 0; other < 16; ++other)
            EXPECT_EQ((*list.Item(n + 1)->OptionSetting).*columns[static_cast<std::size_t>(other)].second, n == other)
                << n << " " << other;
}

TEST_F(ListImport, OpensTheFileInvisiblyAndLeavesNothingRunning)
{
    const String path = Put(SheetWith({{u"cat", u"dog"}}));
    FindAndReplaceItems list;

    list.ImportList(path);

    EXPECT_THAT(excel_.script.Calls(), ElementsAre("CreateApplication", "Workbooks.Open " + ToUtf8(path),
                                                   "Sheets.Item 1", "Workbook.Close 2", "Application.Quit"));
    EXPECT_EQ(excel_.Running(), 0);
    EXPECT_EQ(excel_.Open(), 0);
}

TEST_F(ListImport, KeepsNoReferenceToExcel)
{
    FindAndReplaceItems list;

    list.ImportList(Put(SheetWith({{u"cat", u"dog"}})));

    EXPECT_EQ(excel_.Held(), 0);
}

TEST_F(ListImport, TakesEachExtensionInAnyCase)
{
    for (const StringView name : {u"a.xls", u"a.CSV", u"a.Tab", u"folder.x/a.b.tAB"}) {
        FindAndReplaceItems list;
        EXPECT_TRUE(list.ImportList(Put(SheetWith({{u"cat", u"dog"}}), name))) << ToUtf8(name);
        EXPECT_EQ(list.Count(), 1) << ToUtf8(name);
    }
}

TEST_F(ListImport, ComparesHeadersWithoutRegardToCase)
{
    FakeSheet sheet = SheetWith({{u"cat", u"dog"}});
    sheet.cells[{1, 1}] = String(u"find what");
    sheet.cells[{1, 2}] = String(u"REPLACE WITH");
    sheet.cells[{1, 3}] = String(u"inbuiltinproperty");
    FindAndReplaceItems list;

    EXPECT_TRUE(list.ImportList(Put(sheet)));

    EXPECT_EQ(list.Count(), 1);
}

TEST_F(ListImport, OfHeadersAloneGivesAnEmptyList)
{
    FindAndReplaceItems list;
    AddItem(list, u"before");

    EXPECT_TRUE(list.ImportList(Put(HeaderSheet())));

    EXPECT_EQ(list.Count(), 0);
}

TEST_F(ListImport, CountsAsTrueOnlyTheBooleanAndMinusOne)
{
    FakeSheet sheet = HeaderSheet();
    std::vector<bool> expected;
    const auto addRow = [&](const auto& value, bool isTrue) {
        expected.push_back(isTrue);
        sheet.rows = static_cast<std::int32_t>(expected.size()) + 1;
        sheet.cells[{sheet.rows, 15}] = value;
    };
    addRow(true, true);
    addRow(-1.0, true);
    addRow(false, false);
    addRow(1.0, false);
    addRow(0.0, false);
    addRow(String(u"TRUE"), false);
    addRow(String(u"-1"), false);
    addRow(String(u"yes"), false);
    addRow(excel::CellError{0x2A}, false);
    addRow(std::monostate(), false);
    FindAndReplaceItems list;

    ASSERT_TRUE(list.ImportList(Put(sheet)));

    ASSERT_EQ(list.Count(), static_cast<std::int32_t>(expected.size()));
    for (std::size_t n = 0; n < expected.size(); ++n)
        EXPECT_EQ(list.Item(static_cast<std::int32_t>(n) + 1)->OptionSetting->InSlides, expected[n]) << n;
}

TEST_F(ListImport, TakesNumbersAndBooleansAsTheirTexts)
{
    FakeSheet sheet = HeaderSheet();
    sheet.cells[{2, 1}] = 2024.0;
    sheet.cells[{2, 2}] = -1.5;
    sheet.cells[{3, 1}] = true;
    FindAndReplaceItems list;

    ASSERT_TRUE(list.ImportList(Put(sheet)));

    EXPECT_THAT(PairsOf(list), ElementsAre("2024 -> -1.5", "True -> "));
}

TEST_F(ListImport, TakesBlankRowsAsItemsThatSearchNowhere)
{
    FakeSheet sheet = SheetWith({{u"first", u"a"}});
    sheet.cells[{4, 1}] = String(u"last");
    FindAndReplaceItems list;

    ASSERT_TRUE(list.ImportList(Put(sheet)));

    EXPECT_THAT(PairsOf(list), ElementsAre("first -> a", " -> ", "last -> "));
    EXPECT_FALSE(list.Item(2)->OptionSetting->InSlides);
}

TEST_F(ListImport, TakesMissingCellsOfAShortRowAsEmpty)
{
    FakeSheet sheet = HeaderSheet();
    sheet.cells[{2, 1}] = String(u"cat");
    FindAndReplaceItems list;

    ASSERT_TRUE(list.ImportList(Put(sheet)));

    EXPECT_THAT(PairsOf(list), ElementsAre("cat -> "));
    for (const OptionKey& key : OptionKeys)
        EXPECT_FALSE((*list.Item(1)->OptionSetting).*key.field) << ToUtf8(key.name);
    EXPECT_EQ(list.Item(1)->OptionSetting->SearchMethod, 0);
}

TEST_F(ListImport, GivesEachItemItsOwnOptionsAndAllOneProject)
{
    FindAndReplaceItems list;

    ASSERT_TRUE(list.ImportList(Put(SheetWith({{u"a", u"b"}, {u"c", u"d"}}))));

    EXPECT_NE(list.Item(1)->OptionSetting, list.Item(2)->OptionSetting);
    EXPECT_TRUE(list.Item(1)->Project);
    EXPECT_EQ(list.Item(1)->Project, list.Item(2)->Project);
    EXPECT_EQ(list.Item(1)->Project->FindAndReplaceList->Count(), 0);
}

TEST_F(ListImport, ReplacesTheItemsThatAreThere)
{
    FindAndReplaceItems list;
    AddItem(list, u"before");

    ASSERT_TRUE(list.ImportList(Put(SheetWith({{u"cat", u"dog"}}))));

    EXPECT_THAT(PairsOf(list), ElementsAre("cat -> dog"));
}

TEST_F(ListImport, AppendsWhenExistingItemsAreKept)
{
    FindAndReplaceItems list;
    list.KeepExistingItems = true;
    AddItem(list, u"before");

    ASSERT_TRUE(list.ImportList(Put(SheetWith({{u"cat", u"dog"}}))));

    EXPECT_THAT(PairsOf(list), ElementsAre("before -> ", "cat -> dog"));
}

TEST_F(ListImport, TakesUpTo32767Rows)
{
    FakeSheet sheet = SheetWith({{u"first", u""}});
    sheet.cells[{32767, 1}] = String(u"last");
    FindAndReplaceItems list;

    ASSERT_TRUE(list.ImportList(Put(sheet)));

    EXPECT_EQ(list.Count(), 32766);
    EXPECT_EQ(list.Item(32766)->FindWhat, u"last");
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(ListImport, KeepsTextsOfEveryKind)
{
    const std::vector<String> texts{u"\U0001F600 \U0001F468\u200D\U0001F469",
                                    u"\u0639\u0631\u0636 \u05E9\u05DC\u05D5\u05DD",
                                    u"\u88FD\u54C1\u7D39\u4ECB",
                                    u"e\u0301",
                                    u"a\r\nb\tc\"d\"",
                                    u" blanks ",
                                    String(32767, u'x')};
    FakeSheet sheet = HeaderSheet();
    std::int32_t row = 1;
    for (const String& text : texts)
        sheet.cells[{++row, 1}] = text;
    FindAndReplaceItems list;

    ASSERT_TRUE(list.ImportList(Put(sheet)));

    row = 0;
    for (const String& text : texts)
        EXPECT_EQ(list.Item(++row)->FindWhat, text);
}

}  // namespace
}  // namespace tessarine
