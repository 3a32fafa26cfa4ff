#include "model/ListFileTest.h"

#include "platform/LineEnd.h"
#include "support/OrdinaryUser.h"

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using ListExport = ListFileTest;

constexpr const char* inExportsList = ") in procedure ExportsList at Line No. 0 of Class Module FindAndReplaceItems";
constexpr const char* objectNotSet = "Error 91 (Object variable or With block variable not set";
const std::string lineEnd = ToUtf8(LineEnd);
const std::string headerLine =
    "Find What\tReplace With\tInBuiltinProperty\tInCustomProperties\tInFooter\tInHandoutMaster\tInHeader\t"
    "InHyperlinkAddresses\tInLinks\tInNotes\tInNotesMaster\tInShapesAndTextboxes\tInSlideMasterPerPresentation\t"
    "InSlideMasterPerSlide\tInSlides\tInTitleMaster\tMatchCase\tMatchWholeWord" +
    lineEnd;

MessageRecorder::Message Information(const String& text)
{
    return {text, MessageIcon::Information, MessageButtons::Ok};
}

TEST_F(ListExport, PutsHeadersTextsAndSwitchesIntoAWorkbook)
{
    FindAndReplaceItems list;
    AddItem(list, u"cat", u"dog", {.MatchCase = true, .InSlides = true});
    AddItem(list, u"007", u"TRUE");
    const String path = folder_.PathOf(u"list.xls");

    list.ExportsList(path);

    const FakeSheet sheet = excel_.Saved(path);
    const std::vector<std::string> headers{"Find What",
                                           "Replace With",
                                           "InBuiltinProperty",
                                           "InCustomProperties",
                                           "InFooter",
                                           "InHandoutMaster",
                                           "InHeader",
                                           "InHyperlinkAddresses",
                                           "InLinks",
                                           "InNotes",
                                           "InNotesMaster",
                                           "InShapesAndTextboxes",
                                           "InSlideMasterPerPresentation",
                                           "InSlideMasterPerSlide",
                                           "InSlides",
                                           "InTitleMaster",
                                           "MatchCase",
                                           "MatchWholeWord"};
    ASSERT_EQ(sheet.cells.size(), 3 * headers.size());
    for (std::int32_t column = 1; column <= 18; ++column)
        EXPECT_EQ(sheet.At(1, column), excel::Value(FromUtf8(headers[static_cast<std::size_t>(column) - 1])));
    EXPECT_EQ(sheet.At(2, 1), excel::Value(String(u"cat")));
    EXPECT_EQ(sheet.At(2, 2), excel::Value(String(u"dog")));
    EXPECT_EQ(sheet.At(3, 1), excel::Value(String(u"007")));
    EXPECT_EQ(sheet.At(3, 2), excel::Value(String(u"TRUE")));
    for (std::int32_t column = 3; column <= 18; ++column) {
        EXPECT_EQ(sheet.At(2, column), excel::Value(column == 15 || column == 17)) << column;
        EXPECT_EQ(sheet.At(3, column), excel::Value(false)) << column;
    }
    EXPECT_THAT(log_.Lines(), IsEmpty());
    EXPECT_THAT(messages_.Messages(), IsEmpty());
    EXPECT_FALSE(list.FileFailure);
}

TEST_F(ListExport, OfAnEmptyListWritesTheHeadersAlone)
{
    FindAndReplaceItems list;
    const String path = folder_.PathOf(u"list.csv");

    list.ExportsList(path);
    list.ExportsList(folder_.PathOf(u"list.tab"));

    EXPECT_EQ(excel_.Saved(path).cells.size(), 18u);
    EXPECT_EQ(ContentOf(folder_.PathOf(u"list.tab")), headerLine);
}

TEST_F(ListExport, SilencesExcelAndLeavesNothingRunning)
{
    FindAndReplaceItems list;
    const String path = folder_.PathOf(u"list.xls");

    list.ExportsList(path);

    const auto& calls = excel_.script.Calls();
    ASSERT_EQ(calls.size(), 3u + 18 + 3);
    EXPECT_EQ(calls[0], "CreateApplication");
    EXPECT_EQ(calls[1], "Application.DisplayAlerts = false");
    EXPECT_EQ(calls[2], "Workbooks.Add");
    EXPECT_EQ(calls[3], "Range.Value = 1,1 Find What");
    EXPECT_EQ(calls[21], "Workbook.SaveAs " + ToUtf8(path));
    EXPECT_EQ(calls[22], "Workbook.Close 2");
    EXPECT_EQ(calls[23], "Application.Quit");
    EXPECT_EQ(excel_.Running(), 0);
    EXPECT_EQ(excel_.Open(), 0);
}

TEST_F(ListExport, KeepsTheClosedWorkbookAndItsSheetButNotExcel)
{
    FindAndReplaceItems list;

    list.ExportsList(folder_.PathOf(u"list.xls"));

    EXPECT_EQ(excel_.Held(), 2);
}

