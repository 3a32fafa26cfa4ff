#include "model/ListFileTest.h"

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Reason = ListRefusal::Reason;

/// An import into a list that holds one item already.
class ListImportFailure : public ListFileTest
{
protected:
    ListImportFailure() { AddItem(list_, u"before"); }

    FindAndReplaceItems list_;
};

constexpr const char* inImportList = ") in procedure ImportList at Line No. 0 of Class Module FindAndReplaceItems";

TEST_F(ListImportFailure, OfAMissingFileTellsAndLeavesTheList)
{
    for (const String& path : {folder_.PathOf(u"gone.xls"), folder_.PathOf(u"gone.txt"), folder_.Path(), String()}) {
        EXPECT_FALSE(list_.ImportList(path));
        EXPECT_EQ(list_.ImportRefusal->reason, Reason::FileMissing);
    }

    const MessageRecorder::Message message{u"File is Not Present In Directory!", MessageIcon::Information,
                                           MessageButtons::Ok};
    EXPECT_THAT(messages_.Messages(), ElementsAre(message, message, message, message));
    EXPECT_THAT(PairsOf(list_), ElementsAre("before -> "));
    EXPECT_THAT(excel_.script.Calls(), IsEmpty());
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(ListImportFailure, OfAPathWithANulIsThatOfAMissingFile)
{
    const String path = Put(HeaderSheet());

    EXPECT_FALSE(list_.ImportList(path + u'\0' + u".xls"));

    EXPECT_EQ(list_.ImportRefusal->reason, Reason::FileMissing);
    EXPECT_THAT(excel_.script.Calls(), IsEmpty());
}

TEST_F(ListImportFailure, OfAnotherExtensionIsSilentAndLeavesTheList)
{
    for (const StringView name : {u"a.xlsx", u"a.txt", u"a", u"xls", u"a.", u"a.xls ", u"folder.xls/a"}) {
        EXPECT_FALSE(list_.ImportList(Put(HeaderSheet(), name))) << ToUtf8(name);
        EXPECT_EQ(list_.ImportRefusal->reason, Reason::OtherExtension) << ToUtf8(name);
    }

    EXPECT_THAT(PairsOf(list_), ElementsAre("before -> "));
    EXPECT_THAT(messages_.Messages(), IsEmpty());
    EXPECT_THAT(excel_.script.Calls(), IsEmpty());
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(ListImportFailure, OfAnotherNumberOfColumnsLeavesListAndExcelAlone)
{
    for (const std::int32_t columns : {17, 19, 1}) {
        FakeSheet sheet = HeaderSheet();
        sheet.columns = columns;

        EXPECT_FALSE(list_.ImportList(Put(sheet)));
        ASSERT_TRUE(list_.ImportRefusal);
        EXPECT_EQ(list_.ImportRefusal->reason, Reason::ColumnCount);
        EXPECT_EQ(list_.ImportRefusal->columns, columns);
    }

    EXPECT_THAT(PairsOf(list_), ElementsAre("before -> "));
    EXPECT_THAT(messages_.Messages(), IsEmpty());
    EXPECT_THAT(log_.Lines(), IsEmpty());
    EXPECT_EQ(excel_.Running(), 3);
    EXPECT_EQ(excel_.Open(), 3);
}

TEST_F(ListImportFailure, OfAnotherHeaderSilentlyEmptiesTheList)
{
    for (std::int32_t column = 1; column <= ListColumnCount; ++column) {
        FakeSheet sheet = SheetWith({{u"cat", u"dog"}});
        const String header = u" " + std::get<String>(sheet.At(1, column));
        sheet.cells[{1, column}] = header;
        AddItem(list_, u"before");

        EXPECT_FALSE(list_.ImportList(Put(sheet))) << column;
        EXPECT_EQ(list_.Count(), 0) << column;
        ASSERT_TRUE(list_.ImportRefusal);
        EXPECT_EQ(list_.ImportRefusal->reason, Reason::Header);
        EXPECT_EQ(list_.ImportRefusal->column, column);
        EXPECT_EQ(list_.ImportRefusal->header, header);
    }

    EXPECT_THAT(messages_.Messages(), IsEmpty());
    EXPECT_THAT(log_.Lines(), IsEmpty());
    EXPECT_EQ(excel_.Running(), 0);
    EXPECT_EQ(excel_.Open(), 0);
}

TEST_F(ListImportFailure, OfAHeaderNamesTheFirstColumnThatDiffers)
{
    FakeSheet sheet = HeaderSheet();
    sheet.cells[{1, 2}] = 7.0;
    sheet.cells.erase({1, 5});

    EXPECT_FALSE(list_.ImportList(Put(sheet)));

    EXPECT_EQ(list_.ImportRefusal->column, 2);
    EXPECT_EQ(list_.ImportRefusal->header, u"7");
}

TEST_F(ListImportFailure, AfterAHeaderThatDiffersIsAFailureAlone)
{
    FakeSheet sheet = HeaderSheet();
    sheet.cells[{1, 1}] = String(u"Find");
    excel_.script.FailOnce("Workbook.Close", 1004, u"not now");

    EXPECT_FALSE(list_.ImportList(Put(sheet)));

    ASSERT_TRUE(list_.FileFailure);
    EXPECT_EQ(list_.FileFailure->number, 1004);
    EXPECT_FALSE(list_.ImportRefusal);
}

TEST_F(ListImportFailure, OfAHeaderLeavesItemsThatAreKept)
{
    FakeSheet sheet = HeaderSheet();
    sheet.cells[{1, 1}] = String(u"Find");
    list_.KeepExistingItems = true;

    EXPECT_FALSE(list_.ImportList(Put(sheet)));

    EXPECT_THAT(PairsOf(list_), ElementsAre("before -> "));
}

TEST_F(ListImportFailure, WithoutExcelIsLogged)
{
    excel_.script.Fail("CreateApplication", 429, u"can't create object");

    EXPECT_FALSE(list_.ImportList(Put(HeaderSheet())));

    EXPECT_THAT(log_.Lines(), ElementsAre(std::string("Error 429 (can't create object") + inImportList));
    EXPECT_THAT(PairsOf(list_), ElementsAre("before -> "));
    EXPECT_THAT(messages_.Messages(), IsEmpty());
    ASSERT_TRUE(list_.FileFailure);
    EXPECT_EQ(list_.FileFailure->number, 429);
    EXPECT_FALSE(list_.ImportRefusal);
}

TEST_F(ListImportFailure, OfAnUnreadableFileLeavesExcelRunning)
{
    const String path = folder_.Write(u"list.xls");

    EXPECT_FALSE(list_.ImportList(path));

    EXPECT_THAT(log_.Lines(), ElementsAre(std::string("Error 1004 (can't be read") + inImportList));
    EXPECT_THAT(PairsOf(list_), ElementsAre("before -> "));
    EXPECT_EQ(excel_.Running(), 1);
}

TEST_F(ListImportFailure, BeforeTheRowsLeavesTheListAsItWas)
{
    const String path = Put(SheetWith({{u"cat", u"dog"}}));

    for (const char* member : {"Application.Workbooks", "Workbooks.Open", "Workbook.Sheets", "Sheets.Item",
                               "Worksheet.UsedRange", "Range.Columns", "Columns.Count"}) {
        excel_.script.FailOnce(member, 1004, u"not now");
        EXPECT_FALSE(list_.ImportList(path)) << member;
        EXPECT_THAT(PairsOf(list_), ElementsAre("before -> ")) << member;
    }

    EXPECT_EQ(log_.Lines().size(), 7u);
    EXPECT_EQ(excel_.Running(), 7);
}

TEST_F(ListImportFailure, OfRowCountOrHeaderLeavesAnEmptyList)
{
    const String path = Put(SheetWith({{u"cat", u"dog"}}));

    for (const char* member : {"Range.Rows", "Rows.Count", "Worksheet.Cells", "Range.Value 1,1", "Range.Value 1,18"}) {
        AddItem(list_, u"before");
        excel_.script.FailOnce(member, 1004, u"not now");
        EXPECT_FALSE(list_.ImportList(path)) << member;
        EXPECT_EQ(list_.Count(), 0) << member;
        EXPECT_FALSE(list_.ImportRefusal);
    }

    EXPECT_EQ(log_.Lines().size(), 5u);
    EXPECT_EQ(excel_.Running(), 5);
}

TEST_F(ListImportFailure, OfARowKeepsTheRowsBeforeIt)
{
    const String path = Put(SheetWith({{u"a", u"b"}, {u"c", u"d"}, {u"e", u"f"}}));

    for (const char* cell : {"Range.Value 3,1", "Range.Value 3,2", "Range.Value 3,3", "Range.Value 3,18"}) {
        excel_.script.FailOnce(cell, 1004, u"not now");
        EXPECT_TRUE(list_.ImportList(path)) << cell;
        EXPECT_THAT(PairsOf(list_), ElementsAre("a -> b")) << cell;
        EXPECT_TRUE(list_.FileFailure);
    }

    EXPECT_THAT(log_.Lines(), testing::Each(std::string("Error 1004 (not now") + inImportList));
    EXPECT_EQ(log_.Lines().size(), 4u);
    EXPECT_EQ(excel_.Running(), 4);
    EXPECT_EQ(excel_.Open(), 4);
}

TEST_F(ListImportFailure, AtTheEndKeepsAllRows)
{
    const String path = Put(SheetWith({{u"a", u"b"}}));

    for (const char* member : {"Workbook.Close", "Application.Quit"}) {
        excel_.script.FailOnce(member, 1004, u"not now");
        EXPECT_TRUE(list_.ImportList(path)) << member;
        EXPECT_THAT(PairsOf(list_), ElementsAre("a -> b")) << member;
    }

    EXPECT_EQ(log_.Lines().size(), 2u);
}

TEST_F(ListImportFailure, OfAnErrorInATextIsATypeMismatch)
{
    FakeSheet sheet = SheetWith({{u"a", u"b"}});
    sheet.cells[{3, 1}] = excel::CellError{0x2A};

    EXPECT_TRUE(list_.ImportList(Put(sheet)));

    EXPECT_THAT(PairsOf(list_), ElementsAre("a -> b"));
    EXPECT_THAT(log_.Lines(), ElementsAre(std::string("Error 13 (Type mismatch") + inImportList));
}

TEST_F(ListImportFailure, OfMoreThan32767RowsIsAnOverflow)
{
    FakeSheet sheet = SheetWith({{u"a", u"b"}});
    sheet.rows = 32768;

    EXPECT_FALSE(list_.ImportList(Put(sheet)));

    EXPECT_EQ(list_.Count(), 0);
    EXPECT_THAT(log_.Lines(), ElementsAre(std::string("Error 6 (Overflow") + inImportList));
    EXPECT_EQ(excel_.Running(), 1);
    EXPECT_EQ(excel_.script.Count("Range.Item"), 0);
}

TEST_F(ListImportFailure, OfANullReferenceIsFailure91)
{
    for (const char* member :
         {"CreateApplication", "Application.Workbooks", "Workbooks.Open", "Workbook.Sheets", "Sheets.Item",
          "Worksheet.UsedRange", "Range.Columns", "Range.Rows", "Worksheet.Cells", "Range.Item"}) {
        FakeExcel excel;
        const String path = folder_.Write(u"list.xls");
        excel.Put(path, SheetWith({{u"a", u"b"}}));
        excel.GiveNull(member);
        FindAndReplaceItems list;

        EXPECT_FALSE(list.ImportList(path)) << member;
        ASSERT_TRUE(list.FileFailure) << member;
        EXPECT_EQ(list.FileFailure->number, 91) << member;
    }
}

TEST_F(ListImportFailure, IsForgottenByTheNextImport)
{
    list_.ImportList(folder_.Write(u"list.xls"));
    ASSERT_TRUE(list_.FileFailure);

    list_.ImportList(folder_.PathOf(u"gone.xls"));
    EXPECT_FALSE(list_.FileFailure);
    ASSERT_TRUE(list_.ImportRefusal);

    EXPECT_TRUE(list_.ImportList(Put(HeaderSheet())));
    EXPECT_FALSE(list_.FileFailure);
    EXPECT_FALSE(list_.ImportRefusal);
}

}  // namespace
}  // namespace tessarine