TEST_F(ListExport, GivesExcelTheFilesOfItsExtensionsInAnyCase)
{
    FindAndReplaceItems list;

    for (const StringView name : {u"a.xls", u"a.XLS", u"a.Xls", u"a.csv", u"a.CSV"}) {
        list.ExportsList(folder_.PathOf(name));
        EXPECT_EQ(excel_.Saved(folder_.PathOf(name)).cells.size(), 18u) << ToUtf8(name);
    }
}

TEST_F(ListExport, ThatExcelFailsAnywhereIsLogged)
{
    FindAndReplaceItems list;
    AddItem(list, u"cat", u"dog");
    const String path = folder_.PathOf(u"list.xls");

    for (const char* member :
         {"CreateApplication", "Application.DisplayAlerts =", "Application.Workbooks", "Workbooks.Add",
          "Workbook.ActiveSheet", "Worksheet.Cells", "Range.Item", "Range.Value =", "Workbook.SaveAs"}) {
        excel_.script.FailOnce(member, 1004, u"not now");
        list.ExportsList(path);
        ASSERT_TRUE(list.FileFailure) << member;
        EXPECT_EQ(list.FileFailure->number, 1004) << member;
        EXPECT_TRUE(excel_.Saved(path).cells.empty()) << member;
    }

    EXPECT_THAT(log_.Lines(), testing::Each(std::string("Error 1004 (not now") + inExportsList));
    EXPECT_EQ(log_.Lines().size(), 9u);
    EXPECT_THAT(messages_.Messages(), IsEmpty());
    EXPECT_THAT(PairsOf(list), ElementsAre("cat -> dog"));
}

TEST_F(ListExport, ThatExcelFailsAfterTheSaveLeavesTheFile)
{
    FindAndReplaceItems list;

    for (const char* member : {"Workbook.Close", "Application.Quit"}) {
        const String path = folder_.PathOf(FromUtf8(std::string(member) + ".xls"));
        excel_.script.FailOnce(member, 1004, u"not now");
        list.ExportsList(path);
        EXPECT_EQ(excel_.Saved(path).cells.size(), 18u) << member;
    }

    EXPECT_EQ(log_.Lines().size(), 2u);
}

TEST_F(ListExport, OfAnItemWithoutOptionsFails)
{
    FindAndReplaceItems list;
    list.Add(u"cat", u"dog", nullptr, nullptr);

    for (const StringView name : {u"list.xls", u"list.tab"}) {
        list.ExportsList(folder_.PathOf(name));
        ASSERT_TRUE(list.FileFailure);
        EXPECT_EQ(list.FileFailure->number, 91);
        EXPECT_EQ(ContentOf(folder_.PathOf(name)), "<missing>");
    }
}

TEST_F(ListExport, WritesATabFileAsText)
{
    FindAndReplaceItems list;
    AddItem(list, u"cat", u"dog", {.MatchCase = true, .InSlides = true});
    AddItem(list, u"\u00FC \"q\", \U0001F600", u"=1");
    const String path = folder_.PathOf(u"list.tab");

    list.ExportsList(path);

    EXPECT_EQ(ContentOf(path),
              headerLine +
                  "cat\tdog\tFalse\tFalse\tFalse\tFalse\tFalse\tFalse\tFalse\tFalse\tFalse\tFalse\tFalse\tFalse\tTrue\t"
                  "False\tTrue\tFalse" +
                  lineEnd +
                  "\u00FC \"q\", \U0001F600\t=1\tFalse\tFalse\tFalse\tFalse\tFalse\tFalse\tFalse\tFalse\tFalse\tFalse\t"
                  "False\tFalse\tFalse\tFalse\tFalse\tFalse" +
                  lineEnd);
    EXPECT_THAT(excel_.script.Calls(), IsEmpty());
    EXPECT_THAT(messages_.Messages(), IsEmpty());
}

TEST_F(ListExport, OfACompleteTabFileLogsAFailure)
{
    FindAndReplaceItems list;

    list.ExportsList(folder_.PathOf(u"list.tab"));

    EXPECT_EQ(ContentOf(folder_.PathOf(u"list.tab")), headerLine);
    EXPECT_THAT(log_.Lines(), ElementsAre(std::string(objectNotSet) + inExportsList));
    EXPECT_FALSE(list.FileFailure);
}

TEST_F(ListExport, OfATabFileAfterAnImportLogsTheSame)
{
    FindAndReplaceItems list;
    ASSERT_TRUE(list.ImportList(Put(SheetWith({{u"cat", u"dog"}}))));

    list.ExportsList(folder_.PathOf(u"list.tab"));

    EXPECT_THAT(log_.Lines(), ElementsAre(std::string(objectNotSet) + inExportsList));
    EXPECT_EQ(excel_.script.Count("Workbook.Save"), 0);
}

TEST_F(ListExport, OfATabFileAfterAnotherExportFailsOnTheClosedWorkbook)
{
    FindAndReplaceItems list;
    list.ExportsList(folder_.PathOf(u"list.xls"));

    list.ExportsList(folder_.PathOf(u"list.tab"));

    EXPECT_EQ(ContentOf(folder_.PathOf(u"list.tab")), headerLine);
    EXPECT_THAT(log_.Lines(), ElementsAre(std::string("Error -2147417848 (The object invoked has disconnected from its "
                                                      "clients") +
                                          inExportsList));
    EXPECT_EQ(excel_.script.Calls().back(), "Workbook.Save " + ToUtf8(folder_.PathOf(u"list.xls")));
    EXPECT_FALSE(list.FileFailure);
}

TEST_F(ListExport, TakesTheTextPathForTabInAnyCase)
{
    FindAndReplaceItems list;

    for (const StringView name : {u"a.TAB", u"b.Tab"}) {
        list.ExportsList(folder_.PathOf(name));
        EXPECT_EQ(ContentOf(folder_.PathOf(name)), headerLine) << ToUtf8(name);
    }
    EXPECT_THAT(excel_.script.Calls(), IsEmpty());
}

TEST_F(ListExport, DoesNotQuoteTabsAndLineEndsInATabFile)
{
    FindAndReplaceItems list;
    AddItem(list, u"a\tb", u"c\nd");

    list.ExportsList(folder_.PathOf(u"list.tab"));

    EXPECT_THAT(ContentOf(folder_.PathOf(u"list.tab")), HasSubstr("MatchWholeWord" + lineEnd + "a\tb\tc\nd\tFalse\t"));
}

TEST_F(ListExport, ReplacesALongerTabFile)
{
    const String path = folder_.Write(u"list.tab", std::string(10000, 'x'));
    FindAndReplaceItems list;

    list.ExportsList(path);

    EXPECT_EQ(ContentOf(path), headerLine);
}

TEST_F(ListExport, WritesNoOtherFileForAPathWithANul)
{
    const String path = folder_.Write(u"list.tab", "old");
    FindAndReplaceItems list;

    list.ExportsList(path + u'\0' + u".tab");

    EXPECT_EQ(ContentOf(path), "old");
    ASSERT_TRUE(list.FileFailure);
    EXPECT_EQ(list.FileFailure->number, FailureNumber::FileNotFound);
}

TEST_F(ListExport, IntoAMissingFolderTells)
{
    FindAndReplaceItems list;
    const String folder = folder_.PathOf(u"gone/");

    for (const StringView name : {u"a.xls", u"a.csv", u"a.tab", u"a.txt", u"a"})
        list.ExportsList(folder + String(name));

    EXPECT_EQ(messages_.Messages().size(), 5u);
    EXPECT_THAT(messages_.Messages(), testing::Each(Information(folder + u" Directory is not present.")));
    EXPECT_THAT(excel_.script.Calls(), IsEmpty());
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(ListExport, WithoutAFolderTells)
{
    FindAndReplaceItems list;

    list.ExportsList(u"a.xls");
    list.ExportsList(u"");

    EXPECT_THAT(messages_.Messages(),
                ElementsAre(Information(u" Directory is not present."), Information(u" Directory is not present.")));
}

TEST_F(ListExport, OfAnotherExtensionTells)
{
    FindAndReplaceItems list;

    for (const StringView name : {u"a.xlsx", u"a.txt", u"a", u"a.", u"tab", u"a.tab "}) {
        list.ExportsList(folder_.PathOf(name));
        EXPECT_EQ(ContentOf(folder_.PathOf(name)), "<missing>") << ToUtf8(name);
    }

    EXPECT_EQ(messages_.Messages().size(), 6u);
    EXPECT_THAT(messages_.Messages(),
                testing::Each(
                    Information(u"Only .csv ,.xls ,.tab extension file is allowed for PowerPoint Tessarine project.")));
    EXPECT_THAT(excel_.script.Calls(), IsEmpty());
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

}  // namespace

// Links, pipes, modes and other users are different things on Windows.
#ifndef _WIN32

TEST_F(ListExport, ThatCannotWriteATabFileLeavesTheOldOne)
{
    const String path = folder_.Write(u"list.tab", "old");
    SetMode(folder_.Path(), 0777);
    SetMode(path, 0444);
    const OrdinaryUser user;
    FindAndReplaceItems list;

    list.ExportsList(path);

    EXPECT_EQ(ContentOf(path), "old");
    EXPECT_THAT(log_.Lines(), ElementsAre(HasSubstr(inExportsList)));
    ASSERT_TRUE(list.FileFailure);
    EXPECT_EQ(list.FileFailure->number, FailureNumber::AccessDenied);
}

TEST_F(ListExport, WritesIntoATabFileWhereItsFolderIsClosed)
{
    const String path = folder_.Write(u"list.tab", "old");
    SetMode(path, 0666);
    SetMode(folder_.Path(), 0555);
    const OrdinaryUser user;
    FindAndReplaceItems list;

    list.ExportsList(path);

    EXPECT_EQ(ContentOf(path), headerLine);
    EXPECT_FALSE(list.FileFailure);
}

#endif

}  // namespace tessarine
